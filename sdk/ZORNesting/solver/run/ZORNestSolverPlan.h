// Which sheets to use, and what to nest on them.

#pragma once

#include "ZORNestSolverReporter.h"
#include "solver/plan/ZORNestSolverConstruct.h"

namespace ZORNestSolver {

/// How long and with what a plan is searched.
struct PlanEffort
{
    int threads = 1;
    double shortestTime = 0; // no end before, unless nothing can be gained; in seconds of the budget's clock
};

/// Plans the whole job: complete plans are constructed first, then the best one is improved. A plan gives way
/// only to a better one, so that a run that is stopped has lost nothing.
class Planner
{
public:
    /// \param demand    copies of each item; items that fit nowhere have none
    /// \param reporter  is offered every better plan
    Planner(const PreparedJob& prepared, const std::vector<int>& demand, const PlanEffort& effort,
            const Budget& budget, PlanReporter& reporter);

    JobPlan Run();

private:
    /// Sheets that a plan may use, and the best plan on them.
    struct Choice
    {
        Supply supply;
        JobPlan plan;
    };

    void AddChoices();
    void Construct(Placing placing, size_t mostChoices);
    void ConstructChoice(Choice& choice, Placing placing);
    void ConstructOtherwise(Choice& choice);
    bool OfferOther(Choice& choice, const Preference& preference);
    void Improve(Choice& choice, double shortestTime, const Budget& budget);
    void ImproveStack(Choice& choice, int stack, double shortestTime, const Budget& budget);
    void ImproveAll(double shortestTime, const Budget& budget);
    void Pack(double shortestTime);
    void Offer(const JobPlan& plan);
    void OfferStack(const JobPlan& plan, int stack, const std::vector<NestedSheet>& own);
    void SortChoices();
    void KeepBestMix();
    std::vector<size_t> GetStock(const Choice& choice, int stack) const;
    double GetWork(const JobPlan& plan, int stack) const;
    bool CanPack(const NestedSheet& sheet) const;

    const PreparedJob& m_prepared;
    const Job& m_job;
    const std::vector<int>& m_demand;
    PlanEffort m_effort;
    Budget m_budget;
    PlanReporter& m_reporter;
    Constructor m_constructor;
    std::vector<size_t> m_kinds;   // that can be used, in the order of the job
    std::vector<Choice> m_choices; // the best one first
    uint64_t m_pass = 0;           // each has its own seed
    bool m_isCutShort = true;      // items without a place have hardly been tried
};

} // namespace ZORNestSolver
