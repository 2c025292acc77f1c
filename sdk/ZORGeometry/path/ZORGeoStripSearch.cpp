#include "ZORGeoStripSearch_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr quint32 kNoSide = 3;
// Points between two checks of the progress, some tenths of a millisecond.
constexpr quint64 kCheckInterval = 1024;

// Three for 20,000 triangles and more; the time goes with the square.
int CountPointsPerSide(const ZORGeoMesh& mesh)
{
    const double count = std::sqrt(9 * 20000.0 / std::max(mesh.GetNumTriangles(), 1));
    return std::clamp(int(count), 3, 41);
}

// Whether a side runs from the lower to the higher vertex; its points are counted from the lower one.
bool IsAscending(const ZORGeoMesh& mesh, int triangle, int side)
{
    const ZORGeoMesh::Corners& corners = mesh.triangles.constData()[triangle];
    return corners[size_t(side)] < corners[side == 2 ? 0 : size_t(side) + 1];
}

} // namespace

ZORGeoStripSearch::ZORGeoStripSearch(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& start,
                                     const ZORGeoMeshPlace& end, zor::geo::ProgressReporter* progress)
    : m_mesh(mesh)
    , m_progress(progress)
    , m_pointsPerSide(CountPointsPerSide(mesh))
    , m_start(start)
    , m_end(end)
    , m_best(std::numeric_limits<double>::infinity())
{
    m_pages.resize(size_t(mesh.GetNumTriangles()) * 3 * size_t(m_pointsPerSide) / kPageSize + 1);
    ZorGeoFindTriangles(mesh, end, m_endTriangles);
}

ZORMathPoint ZORGeoStripSearch::GetPoint(int triangle, int side, int point) const
{
    const ZORGeoMesh::Corners& corners = m_mesh.triangles.constData()[triangle];
    const ZORMathPoint& from = m_mesh.vertices.constData()[corners[size_t(side)]];
    const ZORMathPoint& to = m_mesh.vertices.constData()[corners[side == 2 ? 0 : size_t(side) + 1]];
    return from + GetParameter(point) * (to - from);
}

ZORGeoStripSearch::Node& ZORGeoStripSearch::GetNode(quint64 index)
{
    std::unique_ptr<Node[]>& page = m_pages[index / kPageSize];
    if (!page)
        page = std::make_unique<Node[]>(kPageSize);
    return page[index % kPageSize];
}

// \param point  counted along the side
quint64 ZORGeoStripSearch::IndexOf(int triangle, int side, int point) const
{
    const quint32 neighbor = m_mesh.GetNeighbor(triangle, side);
    const quint64 here = quint64(triangle) * 3 + quint64(side);
    const quint64 there = neighbor == 0 ? here : (quint64(neighbor / 4) - 1) * 3 + quint64(neighbor % 4);
    const int counted = IsAscending(m_mesh, triangle, side) ? point : m_pointsPerSide - 1 - point;
    return std::min(here, there) * quint64(m_pointsPerSide) + quint64(counted);
}

// Goes from a point on one side of a triangle, or from the start in it, to the points of the other sides.
void ZORGeoStripSearch::Enter(int triangle, int side, int point, const ZORMathPoint& from, double distance)
{
    const quint32 via = 4 * (quint32(triangle) + 1) + quint32(side);
    if (std::find(m_endTriangles.begin(), m_endTriangles.end(), triangle) != m_endTriangles.end()) {
        const double length = distance + from.DistanceTo(m_end.point);
        if (length < m_best) {
            m_best = length;
            m_bestVia = via;
            m_bestParent = point;
        }
    }
    for (int other = 0; other < 3; ++other) {
        if (other == side || m_mesh.GetNeighbor(triangle, other) == 0)
            continue;
        for (int to = 0; to < m_pointsPerSide; ++to) {
            const ZORMathPoint reached = GetPoint(triangle, other, to);
            const double length = distance + from.DistanceTo(reached);
            const quint64 index = IndexOf(triangle, other, to);
            Node& node = GetNode(index);
            if (node.via != 0 && node.distance <= length)
                continue;
            const double bound = length + reached.DistanceTo(m_end.point);
            if (bound >= m_best)
                continue;
            node = {length, via, point};
            m_waiting.push_back({bound, length, index});
            std::push_heap(m_waiting.begin(), m_waiting.end());
        }
    }
}

std::vector<quint32> ZORGeoStripSearch::Run()
{
    std::vector<int> triangles;
    ZorGeoFindTriangles(m_mesh, m_start, triangles);
    for (const int triangle : triangles)
        Enter(triangle, int(kNoSide), -1, m_start.point, 0);
    for (quint64 taken = 1; !m_waiting.empty() && m_waiting.front().bound < m_best; ++taken) {
        if (m_progress && taken % kCheckInterval == 0)
            m_progress->Check();
        const Waiting next = m_waiting.front();
        std::pop_heap(m_waiting.begin(), m_waiting.end());
        m_waiting.pop_back();
        const Node node = GetNode(next.node);
        if (node.distance < next.distance)
            continue;
        // Goes on in the triangle on the other side of the edge than the one it came from.
        const quint64 edge = next.node / quint64(m_pointsPerSide);
        int triangle = int(edge / 3);
        int side = int(edge % 3);
        if (triangle == int(node.via / 4) - 1) {
            const quint32 neighbor = m_mesh.GetNeighbor(triangle, side);
            triangle = int(neighbor / 4) - 1;
            side = int(neighbor % 4);
        }
        const int counted = int(next.node % quint64(m_pointsPerSide));
        const int point = IsAscending(m_mesh, triangle, side) ? counted : m_pointsPerSide - 1 - counted;
        Enter(triangle, side, point, GetPoint(triangle, side, point), node.distance);
    }
    return TraceBack();
}

std::vector<quint32> ZORGeoStripSearch::TraceBack()
{
    std::vector<quint32> strip;
    if (m_bestVia == 0)
        return strip;
    quint32 via = m_bestVia;
    qint32 point = m_bestParent;
    strip.push_back(via - via % 4 - 4 + kNoSide);
    while (via % 4 != kNoSide) {
        const quint32 neighbor = m_mesh.GetNeighbor(int(via / 4) - 1, int(via % 4));
        strip.push_back(neighbor - 4);
        const Node& node = GetNode(IndexOf(int(via / 4) - 1, int(via % 4), point));
        via = node.via;
        point = node.parent;
    }
    std::reverse(strip.begin(), strip.end());
    return strip;
}
