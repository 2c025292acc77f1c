#include "ZORNestSolverArea.h"

#include "ZORNestSolverOffset.h"
#include "ZORNestSolverSimplify.h"

namespace ZORNestSolver {

namespace {

constexpr double LargestGrowth = 0.001;
constexpr double Margin = 1; // by which the surroundings of an irregular sheet are drawn beyond its box

/// \param distance  to keep from it; shapes bring half the separation with them
void AddHazard(SheetArea& area, const Polygon& polygon, double distance, double separation)
{
    const Polygon clean = CleanPolygon(polygon);
    if (clean.empty())
        return;
    const double missing = distance - separation / 2;
    const Polygon body = SimplifyOutwards(missing > 0 ? GrowPolygon(clean, missing) : clean, LargestGrowth);
    const std::vector<Circle> poles = FindPoles(body);
    const Point reference = poles.front().centre;
    std::vector<Circle> moved = poles;
    for (Circle& circle : moved)
        circle.centre = circle.centre - reference;
    area.hazards.push_back(
        {MakeShape(Transform({false, 0, Point{} - reference}).Apply(body), moved), reference});
    area.area -= GetArea(body);
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

Box GetUsableBox(const SheetKind& kind, const Job& job)
{
    const double length = kind.IsRoll() ? std::numeric_limits<double>::infinity() : kind.length;
    return {{kind.leftTrim + job.frameWidth, kind.bottomTrim + job.frameWidth},
            {length - kind.rightTrim - job.frameWidth, kind.width - kind.topTrim - job.frameWidth}};
}

SheetArea PrepareSheet(const SheetKind& kind, const Job& job)
{
    SheetArea area;
    const Box usable = GetUsableBox(kind, job);
    const bool isUsable = usable.GetWidth() > 0 && usable.GetHeight() > 0 && std::isfinite(usable.min.x)
                          && std::isfinite(usable.GetHeight());
    if (!isUsable || !IsFinite(kind.outline))
        return area;
    area.window = usable.Grown(job.separation / 2);
    area.area = usable.GetWidth() * usable.GetHeight();
    if (!kind.outline.empty()) {
        Box around = GetBox(kind.outline);
        around.Add({0, 0});
        around.Add({kind.IsRoll() ? around.max.x : kind.length, kind.width});
        for (const Polygon& missing : CutFromBox(around.Grown(Margin), kind.outline))
            AddHazard(area, missing, job.frameWidth, job.separation);
    }
    for (const Polygon& defect : kind.defects)
        if (IsFinite(defect))
            AddHazard(area, Oriented(defect), job.defectSeparation, job.separation);
    return area;
}

} // namespace ZORNestSolver
