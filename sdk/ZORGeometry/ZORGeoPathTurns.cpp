#include "ZORGeoPathTurns_p.h"
#include "ZORGeoVertexFan_p.h"
#include "ZORGeoWalkStart_p.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

using std::numbers::pi;

namespace {

// Segments shorter than this part of the coordinates have no direction that counts.
constexpr double noLength = 1e-11;

double AngleBetween(const ZORMathVector& a, const ZORMathVector& b)
{
    return std::atan2(Cross(a, b).GetLength(), Dot(a, b));
}

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

ZORMathVector SideVector(const ZORGeoMesh& mesh, int triangle, int side)
{
    const auto& corners = mesh.triangles[triangle];
    return mesh.vertices[corners[size_t(side + 1) % 3]] - mesh.vertices[corners[size_t(side)]];
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

namespace {

constexpr double sameEdge = 1e-10; // of the coordinates: how far from an edge a place may lie on it
constexpr size_t mostTriangles = 64;

// The place of a point on the edge of two neighbours, as the second one sees it.
std::optional<ZORGeoMeshPlace> PlaceBeyond(const ZORGeoMesh& mesh, int triangle, int side,
                                           const ZORMathPoint& point)
{
    const quint32 neighbor = mesh.GetNeighbor(triangle, side);
    if (neighbor == 0)
        return std::nullopt;
    const int next = int(neighbor / 4) - 1;
    const int entered = int(neighbor % 4);
    const ZORMathPoint& from = mesh.vertices[mesh.triangles[next][size_t(entered)]];
    const ZORMathVector along = SideVector(mesh, next, entered);
    const double squared = Dot(along, along);
    const double t = squared > 0 ? std::clamp(Dot(point - from, along) / squared, 0.0, 1.0) : 0;
    ZORGeoMeshPlace place = ZorGeoPlaceOnSide(mesh, next, entered, t);
    const double tolerance = sameEdge * (point - ZORMathPoint()).GetLength();
    if (place.point.DistanceTo(point) > tolerance)
        return std::nullopt;
    place.point = point;
    return place;
}

// The places of a point in the triangles on the way from one triangle to another, all of which hold it.
ZORGeoMeshPath FindWayAt(const ZORGeoMesh& mesh, int from, const ZORGeoMeshPlace& to)
{
    struct Step
    {
        ZORGeoMeshPlace place;
        size_t former;
    };
    ZORGeoMeshPlace start = to;
    start.triangle = from;
    std::vector<Step> steps = {{start, 0}};
    for (size_t i = 0; i < steps.size() && i < mostTriangles; ++i) {
        for (int side = 0; side < 3; ++side) {
            const auto next = PlaceBeyond(mesh, steps[i].place.triangle, side, to.point);
            const auto isKnown = [&](const Step& step) { return step.place.triangle == next->triangle; };
            if (!next || std::any_of(steps.begin(), steps.end(), isKnown))
                continue;
            steps.push_back({*next, i});
            if (next->triangle != to.triangle)
                continue;
            ZORGeoMeshPath way;
            for (size_t at = steps.size() - 1; at > 0; at = steps[at].former)
                way.insert(way.begin(), steps[at].place);
            return way;
        }
    }
    return {};
}

} // namespace

bool ZorGeoHoldsPlace(const ZORGeoMesh& mesh, int triangle, const ZORGeoMeshPlace& place)
{
    ZORGeoMeshPlace expressed;
    return ZorGeoExpressPlace(mesh, place, triangle, expressed) || !FindWayAt(mesh, triangle, place).empty();
}

void ZorGeoFillGaps(const ZORGeoMesh& mesh, ZORGeoMeshPath& path)
{
    ZORGeoMeshPath filled;
    filled.reserve(path.size());
    for (const ZORGeoMeshPlace& place : path) {
        ZORGeoMeshPlace expressed;
        if (!filled.empty() && !ZorGeoExpressPlace(mesh, place, filled.back().triangle, expressed)) {
            const ZORGeoMeshPath way = FindWayAt(mesh, filled.back().triangle, place);
            if (!way.empty()) {
                filled.insert(filled.end(), way.begin(), way.end());
                continue;
            }
        }
        filled.push_back(place);
    }
    path = std::move(filled);
}

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
        if (!(length > noLength * extent))
            continue;
        if (last != none) {
            m_turns[i].before = path[last].point.DistanceTo(path[last + 1].point);
            m_turns[i].behind = length;
            const bool isOneVertex =
                path[last].triangle != path[i].triangle && path[last + 1].point == path[i].point;
            if (!isOneVertex || !TurnRoundVertex(path, last, i))
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
            m_turns[to].angle = 0;
            return;
        }
        const int exit = int(m_mesh.GetNeighbor(triangle, side) % 4);
        const ZORMathVector over = SideVector(m_mesh, former, exit);
        if (entered < 0)
            angle = left(i - 1) * AngleBetween(over, back);
        else if (exit != entered)
            angle -= left(i - 1) * (exit == (entered + 1) % 3 ? 1 : -1)
                     * AngleBetween(SideVector(m_mesh, former, entered), over);
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
    const double ahead = left(to) * AngleBetween(SideVector(m_mesh, path[to].triangle, entered), forth);
    m_turns[to].angle = std::remainder(ahead - angle - pi, 2 * pi);
}

bool ZORGeoPathTurns::TurnRoundVertex(const ZORGeoMeshPath& path, size_t from, size_t to)
{
    const int corner = ZorGeoCornerOfPlace(path[to]);
    if (corner < 0)
        return false;
    ZORGeoMeshPlace arrived;
    if (!ZorGeoExpressPlace(m_mesh, path[to], path[from].triangle, arrived))
        return false;
    const ZORGeoVertexFan fan(
        m_mesh, ZorGeoFanEntry(path[from].triangle, ZorGeoCornerOfPlace(arrived), m_isOwnSide[from]));
    bool isOwnSide = true;
    const auto back = AngleInFan(fan, path[from].triangle, path[from].point - path[to].point, isOwnSide);
    const auto forth = AngleInFan(fan, path[to].triangle, path[to + 1].point - path[to].point, isOwnSide);
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
