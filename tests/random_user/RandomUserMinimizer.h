// Shortens a list of actions that fails.

#pragma once

#include "RandomUserAction.h"

#include <functional>
#include <optional>

/// Searches for a short list of actions that fails in the same way as a long one, by trying parts of it.
///
/// The end of the list is tried first, the last 50 actions, the last 200, and so on: what was done long before
/// a failure rarely matters, and a short trial costs little. From the first end that fails halves, quarters ...
/// and at last single actions are taken away as long as the rest still fails (delta debugging).
class RandomUserMinimizer
{
public:
    using Test = std::function<bool(const QList<RandomUserAction>&)>;

    /// \param fails           whether a list fails in the same way
    /// \param maximumTrials   number of calls of \a fails, at most
    /// \param maximumActions  number of actions in all lists given to \a fails together, at most
    RandomUserMinimizer(const Test& fails, int maximumTrials, qsizetype maximumActions);

    /// The part of \a actions, in their order, from which no single action can be taken away without losing
    /// the failure; less short where the trials or actions are used up before. To be called once.
    /// \return none where no end of the list that could be tried fails, nor the list itself
    std::optional<QList<RandomUserAction>> Minimize(const QList<RandomUserAction>& actions);

private:
    bool MayTry(qsizetype numActions) const;
    bool Try(const QList<RandomUserAction>& actions);
    std::optional<QList<RandomUserAction>> FindFailingEnd(const QList<RandomUserAction>& actions);
    QList<RandomUserAction> TakeAway(QList<RandomUserAction> actions);

    const Test m_fails;
    int m_trialsLeft;
    qsizetype m_actionsLeft;
};
