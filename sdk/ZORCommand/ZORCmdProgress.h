// Progress of what a command computes in the main thread.

#pragma once

#include <ZORCommand/ZORCommandGlobal.h>
#include <ZORSystem/ZORSysProgress.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QString>

class QProgressDialog;
class QWidget;

/// Follows the computations of the SDK while it lives. Those that take longer than half a second show a modal dialog,
/// "_CommandProgressDialog", with their progress and, where the caller can take everything back, with Cancel. What is
/// canceled throws ZORSysCanceledException.
///
/// The event loop runs meanwhile, but nobody can use another window.
///
/// Thread safety: main thread only.
class ZORCOMMAND_EXPORT ZORCmdProgress
{
    Q_DECLARE_TR_FUNCTIONS(ZORCmdProgress)

public:
    enum Cancellation { CanCancel, CannotCancel };

    /// \param parent  of the dialog; may be null
    /// \param text    what is going on: "Draping..."
    ZORCmdProgress(QWidget* parent, const QString& text, Cancellation cancellation);
    ~ZORCmdProgress();
    Q_DISABLE_COPY_MOVE(ZORCmdProgress)

private:
    bool Report(double part);
    void ShowDialog();

    const QPointer<QWidget> m_parent;
    const QString m_text;
    const Cancellation m_cancellation;
    QElapsedTimer m_timer;
    QPointer<QProgressDialog> m_dialog; // owned
    const ZORSysProgress m_progress;
};
