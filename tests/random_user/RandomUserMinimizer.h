// Shortens a list of actions that fails.

#pragma once

#include "RandomUserAction.h"

#include <functional>

/// The part of \a actions, in their order, from which no single action can be taken away without losing the
/// failure; less short where \a maximumTrials is reached before (delta debugging: halves, quarters ... single
/// actions are taken away as long as the rest still fails).
///
/// \param fails  whether a list fails in the same way; true for \a actions itself
QList<RandomUserAction>
MinimizeRandomUserActions(QList<RandomUserAction> actions,
                          const std::function<bool(const QList<RandomUserAction>&)>& fails,
                          int maximumTrials);
