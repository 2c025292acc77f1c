#include "window/ZORHostDialogHandler.h"

#include "window/ZORHostDialogFrame.h"

ZORHostDialogHandler::ZORHostDialogHandler(QWidget* parent)
    : m_parent(parent)
{
}

ZORHostDialogHandler::~ZORHostDialogHandler()
{
    for (const QPointer<ZORHostDialogFrame>& frame : std::as_const(m_frames)) {
        if (frame)
            frame->reject();
        delete frame.data();
    }
}

void ZORHostDialogHandler::ShowDialogCommand(ZORCmdDialogCommand* command)
{
    m_frames.removeIf([](const QPointer<ZORHostDialogFrame>& frame) { return frame.isNull(); });
    auto* frame = new ZORHostDialogFrame(command, m_parent);
    m_frames.append(frame);
    frame->show();
}
