#include "ZorNestOptions.h"

#include <QCommandLineParser>

#include <cmath>
#include <limits>

namespace ZorNest {

namespace {

constexpr int kMostThreads = 256;

void AddOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        "Nests the items of an instance on its sheets. Interrupt it to finish with the best layout so far.\n"
        "Of more than 5000 copies in all, it nests 5000: those of high priority, then in the order of the "
        "items.\n"
        "\n"
        "Exit codes: 0 all items are placed, 1 some are not (see \"not placed\"), 2 wrong usage,\n"
        "3 the instance cannot be read, 4 a result cannot be written, 5 the layout has faults,\n"
        "6 the run failed, for instance for lack of memory.");
    parser.addHelpOption();
    parser.addPositionalArgument("instance", "JSON document of the job.");
    parser.addOption(
        {"time", "End after so many seconds; 0: when nothing is gained any more.", "seconds", "60"});
    parser.addOption({"cpu", "End after so many seconds of processor time instead.", "seconds"});
    parser.addOption(
        {"steps", "End after so many moves of items instead. With one thread, the layout is always the same.",
         "number"});
    parser.addOption({"seed", "Seed of the random numbers.", "number", "1"});
    parser.addOption({"threads", "Number of threads.", "number", "1"});
    parser.addOption({"out", "Write the layout as JSON.", "file"});
    parser.addOption({"png", "Write a picture of each sheet.", "folder"});
    parser.addOption({"html", "Write a report.", "file"});
}

QString Quoted(const QString& text)
{
    return "'" + text + "'";
}

/// The clock and its end: of --time, --cpu and --steps the one that is given.
QString ReadLimit(const QCommandLineParser& parser, Options& options)
{
    struct Choice
    {
        QString name;
        ZORNestInstanceRun::Clock clock;
    };
    const Choice choices[] = {{"time", ZORNestInstanceRun::Clock::Wall},
                              {"cpu", ZORNestInstanceRun::Clock::Processor},
                              {"steps", ZORNestInstanceRun::Clock::Steps}};
    const Choice* chosen = nullptr;
    for (const Choice& choice : choices) {
        if (!parser.isSet(choice.name))
            continue;
        if (chosen)
            return QString("--%1 and --%2 exclude each other").arg(chosen->name, choice.name);
        chosen = &choice;
    }
    if (!chosen)
        chosen = &choices[0];
    bool isNumber = false;
    const QString text = parser.value(chosen->name);
    options.clock = chosen->clock;
    options.limit = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(options.limit) || options.limit < 0)
        return QString("--%1: %2 is not a number of at least 0").arg(chosen->name, Quoted(text));
    return {};
}

QString ReadNumbers(const QCommandLineParser& parser, Options& options)
{
    bool isNumber = false;
    options.seed = parser.value("seed").toULongLong(&isNumber);
    if (!isNumber)
        return "--seed: " + Quoted(parser.value("seed")) + " is not an integer of at least 0";
    options.threads = parser.value("threads").toInt(&isNumber);
    if (!isNumber || options.threads < 1 || options.threads > kMostThreads)
        return QString("--threads: %1 is not an integer from 1 to %2")
            .arg(Quoted(parser.value("threads")), QString::number(kMostThreads));
    return ReadLimit(parser, options);
}

} // namespace

Options ReadOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    AddOptions(parser);
    Options options;
    if (!parser.parse(arguments)) {
        options.error = parser.errorText();
        return options;
    }
    if (parser.isSet("help")) {
        options.help = parser.helpText();
        return options;
    }
    options.error = ReadNumbers(parser, options);
    if (options.error.isEmpty() && parser.positionalArguments().size() != 1)
        options.error = "one instance is needed";
    if (!options.error.isEmpty())
        return options;
    for (const QString& name : {QString("out"), QString("png"), QString("html")})
        if (parser.isSet(name) && parser.value(name).isEmpty())
            options.error = QString("--%1: a name is needed").arg(name);
    options.instance = parser.positionalArguments().front();
    options.layout = parser.value("out");
    options.pictures = parser.value("png");
    options.report = parser.value("html");
    return options;
}

} // namespace ZorNest
