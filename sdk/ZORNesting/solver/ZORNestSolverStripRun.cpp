#include "ZORNestSolverStripRun.h"

#include "ZORNestSolverCompaction.h"

#include <thread>

namespace ZORNestSolver {

namespace {

constexpr double SearchShare = 0.97; // of the time, the rest is for the exact finish
constexpr double ExploreShare = 0.8;
constexpr double FirstRound = 2; // seconds
constexpr double FirstRoundOfItem = 0.05;
constexpr double RoundGrowth = 1.5;
constexpr double LeastGain = 0.0005; // of the length, in a round
constexpr uint64_t SeedStep = 0x9E3779B9;

/// Searches of the same strip with different seeds.
class StripTeam
{
public:
    StripTeam(const std::shared_ptr<const Problem>& problem, uint64_t seed, const StripProof& proof,
              int threads)
    {
        for (int t = 0; t < std::max(1, threads); ++t)
            m_searches.push_back(std::make_unique<StripSearch>(
                problem, seed + static_cast<uint64_t>(t) * SeedStep,
                [proof](const std::vector<Stand>& stands, double) { return proof(stands); }));
    }

    template<class Work>
    void ForEach(Work work)
    {
        std::vector<std::jthread> others;
        for (size_t t = 1; t < m_searches.size(); ++t)
            others.emplace_back([&work, this, t] { work(*m_searches[t]); });
        work(*m_searches.front());
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
    std::vector<std::unique_ptr<StripSearch>> m_searches;
};

void RunRound(StripTeam& team, const Budget& budget)
{
    const Budget explore = budget.Part(ExploreShare);
    team.ForEach([&explore](StripSearch& search) { search.Explore(explore); });
    team.ContinueFromBest();
    team.ForEach([&budget](StripSearch& search) { search.Compress(budget.Part(1)); });
    team.ContinueFromBest();
}

/// Ever longer rounds, until one gains too little.
void RunUntilIdle(StripTeam& team, size_t items, double shortestTime, const Budget& budget)
{
    double round = FirstRound + FirstRoundOfItem * static_cast<double>(items);
    double before = std::numeric_limits<double>::infinity();
    while (!budget.IsOver()) {
        const double length = team.GetBest().GetLength();
        if (length > before * (1 - LeastGain) && budget.GetElapsed() >= shortestTime)
            return;
        before = length;
        RunRound(team, budget.Limited(round));
        round *= RoundGrowth;
    }
}

} // namespace

std::vector<Stand> SearchStrip(const std::shared_ptr<const Problem>& problem, uint64_t seed,
                               const StripProof& proof, const StripEffort& effort, const Budget& budget)
{
    StripTeam team(problem, seed, proof, effort.quick ? 1 : effort.threads);
    team.ForEach([&budget](StripSearch& search) { search.Construct(budget); });
    if (effort.quick)
        return team.GetBest().GetStands();
    const bool useAll = budget.HasEnd() && effort.shortestTime >= budget.GetElapsed() + budget.GetRest();
    if (useAll)
        RunRound(team, budget.Part(SearchShare));
    else
        RunUntilIdle(team, problem->items.size(), effort.shortestTime, budget);
    const Compaction compaction(*problem, effort.separation, proof);
    return compaction.Shorten(team.GetBest().GetStands(), [&budget] { return budget.IsOver(); });
}

} // namespace ZORNestSolver
