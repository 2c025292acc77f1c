#include "ZORNestSolverOutline.h"

#include "ZORNestSolverOffset.h"

#include <numbers>

namespace ZORNestSolver {

namespace {

constexpr double LargestSagitta = 0.05;
constexpr double RelativeSagitta = 2e-4;

bool IsFinite(const Contour& contour)
{
    return IsFinite(contour.start)
           && std::all_of(contour.segments.begin(), contour.segments.end(), [](const Segment& segment) {
                  return IsFinite(segment.end) && (!segment.isArc || IsFinite(segment.centre));
              });
}

Point Rotated(Point p, double angle)
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {c * p.x - s * p.y, s * p.x + c * p.y};
}

/// Appends the points after the start up to the end of the arc.
void AppendArc(Ring& ring, Point start, const Segment& arc, bool bulges, double sagitta)
{
    const Point from = start - arc.centre;
    const double radius = Length(from);
    const double sweep = GetSweep(start, arc);
    const double tolerance = std::min(sagitta, radius / 4);
    if (radius > 0) {
        const double largestStep = 2 * std::acos(radius / (radius + tolerance));
        const int steps = std::max(2, static_cast<int>(std::ceil(std::abs(sweep) / largestStep)));
        const double step = sweep / steps;
        if (bulges) { // corners of the tangents lie between the points of contact
            const double reach = 1 / std::cos(step / 2);
            for (int i = 0; i < steps; ++i)
                ring.push_back(arc.centre + Rotated(from, step * (i + 0.5)) * reach);
        } else {
            for (int i = 1; i < steps; ++i)
                ring.push_back(arc.centre + Rotated(from, step * i));
        }
    }
    ring.push_back(arc.end);
}

Box GetRoughBox(const std::vector<Contour>& contours)
{
    Box box;
    for (const Contour& contour : contours) {
        box.Add(contour.start);
        Point from = contour.start;
        for (const Segment& segment : contour.segments) {
            box.Add(segment.end);
            for (int i = 1; segment.isArc && i < 8; ++i)
                box.Add(segment.centre + Rotated(from - segment.centre, GetSweep(from, segment) * i / 8));
            from = segment.end;
        }
    }
    return box;
}

/// The ring lies outside of the material's boundary: outwards is right of the drawing direction of an
/// outer contour drawn counter-clockwise and of a hole drawn clockwise.
Ring Flatten(const Contour& contour, bool isHole, double sagitta)
{
    const bool materialLeft = (GetSignedArea(contour) > 0) != isHole;
    Ring ring{contour.start};
    Point from = contour.start;
    for (const Segment& segment : contour.segments) {
        if (segment.isArc)
            AppendArc(ring, from, segment, segment.counterClockwise == materialLeft, sagitta);
        else
            ring.push_back(segment.end);
        from = segment.end;
    }
    Ring clean = RemoveIdlePoints(ring, 0);
    if ((GetSignedArea(clean) > 0) == isHole)
        std::reverse(clean.begin(), clean.end());
    return clean;
}

/// Of rings that do not cross, all but the first one lie in it and in no other one.
bool AreHolesInside(const Polygon& polygon)
{
    std::vector<Box> boxes;
    for (const Ring& ring : polygon)
        boxes.push_back(GetBox(ring));
    for (size_t i = 1; i < polygon.size(); ++i) {
        const Point corner = polygon[i][0];
        for (size_t k = 0; k < polygon.size(); ++k)
            if (k != i && (boxes[k].Contains(corner) && IsInside(corner, {polygon[k]})) != (k == 0))
                return false;
    }
    return true;
}

} // namespace

double GetSweep(Point start, const Segment& arc)
{
    constexpr double turn = 2 * std::numbers::pi;
    const Point from = start - arc.centre;
    const Point to = arc.end - arc.centre;
    double sweep = std::atan2(Cross(from, to), Dot(from, to));
    if (arc.counterClockwise && sweep <= 1e-12)
        sweep += turn;
    if (!arc.counterClockwise && sweep >= -1e-12)
        sweep -= turn;
    return sweep;
}

double GetSignedArea(const Contour& contour)
{
    double twice = 0;
    Point from = contour.start;
    for (const Segment& segment : contour.segments) {
        twice += Cross(from - contour.start, segment.end - contour.start);
        if (segment.isArc) {
            const double sweep = GetSweep(from, segment);
            const Point arm = from - segment.centre;
            twice += Dot(arm, arm) * (sweep - std::sin(sweep));
        }
        from = segment.end;
    }
    return twice / 2;
}

double GetLength(const Contour& contour)
{
    double length = 0;
    Point from = contour.start;
    for (const Segment& segment : contour.segments) {
        length += segment.isArc ? std::abs(GetSweep(from, segment)) * Length(from - segment.centre)
                                : Length(segment.end - from);
        from = segment.end;
    }
    return length;
}

Contour MakeContour(const Ring& ring)
{
    Contour contour;
    for (size_t i = 0; i < ring.size(); ++i) {
        if (i == 0)
            contour.start = ring[0];
        else
            contour.segments.push_back({ring[i], false, true, {}});
    }
    return contour;
}

Polygon MakeOuterPolygon(const std::vector<Contour>& contours, std::string& reason)
{
    reason.clear();
    if (!std::all_of(contours.begin(), contours.end(), [](const Contour& c) { return IsFinite(c); })) {
        reason = "outline has coordinates that are no numbers";
        return {};
    }
    size_t outer = 0;
    for (size_t i = 1; i < contours.size(); ++i)
        if (std::abs(GetSignedArea(contours[i])) > std::abs(GetSignedArea(contours[outer])))
            outer = i;
    const Box box = GetRoughBox(contours);
    const double diameter = box.IsEmpty() ? 0 : Length(box.max - box.min);
    const double sagitta = std::min(LargestSagitta, RelativeSagitta * diameter);
    Polygon polygon;
    const auto append = [&](size_t i) {
        const Ring ring = Flatten(contours[i], i != outer, sagitta);
        if (ring.size() >= 3 && std::abs(GetSignedArea(ring)) > 1e-12 * diameter * diameter)
            polygon.push_back(ring);
    };
    if (!contours.empty())
        append(outer);
    for (size_t i = 0; i < contours.size() && !polygon.empty(); ++i)
        if (i != outer)
            append(i);
    if (polygon.empty()) {
        reason = "outline encloses no area";
    } else if (!IsSimple(polygon) || !AreHolesInside(polygon)) {
        const bool hasHoles = polygon.size() > 1;
        polygon = CleanPiece(polygon);
        if (polygon.empty())
            reason = hasHoles ? "a hole lies outside of the outline" : "outline encloses no area";
    }
    return polygon;
}

} // namespace ZORNestSolver
