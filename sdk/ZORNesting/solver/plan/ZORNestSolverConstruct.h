// Complete plans at once: items placed one after another.

#pragma once

#include "ZORNestSolverJobPlan.h"
#include "ZORNestSolverOpenSheet.h"
#include "ZORNestSolverPreference.h"

namespace ZORNestSolver {

/// What a plan may use.
struct Supply
{
    std::vector<size_t> kinds; // in the order in which they are used up
    int highestStack = 1;
};

/// Builds plans over all stack sizes, kinds and priorities. Every plan is complete: once the run is over or
/// stopped for a tenth of a second, what remains is placed by contacts, and soon after a stop in columns as far as
/// the sheets have room for these. Only a canceled run ends at once.
class Constructor
{
public:
    /// \param demand  copies of each item; items that fit nowhere have none
    Constructor(const PreparedJob& prepared, const std::vector<int>& demand, uint64_t seed,
                const Budget& budget);

    /// Fills kind after kind, and at each priority the highest stacks first.
    JobPlan Build(const Supply& supply, Claims claims, Placing placing);
    /// The same by contacts alone, with other preferences. Without a plan when the time is over before it is built.
    std::optional<JobPlan> BuildOtherwise(const Supply& supply, Claims claims, const Preference& preference);
    /// Whether the time for further plans is over.
    bool IsOver();

    /// Sheets of that kind that are left for stacks when so many are used; a roll counts once for each stack size.
    static bool HasStock(const SheetKind& kind, int used, int stack);

private:
    struct State;
    /// Copies of an item that are placed one after another.
    struct Batch
    {
        size_t item = 0;
        int most = 0;
        Leaning leaning;
    };
    using Level = std::vector<Batch>; // items that claim places together

    std::vector<Level> GetLevels(Claims claims, const Preference& preference);
    Level Arrange(std::vector<size_t> items, const Preference& preference);
    Level Shuffle(const std::vector<size_t>& items, const Preference& preference);
    Leaning GetLeaning(size_t item, const Preference& preference);
    JobPlan Build(State& state, const std::vector<Level>& levels);
    bool PlaceOne(State& state, const Batch& batch, int stack);
    bool PlaceByContact(State& state, const Batch& batch, int stack);
    bool PlaceInColumn(State& state, size_t item, int stack);
    bool PlaceOnNew(State& state, const Batch& batch, size_t kind, int stack);
    int GetSamples(const State& state);
    double GetSecondsSinceStop();
    bool IsInHurry();
    JobPlan Finish(const State& state) const;

    const PreparedJob& m_prepared;
    const std::vector<int>& m_demand;
    Budget m_budget;
    Random m_random;
    ContactPoses m_poses;
    int m_samples = 0;                // for each item and sheet
    std::optional<double> m_stopTime; // of the thread
};

} // namespace ZORNestSolver
