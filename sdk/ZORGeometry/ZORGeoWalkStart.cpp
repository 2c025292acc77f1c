#include "ZORGeoTriangle_p.h"
#include "ZORGeoVertexFan_p.h"
#include "ZORGeoWalkStart_p.h"

#include <algorithm>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;
constexpr double snap = ZORGeoMeshWalker::Snap;

const ZORMathPoint& Corner(const ZORGeoMesh& mesh, int triangle, int corner)
{
    return mesh.vertices[mesh.triangles[triangle][size_t(corner)]];
}

// Whether its height is more than rounding.
bool HasArea(const ZORGeoMesh& mesh, int triangle)
{
    const ZORMathPoint& a = Corner(mesh, triangle, 0);
    const ZORMathVector ab = Corner(mesh, triangle, 1) - a;
    const ZORMathVector ac = Corner(mesh, triangle, 2) - a;
    const double longest = std::max({ab.GetLength(), ac.GetLength(), (ac - ab).GetLength()});
    return Cross(ab, ac).GetLength() > snap * longest * longest;
}

ZORGeoWalkPlace Classify(int triangle, const double (&weights)[3])
{
    ZORGeoWalkPlace place;
    place.triangle = triangle;
    double sum = 0;
    for (int i = 0; i < 3; ++i) {
        place.weights[i] = weights[i] > snap ? weights[i] : 0;
        sum += place.weights[i];
    }
    for (double& weight : place.weights)
        weight /= sum;
    for (int i = 0; i < 3; ++i) {
        const int next = (i + 1) % 3;
        const int last = (i + 2) % 3;
        if (place.weights[next] == 0 && place.weights[last] == 0) {
            place.part = ZORGeoWalkPlace::OnCorner;
            place.corner = i;
        } else if (place.weights[last] == 0 && place.weights[i] > 0 && place.weights[next] > 0) {
            place.part = ZORGeoWalkPlace::OnSide;
            place.corner = i;
            place.u = place.weights[next];
        }
    }
    return place;
}

// Turns `angle` into (-pi, pi].
double Wrap(double angle)
{
    return std::remainder(angle, 2 * pi);
}

// The reference direction in the plane perpendicular to `normal`.
ZORMathVector ProjectDirection(const ZORMathVector& direction, const ZORMathVector& zero,
                               const ZORMathVector& normal)
{
    for (const ZORMathVector& vector : {direction.GetNormalized(), zero.GetNormalized()}) {
        const ZORMathVector projected = vector - Dot(vector, normal) * normal;
        if (projected.GetLength() > 1e-12)
            return projected.GetNormalized();
    }
    // The plane of a vertex may be perpendicular to the side.
    const ZORMathVector axis =
        std::abs(normal.GetX()) < 0.6 ? ZORMathVector(1, 0, 0) : ZORMathVector(0, 1, 0);
    return Cross(normal, axis).GetNormalized();
}

double AngleAbout(const ZORMathVector& normal, const ZORMathVector& from, const ZORMathVector& to)
{
    return std::atan2(Dot(Cross(from, to), normal), Dot(from, to));
}

// The angle on the surface that stands for a direction in the plane of a vertex.
double FindFanAngle(const ZORGeoVertexFan& fan, const ZORMathVector& normal, const ZORMathVector& projected)
{
    const auto& sectors = fan.GetSectors();
    const auto planeAngle = [&](const ZORMathVector& edge) {
        const ZORMathVector inPlane = edge - Dot(edge, normal) * normal;
        return AngleAbout(normal, projected, inPlane);
    };
    double nearest = 2 * pi;
    double angle = 0;
    const auto offer = [&](double distance, double value) {
        if (distance < nearest) {
            nearest = distance;
            angle = value;
        }
    };
    for (const auto& sector : sectors) {
        const double right = planeAngle(sector.right);
        const double width = Wrap(planeAngle(sector.left) - right);
        if (right <= 0 && width > 0 && right + width >= 0)
            return sector.begin + (sector.end - sector.begin) * (-right / width);
        if (right > 0 && width > 0 && right + width >= 2 * pi)
            return sector.begin + (sector.end - sector.begin) * ((2 * pi - right) / width);
        if (fan.IsClosed()) {
            offer(std::abs(right), sector.begin);
            offer(std::abs(Wrap(right + width)), sector.end);
        }
    }
    if (!fan.IsClosed()) {
        // Outside of the surface: as far beyond its border as the projection says.
        const auto positive = [](double value) { return value < 0 ? value + 2 * pi : value; };
        const double before = positive(planeAngle(sectors.front().right));
        const double behind = positive(-planeAngle(sectors.back().left));
        offer(before, -before);
        offer(behind, fan.GetTotalAngle() + behind);
    }
    return angle;
}

std::optional<ZORGeoWalkStart> LeaveVertex(const ZORGeoVertexFan& fan, double angle)
{
    auto departure = fan.Leave(angle);
    // Angles beyond the border are known but for full turns.
    for (const int turns : {-1, 1, -2, 2}) {
        if (!departure)
            departure = fan.Leave(angle + 2 * pi * turns);
    }
    if (!departure)
        return std::nullopt;
    ZORGeoWalkStart start;
    start.entry = departure->entry;
    start.heading = departure->heading;
    for (double& weight : start.weights)
        weight = 0;
    start.weights[start.entry.p] = 1 - start.entry.u;
    start.weights[start.entry.q] = start.entry.u;
    return start;
}

ZORGeoStraightStarts StartAtVertex(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                   const ZORMathVector& direction, const ZORMathVector& zero, double angle)
{
    const int p = place.corner;
    const ZORGeoVertexFan fan(mesh, {place.triangle, p, (p + 1) % 3, (p + 2) % 3, 0});
    ZORMathVector normal;
    for (const auto& sector : fan.GetSectors())
        normal += Cross(sector.right, sector.left);
    normal = normal.GetNormalized();
    if (normal == ZORMathVector())
        normal = ZorGeoTwiceAreaNormal(mesh, place.triangle).GetNormalized();
    const double reference = FindFanAngle(fan, normal, ProjectDirection(direction, zero, normal));
    if (fan.IsClosed()) {
        const double total = fan.GetTotalAngle();
        const double ahead = reference + Wrap(angle) * total / (2 * pi);
        return {LeaveVertex(fan, ahead), LeaveVertex(fan, ahead + total / 2)};
    }
    const double ahead = reference + Wrap(angle);
    return {LeaveVertex(fan, ahead), LeaveVertex(fan, ahead + pi)};
}

ZORGeoStraightStarts StartOnSide(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                 const ZORMathVector& direction, const ZORMathVector& zero, double angle)
{
    ZORMathVector normal = ZorGeoTwiceAreaNormal(mesh, place.triangle);
    const quint32 neighbor = mesh.GetNeighbor(place.triangle, place.corner);
    const int next = (place.corner + 1) % 3;
    if (neighbor != 0) {
        const int other = int(neighbor / 4) - 1;
        // Same way round: the common side runs the other way in the neighbour.
        const bool isFlipped =
            mesh.triangles[other][neighbor % 4] == mesh.triangles[place.triangle][size_t(place.corner)];
        const ZORMathVector beyond = ZorGeoTwiceAreaNormal(mesh, other);
        normal += isFlipped ? -beyond : beyond;
    }
    normal = normal.GetNormalized();
    if (normal == ZORMathVector())
        normal = ZorGeoTwiceAreaNormal(mesh, place.triangle).GetNormalized();
    const ZORMathVector side =
        Corner(mesh, place.triangle, next) - Corner(mesh, place.triangle, place.corner);
    const ZORMathVector projected = ProjectDirection(direction, zero, normal);
    const double ahead = AngleAbout(normal, side.GetNormalized(), projected) + Wrap(angle);
    return {ZorGeoStartOnSide(mesh, place, ahead), ZorGeoStartOnSide(mesh, place, ahead + pi)};
}

} // namespace

ZORMathVector ZorGeoTwiceAreaNormal(const ZORGeoMesh& mesh, int triangle)
{
    const ZORMathPoint& a = Corner(mesh, triangle, 0);
    return Cross(Corner(mesh, triangle, 1) - a, Corner(mesh, triangle, 2) - a);
}

std::optional<ZORGeoWalkPlace> ZorGeoFindWalkPlace(const ZORGeoMesh& mesh, int triangle,
                                                   const double (&weights)[3])
{
    if (HasArea(mesh, triangle))
        return Classify(triangle, weights);
    const ZORMathPoint& a = Corner(mesh, triangle, 0);
    const ZORMathPoint point =
        a + weights[1] * (Corner(mesh, triangle, 1) - a) + weights[2] * (Corner(mesh, triangle, 2) - a);
    // Outwards over edges, as far as the triangles hold the place.
    constexpr size_t bound = 64;
    std::vector<int> reached = {triangle};
    for (size_t i = 0; i < reached.size() && reached.size() < bound; ++i) {
        for (int side = 0; side < 3; ++side) {
            const quint32 neighbor = mesh.GetNeighbor(reached[i], side);
            const int next = int(neighbor / 4) - 1;
            if (neighbor == 0 || std::find(reached.begin(), reached.end(), next) != reached.end())
                continue;
            const ZORMathPoint& b = Corner(mesh, next, 0);
            const ZORMathVector bc = Corner(mesh, next, 1) - b;
            const ZORMathVector bd = Corner(mesh, next, 2) - b;
            const auto nearest = ZorGeoClosestOnTriangle(point, b, b + bc, b + bd);
            const double size = std::max(bc.GetLength(), bd.GetLength());
            if (nearest.squaredDistance > 1e-22 * size * size)
                continue;
            if (HasArea(mesh, next)) {
                const double weight[3] = {1 - nearest.weightB - nearest.weightC, nearest.weightB,
                                          nearest.weightC};
                return Classify(next, weight);
            }
            reached.push_back(next);
        }
    }
    return std::nullopt;
}

ZORGeoWalkStart ZorGeoStartInside(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                  const ZORMathVector& direction)
{
    const ZORMathVector normal = ZorGeoTwiceAreaNormal(mesh, place.triangle);
    const double twiceArea = normal.GetLength();
    const ZORMathVector left = Cross(normal.GetNormalized(), direction);
    // The walk has come through the side whose weight vanishes first on the way back.
    ZORGeoWalkStart start;
    double rates[3];
    int third = -1;
    for (int i = 0; i < 3; ++i) {
        const ZORMathVector side =
            Corner(mesh, place.triangle, (i + 2) % 3) - Corner(mesh, place.triangle, (i + 1) % 3);
        rates[i] = -Dot(side, left) / twiceArea;
        const double back = rates[i] > 0 ? place.weights[i] / rates[i] : 0;
        if (rates[i] > 0 && (third < 0 || back < start.skipped)) {
            start.skipped = back;
            third = i;
        }
    }
    const int p = (third + 1) % 3;
    const int q = (third + 2) % 3;
    const ZORMathVector side = Corner(mesh, place.triangle, q) - Corner(mesh, place.triangle, p);
    const double u = place.weights[q] - start.skipped * rates[q];
    start.entry = {place.triangle, p, q, third, std::clamp(u, 0.0, 1.0)};
    start.heading.along = Dot(direction, side) / Dot(side, side);
    start.heading.across = rates[third] * twiceArea / Dot(side, side);
    std::copy(std::begin(place.weights), std::end(place.weights), start.weights);
    return start;
}

std::optional<ZORGeoWalkStart> ZorGeoStartOnSide(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                                 double angle)
{
    const int p = place.corner;
    const int q = (p + 1) % 3;
    const quint32 neighbor = mesh.GetNeighbor(place.triangle, p);
    const int beyond = int(neighbor / 4) - 1;
    const double length = (Corner(mesh, place.triangle, q) - Corner(mesh, place.triangle, p)).GetLength();
    double along = std::cos(angle);
    double across = std::sin(angle);
    bool isBeyond = across < 0;
    if (std::abs(across) <= snap) {
        along = along > 0 ? 1 : -1;
        across = 0;
        isBeyond = neighbor != 0 && beyond < place.triangle;
    }
    ZORGeoWalkStart start;
    start.heading = {along / length, across / length};
    if (!isBeyond) {
        start.entry = {place.triangle, p, q, 3 - p - q, place.u};
    } else {
        if (neighbor == 0)
            return std::nullopt;
        // There the same side runs from Q to P, so that the third corner is on its left.
        const int first = int(neighbor % 4);
        const int second = (first + 1) % 3;
        const bool isSame =
            mesh.triangles[beyond][size_t(first)] == mesh.triangles[place.triangle][size_t(p)];
        start.entry = {beyond, isSame ? second : first, isSame ? first : second, 3 - first - second,
                       1 - place.u};
        start.heading = {-along / length, -across / length};
    }
    std::fill(std::begin(start.weights), std::end(start.weights), 0.0);
    start.weights[start.entry.p] = 1 - start.entry.u;
    start.weights[start.entry.q] = start.entry.u;
    return start;
}

ZORGeoStraightStarts ZorGeoStartStraight(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                         const ZORMathVector& direction, const ZORMathVector& zero,
                                         double angle)
{
    switch (place.part) {
    case ZORGeoWalkPlace::OnCorner:
        return StartAtVertex(mesh, place, direction, zero, angle);
    case ZORGeoWalkPlace::OnSide:
        return StartOnSide(mesh, place, direction, zero, angle);
    case ZORGeoWalkPlace::Inside:
        break;
    }
    const ZORMathVector normal = ZorGeoTwiceAreaNormal(mesh, place.triangle).GetNormalized();
    const ZORMathVector projected = ProjectDirection(direction, zero, normal);
    const ZORMathVector ahead = std::cos(angle) * projected + std::sin(angle) * Cross(normal, projected);
    return {ZorGeoStartInside(mesh, place, ahead), ZorGeoStartInside(mesh, place, -ahead)};
}
