#include "ZORNestSolverArea.h"

#include "ZORNestSolverApart.h"
#include "ZORNestSolverOffset.h"
#include "ZORNestSolverSimplify.h"

namespace ZORNestSolver {

namespace {

constexpr double LargestGrowth = 0.001;

void AddHazard(SheetArea& area, const Polygon& polygon, double distance)
{
    const Polygon clean = CleanPolygon(polygon);
    if (clean.empty())
        return;
    const Polygon grown = distance > 0 ? GrowPolygon(clean, distance) : clean;
    const Polygon body = Inset(SimplifyOutwards(grown, LargestGrowth));
    std::vector<Circle> poles = FindPoles(body);
    const Point reference = poles.front().centre;
    for (Circle& circle : poles)
        circle.centre = circle.centre - reference;
    area.hazards.push_back(
        {MakeShape(Transform({false, 0, Point{} - reference}).Apply(body), poles), reference});
    area.obstacles.push_back({clean, distance});
}

/// The area that no obstacle covers; overlaps of obstacles count once.
double GetFreeArea(const Box& usable, const SheetArea& area)
{
    if (area.obstacles.empty() || !std::isfinite(usable.GetWidth()))
        return usable.GetWidth() * usable.GetHeight();
    Polygon rings;
    for (const Obstacle& obstacle : area.obstacles)
        rings.insert(rings.end(), obstacle.polygon.begin(), obstacle.polygon.end());
    return GetFreeArea(usable, rings);
}

/// Counter-clockwise outside, clockwise holes.
Polygon Oriented(const Polygon& polygon)
{
    Polygon result = polygon;
    for (size_t i = 0; i < result.size(); ++i)
        if ((GetSignedArea(result[i]) > 0) != (i == 0))
            std::reverse(result[i].begin(), result[i].end());
    return result;
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

SheetArea PrepareSheet(const SheetKind& kind, const Job& job)
{
    SheetArea area;
    const Box usable = GetUsableBox(kind, job);
    const bool isUsable = usable.GetWidth() > 0 && usable.GetHeight() > 0 && std::isfinite(usable.min.x)
                          && std::isfinite(usable.GetHeight());
    if (!isUsable || !IsFinite(kind.outline) || !IsWithinReach(kind, job))
        return area;
    area.window = usable.Grown(job.separation / 2);
    if (!kind.outline.empty()) {
        Box around{{0, 0}, {kind.IsRoll() ? GetBox(kind.outline).max.x : kind.length, kind.width}};
        AddHazard(area, CutFromBox(around, kind.outline), job.frameWidth);
    }
    for (const Polygon& defect : kind.defects)
        if (IsFinite(defect))
            AddHazard(area, Oriented(defect), job.defectSeparation);
    area.area = GetFreeArea(usable, area);
    return area;
}

} // namespace ZORNestSolver
