// The application object: last resort for exceptions that escape a slot.

#pragma once

#include <QApplication>

class ZORHostErrorReporter;

/// QApplication that survives exceptions thrown by slots and event handlers: the event counts as
/// delivered, an "Error" box shows the message, and the program goes on. It ends with exit code 0 when no
/// window is left; a message that opens after the last window has closed is shown first.
class ZORHostApplication : public QApplication
{
    Q_OBJECT

public:
    /// Sets organisation, name and version of the application. \a argc and \a argv must outlive it.
    ZORHostApplication(int& argc, char** argv);
    ~ZORHostApplication() override;

    bool notify(QObject* receiver, QEvent* event) override;

    ZORHostErrorReporter* GetErrorReporter() const { return m_errors; }

    /// Whether the application is closing its windows because code has called quit(). Who does so has decided
    /// about unsaved work; the menu and the window manager close the main window instead.
    bool IsQuitting() const { return m_isQuitting; }

protected:
    bool event(QEvent* event) override;

private:
    /// Ends the program now or, where something is left that the user has to close, looks again when that
    /// is gone.
    void EndWithoutWindows();

    bool m_isQuitting = false;      // first: event() is called for the child below already
    ZORHostErrorReporter* m_errors; // child
};
