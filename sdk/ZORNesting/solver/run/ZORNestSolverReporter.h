// Proves the plans of a run beside the search, and passes the better ones on.

#pragma once

#include "solver/base/ZORNestSolverInterruption.h"
#include "solver/plan/ZORNestSolverJobPlan.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace ZORNestSolver {

/// Takes the plans of a run as they are found. A thread proves the best of them when it comes to it, so that the search
/// pays for a copy only, and the last one is proved however long nothing better follows.
///
/// At most ten plans a second are proved, and fewer where the proofs would take more than a twentieth of a processor.
class PlanReporter
{
public:
    /// Makes the solution of a plan; nothing where it does not pass the check, or was interrupted. Called in the thread
    /// of the reporter.
    using Prover = std::function<std::optional<Solution>(const JobPlan& plan, const Interruption& isOver)>;

    /// Receives each solution, better than the one before, in the thread of the reporter.
    using Listener = std::function<void(const Solution& solution)>;

    /// Without a listener, or where no thread can be started, plans are not proved.
    PlanReporter(Prover prove, Listener listener);
    /// Forgets what has not been proved, and waits for a call of the listener that is under way.
    ~PlanReporter();
    PlanReporter(const PlanReporter&) = delete;
    PlanReporter& operator=(const PlanReporter&) = delete;

    /// Whether somebody listens; otherwise nothing needs to be offered.
    bool IsListening() const { return m_thread.joinable(); }
    /// Thread-safe. A plan that is not better than an earlier one changes nothing.
    void Offer(JobPlan plan);

private:
    void Follow(const std::stop_token& token);
    void Report(const JobPlan& plan, const std::stop_token& token) const;
    void Rest(double seconds, const std::stop_token& token);

    const Prover m_prove;
    const Listener m_listener;
    std::mutex m_mutex; // of the best plan
    std::condition_variable_any m_offered;
    std::optional<JobPlan> m_best;
    bool m_isNew = false;  // the best plan waits for its proof
    std::jthread m_thread; // last: it uses the rest
};

} // namespace ZORNestSolver
