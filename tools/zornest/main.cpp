// zornest: nests an instance from the command line.

#include "ZORNestSolverCheck.h"
#include "ZorNestInstance.h"
#include "ZorNestOptions.h"

#include <ZORNesting/report/ZORNestReport_p.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTextStream>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>
#include <unistd.h>

using namespace ZORNestSolver;
using namespace ZorNest;

namespace {

constexpr int PictureWidth = 2000;        // pixels
constexpr double MostMeasuring = 1;       // seconds of processor time for the summary
constexpr qint64 kMaximumMegabytes = 128; // of an instance

std::atomic<Control*> runningControl = nullptr; // lock-free, so that a signal handler may read it

/// The first request finishes the run, the second one ends the program.
void OnInterrupt(int signal)
{
    if (Control* const control = runningControl)
        control->stop = true;
    std::signal(signal, SIG_DFL);
}

/// A bar on the terminal that follows a run until destroyed.
class ProgressBar
{
public:
    explicit ProgressBar(const Control& control)
        : m_thread([this, &control](const std::stop_token& token) {
            std::unique_lock lock(m_mutex);
            while (!token.stop_requested()) {
                Draw(control.progress);
                m_ended.wait_for(lock, token, std::chrono::milliseconds(200), [] { return false; });
            }
            Draw(1);
            std::fputc('\n', stderr);
        })
    {
    }

private:
    /// Allocates nothing, since an exception would end the program.
    static void Draw(double ratio)
    {
        static constexpr char full[] = "########################################";
        constexpr int width = static_cast<int>(sizeof full) - 1;
        const int filled = static_cast<int>(ratio * width);
        std::fprintf(stderr, "\r[%.*s%*s] %3d %%", filled, full, width - filled, "",
                     static_cast<int>(ratio * 100));
    }

    std::mutex m_mutex;
    std::condition_variable_any m_ended; // the stop of the thread wakes it
    std::jthread m_thread;               // last: it uses the rest
};

/// A result that is written when the run is over; opened before, so that nobody waits for nothing.
class Output
{
public:
    explicit Output(const QString& path)
        : m_path(path)
        , m_file(path)
    {
    }
    bool Open()
    {
        try {
            if (IsWanted())
                m_file.Open();
            return true;
        } catch (const ZORSysFileOpenException&) {
            return false;
        }
    }
    bool Write(const QByteArray& content)
    {
        return !IsWanted() || (m_file.Write(content) && m_file.Commit());
    }
    bool IsWanted() const { return !m_path.isEmpty(); }
    QString GetError() const { return m_path + ": " + m_file.GetErrorString(); }

private:
    const QString m_path;
    ZORSysReplacedFile m_file;
};

/// The areas of parts, each measured once, when it is needed first. Once that has taken a while, the rest is not measured.
class PartAreas
{
public:
    explicit PartAreas(const Job& job)
        : m_job(job)
        , m_areas(job.items.size())
        , m_start(GetThreadTime())
    {
    }
    /// Of all parts on a sheet; nothing where one is not measured.
    std::optional<double> GetSum(const NestedSheet& sheet)
    {
        double sum = 0;
        for (const Placement& placement : sheet.placements) {
            std::optional<double>& area = m_areas[placement.item];
            if (!area && !IsLate())
                area = Measure(m_job.items[placement.item]);
            if (!area)
                return {};
            sum += *area;
        }
        return sum;
    }

private:
    bool IsLate() const { return GetThreadTime() - m_start > MostMeasuring; }
    std::optional<double> Measure(const Item& item) const
    {
        std::string reason;
        const double area = GetArea(MakeOuterPolygon(item.contours, reason, [this] { return IsLate(); }));
        return IsLate() ? std::nullopt : std::optional(area);
    }

    const Job& m_job;
    std::vector<std::optional<double>> m_areas;
    const double m_start;
};

QString WriteDensity(std::optional<double> partArea, double sheetArea)
{
    return partArea ? QString::number(100 * *partArea / sheetArea, 'f', 3) + " %" : QString("not measured");
}

void PrintSummary(const Instance& instance, const Solution& solution, QTextStream& out)
{
    PartAreas areas(instance.job);
    for (size_t s = 0; s < solution.sheets.size(); ++s) {
        const NestedSheet& sheet = solution.sheets[s];
        const SheetKind& kind = instance.job.kinds[sheet.kind];
        const double area = kind.outline.empty() ? kind.width * sheet.usedLength : GetArea(kind.outline);
        out << "sheet " << s << ": " << QString::fromStdString(kind.name) << ", " << sheet.placements.size()
            << " parts, length " << QString::number(sheet.usedLength, 'f', 3) << ", stack " << sheet.stack
            << ", density " << WriteDensity(areas.GetSum(sheet), area);
        if (!kind.IsRoll())
            out << ", remnant " << QString::number(sheet.remnantLength, 'f', 3);
        out << "\n";
    }
    out << "cost " << QString::number(solution.cost, 'f', 3) << "\n";
    for (const UnplacedItem& item : solution.unplaced)
        out << "not placed: " << item.count << " of item " << instance.itemIds[item.item] << " \""
            << QString::fromStdString(instance.job.items[item.item].name)
            << "\": " << QString::fromStdString(item.reason) << "\n";
    for (const std::string& remark : solution.remarks)
        out << QString::fromStdString(remark) << "\n";
}

/// A run and what is reported of it.
struct Outcome
{
    Solution solution;
    double seconds = 0;
    bool isStopped = false;
};

/// Directs interrupts to the control of a run until destroyed. After that they end the program.
class Interruptible
{
public:
    explicit Interruptible(Control& control)
    {
        runningControl = &control;
        std::signal(SIGINT, OnInterrupt);
        std::signal(SIGTERM, OnInterrupt);
    }
    ~Interruptible()
    {
        std::signal(SIGINT, SIG_DFL);
        std::signal(SIGTERM, SIG_DFL);
        runningControl = nullptr;
    }
    Q_DISABLE_COPY_MOVE(Interruptible)
};

Outcome SolveVisibly(const Job& job, const RunOptions& options)
{
    QElapsedTimer timer;
    timer.start();
    Control control;
    const Interruptible interruptible(control);
    std::optional<ProgressBar> bar;
    if (isatty(STDERR_FILENO) != 0)
        bar.emplace(control);
    Outcome outcome;
    outcome.solution = *Solve(job, options, control); // only a cancelled run has none
    outcome.seconds = 1e-3 * static_cast<double>(timer.elapsed());
    outcome.isStopped = control.stop;
    return outcome;
}

/// Everything that a run writes besides its summary.
class Results
{
public:
    explicit Results(const Options& options)
        : m_layout(options.layout)
        , m_report(options.report)
        , m_pictures(options.pictures)
    {
    }

    /// \return what cannot be written; "" if everything can
    QString Open()
    {
        for (Output* output : {&m_layout, &m_report})
            if (!output->Open())
                return output->GetError();
        if (!m_pictures.isEmpty() && !QDir().mkpath(m_pictures))
            return m_pictures + ": cannot be made";
        return {};
    }

    /// The same, afterwards.
    QString Write(const Instance& instance, const Outcome& outcome)
    {
        if (!m_layout.Write(WriteLayout(instance, outcome.solution)))
            return m_layout.GetError();
        if (!m_report.IsWanted() && m_pictures.isEmpty())
            return {};
        ZORNestReportDetails details;
        details.runTime = outcome.seconds;
        details.ending = outcome.isStopped ? QString("stopped") : QString();
        details.parts = ZORNestReport::MeasureParts(instance.job);
        const ZORNestReport report(instance.job, outcome.solution, details);
        if (m_report.IsWanted() && !m_report.Write(report.Write()))
            return m_report.GetError();
        for (size_t s = 0; s < outcome.solution.sheets.size() && !m_pictures.isEmpty(); ++s) {
            const QString path = QDir(m_pictures).filePath(QString("sheet-%1.png").arg(s));
            const QString reason = WritePicture(path, report.DrawSheet(s, PictureWidth));
            if (!reason.isEmpty())
                return path + ": " + reason;
        }
        return {};
    }

private:
    /// \return the reason of the failure; empty when all went well
    static QString WritePicture(const QString& path, const QImage& picture)
    {
        QByteArray content;
        QBuffer buffer(&content);
        buffer.open(QIODevice::WriteOnly);
        if (!picture.save(&buffer, "PNG"))
            return QStringLiteral("cannot be drawn");
        return ZORSysReplacedFile::Replace(path, content);
    }

    Output m_layout;
    Output m_report;
    QString m_pictures;
};

int Run(const Options& options, QTextStream& out, QTextStream& errors)
{
    ZORSysFile file(options.instance);
    if (!file.open(QIODevice::ReadOnly)) {
        errors << file.fileName() << ": " << file.errorString() << "\n";
        return BadInstance;
    }
    if (file.size() > kMaximumMegabytes << 20) {
        errors << file.fileName() << ": file is larger than " << kMaximumMegabytes << " MB\n";
        return BadInstance;
    }
    const QByteArray content = file.readAll();
    if (const QString error = file.GetReadError(); !error.isEmpty()) {
        errors << file.fileName() << ": " << error << "\n";
        return BadInstance;
    }
    Instance instance = ReadInstance(content);
    if (!instance.error.isEmpty()) {
        errors << file.fileName() << ": " << instance.error << "\n";
        return BadInstance;
    }
    Results results(options);
    if (const QString error = results.Open(); !error.isEmpty()) {
        errors << error << "\n";
        return CannotWrite;
    }
    instance.job.seed = options.seed;
    const Outcome outcome = SolveVisibly(instance.job, options.run);
    PrintSummary(instance, outcome.solution, out);
    out.flush();
    if (const QString error = results.Write(instance, outcome); !error.isEmpty()) {
        errors << error << "\n";
        return CannotWrite;
    }
    const std::vector<std::string> faults = FindFaults(instance.job, outcome.solution);
    for (const std::string& fault : faults)
        errors << "fault: " << QString::fromStdString(fault) << "\n";
    if (!faults.empty())
        return Faulty;
    return outcome.solution.unplaced.empty() ? AllPlaced : SomeNotPlaced;
}

int RunArguments(const QStringList& arguments)
{
    QTextStream out(stdout);
    QTextStream errors(stderr);
    const Options options = ReadOptions(arguments);
    if (!options.help.isEmpty()) {
        out << options.help;
        return AllPlaced;
    }
    if (!options.error.isEmpty()) {
        errors << options.error << "; see zornest --help\n";
        return BadUsage;
    }
    return Run(options, out, errors);
}

/// Pictures need fonts, but no window system.
std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv)
{
    const bool draws = std::any_of(argv, argv + argc, [](const char* argument) {
        const std::string_view text(argument);
        return text.starts_with("--png") || text.starts_with("--html");
    });
    if (!draws)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv)
{
    // A result that grows beyond the limit of the user is an error in its place.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        const std::unique_ptr<QCoreApplication> application = MakeApplication(argc, argv);
        QCoreApplication::setApplicationName("zornest");
        return RunArguments(QCoreApplication::arguments());
    } catch (const std::bad_alloc&) {
        std::fputs("out of memory\n", stderr);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
    }
    return Failed;
}
