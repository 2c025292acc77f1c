// The frame around a dialog command.

#pragma once

#include <QDialog>
#include <QPointer>

class ZORCmdDialogCommand;

/// Non-modal dialog with the content of a command, OK and Cancel. OK accepts the command; when that throws,
/// an "Error" box shows the message and the frame stays open with the user's input. Deletes itself on close.
class ZORHostDialogFrame : public QDialog
{
    Q_OBJECT

public:
    /// \param command  not owned; ended by the frame with Accept() or Reject(). The frame closes when it
    /// dies.
    ZORHostDialogFrame(ZORCmdDialogCommand* command, QWidget* parent);

    void accept() override;
    /// Also the way out for Escape and the close button of the window.
    void reject() override;

private:
    void EmbedContent(QWidget* content);

    QPointer<ZORCmdDialogCommand> m_command; // not owned; null once it was ended
    QPointer<QWidget> m_content;             // child
    bool m_committing = false;
};
