#include "ZORNestSolverJobPlan.h"

namespace ZORNestSolver {

namespace {

constexpr double kNoise = 1e-9; // relative

int Compare(double a, double b)
{
    if (std::abs(a - b) <= kNoise * std::max(std::abs(a), std::abs(b)))
        return 0;
    return a < b ? -1 : 1;
}

} // namespace

int CompareInOrder(const std::vector<double>& a, const std::vector<double>& b)
{
    for (size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        if (const int order = Compare(a[i], b[i]); order != 0)
            return order;
    return 0;
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
