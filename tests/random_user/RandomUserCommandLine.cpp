#include "RandomUserCommandLine.h"

#include <QCommandLineParser>

namespace {

QCommandLineOption Option(const char* name, const char* description, const char* value,
                          const QString& initial = {})
{
    return {QLatin1String(name), QLatin1String(description), QLatin1String(value), initial};
}

void AddOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        "Uses the host like a person who tries everything. A failure prints the seed and "
        "a minimal list of actions.");
    parser.addHelpOption();
    parser.addOptions({
        Option("seeds", "Seeds, one run each.", "first-last", "1-10"),
        Option("actions", "Number of actions of a run.", "count", "150"),
        Option("parallel", "Number of runs at a time.", "count", "2"),
        Option("replay", "Repeats the actions of a list instead of making some up.", "file"),
        Option("trials",
               "Number of runs to shorten the list of a failure, at most; of 100,000 actions in all.",
               "count", "150"),
        Option("hours", "Time of a run; the number of actions is without limit then.", "time"),
        Option("memory-every", "Prints the resident memory after each so many actions.", "count", "0"),
        Option("plugin-file", "Loads one more plug-in.", "file"),
        Option("folder", "Private folder of a child.", "folder"),
        Option("seed", "Seed of a child.", "number", "1"),
        QCommandLineOption("child",
                           "Runs in this process. Uses the files of the caller unless started by a parent."),
    });
}

} // namespace

RandomUserCommandLine RandomUserCommandLine::Parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    AddOptions(parser);
    parser.process(arguments);
    RandomUserCommandLine result;
    const QString seeds = parser.value("seeds");
    result.firstSeed = seeds.section(u'-', 0, 0).toUInt();
    result.lastSeed = seeds.section(u'-', -1).toUInt();
    result.parallel = std::max(1, parser.value("parallel").toInt());
    result.trials = parser.value("trials").toInt();
    result.replay = parser.value("replay");
    result.plan.folder = parser.value("folder");
    result.plan.seed = parser.value("seed").toUInt();
    result.plan.numActions = parser.value("actions").toInt();
    result.plan.hours = parser.value("hours").toDouble();
    result.plan.memoryEvery = parser.value("memory-every").toInt();
    result.plan.replay = parser.value("replay");
    result.plan.morePlugins = parser.values("plugin-file");
    for (const char* option : {"actions", "hours", "memory-every", "plugin-file"}) {
        const QStringList values = parser.values(QLatin1String(option));
        for (const QString& value : values)
            result.childArguments += {QLatin1String("--") + QLatin1String(option), value};
    }
    for (const QString& plugin : result.plan.morePlugins)
        result.shorteningArguments += {QStringLiteral("--plugin-file"), plugin};
    return result;
}
