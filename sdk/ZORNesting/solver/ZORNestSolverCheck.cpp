#include "ZORNestSolverCheck.h"

#include "ZORNestSolverItemType.h"
#include "ZORNestSolverOffset.h"

namespace ZORNestSolver {

namespace {

constexpr double AngleTolerance = 1e-9;

struct Edge
{
    Point a;
    Point b;
    Box GetBox() const
    {
        Box box;
        box.Add(a);
        box.Add(b);
        return box;
    }
};

/// The edges that reach into a box, in the order of their rings.
std::vector<Edge> GetEdges(const Polygon& polygon, const Box& within)
{
    std::vector<Edge> edges;
    for (const Ring& ring : polygon) {
        for (size_t i = 0; i < ring.size(); ++i) {
            const Edge edge{ring[i], ring[(i + 1) % ring.size()]};
            if (edge.GetBox().Overlaps(within))
                edges.push_back(edge);
        }
    }
    return edges;
}

double GetDistance(Point p, const Edge& edge)
{
    return GetDistanceToSegment(p, edge.a, edge.b);
}

/// Whether no point of a segment lies deeper in the polygon than the tolerance. The distance from one edge is
/// convex along the segment: where both ends are near to the same edge, all of it is.
class DepthTest
{
public:
    DepthTest(const Polygon& polygon, std::vector<Edge> edges, double tolerance)
        : m_polygon(polygon)
        , m_edges(std::move(edges))
        , m_tolerance(tolerance)
    {
    }
    bool IsShallow(Point a, Point b) const
    {
        const bool flat = std::any_of(m_edges.begin(), m_edges.end(), [&](const Edge& edge) {
            return GetDistance(a, edge) <= m_tolerance && GetDistance(b, edge) <= m_tolerance;
        });
        if (flat || Length(b - a) <= m_tolerance)
            return true;
        const Point middle = (a + b) * 0.5;
        if (!IsInside(middle, m_polygon) && !DoesCross(a, b))
            return true;
        return IsShallow(middle) && IsShallow(a, middle) && IsShallow(middle, b);
    }
    bool IsShallow(Point p) const
    {
        return !IsInside(p, m_polygon) || std::any_of(m_edges.begin(), m_edges.end(), [&](const Edge& edge) {
            return GetDistance(p, edge) <= m_tolerance;
        });
    }

private:
    bool DoesCross(Point a, Point b) const
    {
        return std::any_of(m_edges.begin(), m_edges.end(),
                           [&](const Edge& edge) { return DoSegmentsMeet(a, b, edge.a, edge.b); });
    }

    const Polygon& m_polygon;
    std::vector<Edge> m_edges;
    double m_tolerance;
};

Point GetDeepPoint(const Polygon& polygon)
{
    return FindPoles(polygon, 1).front().centre;
}

bool IsDeepInside(Point p, const Polygon& polygon, double tolerance)
{
    return IsInside(p, polygon) && GetDistanceToBoundary(p, polygon) > tolerance;
}

bool IsNested(const Polygon& a, const Polygon& b, double tolerance)
{
    const Box boxA = GetBox(a).Grown(tolerance);
    const Box boxB = GetBox(b).Grown(tolerance);
    return (boxB.Contains(GetBox(a)) && IsDeepInside(GetDeepPoint(a), b, tolerance))
           || (boxA.Contains(GetBox(b)) && IsDeepInside(GetDeepPoint(b), a, tolerance));
}

bool AreEdgesShallow(const Polygon& a, const Polygon& b, const Box& common, double tolerance)
{
    const DepthTest test(b, GetEdges(b, common), tolerance);
    const std::vector<Edge> edges = GetEdges(a, common);
    return std::all_of(edges.begin(), edges.end(),
                       [&test](const Edge& edge) { return test.IsShallow(edge.a, edge.b); });
}

/// Calls a function with the places of two polygons whose boxes come that near, until it returns false; a sweep
/// along x. Returns whether it never did.
template<class Function>
bool ForEachNearPair(const std::vector<Polygon>& polygons, double distance, Function function)
{
    std::vector<std::pair<Box, size_t>> sorted;
    for (size_t i = 0; i < polygons.size(); ++i)
        sorted.push_back({GetBox(polygons[i]).Grown(distance / 2), i});
    std::sort(sorted.begin(), sorted.end(),
              [](const auto& a, const auto& b) { return a.first.min.x < b.first.min.x; });
    for (size_t a = 0; a < sorted.size(); ++a)
        for (size_t b = a + 1; b < sorted.size() && sorted[b].first.min.x <= sorted[a].first.max.x; ++b)
            if (sorted[a].first.Overlaps(sorted[b].first) && !function(sorted[a].second, sorted[b].second))
                return false;
    return true;
}

bool IsAngleAllowed(const Pose& pose, const Item& item, const Job& job)
{
    const auto classes = GetPoseClasses(item, job);
    return std::any_of(classes.begin(), classes.end(), [&pose](const PoseClass& poseClass) {
        if (poseClass.mirrored != pose.mirrored)
            return false;
        const double difference = std::remainder(pose.angle - poseClass.angle, 8 * std::atan(1.0));
        return std::abs(difference) <= poseClass.deviation + AngleTolerance;
    });
}

/// A sheet of the solution with its items where they lie.
class SheetCheck
{
public:
    SheetCheck(const Job& job, const std::vector<Polygon>& outlines, const NestedSheet& sheet, size_t number,
               std::vector<std::string>& faults)
        : m_job(job)
        , m_kind(job.kinds[sheet.kind])
        , m_sheet(sheet)
        , m_number(number)
        , m_faults(faults)
    {
        for (const Placement& placement : sheet.placements)
            m_placed.push_back(Transform(placement.pose).Apply(outlines[placement.item]));
    }

    void Run()
    {
        const double length = m_kind.IsRoll() ? m_sheet.usedLength : m_kind.length;
        const double frame = m_job.frameWidth - CheckTolerance;
        const Box usable{{m_kind.leftTrim + frame, m_kind.bottomTrim + frame},
                         {length - m_kind.rightTrim - frame, m_kind.width - m_kind.topTrim - frame}};
        std::vector<Polygon> missing;
        if (!m_kind.outline.empty())
            missing = CutFromBox(GetBox(m_kind.outline).Grown(1), m_kind.outline);
        for (size_t i = 0; i < m_placed.size(); ++i) {
            if (!IsAngleAllowed(m_sheet.placements[i].pose, GetItem(i), m_job))
                Report(i, "has a rotation or hand that is not allowed");
            if (!usable.Contains(GetBox(m_placed[i])))
                Report(i, "leaves the usable part of the sheet");
            CheckAgainst(i, m_kind.defects, m_job.defectSeparation, "lies on a defect");
            CheckAgainst(i, missing, m_job.frameWidth, "leaves the outline of the sheet");
        }
        CheckPairs();
    }

private:
    const Item& GetItem(size_t i) const { return m_job.items[m_sheet.placements[i].item]; }
    void Report(size_t i, const std::string& fault)
    {
        m_faults.push_back("sheet " + std::to_string(m_number) + ": item "
                           + std::to_string(m_sheet.placements[i].item) + " " + fault);
    }
    void CheckAgainst(size_t i, const std::vector<Polygon>& areas, double distance, const std::string& fault)
    {
        for (const Polygon& area : areas)
            if (!AreApart(m_placed[i], area, distance))
                Report(i, fault);
    }
    void CheckPairs()
    {
        std::vector<std::pair<size_t, size_t>> tooNear;
        ForEachNearPair(m_placed, m_job.separation, [&](size_t i, size_t j) {
            if (!AreApart(m_placed[i], m_placed[j], m_job.separation))
                tooNear.push_back(std::minmax(i, j));
            return true;
        });
        std::sort(tooNear.begin(), tooNear.end());
        for (const auto& [i, j] : tooNear)
            Report(i, "is too near to item " + std::to_string(m_sheet.placements[j].item));
    }

    const Job& m_job;
    const SheetKind& m_kind;
    const NestedSheet& m_sheet;
    size_t m_number;
    std::vector<std::string>& m_faults;
    std::vector<Polygon> m_placed;
};

/// Whether the sheet names sheets and items of the job only.
bool IsOfJob(const Job& job, const NestedSheet& sheet)
{
    return sheet.kind < job.kinds.size()
           && std::all_of(sheet.placements.begin(), sheet.placements.end(),
                          [&job](const Placement& placement) { return placement.item < job.items.size(); });
}

std::vector<Polygon> GetOutlines(const Job& job)
{
    std::vector<Polygon> outlines;
    std::string reason;
    for (const Item& item : job.items)
        outlines.push_back(MakeOuterPolygon(item.contours, reason));
    return outlines;
}

void CheckQuantities(const Job& job, const Solution& solution, std::vector<std::string>& faults)
{
    std::vector<int> counts(job.items.size(), 0);
    std::vector<int> sheets(job.kinds.size(), 0);
    for (const NestedSheet& sheet : solution.sheets) {
        if (!IsOfJob(job, sheet))
            continue;
        sheets[sheet.kind] += sheet.stack;
        for (const Placement& placement : sheet.placements)
            counts[placement.item] += sheet.stack;
    }
    for (const UnplacedItem& unplaced : solution.unplaced)
        if (unplaced.item < counts.size())
            counts[unplaced.item] += unplaced.count;
    for (size_t i = 0; i < counts.size(); ++i)
        if (counts[i] != std::max(0, job.items[i].quantity))
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

bool AreApart(const Polygon& a, const Polygon& b, double distance, double tolerance)
{
    const double reach = std::max(distance - tolerance, 0.0);
    const Box boxA = GetBox(a).Grown(reach / 2 + tolerance);
    const Box boxB = GetBox(b).Grown(reach / 2 + tolerance);
    if (!boxA.Overlaps(boxB))
        return true;
    if (IsNested(a, b, tolerance))
        return false;
    const Box common{{std::max(boxA.min.x, boxB.min.x), std::max(boxA.min.y, boxB.min.y)},
                     {std::min(boxA.max.x, boxB.max.x), std::min(boxA.max.y, boxB.max.y)}};
    const Box wide = common.Grown(reach + tolerance);
    if (reach <= 0)
        return AreEdgesShallow(a, b, wide, tolerance) && AreEdgesShallow(b, a, wide, tolerance);
    const std::vector<Edge> edgesB = GetEdges(b, wide);
    for (const Edge& edge : GetEdges(a, wide))
        for (const Edge& other : edgesB)
            if (edge.GetBox().Grown(reach).Overlaps(other.GetBox())
                && GetSegmentDistance(edge.a, edge.b, other.a, other.b) < reach)
                return false;
    return true;
}

bool AreAllApart(const std::vector<Polygon>& polygons, double distance)
{
    return ForEachNearPair(polygons, distance, [&polygons, distance](size_t i, size_t j) {
        return AreApart(polygons[i], polygons[j], distance);
    });
}

std::vector<std::string> FindSheetFaults(const Job& job, const NestedSheet& sheet)
{
    std::vector<std::string> faults;
    SheetCheck(job, GetOutlines(job), sheet, 0, faults).Run();
    return faults;
}

std::vector<std::string> FindFaults(const Job& job, const Solution& solution)
{
    std::vector<std::string> faults;
    const std::vector<Polygon> outlines = GetOutlines(job);
    for (size_t number = 0; number < solution.sheets.size(); ++number)
        if (!IsOfJob(job, solution.sheets[number]))
            faults.push_back("sheet " + std::to_string(number)
                             + ": is of no kind or holds no item of the job");
        else
            SheetCheck(job, outlines, solution.sheets[number], number, faults).Run();
    CheckQuantities(job, solution, faults);
    return faults;
}

} // namespace ZORNestSolver
