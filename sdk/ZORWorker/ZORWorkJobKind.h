// Kinds of jobs that can run in another process.

#pragma once

#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkResult.h>
#include <ZORWorker/ZORWorkerGlobal.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QList>

#include <functional>

/// The registry of what jobs can do, by name. The worker module itself knows no kind: the library that has
/// one registers it when it is loaded, in the caller's process and in the helper program, which links the
/// same library.
///
/// A kind shares nothing with its caller but bytes, so whatever it needs is in its input: options, not
/// globals. Its input and its results are read by the same version of the SDK only.
///
/// Thread safety: thread-safe.
class ZORWORKER_EXPORT ZORWorkJobKind
{
    Q_DECLARE_TR_FUNCTIONS(ZORWorkJobKind)

public:
    /// Does the work of one job. Whatever it throws makes the job fail with the message of the exception. It
    /// may use threads, which must have ended when it returns.
    /// \param context  valid for the time of the run; its work directory belongs to the caller
    /// \param input    ZORWorkJob::input
    /// \return files from the work directory alone, and bytes
    using Run = std::function<ZORWorkResult(const ZORWorkContext& context, const QByteArray& input)>;

    /// Makes a result of the last interim result of a job that was killed because it did not answer a Stop.
    /// It runs in another helper process, or where that cannot start in a thread of the caller's. Check
    /// \a interim as strictly as a file from a stranger: the process that wrote it was faulty. The work
    /// directory is the one of the killed job with whatever that left there. The context is stopped.
    /// \throws ZORSysException or any other exception when \a interim cannot be used; the job then fails with its
    /// message
    using Complete = std::function<ZORWorkResult(const ZORWorkContext& context, const QByteArray& input,
                                                 const QByteArray& interim)>;

    /// \param complete  empty for a kind that reports no interim results
    /// \throws ZORSysException "job kind '%1' has no function" for an empty \a run, "job kind '%1' exists
    ///         already" for a duplicate, and "a job kind needs a name of 1 to 100 bytes"
    static void Register(const QByteArray& name, Run run, Complete complete = {});

    /// Forgets a kind; without effect on an unknown one. A library that may be unloaded calls it from a
    /// static destructor. No job of the kind may be running in this process.
    static void Unregister(const QByteArray& name);

    static bool IsRegistered(const QByteArray& name);
    /// All names, sorted.
    static QList<QByteArray> GetNames();
    /// Calls the function of a kind in this thread.
    /// \throws ZORSysException "there is no job kind '%1'", and what the function throws
    static ZORWorkResult RunJob(const QByteArray& name, const ZORWorkContext& context,
                                const QByteArray& input);
    /// Whether \a name is registered with a function that completes interim results.
    static bool CanComplete(const QByteArray& name);
    /// \throws ZORSysException "there is no job kind '%1'", "job kind '%1' cannot complete interim results",
    ///         and what the function throws
    static ZORWorkResult CompleteJob(const QByteArray& name, const ZORWorkContext& context,
                                     const QByteArray& input, const QByteArray& interim);
};
