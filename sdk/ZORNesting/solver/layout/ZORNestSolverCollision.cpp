#include "ZORNestSolverCollision.h"

#include "solver/base/ZORNestSolverVector.h"

#include <array>
#include <cstdint>
#include <numbers>

namespace ZORNestSolver {

namespace {

constexpr float kRelativeEpsilon = 0.01F;
constexpr size_t kMostEdgePairs = 1000000; // to be measured one by one
constexpr double kContactNoise = 1e-7;     // by which shapes that touch may seem to overlap
constexpr float kRelativeMargin = 1e-6F;   // more than single precision is wrong by

void TakeRoots(Octet& values)
{
    for (int lane = 0; lane < 8; ++lane)
        values[lane] = __builtin_sqrtf(values[lane]);
}

/// In an order that does not depend on the vector unit.
float GetSum(const Octet& v)
{
    return ((v[0] + v[4]) + (v[2] + v[6])) + ((v[1] + v[5]) + (v[3] + v[7]));
}

/// Sums up, over all pairs of poles, how deep they reach into each other times the smaller radius. Leaves off
/// as soon as the sum reaches the bound.
ZOR_VECTOR_CLONES
float SumPoles(const Shape& a, const Shape& b, float dx, float dy, float epsilon, float bound)
{
    const size_t count = b.GetPaddedPoles();
    const float squared = epsilon * epsilon;
    const float twice = 2 * epsilon;
    Octet sums{};
    for (size_t i = 0; i < a.poleCount; ++i) {
        const float x = a.poleX[i] - dx;
        const float y = a.poleY[i] - dy;
        const float r = a.poleR[i];
        for (size_t k = 0; k < count; k += 8) {
            const Octet radii = At(&b.poleR[k]);
            const Octet ex = x - At(&b.poleX[k]);
            const Octet ey = y - At(&b.poleY[k]);
            Octet distance = ex * ex + ey * ey;
            TakeRoots(distance);
            const Octet depth = r + radii - distance;
            const Octet decayed = squared / (twice - (depth < epsilon ? depth : epsilon + Octet{}));
            sums += (depth < epsilon ? decayed : depth) * (radii < r ? radii : r + Octet{});
        }
        if (i % 4 == 3 && GetSum(sums) >= bound)
            break;
    }
    return GetSum(sums);
}

/// Poles of both shapes overlap by more than the margin. Only those of the first one are looked at that reach
/// into the box of the second one.
ZOR_VECTOR_CLONES
bool FindPoleOverlap(const Shape& a, const Shape& b, float dx, float dy, float margin)
{
    const float left = static_cast<float>(b.box.min.x) + dx;
    const float right = static_cast<float>(b.box.max.x) + dx;
    const float low = static_cast<float>(b.box.min.y) + dy;
    const float high = static_cast<float>(b.box.max.y) + dy;
    const size_t countA = a.GetPaddedPoles();
    const size_t countB = b.GetPaddedPoles();
    for (size_t i = 0; i < countA; i += 8) {
        const Octet x = At(&a.poleX[i]);
        const Octet y = At(&a.poleY[i]);
        const Octet r = At(&a.poleR[i]) - margin;
        const OctetMask reaching = (x + r > left) & (x - r < right) & (y + r > low) & (y - r < high);
        if (IsClear(reaching))
            continue;
        for (size_t lane = 0; lane < 8; ++lane) {
            if (reaching[lane] == 0)
                continue;
            OctetMask hits{};
            for (size_t k = 0; k < countB; k += 8) {
                const Octet ex = x[lane] - dx - At(&b.poleX[k]);
                const Octet ey = y[lane] - dy - At(&b.poleY[k]);
                const Octet reach = r[lane] + At(&b.poleR[k]);
                hits |= ex * ex + ey * ey < reach * reach;
            }
            if (!IsClear(hits))
                return true;
        }
    }
    return false;
}

/// Collects the edges that reach into the box, moved by the offset. Returns their number.
ZOR_VECTOR_CLONES
size_t SelectEdges(const Shape& shape, Point offset, const Box& box, std::array<double*, 4> out)
{
    size_t count = 0;
    for (size_t i = 0; i < shape.GetPaddedEdges(); i += 4) {
        const Quad ax = At(&shape.ax[i]) + offset.x;
        const Quad ay = At(&shape.ay[i]) + offset.y;
        const Quad bx = At(&shape.bx[i]) + offset.x;
        const Quad by = At(&shape.by[i]) + offset.y;
        const QuadMask inX =
            ((ax >= box.min.x) | (bx >= box.min.x)) & ((ax <= box.max.x) | (bx <= box.max.x));
        const QuadMask inY =
            ((ay >= box.min.y) | (by >= box.min.y)) & ((ay <= box.max.y) | (by <= box.max.y));
        const QuadMask in = inX & inY;
        for (int lane = 0; lane < 4; ++lane) {
            out[0][count] = ax[lane];
            out[1][count] = ay[lane];
            out[2][count] = bx[lane];
            out[3][count] = by[lane];
            count += static_cast<size_t>(in[lane] & 1);
        }
    }
    return count;
}

/// The edge from p to q meets one of the given edges, not counting corners and collinear edges.
ZOR_VECTOR_CLONES
bool DoesEdgeMeet(Point p, Point q, std::array<const double*, 4> edges, size_t count)
{
    QuadMask hit{};
    const double dx = q.x - p.x;
    const double dy = q.y - p.y;
    for (size_t i = 0; i < count; i += 4) {
        const Quad ax = At(edges[0] + i);
        const Quad ay = At(edges[1] + i);
        const Quad bx = At(edges[2] + i);
        const Quad by = At(edges[3] + i);
        const Quad sides = (dx * (ay - p.y) - dy * (ax - p.x)) * (dx * (by - p.y) - dy * (bx - p.x));
        const Quad ex = bx - ax;
        const Quad ey = by - ay;
        const Quad ends = (ex * (p.y - ay) - ey * (p.x - ax)) * (ex * (q.y - ay) - ey * (q.x - ax));
        hit |= (sides <= 0) & (ends <= 0) & ((sides < 0) | (ends < 0));
    }
    return !IsClear(hit);
}

/// Even-odd rule for a point relative to the shape.
ZOR_VECTOR_CLONES
bool IsPointInside(const Shape& shape, Point p)
{
    QuadMask odd{};
    for (size_t i = 0; i < shape.GetPaddedEdges(); i += 4) {
        const Quad ax = At(&shape.ax[i]);
        const Quad ay = At(&shape.ay[i]);
        const Quad bx = At(&shape.bx[i]);
        const Quad by = At(&shape.by[i]);
        const QuadMask up = by > ay;
        const QuadMask spans = (ay > p.y) ^ (by > p.y);
        const QuadMask left = ((bx - ax) * (p.y - ay) - (by - ay) * (p.x - ax)) > 0;
        odd ^= spans & ~(left ^ up);
    }
    return ((odd[0] ^ odd[1] ^ odd[2] ^ odd[3]) & 1) != 0;
}

/// A piece of b lies in a, given that their edges do not cross.
bool HoldsPiece(const Shape& a, const Shape& b, Point offset)
{
    if (b.deepPoints.empty()) // of a single piece, the reference point lies deep inside
        return a.box.Contains(b.box.Moved(offset)) && IsPointInside(a, offset);
    return std::any_of(b.deepPoints.begin(), b.deepPoints.end(),
                       [&](Point p) { return a.box.Contains(p + offset) && IsPointInside(a, p + offset); });
}

/// A direction to travel in, as if it were that of falling x.
Point Turned(Point p, Axis axis)
{
    return axis == Axis::Left ? p : Point{p.y, p.x};
}

/// Where the edge from a to b crosses the height of p, right of which p lies by that much; nothing where it does not.
double GetDistanceLeft(Point p, Point a, Point b)
{
    if (p.y < std::min(a.y, b.y) || p.y > std::max(a.y, b.y))
        return std::numeric_limits<double>::quiet_NaN();
    const double x = a.y == b.y ? std::max(a.x, b.x) : a.x + (b.x - a.x) * ((p.y - a.y) / (b.y - a.y));
    return p.x - x;
}

} // namespace

double MeasureFreeTravel(const Shape& a, const Shape& b, Point offset, Axis axis, double most)
{
    if (a.edgeCount * b.edgeCount > kMostEdgePairs)
        return 0;
    double travel = most;
    const auto consider = [&travel](double distance) {
        if (distance > -kContactNoise && distance - kContactGap < travel)
            travel = std::max(0.0, distance - kContactGap);
    };
    for (size_t i = 0; i < a.edgeCount; ++i) {
        const Point from = Turned({a.ax[i], a.ay[i]}, axis);
        const Point to = Turned({a.bx[i], a.by[i]}, axis);
        for (size_t k = 0; k < b.edgeCount; ++k) {
            const Point otherFrom = Turned(Point{b.ax[k], b.ay[k]} + offset, axis);
            const Point otherTo = Turned(Point{b.bx[k], b.by[k]} + offset, axis);
            if (std::max(otherFrom.y, otherTo.y) < std::min(from.y, to.y)
                || std::min(otherFrom.y, otherTo.y) > std::max(from.y, to.y))
                continue;
            consider(GetDistanceLeft(from, otherFrom, otherTo));
            consider(-GetDistanceLeft(otherFrom, from, to)); // the other way round, as seen from the left
        }
    }
    return travel;
}

bool DoPolesOverlap(const Shape& a, const Shape& b, Point offset)
{
    return FindPoleOverlap(a, b, static_cast<float>(offset.x), static_cast<float>(offset.y),
                           kRelativeMargin * static_cast<float>(std::max(a.diameter, b.diameter)));
}

float MeasureLoss(const Shape& a, const Shape& b, Point offset, float bound)
{
    const float epsilon = kRelativeEpsilon * static_cast<float>(std::max(a.diameter, b.diameter));
    const float size = static_cast<float>(std::sqrt(a.weight * b.weight));
    const float root = bound / size;
    const float most = (root * root - epsilon * epsilon) / std::numbers::pi_v<float>;
    const float sum =
        SumPoles(a, b, static_cast<float>(offset.x), static_cast<float>(offset.y), epsilon, most);
    return std::sqrt(std::numbers::pi_v<float> * sum + epsilon * epsilon) * size;
}

void OutlineTest::Select(const Shape& shape, Point offset, const Box& box, Edges& edges)
{
    const size_t room = shape.GetPaddedEdges() + 4;
    if (edges.ax.size() < room)
        for (auto* array : {&edges.ax, &edges.ay, &edges.bx, &edges.by})
            array->resize(room);
    edges.count =
        SelectEdges(shape, offset, box, {edges.ax.data(), edges.ay.data(), edges.bx.data(), edges.by.data()});
    for (size_t i = edges.count; i % 4 != 0; ++i) // meets nothing
        edges.ax[i] = std::numeric_limits<double>::quiet_NaN();
}

bool OutlineTest::DoCollide(const Shape& a, const Shape& b, Point offset)
{
    const Box moved = b.box.Moved(offset);
    const Box common{{std::max(a.box.min.x, moved.min.x), std::max(a.box.min.y, moved.min.y)},
                     {std::min(a.box.max.x, moved.max.x), std::min(a.box.max.y, moved.max.y)}};
    if (common.IsEmpty())
        return false;
    Select(a, {}, common, m_first);
    if (m_first.count > 0)
        Select(b, offset, common, m_second);
    if (m_first.count > 0 && m_second.count > 0) {
        const bool firstFewer = m_first.count < m_second.count;
        const Edges& few = firstFewer ? m_first : m_second;
        const Edges& many = firstFewer ? m_second : m_first;
        const std::array<const double*, 4> edges{many.ax.data(), many.ay.data(), many.bx.data(),
                                                 many.by.data()};
        for (size_t i = 0; i < few.count; ++i)
            if (DoesEdgeMeet({few.ax[i], few.ay[i]}, {few.bx[i], few.by[i]}, edges, many.count))
                return true;
    }
    return HoldsPiece(a, b, offset) || HoldsPiece(b, a, Point{} - offset);
}

} // namespace ZORNestSolver
