// Shows the dialogs of commands.

#pragma once

#include <ZORCommand/ZORCmdDialogHandler.h>

#include <QList>
#include <QPointer>

class QWidget;
class ZORHostDialogFrame;

/// The host's dialog handler: a frame per command, any number at once.
class ZORHostDialogHandler : public ZORCmdDialogHandler
{
public:
    /// \param parent  of the frames; not owned, must outlive the handler
    explicit ZORHostDialogHandler(QWidget* parent);
    /// Closes the open frames.
    ~ZORHostDialogHandler() override;
    Q_DISABLE_COPY_MOVE(ZORHostDialogHandler)

    QWidget* GetParentWidget() const override { return m_parent; }
    void ShowDialogCommand(ZORCmdDialogCommand* command) override;

private:
    QWidget* m_parent; // not owned
    QList<QPointer<ZORHostDialogFrame>> m_frames;
};
