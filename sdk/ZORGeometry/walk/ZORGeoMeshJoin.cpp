#include "ZORGeoMeshJoin_p.h"
#include "ZORGeoWalkStart_p.h"

#include <ZORMathematics/ZORMathFunctions.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Of the length of the chord: how far rounding may seem to lead a section backwards.
constexpr double kBackwards = 1e-9;

constexpr int kMaximumCrossings = 10000;

} // namespace

double ZorGeoLengthOf(const ZORGeoMeshPath& path)
{
    double length = 0;
    for (size_t i = 1; i < path.size(); ++i)
        length += path[i - 1].point.DistanceTo(path[i].point);
    return length;
}

ZORGeoMeshJoin::ZORGeoMeshJoin(const ZORGeoMesh& mesh)
    : m_mesh(mesh)
{
}

void ZORGeoMeshJoin::SetEnds(const ZORGeoMeshPlace& from, const ZORGeoMeshPlace& to)
{
    m_from = from;
    m_to = to;
    m_chord = to.point - from.point;
    ZorGeoFindTriangles(m_mesh, from, m_fromTriangles);
    ZorGeoFindTriangles(m_mesh, to, m_toTriangles);
}

bool ZORGeoMeshJoin::AppendWithinTriangle(ZORGeoMeshPath& path, const ZORGeoMeshPlace& to)
{
    SetEnds(path.back(), to);
    return AppendDirectly(path);
}

bool ZORGeoMeshJoin::Append(ZORGeoMeshPath& path, const ZORGeoMeshPlace& to, double maximumLength)
{
    SetEnds(path.back(), to);
    m_maximumLength = maximumLength;
    const size_t size = path.size();
    if (AppendDirectly(path) || AppendSection(path) || AppendBorder(path))
        return true;
    path.resize(size);
    path.back() = m_from;
    return false;
}

bool ZORGeoMeshJoin::AppendDirectly(ZORGeoMeshPath& path)
{
    for (const int triangle : m_toTriangles) {
        ZORGeoMeshPlace start;
        if (ZorGeoExpressPlace(m_mesh, m_from, triangle, start)) {
            path.back() = start;
            return Arrive(path, start);
        }
    }
    for (const int triangle : m_fromTriangles) {
        ZORGeoMeshPlace end;
        if (ZorGeoExpressPlace(m_mesh, m_to, triangle, end)
            && ZorGeoExpressPlace(m_mesh, m_from, triangle, path.back())) {
            path.push_back(end);
            return true;
        }
    }
    return false;
}

bool ZORGeoMeshJoin::Arrive(ZORGeoMeshPath& path, const ZORGeoMeshPlace& place)
{
    ZORGeoMeshPlace end;
    if (!ZorGeoExpressPlace(m_mesh, m_to, place.triangle, end))
        return false;
    if (end.point != place.point || path.size() == 1)
        path.push_back(end);
    return true;
}

bool ZORGeoMeshJoin::AppendSection(ZORGeoMeshPath& path)
{
    const double length = m_chord.GetLength();
    if (!(length > 0))
        return false;
    const ZORMathVector direction = m_chord.GetNormalized();
    const ZORMathVector first = ZorGeoTwiceAreaNormal(m_mesh, m_from.triangle).GetNormalized();
    const ZORMathVector last = ZorGeoTwiceAreaNormal(m_mesh, m_to.triangle).GetNormalized();
    // The mean normal; where neighbours are of opposite winding, half the difference.
    std::array<ZORMathVector, 4> normals = {Cross(direction, first + last), Cross(direction, first - last),
                                            Cross(direction, first), Cross(direction, last)};
    if (normals[1].GetLength() > normals[0].GetLength())
        std::swap(normals[0], normals[1]);
    for (const ZORMathVector& normal : normals) {
        if (normal.GetLength() < 1e-3)
            continue;
        for (const bool isZeroPositive : {true, false}) {
            if (WalkSection(path, {normal.GetNormalized(), isZeroPositive}))
                return true;
        }
    }
    return false;
}

double ZORGeoMeshJoin::HeightOver(const Plane& plane, int vertex) const
{
    const ZORMathPoint& point = m_mesh.vertices[vertex];
    const ZORMathVector offset = point - m_from.point;
    const double height = Dot(plane.normal, offset);
    const double rounding =
        1e-12 * offset.GetLength() + 1e-15 * (LargestCoordinate(point) + LargestCoordinate(m_from.point));
    return std::abs(height) <= rounding ? 0 : height;
}

// The sides, other than those the start lies on, over which the section leaves the triangles of the start.
void ZORGeoMeshJoin::FindExits(const Plane& plane)
{
    m_exits.clear();
    for (const int triangle : m_fromTriangles) {
        ZORGeoMeshPlace start;
        if (!ZorGeoExpressPlace(m_mesh, m_from, triangle, start))
            continue;
        for (int side = 0; side < 3; ++side) {
            const auto& corners = m_mesh.triangles[triangle];
            const double from = HeightOver(plane, corners[size_t(side)]);
            const double to = HeightOver(plane, corners[size_t(side + 1) % 3]);
            if (start.IsOnSide(side) || IsAbove(plane, from) == IsAbove(plane, to))
                continue;
            const double parameter = from / (from - to);
            const ZORMathPoint point = ZorGeoPlaceOnSide(m_mesh, triangle, side, parameter).point;
            const ZORMathVector way = point - m_from.point;
            const double forward = Dot(way, m_chord);
            if (forward > 0)
                m_exits.push_back({triangle, side, forward / way.GetLength(), parameter});
        }
    }
    std::sort(m_exits.begin(), m_exits.end(),
              [](const Exit& a, const Exit& b) { return a.forward > b.forward; });
}

bool ZORGeoMeshJoin::WalkSection(ZORGeoMeshPath& path, const Plane& plane)
{
    FindExits(plane);
    const size_t size = path.size();
    for (const Exit& exit : m_exits) {
        if (FollowSection(path, plane, exit))
            return true;
        path.resize(size);
    }
    return false;
}

bool ZORGeoMeshJoin::FollowSection(ZORGeoMeshPath& path, const Plane& plane, const Exit& exit)
{
    const double squaredChord = Dot(m_chord, m_chord);
    double travelled = 0;
    double progress = 0;
    int triangle = exit.triangle;
    int side = exit.side;
    double parameter = exit.parameter;
    ZorGeoExpressPlace(m_mesh, m_from, triangle, path.back());
    for (int crossings = 0; crossings < kMaximumCrossings; ++crossings) {
        const ZORGeoMeshPlace crossing = ZorGeoPlaceOnSide(m_mesh, triangle, side, parameter);
        travelled += path.back().point.DistanceTo(crossing.point);
        const double forward = Dot(crossing.point - m_from.point, m_chord);
        if (travelled > m_maximumLength || forward < progress - kBackwards * squaredChord
            || forward > squaredChord * (1 + kBackwards))
            return false;
        progress = std::max(progress, forward);

        // Beyond a border or an edge of several triangles only the end itself can lie.
        ZORGeoMeshPlace entered;
        for (const int target : m_toTriangles) {
            if (!ZorGeoExpressPlace(m_mesh, crossing, target, entered))
                continue;
            if (travelled + entered.point.DistanceTo(m_to.point) > m_maximumLength)
                return false;
            path.push_back(entered);
            return Arrive(path, entered);
        }
        const quint32 neighbor = m_mesh.GetNeighbor(triangle, side);
        if (neighbor == 0 || !ZorGeoExpressPlace(m_mesh, crossing, int(neighbor / 4) - 1, entered))
            return false;
        path.push_back(entered);
        triangle = entered.triangle;

        // The section leaves over the side that joins the opposite corner to the end on its other face.
        const int entry = int(neighbor % 4);
        const auto& corners = m_mesh.triangles[triangle];
        const double start = HeightOver(plane, corners[size_t(entry)]);
        const double end = HeightOver(plane, corners[size_t(entry + 1) % 3]);
        const double opposite = HeightOver(plane, corners[size_t(entry + 2) % 3]);
        if (IsAbove(plane, opposite) == IsAbove(plane, start)) {
            side = (entry + 1) % 3;
            parameter = end / (end - opposite);
        } else {
            side = (entry + 2) % 3;
            parameter = opposite / (opposite - start);
        }
    }
    return false;
}

bool ZORGeoMeshJoin::AppendBorder(ZORGeoMeshPath& path)
{
    ZORGeoMeshPath ways[2];
    double lengths[2] = {0, 0};
    int count = 0;
    for (const int triangle : m_fromTriangles) {
        ZORGeoMeshPlace start;
        ZorGeoExpressPlace(m_mesh, m_from, triangle, start);
        for (int side = 0; side < 3; ++side) {
            if (!start.IsOnSide(side) || m_mesh.GetNeighbor(triangle, side) != 0)
                continue;
            for (const bool isReversed : {false, true}) {
                const ZORGeoDirectedSide at = {triangle, side, isReversed};
                if (start.weights[size_t(at.GetEndCorner())] == 1)
                    continue;
                ZORGeoMeshPath way = {start};
                if (count == 2 || !FollowBorder(way, at))
                    continue;
                for (size_t i = 1; i < way.size(); ++i)
                    lengths[count] += way[i - 1].point.DistanceTo(way[i].point);
                ways[count++] = std::move(way);
            }
        }
    }
    if (count == 0)
        return false;
    const ZORGeoMeshPath& shorter = ways[count == 2 && lengths[1] < lengths[0] ? 1 : 0];
    path.back() = shorter.front();
    path.insert(path.end(), shorter.begin() + 1, shorter.end());
    return true;
}

bool ZORGeoMeshJoin::FollowBorder(ZORGeoMeshPath& path, ZORGeoDirectedSide at)
{
    const ZORGeoDirectedSide first = at;
    double travelled = 0;
    for (int crossings = 0; crossings < kMaximumCrossings; ++crossings) {
        ZORGeoMeshPlace end;
        if (ZorGeoExpressPlace(m_mesh, m_to, at.triangle, end) && end.IsOnSide(at.side)) {
            path.push_back(end);
            return travelled + path[path.size() - 2].point.DistanceTo(end.point) <= m_maximumLength;
        }
        const ZORGeoMeshPlace corner = ZorGeoPlaceAtCorner(m_mesh, at.triangle, at.GetEndCorner());
        travelled += path.back().point.DistanceTo(corner.point);
        if (travelled > m_maximumLength)
            return false;
        at = ZorGeoFindNextBorderSide(m_mesh, at);
        if (at.triangle == first.triangle && at.side == first.side)
            return false;
        ZORGeoMeshPlace entered;
        if (!ZorGeoExpressPlace(m_mesh, corner, at.triangle, entered))
            return false;
        path.push_back(entered);
    }
    return false;
}
