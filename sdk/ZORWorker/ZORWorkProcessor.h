// Runs jobs in threads.

#pragma once

#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkResponse.h>
#include <ZORWorker/ZORWorkerGlobal.h>

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

/// A queue of jobs over a bounded number of threads of its own, first come, first served.
///
/// To be used in one thread, which needs an event loop: that is where news of the jobs arrive. A job that fails, for
/// whatever exception, is a failed job and nothing else; its reason is also logged ("zor.worker").
class ZORWORKER_EXPORT ZORWorkProcessor : public QObject
{
    Q_OBJECT

public:
    explicit ZORWorkProcessor(QObject* parent = nullptr);
    /// Cancels the running jobs and waits for them, which takes as long as they need to notice. Nothing is
    /// signalled any more.
    ~ZORWorkProcessor() override;

    /// Where the work directories are made, one per job; made itself when it does not exist. At first the
    /// directory of the system for temporary files. Holds for jobs that are executed afterwards.
    void SetBaseDirectory(const QString& directory);
    QString GetBaseDirectory() const;
    /// How many jobs run at a time; at first as many as the machine has processors. Less than 1 is taken as 1.
    /// Jobs that run already go on. As many jobs more may run that were stopped before they had a thread.
    void SetMaximumThreads(int count);

    /// Takes a job, which waits for Execute().
    /// \return owned by the processor and living as long
    /// \throws ZORSysException "job has nothing to run" when the job has no function
    ZORWorkResponse* AddJob(const ZORWorkJob& job);
    /// In the order in which they were added.
    QList<ZORWorkResponse*> GetResponses() const;

    /// Starts the given job, or with null all of them; those that were started before are left alone.
    /// \throws ZORSysException "cannot start a thread: %1"; the job stays as it is
    void Execute(ZORWorkResponse* response = nullptr);
    /// Asks the given job, or with null all of them, to end with what it has. One that has no thread yet, executed
    /// or not, is cancelled, or runs at once if it is to (ZORWorkJob::runsWhenStopped).
    /// \throws ZORSysException "cannot start a thread: %1"; the job stays as it is
    void Stop(ZORWorkResponse* response = nullptr);
    /// Asks the given job, or with null all of them, to give up: it fails with the reason "canceled", whatever
    /// it still makes. What has ended already stays as it is. The signal always comes from the event loop.
    void Cancel(ZORWorkResponse* response = nullptr);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
