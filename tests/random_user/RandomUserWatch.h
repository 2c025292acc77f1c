// Notices what must not happen while the random user works.

#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <condition_variable>
#include <mutex>
#include <thread>

/// Ends the process with exit code kFailed and a line "FAILURE: ..." on the error stream as soon as something
/// fails: a warning or critical message that is not known to be harmless, an error that nobody handled, a
/// crash, an action that takes longer than kLongestAction, a window that stays although it was closed, a
/// program that goes on without any window.
/// Crashes and hangs also print a stack.
///
/// One object at a time, from before the program starts until after it has ended.
class RandomUserWatch
{
public:
    static constexpr int kFailed = 3;         // exit code
    static constexpr int kLongestAction = 30; // seconds; far beyond what any action takes

    RandomUserWatch();
    ~RandomUserWatch();
    Q_DISABLE_COPY_MOVE(RandomUserWatch)

    /// An action begins: the one before has ended.
    void Beat();
    /// A window that the user has closed has to be hidden.
    /// \param isToDie  whether it also has to be deleted soon
    void ExpectGone(QWidget* window, bool isToDie);
    /// To be called now and then from the outermost event loop, which deletes what waits for its deletion.
    void CheckGone();
    /// A program whose windows have all gone has to end. To be called from the outermost event loop.
    /// \param isReachable  whether the user can reach any window
    void CheckReachable(bool isReachable);

    [[noreturn]] static void Fail(const QString& what);

private:
    struct Closed
    {
        QPointer<QWidget> window;
        int numChecks;
    };

    void WatchBeats();

    QList<Closed> m_closed;
    int m_numUnreachable = 0; // checks in a row
    QtMessageHandler m_former;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_beats = 0;       // guarded by m_mutex
    bool m_isOver = false; // guarded by m_mutex
    pthread_t m_mainThread;
    std::thread m_thread;
};
