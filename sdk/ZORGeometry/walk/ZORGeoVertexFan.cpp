#include "ZORGeoPlaneVector_p.h"
#include "ZORGeoVertexFan_p.h"

#include <ZORMathematics/ZORMathFunctions.h>

#include <algorithm>
#include <numbers>

namespace {

constexpr double kAngleSnap = 1e-12;

} // namespace

ZORGeoVertexFan::ZORGeoVertexFan(const ZORGeoMesh& mesh, const ZORGeoMeshEntry& entry)
    : m_mesh(&mesh)
{
    ZORGeoMeshEntry current = entry;
    current.u = 0;
    Add(current);
    // No walk around a vertex is longer than the sides of the mesh; the bound only guards against damage.
    const qint64 bound = 3 * qint64(mesh.GetNumTriangles());
    for (qint64 i = 0; i < bound && Turn(current, Side::Left); ++i) {
        if (current.triangle == entry.triangle && current.p == entry.p) {
            m_isClosed = true;
            break;
        }
        Add(current);
    }
    if (!m_isClosed) {
        std::vector<Sector> leftSectors;
        leftSectors.swap(m_sectors);
        current = entry;
        current.u = 0;
        for (qint64 i = 0; i < bound && Turn(current, Side::Right); ++i)
            Add(current);
        std::reverse(m_sectors.begin(), m_sectors.end());
        m_first = m_sectors.size();
        m_sectors.insert(m_sectors.end(), leftSectors.begin(), leftSectors.end());
    }
    double angle = 0;
    for (Sector& sector : m_sectors) {
        sector.begin = angle;
        angle += AngleBetween(sector.right, sector.left);
        sector.end = angle;
    }
}

// A triangle with its third corner at the same place as the vertex only leads on to that corner's triangles.
void ZORGeoVertexFan::Add(const ZORGeoMeshEntry& entry)
{
    const ZORGeoMesh::Corners& corners = m_mesh->triangles[entry.triangle];
    const ZORMathPoint& p = m_mesh->vertices[corners[size_t(entry.p)]];
    const ZORMathVector right = m_mesh->vertices[corners[size_t(entry.q)]] - p;
    const ZORMathVector left = m_mesh->vertices[corners[size_t(entry.r)]] - p;
    if (right != ZORMathVector() && left != ZORMathVector())
        m_sectors.push_back({entry, right, left, 0, 0});
}

// Over the left or right side of the vertex into the next triangle.
bool ZORGeoVertexFan::Turn(ZORGeoMeshEntry& entry, Side side) const
{
    const bool isLeft = side == Side::Left;
    const ZORGeoMesh::Corners& corners = m_mesh->triangles[entry.triangle];
    const QList<ZORMathPoint>& vertices = m_mesh->vertices;
    // The edge to cross joins the vertex and `far`. Past an edge of no length the vertex changes.
    int pivot = entry.p;
    int far = isLeft ? entry.r : entry.q;
    int other = isLeft ? entry.q : entry.r;
    if (vertices[corners[size_t(far)]] == vertices[corners[size_t(pivot)]]) {
        std::swap(pivot, far);
        std::swap(far, other);
    }
    const int pivotVertex = corners[size_t(pivot)];
    const quint32 neighbor = m_mesh->GetNeighbor(entry.triangle, other == 2 ? 0 : other + 1);
    if (neighbor == 0)
        return false;
    const int triangle = int(neighbor / 4) - 1;
    const int first = int(neighbor % 4);
    const int second = (first + 1) % 3;
    const bool isFirst = m_mesh->triangles[triangle][size_t(first)] == pivotVertex;
    entry.triangle = triangle;
    entry.p = isFirst ? first : second;
    const int shared = isFirst ? second : first;
    const int third = 3 - first - second;
    entry.q = isLeft ? shared : third;
    entry.r = isLeft ? third : shared;
    return true;
}

std::optional<ZORGeoVertexFan::Departure> ZORGeoVertexFan::Leave(double angle) const
{
    const double total = GetTotalAngle();
    if (!(total > 0))
        return std::nullopt;
    if (m_isClosed) {
        angle = std::fmod(angle, total);
        if (angle < 0)
            angle += total;
    } else {
        // The tolerance is that of sums of angles; whoever runs along the border should stay on it.
        if (angle < -1e-9 || angle > total + 1e-9)
            return std::nullopt;
        angle = std::clamp(angle, 0.0, total);
        if (angle < 1e-9)
            angle = 0;
        else if (angle > total - 1e-9)
            angle = total;
    }
    size_t i = 0;
    while (i + 1 < m_sectors.size() && m_sectors[i].end < angle)
        ++i;
    const auto alongRight = [this](size_t sector) -> Departure {
        return {m_sectors[sector].entry, {1 / m_sectors[sector].right.GetLength(), 0}};
    };
    const auto alongLeft = [this](size_t sector) -> Departure {
        const auto& [entry, right, left, begin, end] = m_sectors[sector];
        return {{entry.triangle, entry.r, entry.p, entry.q, 1}, {-1 / left.GetLength(), 0}};
    };
    const auto alongEdge = [&](size_t before, size_t after) {
        return m_sectors[before].entry.triangle < m_sectors[after].entry.triangle ? alongLeft(before)
                                                                                  : alongRight(after);
    };
    const size_t last = m_sectors.size() - 1;
    const Sector& sector = m_sectors[i];
    if (angle - sector.begin <= kAngleSnap)
        return i > 0 ? alongEdge(i - 1, i) : m_isClosed ? alongEdge(last, 0) : alongRight(0);
    if (sector.end - angle <= kAngleSnap)
        return i < last ? alongEdge(i, i + 1) : m_isClosed ? alongEdge(last, 0) : alongLeft(last);
    const double length = sector.right.GetLength();
    const double turn = angle - sector.begin;
    return Departure{sector.entry, {std::cos(turn) / length, std::sin(turn) / length}};
}

std::optional<ZORGeoVertexFan::Departure> ZORGeoVertexFan::GoStraight(double angle) const
{
    if (m_isClosed)
        return Leave(angle + GetTotalAngle() / 2);
    auto left = Leave(angle - std::numbers::pi);
    auto right = Leave(angle + std::numbers::pi);
    if (left && right)
        return std::nullopt;
    return left ? left : right;
}

ZORGeoVertexArrival ZorGeoArriveAtCorner(const ZORGeoMeshWalker& walker, int corner)
{
    using Vector = ZORGeoPlaneVector;
    const ZORGeoMeshEntry& from = walker.GetEntry();
    const double x = walker.GetApexAlong();
    const double y = walker.GetApexAcross();
    // The sides at the corner in the frame of the walk.
    ZORGeoMeshEntry entry = {from.triangle, from.p, from.q, from.r, 0};
    Vector right = {1, 0};
    Vector left = {x, y};
    if (corner == from.q) {
        entry = {from.triangle, from.q, from.r, from.p, 0};
        right = {x - 1, y};
        left = {-1, 0};
    } else if (corner == from.r) {
        entry = {from.triangle, from.r, from.p, from.q, 0};
        right = {-x, -y};
        left = {1 - x, -y};
    }
    const auto angle = [&right](const Vector& v) { return std::atan2(Cross(right, v), Dot(right, v)); };
    const Vector back = {-walker.GetHeading().along, -walker.GetHeading().across};
    return {entry, std::clamp(angle(back), 0.0, std::max(0.0, angle(left)))};
}
