#include "ZORNestSolverCheck.h"

#include "ZORNestSolverExactApart.h"
#include "ZORNestSolverExactShape.h"
#include "solver/base/ZORNestSolverAngle.h"
#include "solver/model/ZORNestSolverUsable.h"

#include <cstdint>
#include <tuple>
#include <unordered_map>

namespace ZORNestSolver {

namespace {

using Exact::AreApart;
using Exact::kTolerance;
using Exact::Shape;

constexpr double kAngleTolerance = 1e-11;
constexpr double kMostTurns = 1000; // of a deviation

/// The rotations around one direction.
struct Deviation
{
    double largest = 0;
    double increment = 0; // 0: every rotation within the largest

    bool Allows(double turn) const
    {
        if (increment <= 0 || largest <= 0)
            return std::abs(turn) <= largest + kAngleTolerance;
        return std::abs(turn) <= largest + increment * 1e-9 + kAngleTolerance
               && std::abs(std::remainder(turn, increment)) <= kAngleTolerance;
    }
    bool AllowsFullTurns(double turn) const
    {
        const double turns = std::min(std::ceil(largest / kFullTurn), kMostTurns);
        for (double i = -turns; i <= turns; ++i)
            if (Allows(turn + i * kFullTurn))
                return true;
        return false;
    }
};

bool IsNear(double angle, double direction, const Deviation& deviation)
{
    const double turn = std::remainder(angle - direction, kFullTurn);
    const double rounding = 4 * std::numeric_limits<double>::epsilon() * std::abs(direction);
    Deviation wide = deviation;
    wide.largest += std::isfinite(rounding) ? rounding : 0;
    return wide.AllowsFullTurns(turn);
}

/// The rotations of the hand that is asked for, along the grain; the other hand takes the negative ones.
std::vector<double> GetDirections(const Item& item, const Job& job)
{
    const bool quarters[] = {true, item.grain90 || job.grain90, item.grain180 || job.grain180,
                             item.grain270 || job.grain270};
    std::vector<double> directions;
    for (int k = 0; k < 4; ++k)
        if (quarters[k])
            directions.push_back(item.orientation + k * kFullTurn / 4);
    return directions;
}

bool IsPoseAllowed(const Pose& pose, const Item& item, const Job& job)
{
    const bool isOtherHand = pose.mirrored != item.mirrored;
    if (isOtherHand && (!item.flippable || job.singleSided))
        return false;
    const Deviation deviation{item.maxDeviation > 0 ? item.maxDeviation : job.maxDeviation,
                              item.deviationIncrement > 0 ? item.deviationIncrement : job.deviationIncrement};
    const auto isAllowed = [&](double direction) { return IsNear(pose.angle, direction, deviation); };
    if (!item.allowedAngles.empty())
        return std::any_of(item.allowedAngles.begin(), item.allowedAngles.end(), isAllowed);
    const std::vector<double> directions = GetDirections(item, job);
    return std::any_of(directions.begin(), directions.end(),
                       [&](double direction) { return isAllowed(isOtherHand ? -direction : direction); });
}

/// What no item may overlap on a sheet, as it is drawn.
struct Obstacles
{
    std::vector<Shape> defects;
    std::optional<Shape> outside;
};

/// The outlines of the items as they are drawn, and the obstacles of the sheets, made when they are needed first.
class Shapes
{
public:
    Shapes(const Job& job, const Interruption& isOver)
        : m_job(job)
        , m_isOver(isOver)
    {
    }
    const Shape& Get(size_t item)
    {
        const auto [known, isNew] = m_shapes.try_emplace(item);
        if (isNew) {
            known->second = Shape(m_job.items[item].contours);
            known->second.FindProbes();
        }
        return known->second;
    }
    const Obstacles& GetObstacles(size_t kind)
    {
        const auto [known, isNew] = m_obstacles.try_emplace(kind);
        if (!isNew)
            return known->second;
        const SheetKind& sheet = m_job.kinds[kind];
        for (size_t i = 0; i < sheet.defects.size() && !m_isOver(); ++i)
            known->second.defects.emplace_back(sheet.defects[i]);
        if (!sheet.outline.empty())
            known->second.outside.emplace(sheet.outline, Shape::Side::Outside);
        return known->second;
    }

private:
    const Job& m_job;
    const Interruption& m_isOver;
    std::unordered_map<size_t, Shape> m_shapes;        // by item
    std::unordered_map<size_t, Obstacles> m_obstacles; // by kind of sheet
};

/// A sheet of the solution with its items where they lie.
class SheetCheck
{
public:
    SheetCheck(const Job& job, Shapes& shapes, const NestedSheet& sheet, size_t number,
               const Interruption& isOver)
        : m_job(job)
        , m_kind(job.kinds[sheet.kind])
        , m_shapes(shapes)
        , m_obstacles(shapes.GetObstacles(sheet.kind))
        , m_sheet(sheet)
        , m_number(number)
        , m_isOver(isOver)
    {
    }

    std::vector<PlacementFault> Run()
    {
        for (size_t i = 0; i < m_sheet.placements.size() && !m_isOver(); ++i)
            CheckBox(i);
        std::sort(m_order.begin(), m_order.end(),
                  [](const Boxed& a, const Boxed& b) { return a.box.min.x < b.box.min.x; });
        for (size_t i = 0; i < m_order.size() && !m_isOver(); ++i)
            CheckPlaced(m_order[i]);
        std::sort(m_faults.begin(), m_faults.end(), [](const PlacementFault& a, const PlacementFault& b) {
            return std::tie(a.placement, a.other, a.text) < std::tie(b.placement, b.other, b.text);
        });
        return std::move(m_faults);
    }

private:
    struct Boxed
    {
        size_t placement;
        Box box;
    };
    struct Placed
    {
        size_t placement;
        Shape shape;
    };

    void Report(size_t i, const std::string& fault, std::optional<size_t> other = {})
    {
        m_faults.push_back({i, other,
                            "sheet " + std::to_string(m_number) + ": item "
                                + std::to_string(m_sheet.placements[i].item) + " " + fault});
    }

    Box GetUsableBox() const
    {
        const double frame = m_job.frameWidth - kTolerance;
        const double length = m_kind.IsRoll() ? m_sheet.usedLength : m_kind.length;
        return {{m_kind.leftTrim + frame, m_kind.bottomTrim + frame},
                {length - m_kind.rightTrim - frame, m_kind.width - m_kind.topTrim - frame}};
    }

    void CheckBox(size_t i)
    {
        const Placement& placement = m_sheet.placements[i];
        const Pose& pose = placement.pose;
        if (!std::isfinite(pose.angle) || !IsFinite(pose.position))
            return Report(i, "has a pose that is not finite");
        if (!IsPoseAllowed(pose, m_job.items[placement.item], m_job))
            Report(i, "has a rotation or hand that is not allowed");
        const Box box = m_shapes.Get(placement.item).GetPlacedBox(pose);
        if (box.IsEmpty())
            return Report(i, "has an outline that cannot be measured");
        if (!GetUsableBox().Contains(box))
            Report(i, "leaves the usable part of the sheet");
        m_order.push_back({i, box});
    }

    /// Compares a placement with those before it in the order of x that reach so far.
    void CheckPlaced(const Boxed& boxed)
    {
        const Placement& placement = m_sheet.placements[boxed.placement];
        const Shape shape = m_shapes.Get(placement.item).Placed(placement.pose);
        for (const Shape& defect : m_obstacles.defects)
            if (!AreApart(shape, defect, m_job.defectSeparation))
                Report(boxed.placement, "lies on a defect");
        if (m_obstacles.outside && !AreApart(shape, *m_obstacles.outside, m_job.frameWidth))
            Report(boxed.placement, "leaves the outline of the sheet");
        std::erase_if(m_active, [&](const Placed& other) {
            return other.shape.GetBox().max.x + m_job.separation < boxed.box.min.x;
        });
        for (const Placed& other : m_active) {
            if (AreApart(shape, other.shape, m_job.separation))
                continue;
            const auto [first, second] = std::minmax(boxed.placement, other.placement);
            Report(second, "is too near to item " + std::to_string(m_sheet.placements[first].item), first);
        }
        m_active.push_back({boxed.placement, shape});
    }

    const Job& m_job;
    const SheetKind& m_kind;
    Shapes& m_shapes;
    const Obstacles& m_obstacles;
    const NestedSheet& m_sheet;
    size_t m_number;
    const Interruption& m_isOver;
    std::vector<Boxed> m_order;
    std::vector<Placed> m_active;
    std::vector<PlacementFault> m_faults;
};

/// Whether the sheet names sheets and items of the job only.
bool IsOfJob(const Job& job, const NestedSheet& sheet)
{
    return sheet.kind < job.kinds.size()
           && std::all_of(sheet.placements.begin(), sheet.placements.end(),
                          [&job](const Placement& placement) { return placement.item < job.items.size(); });
}

/// The length of a roll is up to the solution, but its items have to lie within it.
bool HasItsLength(const Job& job, const NestedSheet& sheet)
{
    const SheetKind& kind = job.kinds[sheet.kind];
    return std::isfinite(sheet.usedLength)
           && (kind.IsRoll() || std::abs(sheet.usedLength - kind.length) <= kTolerance);
}

void AppendSheetFaults(std::vector<std::string>& faults, const Job& job, Shapes& shapes,
                       const NestedSheet& sheet, size_t number, const Interruption& isOver)
{
    const std::string name = "sheet " + std::to_string(number);
    if (!IsOfJob(job, sheet)) {
        faults.push_back(name + ": is of no kind or holds no item of the job");
        return;
    }
    if (sheet.stack < 1 || sheet.stack > job.stackSize)
        faults.push_back(name + ": a stack of " + std::to_string(sheet.stack) + " is not allowed");
    if (!HasItsLength(job, sheet))
        faults.push_back(name + ": its length is not that of the sheet");
    for (const PlacementFault& fault : SheetCheck(job, shapes, sheet, number, isOver).Run())
        faults.push_back(fault.text);
}

void CheckQuantities(const Job& job, const Solution& solution, std::vector<std::string>& faults)
{
    std::vector<int64_t> counts(job.items.size(), 0);
    std::vector<int64_t> sheets(job.kinds.size(), 0);
    for (const NestedSheet& sheet : solution.sheets) {
        if (!IsOfJob(job, sheet))
            continue;
        sheets[sheet.kind] += sheet.stack;
        for (const Placement& placement : sheet.placements)
            counts[placement.item] += sheet.stack;
    }
    for (const UnplacedItem& unplaced : solution.unplaced) {
        if (unplaced.item >= counts.size() || unplaced.count < 1)
            faults.push_back("unplaced item " + std::to_string(unplaced.item)
                             + ": is not in the job or has no copies");
        else
            counts[unplaced.item] += unplaced.count;
    }
    for (size_t i = 0; i < counts.size(); ++i)
        if (counts[i] != job.items[i].quantity)
            faults.push_back("item " + std::to_string(i) + ": " + std::to_string(counts[i]) + " of "
                             + std::to_string(job.items[i].quantity) + " are placed or reported");
    for (size_t k = 0; k < sheets.size(); ++k) {
        const int quantity = job.kinds[k].quantity;
        const bool isEndless = quantity < 0 || (quantity > 0 && job.kinds[k].IsRoll());
        if (!isEndless && sheets[k] > quantity)
            faults.push_back("sheet kind " + std::to_string(k) + ": more used than there are");
    }
}

} // namespace

std::vector<PlacementFault> FindPlacementFaults(const Job& job, const NestedSheet& sheet)
{
    const Interruption isOver = NeverInterrupted;
    Shapes shapes(job, isOver);
    return SheetCheck(job, shapes, sheet, 0, isOver).Run();
}

std::vector<std::string> FindFaults(const Job& job, const Solution& solution, const Interruption& isOver)
{
    return FindFaultsOfUsable(MakeUsable(job), solution, isOver);
}

std::vector<std::string> FindFaultsOfUsable(const Job& job, const Solution& solution,
                                            const Interruption& isOver)
{
    std::vector<std::string> faults;
    Shapes shapes(job, isOver);
    for (size_t number = 0; number < solution.sheets.size(); ++number)
        AppendSheetFaults(faults, job, shapes, solution.sheets[number], number, isOver);
    CheckQuantities(job, solution, faults);
    return faults;
}

} // namespace ZORNestSolver
