#include "ZORNestSolverRepair.h"

#include "solver/model/ZORNestSolverUnplaced.h"
#include "solver/plan/ZORNestSolverJobPlan.h"
#include "solver/proof/ZORNestSolverCheck.h"

#include <cstdint>

namespace ZORNestSolver {

namespace {

const char* const kReason = "its place did not pass the check";

class Repair
{
public:
    Repair(const PreparedJob& prepared, Solution& solution)
        : m_prepared(prepared)
        , m_job(prepared.job)
        , m_solution(solution)
        , m_placed(m_job.items.size(), 0)
        , m_used(m_job.kinds.size(), 0)
    {
    }

    void Run()
    {
        for (NestedSheet& sheet : m_solution.sheets)
            RepairSheet(sheet);
        std::erase_if(m_solution.sheets, [](const NestedSheet& sheet) { return sheet.placements.empty(); });
        BalanceReports();
        m_solution.cost = 0;
        for (const NestedSheet& sheet : m_solution.sheets)
            m_solution.cost += GetSheetCost(sheet, m_prepared);
    }

private:
    void RepairSheet(NestedSheet& sheet)
    {
        const size_t before = sheet.placements.size();
        if (!IsAllowed(sheet)) {
            sheet.placements.clear();
            return;
        }
        RemoveInvalidItems(sheet);
        RemoveExcessCopies(sheet);
        if (sheet.placements.empty())
            return;
        m_used[sheet.kind] += sheet.stack;
        if (sheet.placements.size() < before)
            MeasureSheet(sheet, m_prepared);
    }

    bool IsAllowed(const NestedSheet& sheet) const
    {
        if (sheet.kind >= m_job.kinds.size() || sheet.stack < 1 || sheet.stack > std::max(1, m_job.stackSize))
            return false;
        const SheetKind& kind = m_job.kinds[sheet.kind];
        const bool isEndless = kind.quantity < 0 || (kind.quantity > 0 && kind.IsRoll());
        return isEndless || m_used[sheet.kind] + sheet.stack <= kind.quantity;
    }

    void RemoveInvalidItems(NestedSheet& sheet) const
    {
        std::erase_if(sheet.placements,
                      [this](const Placement& placement) { return placement.item >= m_job.items.size(); });
        std::vector<bool> isBad(sheet.placements.size(), false);
        for (const PlacementFault& fault : FindPlacementFaults(m_job, sheet))
            if (!fault.other || !isBad[*fault.other]) // what was removed disturbs nothing any more
                isBad[fault.placement] = true;
        std::vector<Placement> kept;
        for (size_t i = 0; i < isBad.size(); ++i)
            if (!isBad[i])
                kept.push_back(sheet.placements[i]);
        sheet.placements = std::move(kept);
    }

    void RemoveExcessCopies(NestedSheet& sheet)
    {
        std::vector<Placement> kept;
        for (const Placement& placement : sheet.placements) {
            if (m_placed[placement.item] + sheet.stack > m_job.items[placement.item].quantity)
                continue;
            m_placed[placement.item] += sheet.stack;
            kept.push_back(placement);
        }
        sheet.placements = std::move(kept);
    }

    /// Lets the reported copies of each item be those that are not placed.
    void BalanceReports()
    {
        std::erase_if(m_solution.unplaced, [this](const UnplacedItem& entry) {
            return entry.item >= m_job.items.size() || entry.count < 1;
        });
        std::vector<int64_t> missing(m_job.items.size(), 0);
        for (size_t i = 0; i < missing.size(); ++i)
            missing[i] = std::max(0, m_job.items[i].quantity) - m_placed[i];
        for (UnplacedItem& entry : m_solution.unplaced) {
            entry.count = static_cast<int>(std::min<int64_t>(entry.count, missing[entry.item]));
            missing[entry.item] -= entry.count;
        }
        std::erase_if(m_solution.unplaced, [](const UnplacedItem& entry) { return entry.count == 0; });
        UnplacedList entries(std::move(m_solution.unplaced));
        for (size_t i = 0; i < missing.size(); ++i)
            entries.Add(i, static_cast<int>(missing[i]), kReason);
        m_solution.unplaced = entries.GetEntries();
    }

    const PreparedJob& m_prepared;
    const Job& m_job;
    Solution& m_solution;
    std::vector<int64_t> m_placed; // copies, by item
    std::vector<int64_t> m_used;   // sheets, by kind
};

} // namespace

void RemoveFaults(const PreparedJob& prepared, Solution& solution)
{
    Repair(prepared, solution).Run();
}

} // namespace ZORNestSolver
