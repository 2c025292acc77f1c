#include "ZORCmdCommand.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORCmdCommand::ZORCmdCommand(QObject* parent, int interaction, int undoScope)
    : ZORCmdCommand(Untraced::Construction, parent, interaction, undoScope)
{
    ZOR_TRACE_CALL(parent, interaction, undoScope);
}

ZORCmdCommand::ZORCmdCommand(Untraced, QObject* parent, int interaction, int undoScope)
    : QObject(parent)
    , m_interaction(static_cast<Interaction>(interaction))
    , m_undoScope(static_cast<UndoScope>(undoScope))
{
}

ZORCmdCommand::~ZORCmdCommand() = default;

void ZORCmdCommand::SetTitle(const QString& title)
{
    ZOR_TRACE_CALL(title);
    m_title = title;
}

void ZORCmdCommand::FinishLater()
{
    ZOR_TRACE_CALL();
    if (m_finishing)
        return;
    m_finishing = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            deleteLater(); // first: a receiver may throw
            emit Finished();
        },
        Qt::QueuedConnection);
}
