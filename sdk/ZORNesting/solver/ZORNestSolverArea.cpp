#include "ZORNestSolverArea.h"

#include "ZORNestSolverApart.h"
#include "ZORNestSolverOffset.h"
#include "ZORNestSolverSimplify.h"
#include "ZORNestSolverSpurs.h"

namespace ZORNestSolver {

namespace {

constexpr double LargestGrowth = 0.001;
constexpr double kBeyond = 1;     // by which what an outline lacks reaches beyond the sheet
constexpr double kNoArea = 1e-12; // of the size squared

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

/// \param clean    what no item may overlap, without crossings
/// \param onSheet  what of it lies on the sheet
void AddHazard(SheetArea& area, const Polygon& clean, const Polygon& onSheet, double distance)
{
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
    area.obstacles.push_back({clean, distance, onSheet, GetBox(onSheet)});
}

/// Adds what the outline of a sheet lacks of its rectangle. It reaches beyond the sheet, so that its border is no edge
/// on which a part thinner than the tolerance could lie.
void AddOutside(SheetArea& area, const Polygon& outline, const Box& sheet, double distance)
{
    const Polygon rings = DropIdleRings(outline);
    const Polygon around = CutFromBox(sheet.Grown(kBeyond), rings);
    Polygon spurs = GetSpurs(rings, around);
    std::erase_if(spurs, [&sheet](const Ring& spur) { return !GetBox(spur).Overlaps(sheet); });
    const Polygon onSheet = Unite(CutFromBox(sheet, rings), spurs);
    if (!onSheet.empty())
        AddHazard(area, Unite(around, spurs), onSheet, distance);
}

void AddDefect(SheetArea& area, const Polygon& defect, double distance)
{
    const Polygon rings = IsCostlyToClean(defect) ? Polygon{GetConvexHull(defect)} : DropIdleRings(defect);
    const Polygon region = GetRegion(rings);
    const Polygon clean = Unite(region, GetSpurs(rings, region));
    AddHazard(area, clean, clean, distance);
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
    if (!isUsable || !IsFinite(kind.outline) || !IsWithinReach(kind, job) || IsCostlyToClean(kind.outline))
        return area;
    area.window = usable.Grown(job.separation / 2);
    if (!kind.outline.empty()) {
        const Box sheet{{0, 0}, {kind.IsRoll() ? GetBox(kind.outline).max.x : kind.length, kind.width}};
        AddOutside(area, kind.outline, sheet, job.frameWidth);
    }
    for (const Polygon& defect : kind.defects)
        if (IsFinite(defect))
            AddDefect(area, defect, job.defectSeparation);
    area.area = GetFreeArea(usable, area);
    return area;
}

} // namespace ZORNestSolver
