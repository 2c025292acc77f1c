#include "ZORGeoPathTurns_p.h"
#include "walk/ZORGeoVertexFan_p.h"
#include "walk/ZORGeoWalkStart_p.h"

#include <ZORMathematics/ZORMathFunctions.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

using std::numbers::pi;

namespace {

// Segments shorter than this part of the coordinates have no direction that counts.
constexpr double kNoLength = 1e-11;

// The side of a triangle that a place is inside of; -1 for none.
int SideOfPlace(const ZORGeoMeshPlace& place)
{
    for (int side = 0; side < 3; ++side) {
        if (place.IsOnSide(side))
            return side;
    }
    return -1;
}

// The side that leads from one triangle to another; -1 when they are no neighbours.
int SideTo(const ZORGeoMesh& mesh, int from, int to, int preferred)
{
    const auto leads = [&](int side) {
        const quint32 neighbor = mesh.GetNeighbor(from, side);
        return neighbor != 0 && int(neighbor / 4) - 1 == to;
    };
    if (preferred >= 0 && leads(preferred))
        return preferred;
    for (int side = 0; side < 3; ++side) {
        if (leads(side))
            return side;
    }
    return -1;
}

// Whether both triangles run along their common side in opposite directions, as neighbours should.
bool HaveSameWinding(const ZORGeoMesh& mesh, int triangle, int side)
{
    const quint32 neighbor = mesh.GetNeighbor(triangle, side);
    const auto& other = mesh.triangles[int(neighbor / 4) - 1];
    return other[neighbor % 4] != mesh.triangles[triangle][size_t(side)];
}

// Angle of a direction from the first side of a fan; nothing when the fan does not hold the triangle.
std::optional<double> AngleInFan(const ZORGeoVertexFan& fan, int triangle, const ZORMathVector& direction,
                                 bool& isOwnSide)
{
    for (const ZORGeoVertexFan::Sector& sector : fan.GetSectors()) {
        if (sector.entry.triangle != triangle)
            continue;
        isOwnSide = ZorGeoIsOwnSide(sector.entry);
        const double fromRight = AngleBetween(sector.right, direction);
        const double fromLeft = AngleBetween(direction, sector.left);
        const double width = sector.end - sector.begin;
        const double sum = fromRight + fromLeft;
        return sector.begin + (sum > 0 ? width * fromRight / sum : 0);
    }
    return std::nullopt;
}

} // namespace

int ZorGeoCornerOfPlace(const ZORGeoMeshPlace& place)
{
    for (int corner = 0; corner < 3; ++corner) {
        if (place.IsOnSide(corner) && place.IsOnSide((corner + 2) % 3))
            return corner;
    }
    return -1;
}

ZORGeoMeshEntry ZorGeoFanEntry(int triangle, int corner, bool isOwnSide)
{
    const int next = (corner + 1) % 3;
    const int last = (corner + 2) % 3;
    return {triangle, corner, isOwnSide ? next : last, isOwnSide ? last : next, 0};
}

ZORGeoPathTurns::ZORGeoPathTurns(const ZORGeoMesh& mesh, const ZORGeoMeshPath& path)
    : m_mesh(mesh)
    , m_turns(path.size())
    , m_isOwnSide(path.size(), 1)
{
    double extent = 0;
    for (const ZORGeoMeshPlace& place : path)
        extent = std::max(extent, (place.point - ZORMathPoint()).GetLength());
    const size_t none = path.size();
    size_t last = none; // segment with a length
    for (size_t i = 0; i + 1 < path.size(); ++i) {
        const double length = path[i].point.DistanceTo(path[i + 1].point);
        if (!(length > kNoLength * extent))
            continue;
        if (last != none) {
            m_turns[i].before = path[last].point.DistanceTo(path[last + 1].point);
            m_turns[i].behind = length;
            if (path[last].triangle == path[i].triangle || !TurnRoundVertex(path, last, i))
                TurnOverSides(path, last, i);
        }
        last = i;
    }
    JoinStraightWays();
}

// A straight way is as long as it is, however many places lie on it.
void ZORGeoPathTurns::JoinStraightWays()
{
    double former = 0;
    const auto join = [&former](const ZORGeoPathTurn& turn, double& length) {
        if (!(length > 0)) // no place that a segment ends at
            return;
        length += former;
        former = turn.IsStraight() ? length : 0;
    };
    for (ZORGeoPathTurn& turn : m_turns)
        join(turn, turn.before);
    former = 0;
    for (auto turn = m_turns.rbegin(); turn != m_turns.rend(); ++turn)
        join(*turn, turn->behind);
}

// Follows the direction back along the path over all sides up to the next segment: as the angle from the side
// that was crossed last, counted as the path sees the surface.
void ZORGeoPathTurns::TurnOverSides(const ZORGeoMeshPath& path, size_t from, size_t to)
{
    const ZORMathVector back = path[from].point - path[from + 1].point;
    const ZORMathVector forth = path[to + 1].point - path[to].point;
    const auto left = [this](size_t segment) { return m_isOwnSide[segment] ? 1.0 : -1.0; };
    double angle = 0;
    int entered = -1; // side of the triangle reached
    for (size_t i = from + 1; i <= to; ++i) {
        const int former = path[i - 1].triangle;
        const int triangle = path[i].triangle;
        m_isOwnSide[i] = m_isOwnSide[i - 1];
        if (triangle == former)
            continue;
        const int side = SideTo(m_mesh, triangle, former, SideOfPlace(path[i]));
        if (side < 0) {
            m_turns[to].angle = pi; // the triangles do not tell: nothing to be called smooth
            return;
        }
        const int exit = int(m_mesh.GetNeighbor(triangle, side) % 4);
        const ZORMathVector over = ZorGeoSideVector(m_mesh, former, exit);
        if (entered < 0)
            angle = left(i - 1) * AngleBetween(over, back);
        else if (exit != entered)
            angle -= left(i - 1) * (exit == (entered + 1) % 3 ? 1 : -1)
                     * AngleBetween(ZorGeoSideVector(m_mesh, former, entered), over);
        if (HaveSameWinding(m_mesh, triangle, side))
            angle += pi;
        else
            m_isOwnSide[i] = !m_isOwnSide[i];
        entered = side;
    }
    if (entered < 0) {
        const ZORMathVector across = Cross(-back, forth);
        const double turn = left(to) * std::atan2(across.GetLength(), Dot(-back, forth));
        const bool isLeft = Dot(ZorGeoTwiceAreaNormal(m_mesh, path[to].triangle), across) >= 0;
        m_turns[to].angle = isLeft ? turn : -turn;
        return;
    }
    const double ahead = left(to) * AngleBetween(ZorGeoSideVector(m_mesh, path[to].triangle, entered), forth);
    m_turns[to].angle = std::remainder(ahead - angle - pi, 2 * pi);
}

bool ZORGeoPathTurns::TurnRoundVertex(const ZORGeoMeshPath& path, size_t from, size_t to)
{
    const auto vertex =
        std::find_if(path.begin() + qsizetype(from) + 1, path.begin() + qsizetype(to) + 1,
                     [](const ZORGeoMeshPlace& place) { return ZorGeoCornerOfPlace(place) >= 0; });
    ZORGeoMeshPlace arrived;
    if (vertex == path.begin() + qsizetype(to) + 1
        || !ZorGeoExpressPlace(m_mesh, *vertex, path[from].triangle, arrived))
        return false;
    const ZORGeoVertexFan fan(
        m_mesh, ZorGeoFanEntry(path[from].triangle, ZorGeoCornerOfPlace(arrived), m_isOwnSide[from]));
    bool isOwnSide = true;
    const auto back = AngleInFan(fan, path[from].triangle, path[from].point - vertex->point, isOwnSide);
    const auto forth = AngleInFan(fan, path[to].triangle, path[to + 1].point - vertex->point, isOwnSide);
    if (!back || !forth)
        return false;
    for (size_t i = from + 1; i <= to; ++i)
        m_isOwnSide[i] = isOwnSide;
    const double total = fan.GetTotalAngle();
    double right = *forth - *back;
    if (fan.IsClosed())
        m_turns[to].angle = (right < 0 ? right + total : right) - total / 2;
    else
        m_turns[to].angle = right >= 0 ? right - pi : right + pi;
    return true;
}
