#include "ZORNestSolverOutline.h"

#include "ZORNestSolverFlatten.h"
#include "solver/geometry/ZORNestSolverDepths.h"
#include "solver/geometry/ZORNestSolverOffset.h"
#include "solver/geometry/ZORNestSolverSimplify.h"
#include "solver/geometry/ZORNestSolverSpatialOrder.h"
#include "solver/geometry/ZORNestSolverSpurs.h"

#include <optional>

namespace ZORNestSolver {

namespace {

constexpr double kNoArea = 1e-12;         // of the diameter squared
constexpr size_t kMostCrossings = 20000;  // to be cleaned, apart from a few of each edge
constexpr size_t kMostPairs = 1000000;    // of edges of an outline and its hull to be compared
constexpr size_t kMostHoleWork = 5000000; // corners of the outline, once for each hole that is cut from it
constexpr size_t kMostLooks = 1000000;    // at the interruption for each corner
constexpr size_t kFewContours = 64;       // that need no order

/// Checks whether rings cross so often that to clean them would take seconds.
bool AreCrossingOften(const Polygon& rings, const Interruption& isOver)
{
    size_t most = kMostCrossings;
    for (const Ring& ring : rings)
        most += 4 * ring.size();
    return CountConflicts(rings, most, isOver) == most;
}

bool IsFinite(const Contour& contour)
{
    return IsFinite(contour.start)
           && std::all_of(contour.segments.begin(), contour.segments.end(), [](const Segment& segment) {
                  return IsFinite(segment.end) && (!segment.isArc || IsFinite(segment.centre));
              });
}

/// Returns the area of all loops of a ring, or of the hull where there are too many.
double GetAreaOfCrossing(const Ring& ring)
{
    const bool isTangled = GetLossOfTangled({ring}, NeverInterrupted) != OutlineLoss::None;
    return isTangled ? GetSignedArea(GetConvexHull({ring})) : GetCleanArea(ring);
}

/// Turns contours into a polygon.
class PolygonMaker
{
public:
    PolygonMaker(const std::vector<Contour>& contours, const Interruption& isOver)
    {
        const Box box = GetOutlineBox(contours);
        m_diameter = box.IsEmpty() ? 0 : Length(box.max - box.min);
        m_fineness = ChooseFineness(contours, m_diameter);
        Select(contours, isOver);
        Sort();
    }

    /// Returns an empty polygon where a contour crosses itself or another one, and where it is interrupted.
    Polygon MakeOfSimple(const Interruption& isOver) const
    {
        Polygon rings;
        for (size_t i = 0; i < m_contours.size(); ++i)
            rings.push_back(Flatten(m_contours[i], i == 0 ? ArcSide::Outer : ArcSide::Hole, m_fineness));
        const bool isKnown = rings.size() == 1 && !HasArcs(m_contours[0]); // already looked at
        if (!m_areSimple || (!isKnown && !IsSimple(rings, isOver)))
            return {};
        const std::vector<size_t> depths = GetDepths(rings, isOver);
        if (isOver())
            return {};
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
        return hasIslands && !IsSimple(rings, isOver) ? Polygon{} : rings;
    }

    /// Returns what to take instead where MakeOfCrossing() would take seconds; otherwise None.
    OutlineLoss GetLossOfCrossing(const Interruption& isOver) const
    {
        const Polygon rings = FlattenAll();
        if (const OutlineLoss loss = GetLossOfTangled(rings, isOver); loss != OutlineLoss::None)
            return loss;
        Polygon all = GetCaps(m_contours, m_fineness);
        all.insert(all.end(), rings.begin(), rings.end());
        const bool isCostly = (rings.size() - 1) * rings[0].size() > kMostHoleWork;
        return isCostly || IsCostlyToClean(all, isOver) ? OutlineLoss::CostlyHull : OutlineLoss::None;
    }

    /// Returns nothing where a hole lies outside, and an empty polygon where no material remains or where it is
    /// interrupted.
    std::optional<Polygon> MakeOfCrossing(const Interruption& isOver) const
    {
        return CleanPiece(FlattenAll(), GetCaps(m_contours, m_fineness), isOver);
    }

    /// Adds what is drawn but not held: contours without area, and what encloses none where contours cross.
    /// \return what to take instead where that would take seconds; otherwise None
    OutlineLoss AddSpurs(Polygon& polygon, bool areCrossing, const Interruption& isOver) const
    {
        Polygon drawn = m_lines;
        if (areCrossing) {
            const Polygon rings = FlattenAll();
            drawn.insert(drawn.end(), rings.begin(), rings.end());
        }
        if (drawn.empty())
            return OutlineLoss::None;
        Polygon all = polygon;
        all.insert(all.end(), m_lines.begin(), m_lines.end());
        if (!m_lines.empty() && AreCrossingOften(all, isOver))
            return OutlineLoss::Hull;
        const Polygon spurs = GetSpurs(drawn, polygon);
        all = polygon;
        all.insert(all.end(), spurs.begin(), spurs.end());
        if (!spurs.empty() && IsCostlyToClean(all, isOver))
            return OutlineLoss::CostlyHull;
        if (!spurs.empty())
            polygon = CleanPolygon(all);
        return OutlineLoss::None;
    }

    size_t GetContourCount() const { return m_contours.size(); }
    OutlineLoss GetLoss() const { return m_fineness.isCoarse ? OutlineLoss::Coarse : OutlineLoss::None; }

private:
    Polygon FlattenAll() const
    {
        Polygon rings;
        for (const Contour& contour : m_contours)
            rings.push_back(Flatten(contour, ArcSide::Chords, m_fineness));
        return rings;
    }

    /// Sets contours without area aside and puts the largest one first.
    void Select(const std::vector<Contour>& contours, const Interruption& isOver)
    {
        double largest = 0;
        for (const Contour& contour : contours) {
            if (isOver())
                return;
            const Ring ring = Flatten(contour, ArcSide::Chords, m_fineness);
            const bool isSimple = ring.size() >= 3 && IsSimple({ring}, isOver);
            const double area = isSimple           ? std::abs(GetSignedArea(contour))
                                : ring.size() >= 3 ? GetAreaOfCrossing(ring)
                                                   : 0;
            if (!(area > kNoArea * m_diameter * m_diameter)) {
                if (ring.size() > 1)
                    m_lines.push_back(ring);
                continue;
            }
            m_areSimple = m_areSimple && isSimple;
            m_contours.push_back(contour);
            if (area > largest)
                std::swap(m_contours.front(), m_contours.back());
            largest = std::max(largest, area);
        }
    }

    /// Puts many holes in an order in which trees over them are quick.
    void Sort()
    {
        if (m_contours.size() <= kFewContours)
            return;
        std::vector<Box> boxes;
        for (size_t i = 1; i < m_contours.size(); ++i)
            boxes.push_back(GetOutlineBox({m_contours[i]}));
        std::vector<Contour> sorted{std::move(m_contours[0])};
        for (const size_t i : GetSpatialOrder(boxes))
            sorted.push_back(std::move(m_contours[i + 1]));
        m_contours = std::move(sorted);
    }

    double m_diameter = 0;
    Fineness m_fineness;
    std::vector<Contour> m_contours;
    Polygon m_lines; // contours without area
    bool m_areSimple = true;
};

/// Checks whether a hull is nothing but the outline: all edges run along it, by their middles.
bool IsAlong(const Ring& hull, const Polygon& rings, double tolerance)
{
    size_t pairs = 0;
    for (const Ring& ring : rings) {
        for (size_t i = 0; i < ring.size(); ++i) {
            const Point middle = (ring[i] + ring[(i + 1) % ring.size()]) * 0.5;
            pairs += hull.size();
            if (pairs > kMostPairs || GetDistanceToBoundary(middle, {hull}) > tolerance)
                return false;
        }
    }
    return true;
}

/// Returns the convex hull of an outline that cannot be cleaned.
/// \param cause  what becomes of the loss where the hull is not the outline itself
Polygon MakeHullInstead(const std::vector<Contour>& contours, OutlineLoss cause, std::string& reason,
                        OutlineLoss* loss)
{
    Polygon hull = MakeOuterHull(contours, reason, loss);
    if (loss && *loss == OutlineLoss::Hull)
        *loss = cause;
    return hull;
}

bool AreMeasurable(const std::vector<Contour>& contours, std::string& reason)
{
    reason = "";
    if (!std::all_of(contours.begin(), contours.end(), [](const Contour& c) { return IsFinite(c); }))
        reason = "outline has coordinates that are no numbers";
    else if (const Box box = GetOutlineBox(contours); !box.IsWithinReach())
        reason = "outline reaches beyond 1000 km";
    return reason.empty();
}

} // namespace

bool HasArcs(const Contour& contour)
{
    return std::any_of(contour.segments.begin(), contour.segments.end(),
                       [](const Segment& segment) { return segment.isArc; });
}

OutlineLoss GetLossOfTangled(const Polygon& rings, const Interruption& isOver)
{
    if (!IsCostlyToClean(rings, isOver))
        return AreCrossingOften(rings, isOver) ? OutlineLoss::Hull : OutlineLoss::None;
    // The crossings only decide on the reason: those of some of the edges are enough.
    size_t looks = kMostLooks / (1 + CountCorners(rings));
    bool isCutShort = false;
    const bool areCrossing = AreCrossingOften(rings, [&] {
        isCutShort = looks-- == 0 || isOver();
        return isCutShort;
    });
    return areCrossing && !isCutShort ? OutlineLoss::Hull : OutlineLoss::CostlyHull;
}

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
    const Box box = GetOutlineBox({contour});
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
                         const Interruption& isOver, OutlineLoss* loss)
{
    if (!AreMeasurable(contours, reason))
        return {};
    const PolygonMaker maker(contours, isOver);
    if (isOver())
        return {};
    std::optional<Polygon> polygon = Polygon();
    if (maker.GetContourCount() > 0) {
        polygon = maker.MakeOfSimple(isOver);
        const bool areCrossing = polygon->empty() && !isOver();
        OutlineLoss lossOfTangled = areCrossing ? maker.GetLossOfCrossing(isOver) : OutlineLoss::None;
        if (areCrossing && lossOfTangled == OutlineLoss::None)
            polygon = maker.MakeOfCrossing(isOver);
        if (polygon && !polygon->empty())
            lossOfTangled = maker.AddSpurs(*polygon, areCrossing, isOver);
        if (isOver())
            return {};
        if (lossOfTangled != OutlineLoss::None)
            return MakeHullInstead(contours, lossOfTangled, reason, loss);
    }
    if (loss)
        *loss = maker.GetLoss();
    if (!polygon)
        reason = "a hole lies outside of the outline";
    else if (polygon->empty())
        reason = "outline encloses no area";
    return polygon.value_or(Polygon());
}

Polygon MakeOuterHull(const std::vector<Contour>& contours, std::string& reason, OutlineLoss* loss)
{
    if (!AreMeasurable(contours, reason))
        return {};
    const Box box = GetOutlineBox(contours);
    const double diameter = box.IsEmpty() ? 0 : Length(box.max - box.min);
    const Fineness fineness = ChooseFineness(contours, diameter);
    Polygon rings;
    for (const Contour& contour : contours)
        for (const ArcSide side : {ArcSide::Outer, ArcSide::Hole})
            rings.push_back(Flatten(contour, side, fineness));
    const Ring hull = GetConvexHull(rings);
    if (loss) // chords lie up to twice the sagitta within tangents
        *loss = IsAlong(hull, rings, 2 * fineness.sagitta) ? OutlineLoss::None : OutlineLoss::Hull;
    if (hull.size() >= 3 && GetSignedArea(hull) > kNoArea * diameter * diameter)
        return {hull};
    reason = "outline encloses no area";
    return {};
}

} // namespace ZORNestSolver
