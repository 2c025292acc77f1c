#include "ZORGeoChainTree_p.h"
#include "ZORGeoChain_p.h"

#include <algorithm>

ZORGeoChain::ZORGeoChain(const ZORMathSetOfPoints& points)
    : m_points(points)
{
    m_distances.reserve(size_t(points.size()));
    double travelled = 0;
    for (qsizetype i = 0; i < points.size(); ++i) {
        if (i > 0)
            travelled += points[i - 1].DistanceTo(points[i]);
        m_distances.push_back(travelled);
    }
}

ZORGeoChain::~ZORGeoChain() = default;

// The place on the line through the segment from point `segment` to the next one, which has a length.
ZORGeoChain::Place ZORGeoChain::OnSegment(qsizetype segment, double distance) const
{
    const double from = m_distances[size_t(segment)];
    const double to = m_distances[size_t(segment) + 1];
    if (distance == to)
        return {distance, m_points[segment + 1]};
    const double t = (distance - from) / (to - from);
    return {distance, m_points[segment] + t * (m_points[segment + 1] - m_points[segment])};
}

ZORGeoChain::Place ZORGeoChain::Locate(double distance) const
{
    if (GetLength() <= 0)
        return {0, m_points.constFirst()};
    // The segment that ends at or behind the distance and has a length.
    const auto begin = m_distances.begin();
    auto end = std::lower_bound(begin, m_distances.end(), std::clamp(distance, 0.0, GetLength()));
    if (end == begin)
        end = std::upper_bound(begin, m_distances.end(), 0.0);
    return OnSegment(qsizetype(end - begin) - 1, distance);
}

ZORGeoChain::Place ZORGeoChain::Project(const ZORMathPoint& point) const
{
    if (m_points.size() == 1)
        return {0, m_points.constFirst()};
    const ZORGeoChainTree::Nearest nearest = GetTree().FindNearest(point);
    const double from = m_distances[size_t(nearest.segment)];
    const double to = m_distances[size_t(nearest.segment) + 1];
    return {from + nearest.parameter * (to - from), nearest.point};
}

const ZORGeoChainTree& ZORGeoChain::GetTree() const
{
    std::call_once(m_treeBuilt, [this] { m_tree = std::make_unique<const ZORGeoChainTree>(m_points); });
    return *m_tree;
}

ZORMathSetOfPoints ZORGeoChain::Cut(double start, double end) const
{
    if (m_points.isEmpty() || !(start <= end) || end < 0 || start > GetLength())
        return {};
    if (start <= 0 && end >= GetLength())
        return m_points;
    ZORMathSetOfPoints piece;
    const Place first = Locate(std::max(start, 0.0));
    const Place last = Locate(std::min(end, GetLength()));
    piece.append(first.point);
    for (size_t i = 0; i < m_distances.size(); ++i) {
        if (m_distances[i] > first.distance && m_distances[i] < last.distance)
            piece.append(m_points[qsizetype(i)]);
    }
    if (last.distance > first.distance)
        piece.append(last.point);
    return piece;
}
