#include "ZORGeoTriangleStrip_p.h"

#include <ZORMathematics/ZORMathFunctions.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <unordered_map>

namespace {

// Flips gain nothing that counts when the angle is closer to pi than this.
constexpr double kStraightAngle = std::numbers::pi - 1e-9;

double AngleAt(const ZORMathPoint& vertex, const ZORMathPoint& a, const ZORMathPoint& b)
{
    return AngleBetween(a - vertex, b - vertex);
}

// The side of a triangle at a corner that is not the given one.
int OtherSideAt(int corner, int side)
{
    return side == corner ? (corner + 2) % 3 : corner;
}

// The end of a side that is not the given corner.
int OtherEnd(int side, int corner)
{
    return side == corner ? (side + 1) % 3 : side;
}

// Above 0 when c lies left of the line from a to b.
double Turning(const ZORGeoPlaneVector& a, const ZORGeoPlaneVector& b, const ZORGeoPlaneVector& c)
{
    return Cross(b - a, c - a);
}

} // namespace

ZORGeoTriangleStrip::ZORGeoTriangleStrip(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& start,
                                         const ZORGeoMeshPlace& end, const std::vector<quint32>& sides)
    : m_mesh(&mesh)
    , m_start(start)
    , m_end(end)
    , m_sides(sides)
{
    Tauten();
}

void ZORGeoTriangleStrip::Tauten()
{
    RemoveLoops();
    Shrink();
    m_flipped = m_sides.size();
    Unfold();
    RunFunnel();
    MeasureLength();
}

// A shortest way meets a triangle once.
void ZORGeoTriangleStrip::RemoveLoops()
{
    std::unordered_map<int, size_t> indices;
    std::vector<quint32> sides;
    for (const quint32 side : m_sides) {
        const int triangle = int(side / 4);
        if (const auto known = indices.find(triangle); known != indices.end()) {
            for (size_t i = known->second; i < sides.size(); ++i)
                indices.erase(int(sides[i] / 4));
            sides.resize(known->second);
        }
        indices[triangle] = sides.size();
        sides.push_back(side);
    }
    m_sides = std::move(sides);
}

// Leaves out triangles before the last one that holds the start and behind the first one that holds the end.
void ZORGeoTriangleStrip::Shrink()
{
    ZORGeoMeshPlace place;
    size_t first = 0;
    size_t last = m_sides.size() - 1;
    for (size_t i = m_sides.size(); i-- > 0;) {
        if (ZorGeoExpressPlace(*m_mesh, m_start, TriangleAt(i), place)) {
            first = i;
            break;
        }
    }
    for (size_t i = first; i < m_sides.size(); ++i) {
        if (ZorGeoExpressPlace(*m_mesh, m_end, TriangleAt(i), place)) {
            last = i;
            break;
        }
    }
    m_sides.resize(last + 1);
    m_sides.erase(m_sides.begin(), m_sides.begin() + qsizetype(first));
    m_sides.back() = 4 * (m_sides.back() / 4) + 3;
}

namespace {

// A corner of a triangle in the frame of its opposite side PQ: P + along * PQ + across * (PQ turned).
struct Apex
{
    double along;
    double across;
};

Apex FindApex(const ZORMathPoint& p, const ZORMathPoint& q, const ZORMathPoint& r)
{
    const ZORMathVector side = q - p;
    const double squared = Dot(side, side);
    if (!(squared > 0))
        return {0, 0};
    return {Dot(side, r - p) / squared, Cross(side, r - p).GetLength() / squared};
}

} // namespace

void ZORGeoTriangleStrip::Unfold()
{
    m_gates.clear();
    const auto at = [this](int vertex) -> const ZORMathPoint& { return m_mesh->vertices[vertex]; };
    // The corner opposite to a gate, on the near side of it (-1) or the far side (1).
    const auto lay = [&at](const Gate& gate, int vertex, double side) {
        const auto [along, across] = FindApex(at(gate.rightVertex), at(gate.leftVertex), at(vertex));
        const double dx = gate.left.x - gate.right.x;
        const double dy = gate.left.y - gate.right.y;
        if (dx == 0 && dy == 0) { // no direction is lost
            const double distance = at(gate.rightVertex).DistanceTo(at(vertex));
            return Point{gate.right.x, gate.right.y + side * distance};
        }
        return Point{gate.right.x + along * dx + side * across * dy,
                     gate.right.y + along * dy - side * across * dx};
    };
    const auto blend = [this](const ZORGeoMeshPlace& place, const Gate& gate, const Point& third) {
        Point point;
        for (size_t corner = 0; corner < 3; ++corner) {
            const int vertex = m_mesh->triangles[place.triangle][corner];
            const Point& laid = vertex == gate.leftVertex    ? gate.left
                                : vertex == gate.rightVertex ? gate.right
                                                             : third;
            point.x += place.weights[corner] * laid.x;
            point.y += place.weights[corner] * laid.y;
        }
        return point;
    };
    for (size_t i = 0; i + 1 < m_sides.size(); ++i) {
        const auto& corners = m_mesh->triangles[TriangleAt(i)];
        const size_t side = m_sides[i] % 4;
        const int from = corners[side];
        const int to = corners[(side + 1) % 3];
        ZORGeoMeshPlace place;
        if (i == 0) {
            Gate gate = {to, from, {0, at(from).DistanceTo(at(to))}, {0, 0}};
            ZorGeoExpressPlace(*m_mesh, m_start, TriangleAt(0), place);
            m_startPoint = blend(place, gate, lay(gate, corners[(side + 2) % 3], -1));
            m_gates.push_back(gate);
        } else {
            const Gate& former = m_gates.back();
            Gate gate = former;
            const auto isEntry = [&former](int vertex) {
                return vertex == former.leftVertex || vertex == former.rightVertex;
            };
            const int third = isEntry(from) ? to : from;
            const bool isLeftKept = former.leftVertex == from || former.leftVertex == to;
            (isLeftKept ? gate.rightVertex : gate.leftVertex) = third;
            (isLeftKept ? gate.right : gate.left) = lay(former, third, 1);
            m_gates.push_back(gate);
        }
    }
    if (m_gates.empty())
        return;
    const Gate& last = m_gates.back();
    ZORGeoMeshPlace place;
    ZorGeoExpressPlace(*m_mesh, m_end, TriangleAt(m_sides.size() - 1), place);
    Point third;
    for (const int vertex : m_mesh->triangles[place.triangle]) {
        if (vertex != last.leftVertex && vertex != last.rightVertex)
            third = lay(last, vertex, 1);
    }
    m_endPoint = blend(place, last, third);
}

void ZORGeoTriangleStrip::RunFunnel()
{
    m_turns.clear();
    const int count = int(m_gates.size());
    Point apex = m_startPoint;
    int apexGate = -1; // of the apex; gates behind it are open
    while (apexGate < count) {
        // The funnel from the apex: the innermost ends of gates so far.
        int left = -1;
        int right = -1;
        bool isTurn = false;
        Turn turn = {count, true};
        const auto leftPoint = [&] { return m_gates[size_t(left)].left; };
        const auto rightPoint = [&] { return m_gates[size_t(right)].right; };
        for (int i = apexGate + 1; i <= count; ++i) {
            const Point& newLeft = i < count ? m_gates[size_t(i)].left : m_endPoint;
            const Point& newRight = i < count ? m_gates[size_t(i)].right : m_endPoint;
            // Beyond the other side of the funnel the way has to turn there.
            if (left >= 0 && Turning(apex, leftPoint(), newRight) > 0) {
                turn = {left, true};
                isTurn = true;
                break;
            }
            if (right >= 0 && Turning(apex, rightPoint(), newLeft) < 0) {
                turn = {right, false};
                isTurn = true;
                break;
            }
            if (i == count)
                break;
            if (left < 0 || Turning(apex, leftPoint(), newLeft) <= 0)
                left = i;
            if (right < 0 || Turning(apex, rightPoint(), newRight) >= 0)
                right = i;
        }
        const Point next = !isTurn       ? m_endPoint
                           : turn.isLeft ? m_gates[size_t(turn.gate)].left
                                         : m_gates[size_t(turn.gate)].right;
        PassGates(apexGate + 1, isTurn ? turn.gate : count - 1, apex, next);
        if (!isTurn)
            return;
        m_turns.push_back(turn);
        m_gates[size_t(turn.gate)].u = turn.isLeft ? 1 : 0;
        // Gates that end at the same vertex are passed there.
        apex = next;
        apexGate = turn.gate;
        const auto vertexOf = [&](int gate) {
            return turn.isLeft ? m_gates[size_t(gate)].leftVertex : m_gates[size_t(gate)].rightVertex;
        };
        while (apexGate + 1 < count && vertexOf(apexGate + 1) == vertexOf(turn.gate)) {
            ++apexGate;
            m_gates[size_t(apexGate)].u = turn.isLeft ? 1 : 0;
        }
    }
}

// Where a straight piece of the way passes gates.
void ZORGeoTriangleStrip::PassGates(int first, int last, const Point& from, const Point& to)
{
    for (int i = first; i <= last; ++i) {
        Gate& gate = m_gates[size_t(i)];
        const double right = Turning(from, to, gate.right);
        const double left = Turning(from, to, gate.left);
        const double u = right / (right - left);
        gate.u = std::isfinite(u) ? std::clamp(u, 0.0, 1.0) : 0.5;
        if (gate.u < 1e-12)
            gate.u = 0;
        if (gate.u > 1 - 1e-12)
            gate.u = 1;
    }
}

ZORGeoMeshPlace ZORGeoTriangleStrip::PlaceAtGate(size_t gate) const
{
    const int triangle = TriangleAt(gate);
    const int side = int(m_sides[gate] % 4);
    const bool isFromRight = m_mesh->triangles[triangle][size_t(side)] == m_gates[gate].rightVertex;
    return ZorGeoPlaceOnSide(*m_mesh, triangle, side, isFromRight ? m_gates[gate].u : 1 - m_gates[gate].u);
}

void ZORGeoTriangleStrip::MeasureLength()
{
    m_length = 0;
    ZORMathPoint last = m_start.point;
    for (size_t i = 0; i < m_gates.size(); ++i) {
        const ZORMathPoint next = PointAtGate(i);
        m_length += last.DistanceTo(next);
        last = next;
    }
    m_length += last.DistanceTo(m_end.point);
}

// The angle at a vertex, in a triangle of the strip, between where the way enters or leaves the triangle and
// the side that the strip does not cross there.
double ZORGeoTriangleStrip::GetOuterAngle(size_t index, int vertex, int strippedSide,
                                          const ZORMathPoint& passed) const
{
    const int triangle = TriangleAt(index);
    const int corner = ZorGeoCornerOf(*m_mesh, triangle, vertex);
    const int outer = OtherEnd(OtherSideAt(corner, strippedSide), corner);
    const auto& corners = m_mesh->triangles[triangle];
    return AngleAt(m_mesh->vertices[vertex], passed, m_mesh->vertices[corners[size_t(outer)]]);
}

bool ZORGeoTriangleStrip::Flip(const Turn& turn)
{
    const auto vertexOf = [&](size_t gate) {
        return turn.isLeft ? m_gates[gate].leftVertex : m_gates[gate].rightVertex;
    };
    // The gates at the vertex: first ... last.
    const size_t middle = size_t(turn.gate);
    const int vertex = vertexOf(middle);
    size_t first = middle;
    size_t last = middle;
    while (first > 0 && vertexOf(first - 1) == vertex)
        --first;
    while (last + 1 < m_gates.size() && vertexOf(last + 1) == vertex)
        ++last;
    if (last + 1 >= m_flipped)
        return false;

    const int firstSide = int(m_sides[first] % 4);
    const int lastEntry = int(m_mesh->GetNeighbor(TriangleAt(last), int(m_sides[last] % 4)) % 4);
    double angle = GetOuterAngle(first, vertex, firstSide, first > 0 ? PointAtGate(first - 1) : m_start.point)
                   + GetOuterAngle(last + 1, vertex, lastEntry,
                                   last + 1 < m_gates.size() ? PointAtGate(last + 1) : m_end.point);
    // Around the vertex over the other side.
    std::vector<quint32> around;
    const int end = TriangleAt(last + 1);
    int triangle = TriangleAt(first);
    int side = OtherSideAt(ZorGeoCornerOf(*m_mesh, triangle, vertex), firstSide);
    for (;;) {
        const quint32 neighbor = m_mesh->GetNeighbor(triangle, side);
        if (neighbor == 0 || angle >= kStraightAngle)
            return false;
        around.push_back(quint32(4 * triangle + side));
        triangle = int(neighbor / 4) - 1;
        if (triangle == end)
            break;
        const int corner = ZorGeoCornerOf(*m_mesh, triangle, vertex);
        const auto& corners = m_mesh->triangles[triangle];
        angle += AngleAt(m_mesh->vertices[vertex], m_mesh->vertices[corners[size_t(corner + 1) % 3]],
                         m_mesh->vertices[corners[size_t(corner + 2) % 3]]);
        side = OtherSideAt(corner, int(neighbor % 4));
    }
    if (angle >= kStraightAngle)
        return false;
    m_sides.erase(m_sides.begin() + qsizetype(first), m_sides.begin() + qsizetype(last) + 1);
    m_sides.insert(m_sides.begin() + qsizetype(first), around.begin(), around.end());
    m_flipped = first;
    return true;
}

ZORGeoMeshPath ZORGeoTriangleStrip::GetPath(bool isReversed) const
{
    ZORGeoMeshPath path;
    const auto append = [&](const ZORGeoMeshPlace& place, int triangle) {
        ZORGeoMeshPlace expressed;
        ZorGeoExpressPlace(*m_mesh, place, triangle, expressed);
        if (!path.empty() && path.back().point == expressed.point)
            path.back() = expressed;
        else
            path.push_back(expressed);
    };
    const size_t count = m_sides.size();
    append(isReversed ? m_end : m_start, TriangleAt(isReversed ? count - 1 : 0));
    for (size_t i = 0; i < m_gates.size(); ++i) {
        const size_t gate = isReversed ? m_gates.size() - 1 - i : i;
        append(PlaceAtGate(gate), TriangleAt(isReversed ? gate : gate + 1));
    }
    append(isReversed ? m_start : m_end, TriangleAt(isReversed ? 0 : count - 1));
    return path;
}
