#include "RandomUserRuns.h"

#include "RandomUserCommandLine.h"
#include "RandomUserMinimizer.h"
#include "RandomUserTrial.h"

#include <QMap>

#include <atomic>
#include <cstdio>
#include <mutex>
#include <thread>
#include <vector>

namespace {

constexpr int kLinesOfLog = 60;

void Print(const QString& text)
{
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

void PrintActions(const QList<RandomUserAction>& actions)
{
    for (const RandomUserAction& action : actions)
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
    if (maximumTrials <= 0 || !fails(outcome.actions)) {
        Print(QStringLiteral("%1: all %2 actions (the failure depends on time as well, or was not repeated):")
                  .arg(run, QString::number(outcome.actions.size())));
        PrintActions(outcome.actions);
        return;
    }
    const QList<RandomUserAction> actions = MinimizeRandomUserActions(outcome.actions, fails, maximumTrials);
    Print(QStringLiteral("%1: minimal list of %2 actions; repeat with --replay FILE:")
              .arg(run, QString::number(actions.size())));
    PrintActions(actions);
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
    if (!commandLine.replay.isEmpty()) {
        const RandomUserOutcome outcome = trial.Replay(ReadRandomUserActions(commandLine.replay));
        if (outcome.failure.isEmpty())
            return 0;
        Explain(commandLine.replay, outcome, trial, commandLine.trials);
        return 1;
    }
    const QMap<unsigned, RandomUserOutcome> failures = RunSeeds(commandLine, trial);
    // The same fault is explained once.
    QStringList explained;
    for (auto failure = failures.cbegin(); failure != failures.cend(); ++failure) {
        if (explained.contains(failure->failure))
            continue;
        explained.append(failure->failure);
        Explain(QStringLiteral("seed %1").arg(failure.key()), *failure, trial, commandLine.trials);
    }
    return failures.isEmpty() ? 0 : 1;
}
