// Complete plans at once: items placed one after another.

#pragma once

#include "ZORNestSolverJobPlan.h"
#include "ZORNestSolverOpenSheet.h"

namespace ZORNestSolver {

/// What a plan may use.
struct Supply
{
    std::vector<size_t> kinds; // in the order in which they are used up
    int highestStack = 1;
};

/// The order in which items claim their places.
enum class Claims { BySize, ByPriority };

/// How thoroughly a place is searched: contacts take microseconds, samples a fraction of a millisecond.
enum class Placing { Contacts, Samples };

/// Builds plans over all stack sizes, kinds and priorities. Every plan is complete: once the run is over or
/// stopped for a tenth of a second, what remains is placed by contacts. Only a canceled run ends at once.
class Constructor
{
public:
    /// \param demand  copies of each item; items that fit nowhere have none
    Constructor(const PreparedJob& prepared, const std::vector<int>& demand, uint64_t seed,
                const Budget& budget);

    /// Fills kind after kind, and at each priority the highest stacks first.
    JobPlan Build(const Supply& supply, Claims claims, Placing placing);
    /// Whether the time for further plans is over.
    bool IsOver();

    /// Sheets of that kind that are left for stacks when so many are used; a roll counts once for each stack size.
    static bool HasStock(const SheetKind& kind, int used, int stack);

private:
    struct State;

    std::vector<std::vector<size_t>> GetLevels(Claims claims) const;
    bool PlaceOne(State& state, size_t item, int stack);
    bool PlaceOnNew(State& state, size_t item, size_t kind, int stack);
    int GetSamples(const State& state);
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
