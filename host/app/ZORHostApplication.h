// The application object: last resort for exceptions that escape a slot.

#pragma once

#include <QApplication>

class ZORHostErrorReporter;

/// QApplication that survives exceptions thrown by slots and event handlers: the event counts as
/// delivered, an "Error" box shows the message, and the program goes on.
class ZORHostApplication : public QApplication
{
    Q_OBJECT

public:
    /// Sets organisation, name and version of the application. \a argc and \a argv must outlive it.
    ZORHostApplication(int& argc, char** argv);
    ~ZORHostApplication() override;

    bool notify(QObject* receiver, QEvent* event) override;

    ZORHostErrorReporter* GetErrorReporter() const { return m_errors; }

private:
    ZORHostErrorReporter* m_errors; // child
};
