// Runs jobs in helper processes and in threads.

#pragma once

#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkResponse.h>
#include <ZORWorker/ZORWorkerGlobal.h>

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

/// A queue of jobs over a bounded number of threads, first come, first served. Jobs with a kind run in helper
/// processes (ZORWorkHelpers), each looked after by a thread; jobs with a function run in the threads
/// themselves.
///
/// Use it in one thread, which needs an event loop: news of the jobs arrive there. A job that fails, for
/// whatever reason, is a failed job and nothing else; its reason is also logged ("zor.worker"). That includes
/// jobs in helper processes that crash, exit, need more memory than their limit, or are killed from outside.
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORWORKER_EXPORT ZORWorkProcessor : public QObject
{
    Q_OBJECT

public:
    /// Where jobs with a kind run. Jobs with a function run in threads in either case.
    enum Place {
        /// In helper processes; in threads, after a warning in the log, where the helper program cannot start
        /// or does not know the kind.
        HelperProcesses,
        Threads
    };

    explicit ZORWorkProcessor(QObject* parent = nullptr);
    /// Cancels the running jobs and waits for them: in helper processes up to 0.2 s, whatever they
    /// do; in threads as long as they need to notice. No signals are emitted any more.
    ~ZORWorkProcessor() override;

    /// HelperProcesses at first. Holds for jobs that are executed afterwards.
    void SetPlace(Place place);
    Place GetPlace() const;
    /// Memory that a job in a helper process may use beyond what an idle helper has, in bytes. 0, as at
    /// first: the limit of ZORWorkHelpers when the job starts. A job that needs more fails with the reason
    /// "not enough memory (a job may use %1)". Holds for jobs that are executed afterwards.
    void SetMemoryLimit(qint64 bytes);
    qint64 GetMemoryLimit() const;

    /// Where the work directories are made, one per job; made itself when it does not exist. At first the
    /// directory of the system for temporary files. Holds for jobs that are executed afterwards.
    ///
    /// Directories that are not kept lie there in a folder "zorjobs-<process>-<random>" of this process. They are hidden
    /// as soon as nobody uses them, and a thread removes them, and the folder with the last of them. What a killed
    /// process left is removed by the next one of the same user that runs a job with this base directory.
    void SetBaseDirectory(const QString& directory);
    QString GetBaseDirectory() const;
    /// How many jobs run at a time; at first as many as the machine has processors. Less than 1 is taken as
    /// 1. Jobs that run already go on. As many jobs more may run that were stopped before they had a thread.
    void SetMaximumThreads(int count);

    /// Takes a job, which waits for Execute().
    /// \return owned by the processor and living as long
    /// \throws ZORSysException "job has nothing to run" when the job has neither function nor kind, "job has
    ///         both a function and a kind", and "there is no job kind '%1'"
    ZORWorkResponse* AddJob(const ZORWorkJob& job);
    /// In the order in which they were added.
    QList<ZORWorkResponse*> GetResponses() const;

    /// Starts the given job, or with null all of them; those that were started before are left alone.
    /// \throws ZORSysException "cannot start a thread: %1"; the job stays as it is
    void Execute(ZORWorkResponse* response = nullptr);
    /// Asks the given job, or with null all of them, to end with what it has, and returns. One that does not
    /// run yet, executed or not, is canceled, or runs at once if it is to (ZORWorkJob::runsWhenStopped). A
    /// helper process that does not end in 10 s is killed; the job is then completed with its last interim
    /// result (ZORWorkJobKind::Complete), or fails if there is none.
    /// \throws ZORSysException "cannot start a thread: %1"; the job stays as it is
    void Stop(ZORWorkResponse* response = nullptr);
    /// Asks the given job, or with null all of them, to give up: it fails with the reason "canceled",
    /// whatever it still makes. Returns at once; a helper process that does not answer is killed within
    /// 0.2 s. What has ended already stays as it is. The signal always comes from the event loop.
    void Cancel(ZORWorkResponse* response = nullptr);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
