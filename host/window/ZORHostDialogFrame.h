// The frame around a dialog command.

#pragma once

#include <QDialog>
#include <QPointer>

class QDialogButtonBox;
class QLabel;
class QLayout;
class ZORCmdDialogCommand;

/// Non-modal dialog with the content of a command, OK and Cancel. OK accepts the command; when that throws,
/// an "Error" box shows the message and the frame stays open with the user's input. While the command reports
/// a problem with the input, a line above the buttons shows it and OK is disabled. Deletes itself on close.
///
/// The first field of the content has the focus, with its text selected, unless the content has chosen another one. The
/// Tab key reaches OK and Cancel after the content.
///
/// Return in a field of the content presses the default button, which is OK unless the content has a default
/// button itself; Escape presses Cancel. Both hold for contents that are dialogs, too.
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

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void EmbedContent(QWidget* content);
    QLayout* MakeProblemLine();
    void FocusFirstField();
    void ShowProblem(const QString& problem);

    QPointer<ZORCmdDialogCommand> m_command; // not owned; null once it was ended
    QPointer<QWidget> m_content;             // child
    QLabel* m_problemIcon;
    QLabel* m_problemLbl; // hidden until there is a problem
    QDialogButtonBox* m_buttons = nullptr;
    bool m_committing = false;
};
