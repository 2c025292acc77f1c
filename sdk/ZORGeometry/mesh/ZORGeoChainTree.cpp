#include "ZORGeoChainTree_p.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <utility>

namespace {

double SquaredDistance(const ZORMathBoundingBox& box, const ZORMathPoint& point)
{
    if (box.IsEmpty())
        return std::numeric_limits<double>::infinity();
    const ZORMathPoint lower = box.GetLowerPoint();
    const ZORMathPoint upper = box.GetUpperPoint();
    const double x = std::max({lower.GetX() - point.GetX(), 0.0, point.GetX() - upper.GetX()});
    const double y = std::max({lower.GetY() - point.GetY(), 0.0, point.GetY() - upper.GetY()});
    const double z = std::max({lower.GetZ() - point.GetZ(), 0.0, point.GetZ() - upper.GetZ()});
    return x * x + y * y + z * z;
}

// Boxes a little farther than the nearest place may hold one that is nearer by the last digits.
constexpr double kRoundingSlack = 1 + 1e-12;

} // namespace

ZORGeoChainTree::ZORGeoChainTree(const ZORMathSetOfPoints& points)
    : m_points(points)
{
    const qsizetype segments = points.size() - 1;
    m_leafCount = std::bit_ceil(size_t((segments + kLeafSize - 1) / kLeafSize));
    m_boxes.resize(2 * m_leafCount);
    for (qsizetype segment = 0; segment < segments; ++segment) {
        ZORMathBoundingBox& box = m_boxes[m_leafCount + size_t(segment / kLeafSize)];
        box.Add(points[segment]);
        box.Add(points[segment + 1]);
    }
    for (size_t node = m_leafCount - 1; node > 0; --node) {
        m_boxes[node] = m_boxes[2 * node];
        m_boxes[node].Add(m_boxes[2 * node + 1]);
    }
}

void ZORGeoChainTree::TestLeaf(size_t leaf, const ZORMathPoint& point, Nearest& nearest) const
{
    const qsizetype begin = qsizetype(leaf) * kLeafSize;
    const qsizetype end = std::min(begin + kLeafSize, m_points.size() - 1);
    for (qsizetype i = begin; i < end; ++i) {
        const ZORMathPoint a = m_points[i];
        const ZORMathVector ab = m_points[i + 1] - a;
        const double squared = Dot(ab, ab);
        const double t = squared > 0 ? std::clamp(Dot(point - a, ab) / squared, 0.0, 1.0) : 0.0;
        const ZORMathPoint foot = t == 1 ? m_points[i + 1] : a + t * ab;
        const ZORMathVector to = foot - point;
        const double distance = Dot(to, to);
        if (std::pair(distance, i) < std::pair(nearest.squaredDistance, nearest.segment))
            nearest = {i, t, foot, distance};
    }
}

ZORGeoChainTree::Nearest ZORGeoChainTree::FindNearest(const ZORMathPoint& point) const
{
    struct Candidate
    {
        size_t node;
        double squaredDistance;
    };
    Nearest nearest;
    nearest.squaredDistance = std::numeric_limits<double>::infinity();
    std::array<Candidate, 64> stack; // one a level
    size_t depth = 0;
    stack[depth++] = {1, 0};
    while (depth > 0) {
        auto [node, distance] = stack[--depth];
        while (distance <= nearest.squaredDistance * kRoundingSlack) {
            if (node >= m_leafCount) {
                TestLeaf(node - m_leafCount, point, nearest);
                break;
            }
            Candidate near = {2 * node, SquaredDistance(m_boxes[2 * node], point)};
            Candidate far = {2 * node + 1, SquaredDistance(m_boxes[2 * node + 1], point)};
            if (far.squaredDistance < near.squaredDistance)
                std::swap(near, far);
            stack[depth++] = far;
            node = near.node;
            distance = near.squaredDistance;
        }
    }
    return nearest;
}
