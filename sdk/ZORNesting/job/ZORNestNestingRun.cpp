#include "ZORNestJobBytes_p.h"
#include "ZORNestNestingJob_p.h"
#include "ZORNestNestingRun_p.h"
#include "report/ZORNestReportWriter_p.h"
#include "solver/proof/ZORNestSolverCheck.h"
#include "solver/run/ZORNestSolverRun.h"

#include <ZORSystem/ZORSysApiTracePause.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>
#include <ZORWorker/ZORWorkContext.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <future>
#include <mutex>
#include <optional>
#include <thread>

namespace {

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(ZorNestingRunLog, "zor.nesting")

constexpr auto kPulse = 20ms;
constexpr double kMostProgress = 0.999; // as long as the job runs

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestNestingRun)
};

QElapsedTimer StartTimer()
{
    QElapsedTimer timer;
    timer.start();
    return timer;
}

/// Carries requests from the job's context to the solver, and its progress back, until destroyed.
class Link
{
public:
    Link(const ZORWorkContext& context, ZORNestSolver::Control& control, std::optional<double> duration)
        : m_context(context)
        , m_control(control)
        , m_duration(duration)
        , m_thread([this](const std::stop_token& token) { FollowSafely(token); })
    {
    }

    /// Ends the thread. Throws what has ended it before.
    void Finish()
    {
        m_thread.request_stop();
        m_thread.join();
        if (m_failure)
            std::rethrow_exception(m_failure);
    }

private:
    /// A request that does not reach the solver would let it run without end: an exception ends the run.
    void FollowSafely(const std::stop_token& token)
    {
        try {
            Follow(token);
        } catch (...) {
            m_failure = std::current_exception();
            m_control.cancel = true;
        }
    }

    void Follow(const std::stop_token& token)
    {
        std::unique_lock lock(m_mutex);
        while (!token.stop_requested()) {
            if (m_context.IsCanceled())
                m_control.cancel = true;
            else if (m_context.IsStopped())
                m_control.stop = true;
            double progress = m_control.progress;
            // Time goes on where the solver does not count: while it prepares and finishes.
            if (m_duration)
                progress = std::max(progress, ZORNestSolver::Budget::GetShare(GetSeconds(), *m_duration));
            m_context.SetProgress(std::min(progress, kMostProgress));
            m_changed.wait_for(lock, token, kPulse, [] { return false; });
        }
    }

    double GetSeconds() const { return 1e-9 * double(m_timer.nsecsElapsed()); }

    const ZORWorkContext& m_context;
    ZORNestSolver::Control& m_control;
    const std::optional<double> m_duration; // seconds, 0 without end; none where time does not count
    const QElapsedTimer m_timer = StartTimer();
    std::exception_ptr m_failure; // read when the thread has ended
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::jthread m_thread; // last: it uses the rest
};

ZORNestSolver::RunOptions GetOptions(const ZORNestNestingInput& input)
{
    ZORNestSolver::RunOptions options;
    options.mostCopies = ZORNestNestingJob::kMostCopies;
    if (input.GetMaxSteps() > 0) {
        options.clock = ZORNestSolver::Budget::Clock::Steps;
        options.maximumTime = options.minimumTime = double(input.GetMaxSteps());
        return options;
    }
    options.maximumTime = input.GetMaxRunTime();
    options.minimumTime = input.GetMinRunTime();
    options.threads = int(std::max(1U, std::thread::hardware_concurrency()));
    return options;
}

/// One job from its task to its outcome.
class Run
{
public:
    /// Whether the parts of a job that is over are read all the same: a layout that is there needs them.
    enum class Reading { UntilOver, All };

    Run(ZORNestNestingTask task, const ZORWorkContext& context, Reading reading)
        : m_task(std::move(task))
        , m_context(context)
        , m_job(
              m_task.input, [&context] { return context.IsCanceled(); },
              [this, reading] { return reading == Reading::UntilOver && IsOver(); })
    {
        m_context.ThrowIfCanceled();
    }

    ZORWorkResult Execute();
    ZORWorkResult Complete(ZORNestInterimLayout layout);

private:
    ZORNestSolver::Solution Solve();
    double GetSeconds() const { return 1e-3 * double(m_timer.elapsed()); }
    bool IsOver() const
    {
        const bool isTimed = m_input.GetMaxSteps() <= 0 && m_input.GetMaxRunTime() > 0;
        return m_context.IsStopped() || (isTimed && GetSeconds() > m_input.GetMaxRunTime());
    }
    void SendInterimResult(const ZORNestSolver::Solution& solution) const;
    ZORWorkResult Finish(ZORNestSolver::Solution solution, double seconds) const;
    QString GetEnding(double seconds) const;
    ZORNestReportDetails GetDetails(double seconds) const;
    QStringList GetRemarks(const ZORNestSolver::Solution& solution) const;
    void Keep(const ZORNestNestingOutcome& outcome) const;

    const ZORNestNestingTask m_task;
    const ZORNestNestingInput& m_input = m_task.input;
    const ZORWorkContext& m_context;
    const QElapsedTimer m_timer = StartTimer(); // before the parts are read
    const ZORNestNestingJob m_job;
};

void Run::SendInterimResult(const ZORNestSolver::Solution& solution) const
{
    const ZORSysApiTracePause pause; // in a thread of the solver
    m_context.SetInterimResult(ZORNestJobBytes::Write(ZORNestInterimLayout{solution, GetSeconds()}));
}

ZORNestSolver::Solution Run::Solve()
{
    ZORNestSolver::RunOptions options = GetOptions(m_input);
    options.listener = [this](const ZORNestSolver::Solution& solution) { SendInterimResult(solution); };
    ZORNestSolver::Control control;
    control.stop = m_context.IsStopped(); // before the start already
    const bool isTimed = options.clock == ZORNestSolver::Budget::Clock::Wall;
    Link link(m_context, control, isTimed ? std::optional(options.maximumTime) : std::nullopt);
    std::optional<ZORNestSolver::Solution> solution =
        ZORNestSolver::Solve(m_job.GetSolverJob(), options, control);
    link.Finish();
    if (!solution)
        throw ZORWorkCanceled();
    return *std::move(solution);
}

QString Run::GetEnding(double seconds) const
{
    if (m_context.IsStopped())
        return Texts::tr("stopped");
    if (m_input.GetMaxSteps() > 0)
        return Texts::tr("after %1 steps").arg(m_input.GetMaxSteps());
    if (m_input.GetMaxRunTime() > 0 && seconds >= m_input.GetMaxRunTime())
        return Texts::tr("at the maximum run time");
    return Texts::tr("no further gain");
}

QStringList Run::GetRemarks(const ZORNestSolver::Solution& solution) const
{
    QStringList remarks;
    for (const ZORNestSolver::UnplacedItem& entry : solution.unplaced) {
        remarks.append(Texts::tr("not placed: %1 of part '%2': %3")
                           .arg(QString::number(entry.count),
                                QString::fromStdString(m_job.GetSolverJob().items[entry.item].name),
                                QString::fromStdString(entry.reason)));
    }
    remarks += m_job.GetRemarks();
    for (const std::string& remark : solution.remarks)
        remarks.append(QString::fromStdString(remark));
    return remarks;
}

ZORNestReportDetails Run::GetDetails(double seconds) const
{
    ZORNestReportDetails details;
    details.material = m_input.GetMaterialID();
    details.thickness = m_input.GetMaterialThickness();
    details.runTime = seconds;
    details.ending = GetEnding(seconds);
    details.remarks = m_job.GetRemarks();
    for (const ZORNestNestingPart& part : m_job.GetParts())
        details.parts.push_back(part.cut);
    return details;
}

ZORWorkResult Run::Execute()
{
    ZORNestSolver::Solution solution = Solve();
    return Finish(std::move(solution), GetSeconds());
}

/// The process that sent the layout has failed since: nothing of it is taken on trust.
ZORWorkResult Run::Complete(ZORNestInterimLayout layout)
{
    const std::vector<std::string> faults = FindFaults(m_job.GetSolverJob(), layout.solution);
    if (!faults.empty()) {
        throw ZORSysException(Texts::tr("the last layout does not pass the check: %1")
                                  .arg(QString::fromStdString(faults.front())));
    }
    return Finish(std::move(layout.solution), layout.seconds);
}

ZORWorkResult Run::Finish(ZORNestSolver::Solution solution, double seconds) const
{
    m_job.Complete(solution);
    const ZORNestReportDetails details = GetDetails(seconds);
    // Pictures take as long as sheet files do; who stops a job waits for both. Without a free thread one follows the
    // other.
    const auto writeReport = [this, &solution, &details] {
        const ZORSysApiTracePause pause;
        return ZORNestReportWriter(m_job.GetSolverJob(), solution, details).Write();
    };
    std::future<QByteArray> report = std::async(std::launch::async | std::launch::deferred, writeReport);
    ZORNestNestingOutcome outcome;
    for (const ZORNestSolver::NestedSheet& sheet : solution.sheets) {
        m_context.ThrowIfCanceled();
        outcome.sheetFiles.append(m_job.WriteSheet(sheet));
    }
    outcome.report = report.get();
    outcome.remarks = GetRemarks(solution);
    try {
        if (m_task.isKept)
            Keep(outcome);
    } catch (const ZORSysFileException& exception) {
        // Only a copy for developers is missing; hours of work are not lost for that.
        qCWarning(ZorNestingRunLog).noquote() << exception.GetMessage();
    }
    return ZORWorkResult(ZORNestJobBytes::Write(outcome));
}

void WriteFile(const QDir& directory, const QString& name, const QByteArray& content)
{
    QFile file(directory.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || !ZORSysReplacedFile::WriteAll(file, content))
        throw ZORSysFileException(Texts::tr("cannot keep '%1': %2").arg(file.fileName(), file.errorString()));
}

void Run::Keep(const ZORNestNestingOutcome& outcome) const
{
    const QDir directory(m_context.GetWorkDirectory());
    const QList<ZORNestNestingInputItem> items = m_input.GetItems();
    for (qsizetype i = 0; i < items.size(); ++i)
        WriteFile(directory, QStringLiteral("part-%1.msi").arg(i), items[i].GetContents());
    for (qsizetype i = 0; i < outcome.sheetFiles.size(); ++i)
        WriteFile(directory, QStringLiteral("sheet-%1.msi").arg(i), outcome.sheetFiles[i]);
    WriteFile(directory, QStringLiteral("report.html"), outcome.report);
}

} // namespace

ZORWorkResult ZORNestRunNesting(const ZORWorkContext& context, const QByteArray& task)
{
    const ZORSysApiTracePause pause;
    return Run(ZORNestJobBytes::ReadNestingTask(task), context, Run::Reading::UntilOver).Execute();
}

ZORWorkResult ZORNestCompleteNesting(const ZORWorkContext& context, const QByteArray& task,
                                     const QByteArray& interim)
{
    const ZORSysApiTracePause pause;
    return Run(ZORNestJobBytes::ReadNestingTask(task), context, Run::Reading::All)
        .Complete(ZORNestJobBytes::ReadInterimLayout(interim));
}
