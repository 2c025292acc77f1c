// One job in a helper process.

#pragma once

#include "ZORWorkHelper_p.h"

#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkResult.h>

#include <QCoreApplication>

#include <memory>
#include <optional>

class ZORWorkControl;
class ZORWorkDirectory;

/// Sends a job to a helper process, follows it, passes requests on, and ends the process when it does not
/// answer.
class ZORWorkHelperRun
{
    Q_DECLARE_TR_FUNCTIONS(ZORWorkHelperRun)

public:
    /// \param job          with a kind; used while this object lives, as \a control and \a context are
    /// \param memoryLimit  bytes
    /// \param directory    work directory, which outlives the process
    ZORWorkHelperRun(const ZORWorkJob& job, qint64 memoryLimit, ZORWorkControl& control,
                     const ZORWorkContext& context, std::shared_ptr<ZORWorkDirectory> directory);

    /// Runs the job in \a helper, which goes back to the pool.
    /// \throws ZORWorkCanceled; ZORSysException with the reason why the job has failed
    ZORWorkResult Execute(std::unique_ptr<ZORWorkHelper> helper);

    /// Time that a process has to answer a stop; 10 s. Tests that wait for its end shorten it.
    ZORWORKER_EXPORT static void SetStopGrace(std::chrono::milliseconds grace);
    ZORWORKER_EXPORT static std::chrono::milliseconds GetStopGrace();

private:
    using Clock = ZORWorkHelper::Clock;

    /// What came of the job in one process. Without a result, a reason says why; a job that was lost with its
    /// process has not answered.
    struct End
    {
        std::optional<ZORWorkResult> result;
        QString reason;
        bool isLost = false;
        bool isHelperReady = false; // for the next job
        bool hasVanished = false;   // the process has ended or closed the connection
    };

    End Follow(ZORWorkHelper& helper, const std::optional<QByteArray>& interim);
    void PassRequests(ZORWorkHelper& helper);
    std::optional<End> Handle(ZORWorkHelper& helper, ZORWorkProtocol::Message message);
    End FinishResult(const ZORWorkProtocol::Result& result) const;
    End Bury(ZORWorkHelper& helper) const;
    bool AwaitTrace(ZORWorkHelper& helper) const;
    void LogErrors(ZORWorkHelper& helper, const QString& reason) const;
    End GiveUp(ZORWorkHelper& helper) const;
    void GiveBack(std::unique_ptr<ZORWorkHelper> helper, const End& end);
    ZORWorkResult Complete();

    const ZORWorkJob& m_job;
    const qint64 m_memoryLimit;
    ZORWorkControl& m_control;
    const ZORWorkContext& m_context;
    const std::shared_ptr<ZORWorkDirectory> m_directory;
    std::optional<QByteArray> m_interim; // the last one
    // Of the process that runs now:
    bool m_hasBegun = false; // with the job
    bool m_hasStopped = false;
    bool m_hasCanceled = false;
    std::optional<Clock::time_point> m_deadline; // to answer the requests
    std::optional<Clock::time_point>
        m_stackTime; // to ask for a stack, before a process is killed without a word
};
