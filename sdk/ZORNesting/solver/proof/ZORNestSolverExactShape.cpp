#include "ZORNestSolverExactShape.h"

#include "solver/geometry/ZORNestSolverSpatialOrder.h"

namespace ZORNestSolver::Exact {

namespace {

// A probe lies so deep that neither the tolerance nor rounding puts it in doubt.
constexpr double kProbeDepth = 10 * kTolerance;
constexpr size_t kMostProbesPerLine = 6;
constexpr size_t kManyContours = 50;
constexpr size_t kMostCrossings = 2000000; // of all lines on which probes are searched for

/// Returns the pieces of contour after contour in an order in which the tree over them is quick.
std::vector<Piece> Sorted(const std::vector<Piece>& pieces)
{
    std::vector<size_t> starts;
    std::vector<Box> boxes;
    for (size_t i = 0; i < pieces.size(); ++i) {
        if (i == 0 || pieces[i].contour != pieces[i - 1].contour) {
            starts.push_back(i);
            boxes.push_back({});
        }
        boxes.back().Add(pieces[i].a);
    }
    starts.push_back(pieces.size());
    std::vector<Piece> sorted;
    sorted.reserve(pieces.size());
    for (const size_t contour : GetSpatialOrder(boxes))
        for (size_t i = starts[contour]; i < starts[contour + 1]; ++i)
            sorted.push_back(pieces[i]);
    return sorted;
}

/// Turns a direction to the right, by quarter turns: 0 from the right, 1 from above, 2 from the left, 3 from
/// below.
Point ToRight(Point p, int direction)
{
    switch (direction) {
    case 0:
        return p;
    case 1:
        return {p.y, -p.x};
    case 2:
        return {-p.x, -p.y};
    default:
        return {-p.y, p.x};
    }
}

/// The direction in which the border of the box is nearest.
int GetShortWay(const Box& box, Point p)
{
    const double gaps[] = {box.max.x - p.x, box.max.y - p.y, p.x - box.min.x, p.y - box.min.y};
    return static_cast<int>(std::min_element(std::begin(gaps), std::end(gaps)) - std::begin(gaps));
}

bool IsOnWay(const Box& box, Point p, int direction)
{
    if (direction % 2 == 0)
        return box.min.y <= p.y && box.max.y >= p.y && (direction == 0 ? box.max.x >= p.x : box.min.x <= p.x);
    return box.min.x <= p.x && box.max.x >= p.x && (direction == 1 ? box.max.y >= p.y : box.min.y <= p.y);
}

/// How often a piece winds around a point, counted where it crosses the ray in a direction: its chord, and
/// the segment of the circle between chord and arc. Both ask for the same side of the chord, so that they
/// agree.
int CountWinding(const Piece& piece, Point p, int direction)
{
    const Point a = ToRight(piece.a - p, direction);
    const Point b = ToRight(piece.b - p, direction);
    const bool isLeft = Cross(b - a, Point{} - a) > 0;
    int winding = 0;
    if (a.y <= 0 && b.y > 0 && isLeft)
        ++winding;
    if (a.y > 0 && b.y <= 0 && !isLeft)
        --winding;
    const bool isTowardsArc = piece.IsArc() && (piece.sweep > 0) != isLeft;
    if (isTowardsArc && Dot(p - piece.a, (p - piece.center) + (piece.a - piece.center)) < 0)
        winding += piece.sweep > 0 ? 1 : -1;
    return winding;
}

bool IsFinite(const Contour& contour)
{
    return ZORNestSolver::IsFinite(contour.start)
           && std::all_of(contour.segments.begin(), contour.segments.end(), [](const Segment& segment) {
                  return ZORNestSolver::IsFinite(segment.end)
                         && (!segment.isArc || ZORNestSolver::IsFinite(segment.centre));
              });
}

/// Checks whether a ring holds something, by its area: loops in opposite directions may sum up to none.
bool HasArea(const Ring& ring)
{
    double twice = 0;
    double size = 0;
    for (size_t i = 0; i < ring.size(); ++i) {
        twice += Cross(ring[i] - ring[0], ring[(i + 1) % ring.size()] - ring[0]);
        size = std::max(size, Length(ring[i] - ring[0]));
    }
    return std::abs(twice) > 1e-12 * size * size; // false where a coordinate is not a number
}

} // namespace

Shape::Shape(const std::vector<Contour>& contours)
{
    std::vector<Piece> pieces;
    if (!std::all_of(contours.begin(), contours.end(),
                     [](const Contour& contour) { return IsFinite(contour); }))
        return;
    for (size_t i = 0; i < contours.size(); ++i)
        AppendPieces(pieces, contours[i], i);
    SetPieces(Sorted(pieces));
}

Shape::Shape(const Polygon& polygon, Side side)
    : m_side(side)
{
    std::vector<Piece> pieces;
    for (size_t number = 0; number < polygon.size(); ++number) {
        const Ring& ring = polygon[number];
        if (!HasArea(ring) && !HasLoops(ring))
            continue;
        for (size_t i = 0; i < ring.size(); ++i)
            if (const Point next = ring[(i + 1) % ring.size()]; !(ring[i] == next))
                pieces.push_back({ring[i], next, {}, 0, 0, number});
    }
    SetPieces(Sorted(pieces));
}

/// Checks whether a ring winds around something.
bool Shape::HasLoops(const Ring& ring)
{
    Shape shape({MakeContour(ring)});
    shape.FindProbes();
    return !shape.m_probes.empty();
}

void Shape::SetPieces(std::vector<Piece> pieces)
{
    m_pieces = std::move(pieces);
    std::vector<Box> boxes;
    boxes.reserve(m_pieces.size());
    for (size_t i = 0; i < m_pieces.size(); ++i) {
        boxes.push_back(m_pieces[i].GetBox());
        if (i == 0 || m_pieces[i].contour != m_pieces[i - 1].contour)
            m_starts.push_back(i);
    }
    m_tree = BoxTree(std::move(boxes));
}

Box Shape::GetPlacedBox(const Pose& pose) const
{
    const Transform transform(pose);
    Box box;
    for (const Piece& piece : m_pieces) {
        const Box placed = piece.Placed(transform, pose.mirrored).GetBox();
        box.Add(placed.min);
        box.Add(placed.max);
    }
    return box;
}

Shape Shape::Placed(const Pose& pose) const
{
    const Transform transform(pose);
    std::vector<Piece> pieces;
    pieces.reserve(m_pieces.size());
    for (const Piece& piece : m_pieces)
        pieces.push_back(piece.Placed(transform, pose.mirrored));
    Shape placed;
    placed.m_side = m_side;
    placed.SetPieces(std::move(pieces));
    placed.m_probes.reserve(m_probes.size());
    for (const Point probe : m_probes)
        placed.m_probes.push_back(transform.Apply(probe));
    return placed;
}

bool Shape::IsInside(Point p) const
{
    bool isInside = !IsBounded();
    if (!GetBox().Contains(p))
        return isInside;
    const int direction = GetShortWay(GetBox(), p);
    int winding = 0;
    size_t contour = 0;
    const auto endContour = [&] { isInside = (winding != 0) != isInside; };
    m_tree.ForEach([&](const Box& box) { return IsOnWay(box, p, direction); },
                   [&](size_t i) {
                       if (m_pieces[i].contour != contour) {
                           endContour();
                           winding = 0;
                           contour = m_pieces[i].contour;
                       }
                       winding += CountWinding(m_pieces[i], p, direction);
                   });
    endContour();
    return isInside;
}

double Shape::GetDistanceToPieces(Point p) const
{
    double distance = std::numeric_limits<double>::infinity();
    m_tree.ForEach(
        [&](const Box& box) {
            return GetGap(box, {p, p}) < distance;
        },
        [&](size_t i) { distance = std::min(distance, m_pieces[i].GetDistance(p)); });
    return distance;
}

void Shape::FindProbes()
{
    m_probes.clear();
    const bool isQuick = m_starts.size() > kManyContours;
    const std::vector<double> shares =
        isQuick ? std::vector{0.37} : std::vector{0.5, 0.29, 0.73, 0.13, 0.89, 0.04, 0.97};
    size_t crossings = 0;
    for (const size_t contour : GetLargestFirst())
        for (const double share : shares)
            for (const bool alongX : {true, false})
                if (crossings < kMostCrossings)
                    crossings += AppendProbes(contour, alongX, share);
}

/// Returns the contours by the sizes of their boxes. Where the search for probes ends early, small holes have none.
std::vector<size_t> Shape::GetLargestFirst() const
{
    std::vector<std::pair<double, size_t>> sizes; // negative
    for (size_t contour = 0; contour < m_starts.size(); ++contour) {
        const Box box = GetContourBox(contour);
        sizes.push_back({-Length(box.max - box.min), contour});
    }
    std::sort(sizes.begin(), sizes.end());
    std::vector<size_t> order;
    order.reserve(sizes.size());
    for (const auto& [size, contour] : sizes)
        order.push_back(contour);
    return order;
}

Box Shape::GetContourBox(size_t contour) const
{
    Box box;
    for (size_t i = m_starts[contour]; i < GetEnd(contour); ++i) {
        box.Add(m_tree.GetLeaf(i).min);
        box.Add(m_tree.GetLeaf(i).max);
    }
    return box;
}

/// Takes the middles of the widest stretches of the region next to a contour, on a line across its box. Returns the
/// number of pieces on the line.
size_t Shape::AppendProbes(size_t contour, bool alongX, double share)
{
    const size_t end = GetEnd(contour);
    const Box box = GetContourBox(contour);
    const Point middle = box.min + (box.max - box.min) * share;
    const Point normal = alongX ? Point{0, 1} : Point{1, 0};
    std::vector<std::pair<double, bool>> crossings; // with whether it is one of this contour
    std::vector<double> parts;
    const auto isCrossed = [&](const Box& leaf) {
        return alongX ? leaf.min.y <= middle.y && leaf.max.y >= middle.y
                      : leaf.min.x <= middle.x && leaf.max.x >= middle.x;
    };
    m_tree.ForEach(isCrossed, [&](size_t i) {
        parts.clear();
        AppendCrossings(parts, m_pieces[i], normal, Dot(normal, middle));
        for (const double part : parts) {
            const Point p = m_pieces[i].Evaluate(part);
            crossings.push_back({alongX ? p.x : p.y, i >= m_starts[contour] && i < end});
        }
    });
    std::sort(crossings.begin(), crossings.end());
    std::vector<std::pair<double, Point>> stretches; // the widest first
    for (size_t i = 1; i < crossings.size(); ++i) {
        const double at = (crossings[i - 1].first + crossings[i].first) / 2;
        if (crossings[i - 1].second || crossings[i].second)
            stretches.push_back({crossings[i - 1].first - crossings[i].first,
                                 alongX ? Point{at, middle.y} : Point{middle.x, at}});
    }
    std::sort(stretches.begin(), stretches.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    size_t count = 0;
    for (const auto& [width, p] : stretches) {
        if (count == kMostProbesPerLine || -width < 2 * kProbeDepth)
            break;
        if (!IsInside(p) || GetDistanceToPieces(p) < kProbeDepth)
            continue;
        m_probes.push_back(p);
        ++count;
    }
    return crossings.size();
}

} // namespace ZORNestSolver::Exact
