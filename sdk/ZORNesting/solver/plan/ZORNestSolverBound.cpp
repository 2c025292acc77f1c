#include "ZORNestSolverBound.h"

#include "solver/search/ZORNestSolverStrip.h"

#include <map>

namespace ZORNestSolver {

namespace {

/// Adds up areas that the items of the sheet have at least.
double GetPlacedArea(const PreparedJob& prepared, const NestedSheet& sheet)
{
    double sum = 0;
    for (const Placement& placement : sheet.placements)
        sum += prepared.types[placement.item]->leastArea;
    return sum;
}

/// Checks whether one item alone, in its shortest pose, takes as much length as all of them.
bool HasItemOfLength(const PreparedJob& prepared, const NestedSheet& sheet, double length)
{
    const Box& window = prepared.areas[sheet.kind].window;
    return std::any_of(sheet.placements.begin(), sheet.placements.end(), [&](const Placement& placement) {
        const ItemType& type = *prepared.types[placement.item];
        // The shortest pose is no longer than the present one, which is quicker to measure.
        if (type.GetExactBox(placement.pose).GetWidth() * (1 + kPlanNoise) < length)
            return false;
        const auto shortest = FindShortest(type, window);
        return shortest && length <= (shortest->length - 2 * type.margin) * (1 + kPlanNoise);
    });
}

/// The least cost of items with so much area in stacks of a size.
double GetLeastCost(const PreparedJob& prepared, const std::vector<size_t>& kinds, double area, int stack)
{
    double byArea = std::numeric_limits<double>::infinity();
    double bySheet = std::numeric_limits<double>::infinity();
    for (const size_t kind : kinds) {
        const bool isRoll = prepared.job.kinds[kind].IsRoll();
        byArea = std::min(byArea, GetCostByArea(prepared, kind));
        bySheet = std::min(bySheet, isRoll ? 0 : prepared.GetCost(kind));
    }
    double cost = std::max(area * byArea, bySheet);
    if (kinds.size() == 1 && !prepared.job.kinds[kinds.front()].IsRoll())
        cost = std::max(1.0, std::ceil(area / prepared.areas[kinds.front()].area - kPlanNoise)) * bySheet;
    return cost * stack;
}

} // namespace

double GetCostByArea(const PreparedJob& prepared, size_t kind)
{
    const SheetArea& area = prepared.areas[kind];
    const bool isRoll = prepared.job.kinds[kind].IsRoll();
    return prepared.GetCost(kind)
           / (isRoll ? GetUsableBox(prepared.job.kinds[kind], prepared.job).GetHeight() : area.area);
}

bool IsShortest(const PreparedJob& prepared, const NestedSheet& sheet)
{
    const Box usable = GetUsableBox(prepared.job.kinds[sheet.kind], prepared.job);
    const double length = GetRightEnd(prepared, sheet.placements) - usable.min.x;
    return length * usable.GetHeight() <= GetPlacedArea(prepared, sheet) * (1 + kPlanNoise)
           || HasItemOfLength(prepared, sheet, length);
}

bool IsCheapest(const PreparedJob& prepared, const std::vector<size_t>& kinds, const JobPlan& plan)
{
    if (!plan.IsComplete())
        return false;
    if (plan.sheets.empty())
        return true;
    if (prepared.job.usageRule == UsageRule::AsListed && kinds.size() > 1) {
        const bool isFirst = std::all_of(plan.sheets.begin(), plan.sheets.end(),
                                         [&](const auto& sheet) { return sheet.kind == kinds.front(); });
        return isFirst && IsCheapest(prepared, {kinds.front()}, plan);
    }
    std::map<int, double> areas; // by stack
    bool areRollsShortest = true;
    for (const NestedSheet& sheet : plan.sheets) {
        areas[sheet.stack] += GetPlacedArea(prepared, sheet);
        areRollsShortest = areRollsShortest && prepared.job.kinds[sheet.kind].IsRoll() && kinds.size() == 1
                           && IsShortest(prepared, sheet);
    }
    double least = 0;
    for (const auto& [stack, area] : areas)
        least += GetLeastCost(prepared, kinds, area, stack);
    return areRollsShortest || plan.cost <= least * (1 + kPlanNoise);
}

bool IsOptimal(const PreparedJob& prepared, const std::vector<size_t>& kinds, const JobPlan& plan)
{
    if (!IsCheapest(prepared, kinds, plan))
        return false;
    for (size_t s = 0; s < plan.sheets.size(); ++s) {
        const bool isLast = s + 1 == plan.sheets.size() || plan.sheets[s + 1].stack != plan.sheets[s].stack;
        const bool isRoll = prepared.job.kinds[plan.sheets[s].kind].IsRoll();
        if (isLast && !isRoll && !IsShortest(prepared, plan.sheets[s]))
            return false;
    }
    return true;
}

} // namespace ZORNestSolver
