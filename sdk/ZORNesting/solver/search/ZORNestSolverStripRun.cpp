#include "ZORNestSolverStripRun.h"

#include "ZORNestSolverCompaction.h"

#include <exception>
#include <system_error>
#include <thread>

namespace ZORNestSolver {

namespace {

constexpr double kSearchShare = 0.97; // of the time, the rest is for the exact finish
constexpr double kExploreShare = 0.8;
constexpr double kFirstRound = 2; // seconds
constexpr double kFirstRoundOfItem = 0.05;
constexpr double kRoundGrowth = 1.5;
constexpr double kLeastGain = 0.0005; // of the length, in a round
constexpr double kNearlyAll = 0.95;
constexpr uint64_t kSeedStep = 0x9E3779B9;

/// Searches of the same strip with different seeds.
class StripTeam
{
public:
    StripTeam(const std::shared_ptr<const Problem>& problem, uint64_t seed, const StripProof& proof,
              int threads)
    {
        for (int t = 0; t < std::max(1, threads); ++t)
            m_searches.push_back(std::make_unique<StripSearch>(
                problem, seed + static_cast<uint64_t>(t) * kSeedStep,
                [proof](const std::vector<Stand>& stands, double) { return proof(stands); }));
    }

    /// Works on all searches side by side. What one of them throws stops the whole run and is thrown here.
    template<class Work>
    void ForEach(const Budget& budget, Work work)
    {
        std::vector<std::exception_ptr> failures(m_searches.size());
        const auto run = [&](size_t t) {
            try {
                work(*m_searches[t]);
            } catch (...) {
                failures[t] = std::current_exception();
                budget.Fail();
            }
        };
        RunSideBySide(run);
        for (const std::exception_ptr& failure : failures)
            if (failure)
                std::rethrow_exception(failure);
    }

    const StripSearch& GetBest() const
    {
        return **std::min_element(m_searches.begin(), m_searches.end(), [](const auto& a, const auto& b) {
            return a->GetLength() < b->GetLength();
        });
    }

    void ContinueFromBest()
    {
        const std::vector<Stand> stands = GetBest().GetStands();
        for (auto& search : m_searches)
            search->Continue(stands);
    }

private:
    template<class Run>
    void RunSideBySide(const Run& run)
    {
        std::vector<std::jthread> others;
        others.reserve(m_searches.size());
        size_t started = 1;
        try {
            for (; started < m_searches.size(); ++started)
                others.emplace_back(run, started);
        } catch (const std::system_error&) {
            // The machine has no threads left: this one does the work of the others too.
        }
        run(0);
        for (size_t t = started; t < m_searches.size(); ++t)
            run(t);
    }

    std::vector<std::unique_ptr<StripSearch>> m_searches;
};

void RunRound(StripTeam& team, const Budget& budget)
{
    const Budget explore = budget.Part(kExploreShare);
    team.ForEach(budget, [&explore](StripSearch& search) { search.Explore(explore); });
    team.ContinueFromBest();
    team.ForEach(budget, [&budget](StripSearch& search) { search.Compress(budget.Part(1)); });
    team.ContinueFromBest();
}

/// Ever longer rounds, until one gains too little.
void RunUntilIdle(StripTeam& team, size_t items, double shortestTime, const Budget& budget)
{
    double round = kFirstRound + kFirstRoundOfItem * static_cast<double>(items);
    double before = std::numeric_limits<double>::infinity();
    while (!budget.IsOver()) {
        const double length = team.GetBest().GetLength();
        if (length > before * (1 - kLeastGain) && budget.GetElapsed() >= shortestTime)
            return;
        before = length;
        RunRound(team, budget.Limited(round));
        round *= kRoundGrowth;
    }
}

} // namespace

std::vector<Stand> SearchStrip(const std::shared_ptr<const Problem>& problem, uint64_t seed,
                               const StripProof& proof, const StripEffort& effort, const Budget& budget)
{
    StripTeam team(problem, seed, proof, effort.quick ? 1 : effort.threads);
    team.ForEach(budget, [&budget](StripSearch& search) { search.Construct(budget); });
    if (effort.quick)
        return team.GetBest().GetStands();
    // The clock runs on while times are handed down, so that a minimum that equals the maximum falls short of it.
    const bool useAll =
        budget.HasEnd() && effort.shortestTime >= kNearlyAll * (budget.GetElapsed() + budget.GetRest());
    if (useAll)
        RunRound(team, budget.Part(kSearchShare));
    else
        RunUntilIdle(team, problem->items.size(), effort.shortestTime, budget);
    const Compaction compaction(*problem, effort.separation, proof);
    return compaction.Shorten(team.GetBest().GetStands(), [&budget] { return budget.IsOver(); });
}

} // namespace ZORNestSolver
