#include "ZORNestSolverBound.h"

#include <map>

namespace ZORNestSolver {

namespace {

constexpr double kNoise = 1e-9; // relative

/// The least width of the item's outline in any allowed pose.
double GetLeastWidth(const ItemType& type)
{
    double width = std::numeric_limits<double>::infinity();
    for (const PoseClass& allowed : type.classes) {
        const Pose pose{allowed.mirrored, allowed.angle, {}};
        width = std::min(width, allowed.IsContinuous() ? 2.0 * static_cast<double>(type.base.poleR[0])
                                                       : type.GetExactBox(pose).GetWidth());
    }
    return width;
}

double GetPlacedArea(const PreparedJob& prepared, const NestedSheet& sheet)
{
    double area = 0;
    for (const Placement& placement : sheet.placements)
        area += prepared.types[placement.item]->area;
    return area;
}

/// The least length that the items of a sheet take of its usable part.
double GetLeastLength(const PreparedJob& prepared, const NestedSheet& sheet)
{
    const double height = GetUsableBox(prepared.job.kinds[sheet.kind], prepared.job).GetHeight();
    double length = GetPlacedArea(prepared, sheet) / height;
    for (const Placement& placement : sheet.placements)
        length = std::max(length, GetLeastWidth(*prepared.types[placement.item]));
    return length;
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
        cost = std::max(1.0, std::ceil(area / prepared.areas[kinds.front()].area - kNoise)) * bySheet;
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
    return length <= GetLeastLength(prepared, sheet) * (1 + kNoise);
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
    return areRollsShortest || plan.cost <= least * (1 + kNoise);
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
