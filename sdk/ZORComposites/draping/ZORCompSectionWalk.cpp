#include "ZORCompSectionWalk_p.h"
#include "ZORCompSteps_p.h"

#include <ZORMathematics/ZORMathFunctions.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <algorithm>
#include <cmath>

using Location = ZORGeoLocationOnSurface;
using zor::comp::kStepSlack;

namespace {

constexpr double kOnCorner = 1e-9; // weights below count as none where a section starts

int IndexOf(const ZORGeoSurface::Corners& corners, int vertex)
{
    return corners[0] == vertex ? 0 : corners[1] == vertex ? 1 : corners[2] == vertex ? 2 : -1;
}

} // namespace

ZORCompSectionWalk::ZORCompSectionWalk(const ZORGeoSurface& surface)
    : m_surface(surface)
    , m_vertices(surface.GetVertexArray().constData())
    , m_corners(surface.GetCornerArray().constData())
{
}

ZORCompSectionWalk::Outcome ZORCompSectionWalk::FindCorner(const Location& c, const ZORMathPoint& a,
                                                           const ZORMathPoint& b, double step, Location& d)
{
    m_middle = PointBetween(a, b, 0.5);
    m_normal = b - a;
    m_heading = (m_middle - c.point).GetNormalized();
    m_step = step;
    if (!(std::abs(Dot(a - c.point, b - c.point)) < kFoldedCosine * step * step))
        return Folds;
    FindStarts(c);
    Outcome outcome = SurfaceEnds;
    for (size_t i = 0; i < m_starts.size(); ++i) {
        const Outcome found = Follow(m_starts[i].segment, c, a, b, d);
        if (found == Found)
            return Found;
        if (i == 0)
            outcome = found;
    }
    return outcome;
}

// Follows the section until it is one step from A.
ZORCompSectionWalk::Outcome ZORCompSectionWalk::Follow(Segment segment, const Location& c,
                                                       const ZORMathPoint& a, const ZORMathPoint& b,
                                                       Location& d) const
{
    for (int count = 0; count <= m_surface.GetNumTriangles(); ++count) {
        const ZORMathVector fromStart = segment.toPoint - c.point;
        if ((segment.toPoint - a).GetLength() >= m_step * (1 - kStepSlack) && Dot(fromStart, m_heading) > 0
            && fromStart.GetLength() > 0.01 * m_step)
            return Leave(segment, c.point, a, b, d);
        if (!Advance(segment))
            return SurfaceEnds;
    }
    return Folds; // a closed section that never gets a step away
}

// The neighbour across the side between two corners of a triangle.
int ZORCompSectionWalk::NeighborAcross(int triangle, int corner, int otherCorner) const
{
    int neighbors[3];
    m_surface.GetNeighbors(triangle, neighbors[0], neighbors[1], neighbors[2]);
    return neighbors[(corner + 1) % 3 == otherCorner ? corner : otherCorner];
}

// Lets a segment end where the section crosses the side between two corners on different sides of the plane.
void ZORCompSectionWalk::SetEnd(Segment& segment, int corner, double height, int otherCorner,
                                double otherHeight) const
{
    const ZORGeoSurface::Corners& corners = CornersOf(segment.triangle);
    const double part = height / (height - otherHeight);
    segment.corners[0] = corner;
    segment.corners[1] = otherCorner;
    segment.to = {};
    segment.to[size_t(corner)] = 1 - part;
    segment.to[size_t(otherCorner)] = part;
    segment.toPoint =
        PointBetween(m_vertices[corners[size_t(corner)]], m_vertices[corners[size_t(otherCorner)]], part);
}

// The segments of the section that leave C towards the middle of A and B, or within rounding of C: there is one,
// unless triangles without extent lie around.
void ZORCompSectionWalk::FindStarts(const Location& c)
{
    m_starts.clear();
    const Weights weights{1 - c.weightB - c.weightC, c.weightB, c.weightC};
    const auto largest = std::max_element(weights.begin(), weights.end());
    if (*largest > 1 - kOnCorner) {
        StartAtVertex(c.triangle, int(largest - weights.begin()));
    } else if (!StartInside(c)) {
        // Along a side: the plane passes by the triangle within rounding.
        const int corner = int(std::min_element(weights.begin(), weights.end()) - weights.begin());
        const int neighbor = NeighborAcross(c.triangle, (corner + 1) % 3, (corner + 2) % 3);
        if (neighbor == 0)
            return;
        Weights mapped{};
        for (const int other : {(corner + 1) % 3, (corner + 2) % 3}) {
            const int index = IndexOf(CornersOf(neighbor), CornersOf(c.triangle)[size_t(other)]);
            mapped[size_t(index)] = weights[size_t(other)];
        }
        StartInside({c.surface, neighbor, mapped[1], mapped[2], c.point});
    }
    std::stable_sort(m_starts.begin(), m_starts.end(),
                     [](const Start& a, const Start& b) { return a.cosine > b.cosine; });
}

void ZORCompSectionWalk::AddStart(const Segment& segment)
{
    const ZORMathVector along = segment.toPoint - segment.fromPoint;
    const double length = along.GetLength();
    const bool hasDirection = length > 1e-12 * m_step;
    const double cosine = hasDirection ? Dot(along, m_heading) / length : 0;
    if (!hasDirection || cosine > 0)
        m_starts.push_back({cosine, segment});
}

// \return false when the section does not pass the triangle
bool ZORCompSectionWalk::StartInside(const Location& c)
{
    const ZORGeoSurface::Corners& corners = CornersOf(c.triangle);
    const double heights[3] = {HeightOf(corners[0]), HeightOf(corners[1]), HeightOf(corners[2])};
    int alone = -1; // the corner that has the plane between itself and both others
    for (int corner = 0; corner < 3; ++corner) {
        const bool isInFront = IsInFront(heights[corner]);
        if (isInFront != IsInFront(heights[(corner + 1) % 3])
            && isInFront != IsInFront(heights[(corner + 2) % 3]))
            alone = corner;
    }
    if (alone < 0)
        return false;
    Segment segment;
    segment.triangle = c.triangle;
    segment.from = {1 - c.weightB - c.weightC, c.weightB, c.weightC};
    segment.fromPoint = c.point;
    for (const int other : {(alone + 1) % 3, (alone + 2) % 3}) {
        SetEnd(segment, alone, heights[alone], other, heights[other]);
        AddStart(segment);
    }
    return true;
}

// The sections that leave a vertex through the triangles around it.
void ZORCompSectionWalk::StartAtVertex(int triangle, int corner)
{
    const int vertex = CornersOf(triangle)[size_t(corner)];
    for (const int firstSide : {1, 2}) {
        int current = triangle;
        int arrival = CornersOf(triangle)[size_t((corner + firstSide) % 3)]; // the turn goes on away from it
        do {
            if (firstSide == 1 || current != triangle)
                StartInFan(current, vertex);
            const ZORGeoSurface::Corners& corners = CornersOf(current);
            const int self = IndexOf(corners, vertex);
            const int next = corners[size_t((self + 1) % 3)] == arrival ? (self + 2) % 3 : (self + 1) % 3;
            arrival = corners[size_t(next)];
            current = NeighborAcross(current, self, next);
        } while (current != 0 && current != triangle);
        if (current == triangle)
            break; // around the vertex
    }
}

void ZORCompSectionWalk::StartInFan(int triangle, int vertex)
{
    const ZORGeoSurface::Corners& corners = CornersOf(triangle);
    const int self = IndexOf(corners, vertex);
    const int next = (self + 1) % 3;
    const int last = (self + 2) % 3;
    const double nextHeight = HeightOf(corners[size_t(next)]);
    const double lastHeight = HeightOf(corners[size_t(last)]);
    if (IsInFront(nextHeight) == IsInFront(lastHeight))
        return;
    Segment segment;
    segment.triangle = triangle;
    segment.from[size_t(self)] = 1;
    segment.fromPoint = m_vertices[vertex];
    SetEnd(segment, next, nextHeight, last, lastHeight);
    AddStart(segment);
}

// Goes on into the neighbour that the segment leads to.
bool ZORCompSectionWalk::Advance(Segment& segment) const
{
    const int neighbor = NeighborAcross(segment.triangle, segment.corners[0], segment.corners[1]);
    if (neighbor == 0)
        return false;
    const ZORGeoSurface::Corners& before = CornersOf(segment.triangle);
    const ZORGeoSurface::Corners& corners = CornersOf(neighbor);
    int side[2];
    segment.from = {};
    for (int i = 0; i < 2; ++i) {
        side[i] = IndexOf(corners, before[size_t(segment.corners[i])]);
        segment.from[size_t(side[i])] = segment.to[size_t(segment.corners[i])];
    }
    segment.triangle = neighbor;
    segment.fromPoint = segment.toPoint;
    const int opposite = 3 - side[0] - side[1];
    const double height = HeightOf(corners[size_t(opposite)]);
    const double sideHeight = HeightOf(corners[size_t(side[0])]);
    if (IsInFront(height) != IsInFront(sideHeight))
        SetEnd(segment, opposite, height, side[0], sideHeight);
    else
        SetEnd(segment, opposite, height, side[1], HeightOf(corners[size_t(side[1])]));
    return true;
}

// The place of a segment that is one step from A, with its end farther away.
ZORCompSectionWalk::Outcome ZORCompSectionWalk::Leave(const Segment& segment, const ZORMathPoint& c,
                                                      const ZORMathPoint& a, const ZORMathPoint& b,
                                                      Location& d) const
{
    const ZORMathVector along = segment.toPoint - segment.fromPoint;
    const ZORMathVector fromA = segment.fromPoint - a;
    const double square = Dot(along, along);
    const double half = Dot(along, fromA);
    const double root =
        std::sqrt(std::max(0.0, half * half - square * (Dot(fromA, fromA) - m_step * m_step)));
    // The greater root, in the form that does not cancel.
    const double part =
        half > 0 ? (m_step * m_step - Dot(fromA, fromA)) / (half + root) : (root - half) / square;
    if (!(part > -1e-6 && part < 1 + 1e-6))
        return Folds;
    const double inner = std::clamp(part, 0.0, 1.0);
    d.surface = &m_surface;
    d.triangle = segment.triangle;
    d.weightB = std::clamp(segment.from[1] + inner * (segment.to[1] - segment.from[1]), 0.0, 1.0);
    d.weightC = std::clamp(segment.from[2] + inner * (segment.to[2] - segment.from[2]), 0.0, 1.0);
    d.point = PointBetween(segment.fromPoint, segment.toPoint, inner);

    const double tolerance = 1e-7 * m_step;
    if (std::abs((d.point - a).GetLength() - m_step) > tolerance
        || std::abs((d.point - b).GetLength() - m_step) > tolerance)
        return Folds;
    const ZORMathVector diagonal = d.point - c;
    const double cosine =
        Dot(diagonal, diagonal) / (2 * m_step * m_step) - 1; // of the angle between the yarns
    return std::abs(cosine) < kFoldedCosine ? Found : Folds;
}
