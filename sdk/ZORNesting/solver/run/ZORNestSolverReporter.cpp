#include "ZORNestSolverReporter.h"

#include "solver/base/ZORNestSolverBudget.h"

#include <chrono>
#include <system_error>

namespace ZORNestSolver {

namespace {

constexpr double kLeastRest = 0.1;    // seconds from one proof to the next
constexpr double kRestsOfAProof = 20; // times as long as the proof has taken

} // namespace

PlanReporter::PlanReporter(Prover prove, Listener listener)
    : m_prove(std::move(prove))
    , m_listener(std::move(listener))
{
    if (!m_listener)
        return;
    try {
        m_thread = std::jthread([this](const std::stop_token& token) { Follow(token); });
    } catch (const std::system_error&) {
        // The machine has no threads left: the run goes on without reports.
    }
}

PlanReporter::~PlanReporter() = default;

void PlanReporter::Offer(JobPlan plan)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_best && !plan.IsBetterThan(*m_best))
            return;
        m_best = std::move(plan);
        m_isNew = true;
    }
    m_offered.notify_one();
}

void PlanReporter::Follow(const std::stop_token& token)
{
    while (true) {
        JobPlan plan;
        {
            std::unique_lock lock(m_mutex);
            if (!m_offered.wait(lock, token, [this] { return m_isNew; }))
                return;
            plan = *m_best;
            m_isNew = false;
        }
        const double start = GetThreadTime();
        try {
            Report(plan, token);
        } catch (const std::exception&) {
            // A report that fails, for lack of memory, fails nothing else: the run has its own results.
        }
        Rest(std::max(kLeastRest, kRestsOfAProof * (GetThreadTime() - start)), token);
    }
}

void PlanReporter::Report(const JobPlan& plan, const std::stop_token& token) const
{
    const auto isOver = [&token] { return token.stop_requested(); };
    const std::optional<Solution> solution = m_prove(plan, isOver);
    if (solution && !isOver())
        m_listener(*solution);
}

void PlanReporter::Rest(double seconds, const std::stop_token& token)
{
    std::unique_lock lock(m_mutex);
    m_offered.wait_for(lock, token, std::chrono::duration<double>(seconds), [] { return false; });
}

} // namespace ZORNestSolver
