#include "ZORNestNestingInput.h"
#include "ZORNestNestingJob_p.h"
#include "ZORNestNestingRun_p.h"
#include "solver/ZORNestSolverRun.h"

#include <ZORSystem/ZORSysApiTracePause.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORWorker/ZORWorkContext.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

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

constexpr auto Pulse = 20ms;
constexpr double MostProgress = 0.999; // as long as the job runs

QString Tr(const char* text)
{
    return QCoreApplication::translate("ZORNestNestingRun", text);
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
            m_context.SetProgress(std::min(progress, MostProgress));
            m_changed.wait_for(lock, token, Pulse, [] { return false; });
        }
    }

    double GetSeconds() const { return 1e-9 * double(m_timer.nsecsElapsed()); }

    const ZORWorkContext& m_context;
    ZORNestSolver::Control& m_control;
    const std::optional<double> m_duration; // seconds, 0 without end; none where time does not count
    const QElapsedTimer m_timer = [] {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }();
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

/// One job from its input to its outcome.
class Run
{
public:
    Run(const ZORNestNestingInput& input, const ZORWorkContext& context)
        : m_input(input)
        , m_context(context)
    {
        m_timer.start();
    }

    ZORNestNestingOutcome Execute();

private:
    ZORNestSolver::Solution Solve(const ZORNestSolver::Job& job) const;
    QString GetEnding(double seconds) const;
    ZORNestReportDetails GetDetails(const ZORNestNestingJob& job, double seconds) const;
    static QStringList GetRemarks(const ZORNestNestingJob& job, const ZORNestSolver::Solution& solution);

    const ZORNestNestingInput& m_input;
    const ZORWorkContext& m_context;
    QElapsedTimer m_timer;
};

ZORNestSolver::Solution Run::Solve(const ZORNestSolver::Job& job) const
{
    const ZORNestSolver::RunOptions options = GetOptions(m_input);
    ZORNestSolver::Control control;
    control.stop = m_context.IsStopped(); // before the start already
    const bool isTimed = options.clock == ZORNestSolver::Budget::Clock::Wall;
    Link link(m_context, control, isTimed ? std::optional(options.maximumTime) : std::nullopt);
    std::optional<ZORNestSolver::Solution> solution = ZORNestSolver::Solve(job, options, control);
    link.Finish();
    if (!solution)
        throw ZORWorkCanceled();
    return *std::move(solution);
}

QString Run::GetEnding(double seconds) const
{
    if (m_context.IsStopped())
        return Tr("stopped");
    if (m_input.GetMaxSteps() > 0)
        return Tr("after %1 steps").arg(m_input.GetMaxSteps());
    if (m_input.GetMaxRunTime() > 0 && seconds >= m_input.GetMaxRunTime())
        return Tr("at the maximum run time");
    return Tr("no further gain");
}

QStringList Run::GetRemarks(const ZORNestNestingJob& job, const ZORNestSolver::Solution& solution)
{
    QStringList remarks;
    for (const ZORNestSolver::UnplacedItem& entry : solution.unplaced) {
        remarks.append(Tr("not placed: %1 of part '%2': %3")
                           .arg(entry.count)
                           .arg(QString::fromStdString(job.GetSolverJob().items[entry.item].name),
                                QString::fromStdString(entry.reason)));
    }
    remarks += job.GetRemarks();
    for (const std::string& remark : solution.remarks)
        remarks.append(QString::fromStdString(remark));
    return remarks;
}

ZORNestReportDetails Run::GetDetails(const ZORNestNestingJob& job, double seconds) const
{
    ZORNestReportDetails details;
    details.material = m_input.GetMaterialID();
    details.thickness = m_input.GetMaterialThickness();
    details.runTime = seconds;
    details.ending = GetEnding(seconds);
    details.remarks = job.GetRemarks();
    for (const ZORNestNestingPart& part : job.GetParts())
        details.parts.push_back(part.cut);
    return details;
}

ZORNestNestingOutcome Run::Execute()
{
    const ZORNestNestingJob job(m_input, [this] { return m_context.IsCanceled(); });
    m_context.ThrowIfCanceled();
    ZORNestSolver::Solution solution = Solve(job.GetSolverJob());
    const double seconds = 1e-3 * double(m_timer.elapsed());
    job.Complete(solution);

    const ZORNestReportDetails details = GetDetails(job, seconds);
    // Pictures take as long as sheet files do; who stops a job waits for both. Without a free thread one follows the
    // other.
    const auto writeReport = [&job, &solution, &details] {
        const ZORSysApiTracePause pause;
        return ZORNestReport(job.GetSolverJob(), solution, details).Write();
    };
    std::future<QByteArray> report = std::async(std::launch::async | std::launch::deferred, writeReport);
    ZORNestNestingOutcome outcome;
    for (const ZORNestSolver::NestedSheet& sheet : solution.sheets) {
        m_context.ThrowIfCanceled();
        outcome.sheetFiles.append(job.WriteSheet(sheet));
    }
    outcome.report = report.get();
    outcome.remarks = GetRemarks(job, solution);
    return outcome;
}

void Keep(const QDir& directory, const QString& name, const QByteArray& content)
{
    QFile file(directory.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        throw ZORSysFileException(Tr("cannot keep '%1': %2").arg(file.fileName(), file.errorString()));
}

void Keep(const QDir& directory, const ZORNestNestingInput& input, const ZORNestNestingOutcome& outcome)
{
    const QList<ZORNestNestingInputItem> items = input.GetItems();
    for (qsizetype i = 0; i < items.size(); ++i)
        Keep(directory, QStringLiteral("part-%1.msi").arg(i), items[i].GetContents());
    for (qsizetype i = 0; i < outcome.sheetFiles.size(); ++i)
        Keep(directory, QStringLiteral("sheet-%1.msi").arg(i), outcome.sheetFiles[i]);
    Keep(directory, QStringLiteral("report.html"), outcome.report);
}

} // namespace

ZORNestNestingOutcome ZORNestRunNesting(const ZORNestNestingInput& input, const ZORWorkContext& context,
                                        bool isKept)
{
    const ZORSysApiTracePause pause;
    const ZORNestNestingOutcome outcome = Run(input, context).Execute();
    if (isKept)
        Keep(QDir(context.GetWorkDirectory()), input, outcome);
    return outcome;
}
