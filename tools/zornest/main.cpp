// zornest: nests an instance from the command line.

#include "ZORNestSolverCheck.h"
#include "ZORNestSolverRun.h"
#include "ZorNestInstance.h"

#include <ZORNesting/ZORNestReport_p.h>

#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QTextStream>

#include <csignal>
#include <thread>
#include <unistd.h>

using namespace ZORNestSolver;

namespace {

constexpr int ExitUsage = 2;
constexpr int ExitFile = 3;
constexpr int ExitUnplaced = 1;
constexpr int PictureWidth = 1600;

Control* runningControl = nullptr;

void OnInterrupt(int)
{
    if (runningControl)
        runningControl->stop = true;
}

/// A bar on the terminal that follows a run until destroyed.
class ProgressBar
{
public:
    explicit ProgressBar(const Control& control)
        : m_thread([&control](std::stop_token token) {
            while (!token.stop_requested()) {
                Draw(control.progress);
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
            }
            Draw(1);
            std::fputc('\n', stderr);
        })
    {
    }

private:
    static void Draw(double ratio)
    {
        constexpr int width = 40;
        const int filled = static_cast<int>(ratio * width);
        std::fprintf(stderr, "\r[%s%s] %3d %%", std::string(static_cast<size_t>(filled), '#').c_str(),
                     std::string(static_cast<size_t>(width - filled), ' ').c_str(),
                     static_cast<int>(ratio * 100));
    }

    std::jthread m_thread;
};

void PrintSummary(const Job& job, const Solution& solution, QTextStream& out)
{
    for (size_t s = 0; s < solution.sheets.size(); ++s) {
        const NestedSheet& sheet = solution.sheets[s];
        const SheetKind& kind = job.kinds[sheet.kind];
        double area = 0;
        for (const Placement& placement : sheet.placements) {
            std::string reason;
            area += GetArea(MakeOuterPolygon(job.items[placement.item].contours, reason));
        }
        out << "sheet " << s << ": " << QString::fromStdString(kind.name) << ", " << sheet.placements.size()
            << " parts, length " << sheet.usedLength << ", stack " << sheet.stack << ", density "
            << QString::number(100 * area / (kind.width * sheet.usedLength), 'f', 3) << " %\n";
    }
    out << "cost " << QString::number(solution.cost, 'f', 3) << "\n";
    for (const UnplacedItem& item : solution.unplaced)
        out << "not placed: " << item.count << " of item " << item.item << ", "
            << QString::fromStdString(item.reason) << "\n";
    for (const std::string& remark : solution.remarks)
        out << QString::fromStdString(remark) << "\n";
}

bool Save(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

/// Writes the files that were asked for.
/// \return  the first one that cannot be written; empty if all could
QString SaveResults(const QCommandLineParser& parser, const Job& job, const Solution& solution,
                    double seconds)
{
    if (parser.isSet("out") && !Save(parser.value("out"), ZorNest::WriteLayout(job, solution)))
        return parser.value("out");
    ZORNestReportDetails details;
    details.runTime = seconds;
    details.parts = ZORNestReport::MeasureParts(job);
    const ZORNestReport report(job, solution, details);
    if (parser.isSet("html") && !Save(parser.value("html"), report.Write()))
        return parser.value("html");
    const QDir folder(parser.value("png"));
    for (size_t s = 0; parser.isSet("png") && s < solution.sheets.size(); ++s) {
        const QString path = folder.filePath(QStringLiteral("sheet-%1.png").arg(s));
        if (!folder.mkpath(".") || !report.DrawSheet(s, PictureWidth).save(path))
            return path;
    }
    return {};
}

} // namespace

int main(int argc, char** argv)
{
    // Fonts of reports need an application with a platform, and no display.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName("zornest");
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Nests the items of an instance on its sheets. Interrupt it to finish with "
        "the best layout so far.");
    parser.addHelpOption();
    parser.addPositionalArgument("instance", "JSON document of the job");
    parser.addOption({"time", "End after so many seconds.", "seconds", "60"});
    parser.addOption({"cpu", "End after so many seconds of processor time instead.", "seconds"});
    parser.addOption({"seed", "Seed of the random numbers.", "number", "1"});
    parser.addOption({"threads", "Number of threads.", "number", "1"});
    parser.addOption({"out", "Write the layout there.", "file"});
    parser.addOption({"html", "Write a report there.", "file"});
    parser.addOption({"png", "Write a picture of each sheet there.", "folder"});
    parser.process(application);
    QTextStream out(stdout);
    QTextStream errors(stderr);
    if (parser.positionalArguments().size() != 1) {
        errors << "one instance is needed; see --help\n";
        return ExitUsage;
    }
    QFile file(parser.positionalArguments().front());
    if (!file.open(QIODevice::ReadOnly)) {
        errors << file.fileName() << ": " << file.errorString() << "\n";
        return ExitFile;
    }
    ZorNest::Instance instance = ZorNest::ReadInstance(file.readAll());
    if (!instance.error.isEmpty()) {
        errors << file.fileName() << ": " << instance.error << "\n";
        return ExitFile;
    }
    instance.job.seed = parser.value("seed").toULongLong();
    RunOptions options;
    options.clock = parser.isSet("cpu") ? Budget::Clock::Processor : Budget::Clock::Wall;
    options.maximumTime = (parser.isSet("cpu") ? parser.value("cpu") : parser.value("time")).toDouble();
    options.minimumTime = options.maximumTime;
    options.threads = parser.value("threads").toInt();
    Control control;
    runningControl = &control;
    std::signal(SIGINT, OnInterrupt);
    std::optional<Solution> solution;
    QElapsedTimer timer;
    timer.start();
    {
        std::optional<ProgressBar> bar;
        if (isatty(STDERR_FILENO) != 0)
            bar.emplace(control);
        solution = Solve(instance.job, options, control);
    }
    const double seconds = 1e-3 * static_cast<double>(timer.elapsed());
    PrintSummary(instance.job, *solution, out);
    for (const std::string& fault : FindFaults(instance.job, *solution))
        errors << "fault: " << QString::fromStdString(fault) << "\n";
    const QString unwritten = SaveResults(parser, instance.job, *solution, seconds);
    if (!unwritten.isEmpty()) {
        errors << unwritten << ": cannot be written\n";
        return ExitFile;
    }
    return solution->unplaced.empty() ? 0 : ExitUnplaced;
}
