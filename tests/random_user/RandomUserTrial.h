// One run of the random user in a separate process.

#pragma once

#include "RandomUserAction.h"

#include <QStringList>

/// How a run ended.
struct RandomUserOutcome
{
    QString failure; // the same for the same fault; empty: it went well
    QString log;     // what the process has written
    QList<RandomUserAction> actions;
};

/// Runs this program again as a child, in a private temporary folder that is its home as well, so that
/// nothing outside is touched. Usable from any thread.
class RandomUserTrial
{
public:
    /// \param arguments  options of the child besides its folder, seed and replayed actions
    explicit RandomUserTrial(const QStringList& arguments)
        : m_arguments(arguments)
    {
    }

    RandomUserOutcome RunSeed(unsigned seed) const;
    RandomUserOutcome Replay(const QList<RandomUserAction>& actions) const;

private:
    RandomUserOutcome Run(const QString& folder, const QStringList& arguments) const;

    const QStringList m_arguments;
};
