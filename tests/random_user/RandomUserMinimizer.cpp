#include "RandomUserMinimizer.h"

#include <algorithm>

RandomUserMinimizer::RandomUserMinimizer(const Test& fails, int maximumTrials, qsizetype maximumActions)
    : m_fails(fails)
    , m_trialsLeft(maximumTrials)
    , m_actionsLeft(maximumActions)
{
}

std::optional<QList<RandomUserAction>> RandomUserMinimizer::Minimize(const QList<RandomUserAction>& actions)
{
    const std::optional<QList<RandomUserAction>> end = FindFailingEnd(actions);
    if (!end)
        return std::nullopt;
    return TakeAway(*end);
}

bool RandomUserMinimizer::MayTry(qsizetype numActions) const
{
    return m_trialsLeft > 0 && m_actionsLeft >= numActions;
}

bool RandomUserMinimizer::Try(const QList<RandomUserAction>& actions)
{
    --m_trialsLeft;
    m_actionsLeft -= actions.size();
    return m_fails(actions);
}

std::optional<QList<RandomUserAction>>
RandomUserMinimizer::FindFailingEnd(const QList<RandomUserAction>& actions)
{
    constexpr qsizetype kShortest = 50;
    constexpr qsizetype kGrowth = 4; // the failures of all ends before cost a third of the next one
    for (qsizetype length = kShortest;; length *= kGrowth) {
        const QList<RandomUserAction> end = actions.last(std::min(length, actions.size()));
        if (!MayTry(end.size()))
            return std::nullopt;
        if (Try(end))
            return end;
        if (end.size() == actions.size())
            return std::nullopt;
    }
}

QList<RandomUserAction> RandomUserMinimizer::TakeAway(QList<RandomUserAction> actions)
{
    qsizetype length = std::max<qsizetype>(1, actions.size() / 2);
    while (!actions.isEmpty()) {
        bool isShortened = false;
        // From the beginning: the cause is rather near to the failure, which is the end.
        for (qsizetype begin = 0; begin < actions.size();) {
            QList<RandomUserAction> rest = actions;
            rest.remove(begin, std::min(length, actions.size() - begin));
            if (!MayTry(rest.size()))
                return actions;
            if (Try(rest)) {
                actions = rest;
                isShortened = true;
            } else {
                begin += length;
            }
        }
        if (length == 1 && !isShortened)
            break;
        length = std::max<qsizetype>(1, std::min(length / 2, actions.size()));
    }
    return actions;
}
