#include "ZORNestSolverOutline.h"

#include "ZORNestSolverArc.h"
#include "ZORNestSolverOffset.h"
#include "ZORNestSolverSpurs.h"

#include <numbers>
#include <optional>

namespace ZORNestSolver {

namespace {

constexpr double kLargestSagitta = 0.05;
constexpr double kRelativeSagitta = 2e-4;
constexpr double kMostStepsPerTurn = 16384; // finer than any cut, and few enough for a huge radius
constexpr double kMostCorners = 65536;      // of all arcs of a part: the search could not cope with more
constexpr double kNoArea = 1e-12;           // of the diameter squared
constexpr size_t kMostCrossings = 20000;    // to be cleaned, apart from a few of each edge

/// Checks whether rings have so many corners or crossings that to clean them would take seconds.
bool AreTangled(const Polygon& rings)
{
    size_t most = kMostCrossings;
    for (const Ring& ring : rings)
        most += 4 * ring.size();
    return IsCostlyToClean(rings) || CountConflicts(rings, most) == most;
}

bool IsFinite(const Contour& contour)
{
    return IsFinite(contour.start)
           && std::all_of(contour.segments.begin(), contour.segments.end(), [](const Segment& segment) {
                  return IsFinite(segment.end) && (!segment.isArc || IsFinite(segment.centre));
              });
}

/// Calls a function with the start of every segment, the segment, and its arc where it is one.
template<class Function>
void ForEachSegment(const Contour& contour, Function function)
{
    Point from = contour.start;
    for (const Segment& segment : contour.segments) {
        std::optional<Arc> arc;
        if (segment.isArc)
            arc.emplace(from, segment.end, segment.centre, segment.counterClockwise);
        function(from, segment, arc);
        from = segment.end;
    }
}

/// The polygon around an arc and the one in it: tangents meet in the corners and touch the arc in the contacts, one
/// more of them, from the start to the end of the sweep.
struct Steps
{
    Ring contacts;
    Ring corners;
};

/// How finely arcs are divided.
struct Fineness
{
    double sagitta = 0;
    double coarsening = 1; // of the steps, where the part would have too many corners

    double GetLargestStep(double radius) const
    {
        const double ratio = std::min(sagitta / radius, 0.25);
        const double step = 2 * std::atan(std::sqrt(ratio * (2 + ratio))); // of tangents that far outside
        return std::max(step, 2 * std::numbers::pi / kMostStepsPerTurn) * coarsening;
    }
};

/// Divides a part of an arc evenly.
void AddSteps(const Arc& arc, double from, double to, double largestStep, Steps& steps)
{
    const double angle = std::abs(arc.sweep) * (to - from);
    const double count = std::max(1.0, std::ceil(angle / largestStep));
    const double beyond = 1 / std::cos(angle / count / 2) - 1;
    for (double i = 0; i < count; ++i) {
        const Point middle = arc.Evaluate(from + (to - from) * (i + 0.5) / count);
        steps.corners.push_back(middle + (middle - arc.center) * beyond);
        steps.contacts.push_back(
            i + 1 == count && to == 1 ? arc.reached : arc.Evaluate(from + (to - from) * (i + 1) / count));
    }
}

/// Divides the arc at its extreme points along the axes, which become contacts, and evenly in between.
Steps Divide(const Arc& arc, const Fineness& fineness)
{
    Steps steps;
    steps.contacts.push_back(arc.start);
    if (arc.IsChord())
        return steps;
    constexpr double quarter = std::numbers::pi / 2;
    const double largestStep = std::min(fineness.GetLargestStep(arc.radius), quarter);
    const double side = arc.sweep > 0 ? 1 : -1;
    double from = 0;
    const double first = std::floor(side * arc.startAngle / quarter + 1e-9) + 1;
    for (double i = first; i < first + 5; ++i) {
        const double to = std::min(1.0, (i * quarter - side * arc.startAngle) / std::abs(arc.sweep));
        if (to > 1 - 1e-9)
            break;
        AddSteps(arc, from, to, largestStep, steps);
        from = to;
    }
    AddSteps(arc, from, 1, largestStep, steps);
    return steps;
}

Box GetBox(const std::vector<Contour>& contours)
{
    Box box;
    const auto add = [&box](const Box& other) {
        box.Add(other.min);
        box.Add(other.max);
    };
    for (const Contour& contour : contours) {
        box.Add(contour.start);
        ForEachSegment(contour, [&](Point, const Segment& segment, const std::optional<Arc>& arc) {
            box.Add(segment.end);
            if (arc)
                add(arc->GetBox());
        });
    }
    return box;
}

/// A part of many arcs gets as coarse as it must: tangents contain an arc however few they are.
Fineness ChooseFineness(const std::vector<Contour>& contours, double diameter)
{
    Fineness fineness;
    fineness.sagitta = std::min(kLargestSagitta, kRelativeSagitta * diameter);
    double corners = 0;
    for (const Contour& contour : contours)
        ForEachSegment(contour, [&](Point, const Segment&, const std::optional<Arc>& arc) {
            if (arc && !arc->IsChord())
                corners += std::abs(arc->sweep) / fineness.GetLargestStep(arc->radius);
        });
    fineness.coarsening = std::max(1.0, corners / kMostCorners);
    return fineness;
}

enum class ArcSide {
    Outer, // the material lies left of a counter-clockwise contour
    Hole,  // it lies right of it
    Chords // on either side
};

/// Returns a ring outside of the material's boundary, in the direction of the drawing.
Ring Flatten(const Contour& contour, ArcSide side, const Fineness& fineness)
{
    const bool materialLeft = (GetSignedArea(contour) > 0) == (side == ArcSide::Outer);
    Ring ring{contour.start};
    ForEachSegment(contour, [&](Point, const Segment& segment, const std::optional<Arc>& arc) {
        if (arc) {
            const Steps steps = Divide(*arc, fineness);
            const bool bulges = side != ArcSide::Chords && (arc->sweep > 0) == materialLeft;
            const Ring& points = bulges ? steps.corners : steps.contacts;
            ring.insert(ring.end(), points.begin(), points.end());
            ring.push_back(arc->reached);
        }
        ring.push_back(segment.end);
    });
    return RemoveIdlePoints(ring, 0);
}

/// Returns the areas between the chords and the tangents of all arcs.
Polygon GetCaps(const std::vector<Contour>& contours, const Fineness& fineness)
{
    Polygon caps;
    for (const Contour& contour : contours) {
        ForEachSegment(contour, [&](Point, const Segment&, const std::optional<Arc>& arc) {
            if (!arc || arc->IsChord())
                return;
            const Steps steps = Divide(*arc, fineness);
            for (size_t i = 0; i < steps.corners.size(); ++i) {
                Ring cap{steps.contacts[i], steps.corners[i], steps.contacts[i + 1]};
                if (GetSignedArea(cap) < 0)
                    std::reverse(cap.begin(), cap.end());
                caps.push_back(std::move(cap));
            }
        });
    }
    return caps;
}

bool HasArcs(const Contour& contour)
{
    return std::any_of(contour.segments.begin(), contour.segments.end(),
                       [](const Segment& segment) { return segment.isArc; });
}

/// Returns in how many others each ring lies; the rings do not cross.
std::vector<size_t> GetDepths(const Polygon& polygon)
{
    std::vector<Box> boxes;
    for (const Ring& ring : polygon)
        boxes.push_back(ZORNestSolver::GetBox(ring));
    std::vector<size_t> depths(polygon.size(), 0);
    for (size_t i = 0; i < polygon.size(); ++i) {
        const Point corner = polygon[i][0];
        for (size_t k = 0; k < polygon.size(); ++k)
            if (k != i && boxes[k].Contains(boxes[i]) && IsInside(corner, {polygon[k]}))
                ++depths[i];
    }
    return depths;
}

/// Returns the area of all loops of a ring, or of the hull where there are too many.
double GetAreaOfCrossing(const Ring& ring)
{
    return AreTangled({ring}) ? GetSignedArea(GetConvexHull({ring})) : GetCleanArea(ring);
}

/// Turns contours into a polygon.
class PolygonMaker
{
public:
    PolygonMaker(const std::vector<Contour>& contours, const Interruption& isOver)
    {
        const Box box = GetBox(contours);
        m_diameter = box.IsEmpty() ? 0 : Length(box.max - box.min);
        m_fineness = ChooseFineness(contours, m_diameter);
        Select(contours, isOver);
    }

    /// Returns an empty polygon where a contour crosses itself or another one.
    Polygon MakeOfSimple() const
    {
        Polygon rings;
        for (size_t i = 0; i < m_contours.size(); ++i)
            rings.push_back(Flatten(m_contours[i], i == 0 ? ArcSide::Outer : ArcSide::Hole, m_fineness));
        const bool isKnown = rings.size() == 1 && !HasArcs(m_contours[0]); // already looked at
        if (!m_areSimple || (!isKnown && !IsSimple(rings)))
            return {};
        const std::vector<size_t> depths = GetDepths(rings);
        bool hasIslands = false;
        for (size_t i = 0; i < rings.size(); ++i) {
            const bool isMaterial = depths[i] % 2 == 0;
            if (isMaterial && i > 0) {
                if (depths[i] == 0)
                    return {};
                rings[i] = Flatten(m_contours[i], ArcSide::Outer, m_fineness);
                hasIslands = true;
            }
            if ((GetSignedArea(rings[i]) > 0) != isMaterial)
                std::reverse(rings[i].begin(), rings[i].end());
        }
        return hasIslands && !IsSimple(rings) ? Polygon{} : rings;
    }

    /// Checks whether MakeOfCrossing() would take seconds.
    bool IsTangled() const
    {
        const Polygon rings = FlattenAll();
        Polygon all = GetCaps(m_contours, m_fineness);
        all.insert(all.end(), rings.begin(), rings.end());
        return IsCostlyToClean(all) || AreTangled(rings);
    }

    /// Returns nothing where a hole lies outside, and an empty polygon where no material remains.
    std::optional<Polygon> MakeOfCrossing() const
    {
        const Polygon rings = FlattenAll();
        Polygon added = GetCaps(m_contours, m_fineness);
        const Polygon spurs = GetSpurs(rings);
        added.insert(added.end(), spurs.begin(), spurs.end());
        return CleanPiece(rings, added);
    }

    size_t GetContourCount() const { return m_contours.size(); }

private:
    Polygon FlattenAll() const
    {
        Polygon rings;
        for (const Contour& contour : m_contours)
            rings.push_back(Flatten(contour, ArcSide::Chords, m_fineness));
        return rings;
    }

    /// Drops contours without area and puts the largest one first.
    void Select(const std::vector<Contour>& contours, const Interruption& isOver)
    {
        double largest = 0;
        for (const Contour& contour : contours) {
            if (isOver())
                return;
            const Ring ring = Flatten(contour, ArcSide::Chords, m_fineness);
            if (ring.size() < 3)
                continue;
            const bool isSimple = IsSimple({ring});
            const double area = isSimple ? std::abs(GetSignedArea(contour)) : GetAreaOfCrossing(ring);
            if (!(area > kNoArea * m_diameter * m_diameter))
                continue;
            m_areSimple = m_areSimple && isSimple;
            m_contours.push_back(contour);
            if (area > largest)
                std::swap(m_contours.front(), m_contours.back());
            largest = std::max(largest, area);
        }
    }

    double m_diameter = 0;
    Fineness m_fineness;
    std::vector<Contour> m_contours;
    bool m_areSimple = true;
};

bool AreMeasurable(const std::vector<Contour>& contours, std::string& reason)
{
    reason = "";
    if (!std::all_of(contours.begin(), contours.end(), [](const Contour& c) { return IsFinite(c); }))
        reason = "outline has coordinates that are no numbers";
    else if (const Box box = GetBox(contours); !box.IsWithinReach())
        reason = "outline reaches beyond 1000 km";
    return reason.empty();
}

} // namespace

double GetSignedArea(const Contour& contour)
{
    double area = 0;
    ForEachSegment(contour, [&](Point from, const Segment& segment, const std::optional<Arc>& arc) {
        area +=
            arc ? arc->GetArea(contour.start) : Cross(from - contour.start, segment.end - contour.start) / 2;
    });
    return area;
}

double GetEnclosedArea(const Contour& contour)
{
    const Box box = GetBox({contour});
    const Ring ring = Flatten(contour, ArcSide::Chords, ChooseFineness({contour}, Length(box.max - box.min)));
    if (ring.size() < 3)
        return 0;
    return IsSimple({ring}) ? std::abs(GetSignedArea(contour)) : GetAreaOfCrossing(ring);
}

double GetLength(const Contour& contour)
{
    double length = 0;
    ForEachSegment(contour, [&](Point from, const Segment& segment, const std::optional<Arc>& arc) {
        length += arc ? arc->GetLength() : Length(segment.end - from);
    });
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

Polygon MakeOuterPolygon(const std::vector<Contour>& contours, std::string& reason,
                         const Interruption& isOver)
{
    if (!AreMeasurable(contours, reason))
        return {};
    const PolygonMaker maker(contours, isOver);
    if (isOver())
        return {};
    std::optional<Polygon> polygon = Polygon();
    if (maker.GetContourCount() > 0) {
        polygon = maker.MakeOfSimple();
        if (polygon->empty() && maker.IsTangled())
            return MakeOuterHull(contours, reason);
        if (polygon->empty() && !isOver())
            polygon = maker.MakeOfCrossing();
    }
    if (!polygon)
        reason = "a hole lies outside of the outline";
    else if (polygon->empty() && !isOver())
        reason = "outline encloses no area";
    return polygon.value_or(Polygon());
}

Polygon MakeOuterHull(const std::vector<Contour>& contours, std::string& reason)
{
    if (!AreMeasurable(contours, reason))
        return {};
    const Box box = GetBox(contours);
    const double diameter = box.IsEmpty() ? 0 : Length(box.max - box.min);
    const Fineness fineness = ChooseFineness(contours, diameter);
    Polygon rings;
    for (const Contour& contour : contours)
        for (const ArcSide side : {ArcSide::Outer, ArcSide::Hole})
            rings.push_back(Flatten(contour, side, fineness));
    const Ring hull = GetConvexHull(rings);
    if (hull.size() >= 3 && GetSignedArea(hull) > kNoArea * diameter * diameter)
        return {hull};
    reason = "outline encloses no area";
    return {};
}

} // namespace ZORNestSolver
