#include "ZORNestSolverCollision.h"

#include <array>
#include <cstdint>
#include <numbers>

// One source, compiled for the vector unit at hand; no operation is contracted or reordered, so that
// every processor decides alike.
#define ZOR_VECTOR_CLONES __attribute__((target_clones("avx2", "default")))

namespace ZORNestSolver {

namespace {

constexpr size_t MostPoles = 64;
constexpr float RelativeEpsilon = 0.01F;

typedef double Quad __attribute__((vector_size(32), aligned(8), may_alias));
typedef int64_t QuadMask __attribute__((vector_size(32)));

/// Four numbers at a time, wherever they lie.
const Quad& At(const double* values)
{
    return *reinterpret_cast<const Quad*>(values);
}

struct PoleSums
{
    float area = 0;
    float deepest = 0;
};

ZOR_VECTOR_CLONES
PoleSums SumPoles(const Shape& a, const Shape& b, float dx, float dy, float epsilon)
{
    alignas(32) std::array<float, MostPoles> sums;
    alignas(32) std::array<float, MostPoles> depths;
    const size_t count = b.GetPaddedPoles();
    const float* bX = b.poleX.data();
    const float* bY = b.poleY.data();
    const float* bR = b.poleR.data();
    const float squared = epsilon * epsilon;
    for (size_t k = 0; k < count; ++k) {
        sums[k] = 0;
        depths[k] = 0;
    }
    for (size_t i = 0; i < a.poleCount; ++i) {
        const float x = a.poleX[i] - dx;
        const float y = a.poleY[i] - dy;
        const float r = a.poleR[i];
        for (size_t k = 0; k < count; ++k) {
            const float ex = x - bX[k];
            const float ey = y - bY[k];
            const float depth = r + bR[k] - __builtin_sqrtf(ex * ex + ey * ey);
            const float decayed = squared / (2 * epsilon - (depth < epsilon ? depth : epsilon));
            const float term = depth < epsilon ? decayed : depth;
            sums[k] += term * (r < bR[k] ? r : bR[k]);
            const float inside = bR[k] > 0 ? depth : 0;
            depths[k] = inside > depths[k] ? inside : depths[k];
        }
    }
    PoleSums result;
    for (size_t k = 0; k < count; ++k) {
        result.area += sums[k];
        result.deepest = std::max(result.deepest, depths[k]);
    }
    return result;
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
    return (hit[0] | hit[1] | hit[2] | hit[3]) != 0;
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

} // namespace

PoleOverlap MeasurePoles(const Shape& a, const Shape& b, Point offset)
{
    const float epsilon = RelativeEpsilon * static_cast<float>(std::max(a.diameter, b.diameter));
    const PoleSums sums = SumPoles(a, b, static_cast<float>(offset.x), static_cast<float>(offset.y), epsilon);
    const float area = std::numbers::pi_v<float> * sums.area;
    const float size = static_cast<float>(std::sqrt(a.weight * b.weight));
    return {std::sqrt(area + epsilon * epsilon) * size, sums.deepest, sums.deepest > 1e-4F * epsilon};
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
    if (a.box.Contains(moved) && IsPointInside(a, offset))
        return true;
    return moved.Contains(a.box) && IsPointInside(b, Point{} - offset);
}

} // namespace ZORNestSolver
