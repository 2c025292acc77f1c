#include "ZORNestSolverArea.h"

#include "solver/geometry/ZORNestSolverDepths.h"
#include "solver/geometry/ZORNestSolverOffset.h"
#include "solver/geometry/ZORNestSolverSimplify.h"
#include "solver/geometry/ZORNestSolverSpatialOrder.h"
#include "solver/geometry/ZORNestSolverSpurs.h"
#include "solver/model/ZORNestSolverOutline.h"
#include "solver/proof/ZORNestSolverApart.h"

namespace ZORNestSolver {

namespace {

constexpr double kBeyond = 1;               // by which what an outline lacks reaches beyond the sheet
constexpr double kNoArea = 1e-12;           // of the size squared
constexpr double kMostCornersOfAll = 20000; // of the defects of a sheet
constexpr size_t kFewestCorners = 12;
constexpr size_t kMostDefects = 1000;

Polygon Unite(const Polygon& region, const Polygon& spurs)
{
    Polygon all = region;
    all.insert(all.end(), spurs.begin(), spurs.end());
    return spurs.empty() ? region : CleanPolygon(all);
}

/// Leaves out rings that hold nothing, which draw nothing either.
Polygon DropIdleRings(const Polygon& polygon)
{
    Polygon rings;
    for (const Ring& ring : polygon) {
        const Box box = GetBox(ring);
        const double size = Length(box.max - box.min);
        if (std::abs(GetSignedArea(ring)) > kNoArea * size * size || !GetRegion({ring}).empty())
            rings.push_back(ring);
    }
    return rings;
}

/// Joins defects that lie next to each other, so that no more remain than the search can use.
std::vector<Polygon> Join(const std::vector<Polygon>& defects)
{
    std::vector<Box> boxes;
    boxes.reserve(defects.size());
    for (const Polygon& defect : defects)
        boxes.push_back(GetBox(defect));
    const size_t share = (defects.size() + kMostDefects - 1) / kMostDefects;
    std::vector<Polygon> joined;
    const std::vector<size_t> order = GetSpatialOrder(boxes);
    for (size_t first = 0; first < order.size(); first += share) {
        Polygon rings;
        for (size_t i = first; i < std::min(first + share, order.size()); ++i)
            rings.insert(rings.end(), defects[order[i]].begin(), defects[order[i]].end());
        joined.push_back({GetConvexHull(rings)});
    }
    return joined;
}

/// Gives rings that neither cross nor touch the directions of their depths.
Polygon Oriented(const Polygon& rings)
{
    Polygon oriented = rings;
    const std::vector<size_t> depths = GetDepths(rings);
    for (size_t i = 0; i < rings.size(); ++i)
        if ((GetSignedArea(rings[i]) > 0) != (depths[i] % 2 == 0))
            std::reverse(oriented[i].begin(), oriented[i].end());
    return oriented;
}

/// Makes obstacles that contain what a sheet lacks and its defects, with a bounded effort.
class ObstacleMaker
{
public:
    ObstacleMaker(SheetArea& area, SheetEffort& effort)
        : m_area(area)
        , m_effort(effort)
    {
    }

    /// Adds what the outline of a sheet lacks of its rectangle. It reaches beyond the sheet, so that its border is no
    /// edge on which a part thinner than the tolerance could lie.
    void AddOutside(const Polygon& outline, const Box& sheet, double distance)
    {
        const Polygon coarse =
            IsLargeAndSimple(outline, kMostShapeCorners) ? CoarsenedInwards(outline) : outline;
        const OutlineLoss loss = GetLossOfTangled(coarse);
        if (loss != OutlineLoss::None) {
            m_area.window = {};
            m_area.remarks.push_back(loss == OutlineLoss::Hull
                                         ? "crosses itself too often and is not used"
                                         : "has too many corners to be cleaned and is not used");
            return;
        }
        const Polygon rings = DropIdleRings(coarse);
        const Polygon around = CutFromBox(sheet.Grown(kBeyond), rings);
        Polygon spurs = GetSpurs(rings, around);
        std::erase_if(spurs, [&sheet](const Ring& spur) { return !GetBox(spur).Overlaps(sheet); });
        const Polygon onSheet = Unite(CutFromBox(sheet, rings), spurs);
        if (!onSheet.empty())
            AddHazard(Coarsened(Unite(around, spurs), kMostShapeCorners),
                      Coarsened(onSheet, kMostShapeCorners), distance);
        if (m_isCoarse)
            m_area.remarks.push_back("has too many corners and is nested with a coarser outline");
    }

    void AddDefects(std::vector<Polygon> defects, double distance)
    {
        m_isCoarse = false;
        if (defects.size() > kMostDefects) {
            defects = Join(defects);
            m_area.remarks.push_back("has too many defects: parts keep off the hulls of neighboring ones");
        }
        size_t corners = 0;
        for (const Polygon& defect : defects)
            corners += CountCorners(defect);
        const double share = kMostCornersOfAll / static_cast<double>(corners);
        for (const Polygon& defect : defects) {
            const auto most = static_cast<size_t>(share * static_cast<double>(CountCorners(defect)));
            const Polygon clean = MakeDefect(
                defect, share >= 1 ? kMostShapeCorners : std::clamp(most, kFewestCorners, kMostShapeCorners));
            AddHazard(clean, clean, distance);
        }
        if (m_isCoarse)
            m_area.remarks.push_back("has defects with too many corners, which are nested around coarsely");
        if (m_isTangled)
            m_area.remarks.push_back(
                "has defects that cross themselves too often: parts keep off their hulls");
        if (m_isHurried)
            m_area.remarks.push_back("is nested around the hulls of its defects: no time left");
    }

private:
    /// \param most  corners; the area of fewer ones may grow by any amount
    Polygon Coarsened(const Polygon& polygon, size_t most)
    {
        if (CountCorners(polygon) <= most)
            return polygon;
        Polygon simple = SimplifyOutwards(polygon, kLargestGrowth, NeverInterrupted, most);
        m_isCoarse = m_isCoarse || GetArea(simple) > GetArea(polygon) * (1 + 2 * kLargestGrowth);
        return simple;
    }

    static bool IsLargeAndSimple(const Polygon& rings, size_t most)
    {
        return CountCorners(rings) > most && IsSimple(rings);
    }

    /// Returns rings of fewer corners within those of a simple outline.
    Polygon CoarsenedInwards(const Polygon& outline)
    {
        const Box frame = GetBox(outline).Grown(kBeyond);
        Polygon around{{frame.min, {frame.max.x, frame.min.y}, frame.max, {frame.min.x, frame.max.y}}};
        for (const Ring& ring : Oriented(outline))
            around.emplace_back(ring.rbegin(), ring.rend());
        Polygon rings = SimplifyOutwards(around, kLargestGrowth, NeverInterrupted, kMostShapeCorners);
        const double lost = GetArea(rings) - GetArea(around);
        rings.erase(rings.begin());
        m_isCoarse = m_isCoarse || lost > 2 * kLargestGrowth * GetArea(Oriented(outline));
        return rings;
    }

    Polygon MakeDefect(const Polygon& defect, size_t mostCorners)
    {
        const bool isOver = m_effort.isOver();
        if (!isOver && IsLargeAndSimple(defect, mostCorners))
            return Coarsened(Oriented(defect), mostCorners);
        const bool isTangled = !isOver && GetLossOfTangled(defect) != OutlineLoss::None;
        if (isOver || isTangled) {
            const Ring hull = GetConvexHull(defect);
            m_isTangled = m_isTangled || isTangled;
            m_isHurried = m_isHurried || (isOver && hull.size() < CountCorners(defect));
            return hull.size() < 3 ? Polygon() : Polygon{hull};
        }
        const Polygon rings = DropIdleRings(defect);
        const Polygon region = GetRegion(rings);
        return Coarsened(Unite(region, GetSpurs(rings, region)), mostCorners);
    }

    /// \param clean    what no item may overlap, without crossings
    /// \param onSheet  what of it lies on the sheet
    void AddHazard(const Polygon& clean, const Polygon& onSheet, double distance)
    {
        if (clean.empty())
            return;
        const Polygon grown = distance > 0 ? GrowPolygon(clean, distance) : clean;
        const Polygon body = Inset(SimplifyOutwards(grown, kLargestGrowth));
        if (m_effort.isOver())
            m_effort.squares = 0;
        std::vector<Circle> poles = FindPoles(body, m_effort.squares);
        const Point reference = poles.front().centre;
        for (Circle& circle : poles)
            circle.centre = circle.centre - reference;
        m_area.hazards.push_back(
            {MakeShape(Transform({false, 0, Point{} - reference}).Apply(body), poles), reference});
        m_area.obstacles.push_back({clean, distance, onSheet, GetBox(onSheet)});
    }

    SheetArea& m_area;
    SheetEffort& m_effort;
    bool m_isCoarse = false;
    bool m_isTangled = false;
    bool m_isHurried = false;
};

/// The area that no obstacle covers; overlaps of obstacles count once. Where obstacles are too many to be cut out, the
/// whole area: less could prove too much.
double GetFreeArea(const Box& usable, const SheetArea& area, const Interruption& isOver)
{
    if (area.obstacles.empty() || !std::isfinite(usable.GetWidth()))
        return usable.GetWidth() * usable.GetHeight();
    Polygon rings;
    for (const Obstacle& obstacle : area.obstacles)
        rings.insert(rings.end(), obstacle.polygon.begin(), obstacle.polygon.end());
    if (GetLossOfTangled(rings, isOver) != OutlineLoss::None)
        return usable.GetWidth() * usable.GetHeight();
    return GetFreeArea(usable, rings);
}

bool IsFinite(const Polygon& polygon)
{
    return std::all_of(polygon.begin(), polygon.end(), [](const Ring& ring) {
        return std::all_of(ring.begin(), ring.end(), [](Point p) { return ZORNestSolver::IsFinite(p); });
    });
}

} // namespace

bool SheetArea::IsClear(const Polygon& placed) const
{
    return std::all_of(obstacles.begin(), obstacles.end(), [&placed](const Obstacle& obstacle) {
        return AreApart(placed, obstacle.polygon, obstacle.distance);
    });
}

Box GetUsableBox(const SheetKind& kind, const Job& job)
{
    const double length = kind.IsRoll() ? std::numeric_limits<double>::infinity() : kind.length;
    return {{kind.leftTrim + job.frameWidth, kind.bottomTrim + job.frameWidth},
            {length - kind.rightTrim - job.frameWidth, kind.width - kind.topTrim - job.frameWidth}};
}

bool IsWithinReach(const SheetKind& kind, const Job& job)
{
    const double length = kind.IsRoll() ? 0 : kind.length;
    const double defectSeparation = kind.defects.empty() ? 0 : job.defectSeparation;
    return std::max({length, kind.width, job.separation, job.frameWidth, defectSeparation})
               <= kLargestCoordinate
           && GetBox(kind.outline).IsWithinReach()
           && std::all_of(kind.defects.begin(), kind.defects.end(),
                          [](const Polygon& defect) { return GetBox(defect).IsWithinReach(); });
}

SheetArea PrepareSheet(const SheetKind& kind, const Job& job, SheetEffort& effort)
{
    SheetArea area;
    const Box usable = GetUsableBox(kind, job);
    const bool isUsable = usable.GetWidth() > 0 && usable.GetHeight() > 0 && std::isfinite(usable.min.x)
                          && std::isfinite(usable.GetHeight());
    if (!isUsable || !IsFinite(kind.outline) || !IsWithinReach(kind, job))
        return area;
    area.window = usable.Grown(job.separation / 2);
    ObstacleMaker maker(area, effort);
    if (!kind.outline.empty()) {
        const Box sheet{{0, 0}, {kind.IsRoll() ? GetBox(kind.outline).max.x : kind.length, kind.width}};
        maker.AddOutside(kind.outline, sheet, job.frameWidth);
    }
    if (area.window.IsEmpty())
        return area;
    std::vector<Polygon> defects;
    std::copy_if(kind.defects.begin(), kind.defects.end(), std::back_inserter(defects),
                 [](const Polygon& defect) { return IsFinite(defect) && !defect.empty(); });
    maker.AddDefects(std::move(defects), job.defectSeparation);
    area.area = GetFreeArea(usable, area, effort.isOver);
    return area;
}

SheetArea PrepareSheet(const SheetKind& kind, const Job& job)
{
    SheetEffort effort;
    return PrepareSheet(kind, job, effort);
}

} // namespace ZORNestSolver
