// Requests of the system to end the program.

#pragma once

#include <QObject>

#include <csignal>
#include <functional>
#include <map>

class QSocketNotifier;

/// Passes the signals that ask the program to end (SIGTERM, SIGINT, SIGHUP) on to the event loop while it lives.
///
/// A signal that comes again ends the program at once, as without this class. Signals that were ignored before stay so.
/// One object per program.
class ZORHostTermination : public QObject
{
    Q_OBJECT

public:
    /// \param end  called from the event loop with the number of the signal
    explicit ZORHostTermination(std::function<void(int)> end);
    ~ZORHostTermination() override;

private:
    void Receive();

    const std::function<void(int)> m_end;
    int m_pipe[2] = {-1, -1};
    QSocketNotifier* m_notifier = nullptr;    // child
    std::map<int, struct sigaction> m_former; // by signal
};
