// Command that consists of one dialog in the frame of the application.

#pragma once

#include <ZORCommand/ZORCmdCommand.h>

#include <QWidget>

#include <memory>

/// A command whose content widget the application shows in its own frame with OK and Cancel.
/// Thread safety: main thread only.
class ZORCOMMAND_EXPORT ZORCmdDialogCommand : public ZORCmdCommand
{
    Q_OBJECT

public:
    /// As ZORCmdCommand.
    ZORCmdDialogCommand(QObject* parent, int interaction, int undoScope);
    ~ZORCmdDialogCommand() override;

    /// Hands the command to the dialog handler of the controller.
    /// \throws ZORSysException "no dialog handler set"
    void Start() override;

    /// For the frame: creates the content as a child of \a parent and remembers it.
    /// \return the content, never null
    /// \throws ZORSysException "content of the command was built already", "command has no content"
    QWidget* BuildContent(QWidget* parent);
    /// The content; null before BuildContent() and after its frame was destroyed.
    QWidget* GetContentWidget() const;

    /// What is wrong with the input, a sentence for the user; empty when Accept() may be tried. A frame shows it
    /// and offers no OK meanwhile.
    QString GetProblem() const;

    /// For the frame: OK. Commits, then finishes the command; does nothing once it is finishing.
    /// \throws ZORSysException the problem, if there is one, and from Commit(); the command then goes on and the
    ///         frame stays open
    void Accept();
    /// For the frame: Cancel, or the frame was closed. Finishes the command without a commit.
    void Reject();

    /// Builds the content widget.
    /// \return owned by \a parent
    virtual QWidget* CreateContent(QWidget* parent) = 0;
    /// Applies what the user entered. The base does nothing.
    virtual void Commit();

signals:
    void ProblemChanged(const QString& problem);

protected:
    /// For commands that check their input while it is entered; without a call there is no problem.
    void SetProblem(const QString& problem);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
