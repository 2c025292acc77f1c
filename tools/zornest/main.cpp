// zornest: nests an instance from the command line.

#include "ZorNestOptions.h"
#include "ZorToolMain.h"

#include <ZORNesting/ZORNestInstance.h>
#include <ZORNesting/ZORNestInstanceRun.h>
#include <ZORNesting/ZORNestLayout.h>
#include <ZORNesting/ZORNestReport.h>
#include <ZORSystem/ZORSysException.h>
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
#include <optional>
#include <string_view>
#include <thread>
#include <unistd.h>

namespace {

constexpr int kPictureWidth = 2000;       // pixels
constexpr qint64 kMaximumMegabytes = 128; // of an instance

std::atomic<ZORNestInstanceRun*> runningRun = nullptr; // lock-free, so that a signal handler may read it

/// The first request finishes the run, the second one ends the program.
void OnInterrupt(int signal)
{
    if (ZORNestInstanceRun* const run = runningRun)
        run->RequestStop();
    std::signal(signal, SIG_DFL);
}

/// A bar on the terminal that follows a run until destroyed.
class ProgressBar
{
public:
    explicit ProgressBar(const ZORNestInstanceRun& run)
        : m_thread([this, &run](const std::stop_token& token) {
            std::unique_lock lock(m_mutex);
            while (!token.stop_requested()) {
                Draw(run.GetProgress());
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
        static constexpr char kFull[] = "########################################";
        constexpr int kWidth = static_cast<int>(sizeof kFull) - 1;
        const int filled = static_cast<int>(ratio * kWidth);
        std::fprintf(stderr, "\r[%.*s%*s] %3d %%", filled, kFull, kWidth - filled, "",
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

QString WriteDensity(std::optional<double> density)
{
    return density ? QString::number(*density, 'f', 3) + " %" : QString("not measured");
}

void PrintSummary(const ZORNestLayout& layout, QTextStream& out)
{
    const ZORNestInstance instance = layout.GetInstance();
    const QList<std::optional<double>> densities = layout.MeasureDensities();
    for (qsizetype s = 0; s < layout.GetNumSheets(); ++s) {
        out << "sheet " << s << ": " << instance.GetPackagingName(layout.GetPackaging(s)) << ", "
            << layout.GetNumParts(s) << " parts, length " << QString::number(layout.GetUsedLength(s), 'f', 3)
            << ", stack " << layout.GetStack(s) << ", density " << WriteDensity(densities[s]);
        if (const std::optional<double> remnant = layout.GetRemnantLength(s))
            out << ", remnant " << QString::number(*remnant, 'f', 3);
        out << "\n";
    }
    out << "cost " << QString::number(layout.GetCost(), 'f', 3) << "\n";
    for (qsizetype i = 0; i < layout.GetNumUnplaced(); ++i) {
        const qsizetype item = layout.GetUnplacedItem(i);
        out << "not placed: " << layout.GetUnplacedCount(i) << " of item " << instance.GetItemId(item)
            << " \"" << instance.GetItemName(item) << "\": " << layout.GetUnplacedReason(i) << "\n";
    }
    for (const QString& remark : layout.GetRemarks())
        out << remark << "\n";
}

/// A run and what is reported of it.
struct Outcome
{
    ZORNestLayout layout;
    double seconds = 0;
    bool isStopped = false;
};

/// Directs interrupts to a run until destroyed. After that they end the program.
class Interruptible
{
public:
    explicit Interruptible(ZORNestInstanceRun& run)
    {
        runningRun = &run;
        std::signal(SIGINT, OnInterrupt);
        std::signal(SIGTERM, OnInterrupt);
    }
    ~Interruptible()
    {
        std::signal(SIGINT, SIG_DFL);
        std::signal(SIGTERM, SIG_DFL);
        runningRun = nullptr;
    }
    Q_DISABLE_COPY_MOVE(Interruptible)
};

Outcome NestVisibly(const ZORNestInstance& instance, const ZorNest::Options& options)
{
    QElapsedTimer timer;
    timer.start();
    ZORNestInstanceRun run(instance);
    run.SetLimit(options.clock, options.limit);
    run.SetNumThreads(options.threads);
    const Interruptible interruptible(run);
    std::optional<ProgressBar> bar;
    if (isatty(STDERR_FILENO) != 0)
        bar.emplace(run);
    Outcome outcome;
    outcome.layout = run.Execute();
    outcome.seconds = 1e-3 * static_cast<double>(timer.elapsed());
    outcome.isStopped = run.IsStopRequested();
    return outcome;
}

/// Everything that a run writes besides its summary.
class Results
{
public:
    explicit Results(const ZorNest::Options& options)
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
    QString Write(const Outcome& outcome)
    {
        if (!m_layout.Write(outcome.layout.WriteJson()))
            return m_layout.GetError();
        if (!m_report.IsWanted() && m_pictures.isEmpty())
            return {};
        ZORNestReport report(outcome.layout);
        report.SetRunTime(outcome.seconds);
        report.SetEnding(outcome.isStopped ? QString("stopped") : QString());
        if (m_report.IsWanted() && !m_report.Write(report.Write()))
            return m_report.GetError();
        for (qsizetype s = 0; s < outcome.layout.GetNumSheets() && !m_pictures.isEmpty(); ++s) {
            const QString path = QDir(m_pictures).filePath(QString("sheet-%1.png").arg(s));
            const QString reason = WritePicture(path, report.DrawSheet(s, kPictureWidth));
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

/// Reads the instance of a file; without one, \a errors get the reason.
std::optional<ZORNestInstance> ReadInstance(const QString& path, QTextStream& errors)
{
    ZORSysFile file(path);
    const auto fail = [&file, &errors](const QString& reason) {
        errors << file.fileName() << ": " << reason << "\n";
        return std::nullopt;
    };
    if (!file.open(QIODevice::ReadOnly))
        return fail(file.errorString());
    if (file.size() > kMaximumMegabytes << 20)
        return fail(QString("file is larger than %1 MB").arg(kMaximumMegabytes));
    const QByteArray content = file.readAll();
    if (const QString error = file.GetReadError(); !error.isEmpty())
        return fail(error);
    try {
        return ZORNestInstance::Read(content, ZORNestInstance::Purpose::Nesting);
    } catch (const ZORSysException& exception) {
        return fail(exception.GetMessage());
    }
}

int Run(const ZorNest::Options& options, QTextStream& out, QTextStream& errors)
{
    std::optional<ZORNestInstance> instance = ReadInstance(options.instance, errors);
    if (!instance)
        return ZorNest::BadInstance;
    Results results(options);
    if (const QString error = results.Open(); !error.isEmpty()) {
        errors << error << "\n";
        return ZorNest::CannotWrite;
    }
    instance->SetSeed(options.seed);
    const Outcome outcome = NestVisibly(*instance, options);
    PrintSummary(outcome.layout, out);
    out.flush();
    if (const QString error = results.Write(outcome); !error.isEmpty()) {
        errors << error << "\n";
        return ZorNest::CannotWrite;
    }
    const QStringList faults = outcome.layout.FindFaults();
    for (const QString& fault : faults)
        errors << "fault: " << fault << "\n";
    if (!faults.isEmpty())
        return ZorNest::Faulty;
    return outcome.layout.GetNumUnplaced() == 0 ? ZorNest::AllPlaced : ZorNest::SomeNotPlaced;
}

int RunArguments(const QStringList& arguments)
{
    QTextStream out(stdout);
    QTextStream errors(stderr);
    const ZorNest::Options options = ZorNest::ReadOptions(arguments);
    if (!options.help.isEmpty()) {
        out << options.help;
        return ZorNest::AllPlaced;
    }
    if (!options.error.isEmpty()) {
        errors << options.error << "; see zornest --help\n";
        return ZorNest::BadUsage;
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
    const auto run = [&] {
        const std::unique_ptr<QCoreApplication> application = MakeApplication(argc, argv);
        QCoreApplication::setApplicationName("zornest");
        return RunArguments(QCoreApplication::arguments());
    };
    return ZorRunTool(run, ZorNest::Failed);
}
