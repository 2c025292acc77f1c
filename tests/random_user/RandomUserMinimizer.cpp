#include "RandomUserMinimizer.h"

#include <algorithm>

QList<RandomUserAction>
MinimizeRandomUserActions(QList<RandomUserAction> actions,
                          const std::function<bool(const QList<RandomUserAction>&)>& fails, int maximumTrials)
{
    int numTrials = 0;
    qsizetype length = std::max<qsizetype>(1, actions.size() / 2);
    while (!actions.isEmpty()) {
        bool isShortened = false;
        // From the end: what follows the failure goes first.
        for (qsizetype end = actions.size(); end > 0;) {
            if (numTrials++ == maximumTrials)
                return actions;
            const qsizetype begin = std::max<qsizetype>(0, end - length);
            QList<RandomUserAction> rest = actions;
            rest.remove(begin, end - begin);
            if (fails(rest)) {
                actions = rest;
                isShortened = true;
            }
            end = begin;
        }
        if (length == 1 && !isShortened)
            break;
        length = std::max<qsizetype>(1, std::min(length / 2, actions.size()));
    }
    return actions;
}
