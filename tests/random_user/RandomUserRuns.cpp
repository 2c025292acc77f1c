#include "RandomUserRuns.h"

#include "RandomUserCommandLine.h"
#include "RandomUserMinimizer.h"
#include "RandomUserTrial.h"

#include <QDir>
#include <QMap>
#include <QTemporaryFile>

#include <atomic>
#include <cstdio>
#include <mutex>
#include <thread>
#include <vector>

namespace {

constexpr int kLinesOfLog = 60;
constexpr qsizetype kMostPrinted = 200; // actions; longer lists go into a file
/// In all trials to shorten a list; half an hour or less.
constexpr qsizetype kMostRepeated = 100'000;

void Print(const QString& text)
{
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

/// Writes a list that is too long to be read into a file that stays.
void SaveActions(const QList<RandomUserAction>& actions)
{
    QTemporaryFile file(QDir::temp().filePath(QStringLiteral("random_user_XXXXXX.txt")));
    file.setAutoRemove(false);
    if (file.open() && WriteRandomUserActions(file.fileName(), actions))
        Print(QStringLiteral("  all are in '%1'; the last ones:").arg(file.fileName()));
}

void PrintActions(const QList<RandomUserAction>& actions)
{
    if (actions.size() > kMostPrinted)
        SaveActions(actions);
    for (const RandomUserAction& action : actions.last(std::min(kMostPrinted, actions.size())))
        Print("  " + action.ToLine());
}

/// Shortens the list of a failure and prints what a developer needs to repeat it.
void Explain(const QString& run, const RandomUserOutcome& outcome, const RandomUserTrial& trial,
             int maximumTrials)
{
    Print(QStringLiteral("\n%1 FAILED: %2\n").arg(run, outcome.failure));
    Print(outcome.log.split(u'\n')
              .mid(std::max<qsizetype>(0, outcome.log.count(u'\n') - kLinesOfLog))
              .join(u'\n'));
    const auto fails = [&](const QList<RandomUserAction>& actions) {
        return trial.Replay(actions).failure == outcome.failure;
    };
    RandomUserMinimizer minimizer(fails, maximumTrials, kMostRepeated);
    const std::optional<QList<RandomUserAction>> actions = minimizer.Minimize(outcome.actions);
    if (actions) {
        Print(QStringLiteral("%1: minimal list of %2 actions; repeat with --replay FILE:")
                  .arg(run, QString::number(actions->size())));
    } else {
        Print(QStringLiteral("%1: all %2 actions (the failure depends on time as well, or was not repeated):")
                  .arg(run, QString::number(outcome.actions.size())));
    }
    PrintActions(actions.value_or(outcome.actions));
}

/// The failures by seed.
QMap<unsigned, RandomUserOutcome> RunSeeds(const RandomUserCommandLine& commandLine,
                                           const RandomUserTrial& trial)
{
    QMap<unsigned, RandomUserOutcome> failures;
    std::mutex mutex;
    std::atomic_uint next = commandLine.firstSeed;
    const auto work = [&] {
        for (unsigned seed = next++; seed <= commandLine.lastSeed; seed = next++) {
            const RandomUserOutcome outcome = trial.RunSeed(seed);
            const std::lock_guard lock(mutex);
            Print(QStringLiteral("seed %1: %2 actions, %3")
                      .arg(QString::number(seed), QString::number(outcome.actions.size()),
                           outcome.failure.isEmpty() ? QStringLiteral("passed") : outcome.failure));
            if (!outcome.failure.isEmpty())
                failures.insert(seed, outcome);
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(size_t(commandLine.parallel));
    for (int i = 0; i < commandLine.parallel; ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
    return failures;
}

} // namespace

int RunRandomUsers(const RandomUserCommandLine& commandLine)
{
    const RandomUserTrial trial(commandLine.childArguments);
    const RandomUserTrial shortening(commandLine.shorteningArguments);
    if (!commandLine.replay.isEmpty()) {
        const RandomUserOutcome outcome = trial.Replay(ReadRandomUserActions(commandLine.replay));
        if (outcome.failure.isEmpty())
            return 0;
        Explain(commandLine.replay, outcome, shortening, commandLine.trials);
        return 1;
    }
    const QMap<unsigned, RandomUserOutcome> failures = RunSeeds(commandLine, trial);
    // The same fault is explained once.
    QStringList explained;
    for (auto failure = failures.cbegin(); failure != failures.cend(); ++failure) {
        if (explained.contains(failure->failure))
            continue;
        explained.append(failure->failure);
        Explain(QStringLiteral("seed %1").arg(failure.key()), *failure, shortening, commandLine.trials);
    }
    return failures.isEmpty() ? 0 : 1;
}
