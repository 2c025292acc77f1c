#include "ZORNestSolverJobPlan.h"

namespace ZORNestSolver {

namespace {

int Compare(double a, double b)
{
    if (std::abs(a - b) <= kPlanNoise * std::max(std::abs(a), std::abs(b)))
        return 0;
    return a < b ? -1 : 1;
}

bool IsAllowed(const Pose& pose, const ItemType& type)
{
    return type.classes[type.FindClass(pose)].Allows(pose);
}

/// The item of the highest priority above that of the placed one that could take its place; the placed one if
/// there is none.
size_t FindHeir(const JobPlan& plan, const PreparedJob& prepared, const Placement& placement, int stack)
{
    size_t heir = placement.item;
    for (size_t i = 0; i < plan.left.size(); ++i)
        if (plan.left[i] >= stack && prepared.levels[i] < prepared.levels[heir]
            && prepared.types[i]->outer == prepared.types[placement.item]->outer
            && IsAllowed(placement.pose, *prepared.types[i]))
            heir = i;
    return heir;
}

} // namespace

void ServeEqualItems(JobPlan& plan, const PreparedJob& prepared)
{
    if (prepared.levelCount < 2 || plan.IsComplete())
        return;
    for (NestedSheet& sheet : plan.sheets) {
        for (Placement& placement : sheet.placements) {
            const size_t heir = FindHeir(plan, prepared, placement, sheet.stack);
            if (heir == placement.item)
                continue;
            plan.left[placement.item] += sheet.stack;
            plan.left[heir] -= sheet.stack;
            placement.item = heir;
        }
    }
}

int CompareInOrder(const std::vector<double>& a, const std::vector<double>& b)
{
    for (size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        if (const int order = Compare(a[i], b[i]); order != 0)
            return order;
    return 0;
}

bool Plan::IsBetterThan(const Plan& other) const
{
    const int order = CompareInOrder(restAreas, other.restAreas);
    return order != 0 ? order < 0 : cost < other.cost;
}

bool JobPlan::IsBetterThan(const JobPlan& other) const
{
    int order = CompareInOrder(restAreas, other.restAreas);
    if (order == 0)
        order = Compare(cost, other.cost);
    return order != 0 ? order < 0 : Compare(remnant, other.remnant) > 0;
}

bool JobPlan::IsComplete() const
{
    return std::all_of(left.begin(), left.end(), [](int count) { return count == 0; });
}

double GetRightEnd(const PreparedJob& prepared, const std::vector<Placement>& placements)
{
    double right = 0;
    for (const Placement& placement : placements)
        right = std::max(right, prepared.types[placement.item]->GetExactBox(placement.pose).max.x);
    return right;
}

void MeasureSheet(NestedSheet& sheet, const PreparedJob& prepared)
{
    const Job& job = prepared.job;
    const SheetKind& kind = job.kinds[sheet.kind];
    const double right = GetRightEnd(prepared, sheet.placements);
    sheet.usedLength = kind.IsRoll() ? right + job.frameWidth + kind.rightTrim : kind.length;
    sheet.remnantLength = kind.IsRoll() ? 0 : std::max(0.0, kind.length - right - job.separation);
}

double GetSheetCost(const NestedSheet& sheet, const PreparedJob& prepared)
{
    const double length = prepared.job.kinds[sheet.kind].IsRoll() ? sheet.usedLength : 1;
    return prepared.GetCost(sheet.kind) * length * sheet.stack;
}

void Measure(JobPlan& plan, const PreparedJob& prepared)
{
    plan.cost = 0;
    plan.remnant = 0;
    for (const NestedSheet& sheet : plan.sheets) {
        plan.cost += GetSheetCost(sheet, prepared);
        plan.remnant =
            std::max(plan.remnant, sheet.remnantLength * prepared.job.kinds[sheet.kind].width * sheet.stack);
    }
    plan.restAreas.assign(prepared.levelCount, 0);
    for (size_t i = 0; i < plan.left.size(); ++i)
        if (plan.left[i] > 0)
            plan.restAreas[prepared.levels[i]] += plan.left[i] * prepared.types[i]->area;
}

} // namespace ZORNestSolver
