#include "ZORGeoStraightWalk_p.h"
#include "ZORGeoWalk_p.h"
#include "walk/ZORGeoVertexFan_p.h"

#include <ZORGeometry/ZORGeoOnSurface.h>

#include <algorithm>
#include <numbers>

namespace {

using std::numbers::pi;

// The same angle in -pi ... pi.
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
        if (projected.GetLength() > ZORGeoOnSurface::kVanishingProjection)
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
    return ZorGeoStartAt(departure->entry, departure->heading);
}

ZORGeoStraightStarts StartAtVertex(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                   const ZORMathVector& direction, const ZORMathVector& zero, double angle)
{
    const ZORGeoVertexFan fan(mesh, ZorGeoMakeEntry(place));
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
    const ZORGeoMeshEntry entry = ZorGeoMakeEntry(place);
    const ZORGeoMesh::Corners& corners = mesh.triangles[place.triangle];
    const ZORMathPoint& p = mesh.vertices[corners[size_t(entry.p)]];
    const ZORMathVector side = mesh.vertices[corners[size_t(entry.q)]] - p;
    ZORMathVector normal = ZorGeoTwiceAreaNormal(mesh, place.triangle);
    if (const auto beyond = ZorGeoEnterBeyond(mesh, entry)) {
        const int apex = mesh.triangles[beyond->triangle][size_t(beyond->r)];
        normal += Cross(mesh.vertices[apex] - p, side);
    }
    normal = normal.GetNormalized();
    if (normal == ZORMathVector())
        normal = ZorGeoTwiceAreaNormal(mesh, place.triangle).GetNormalized();
    const ZORMathVector projected = ProjectDirection(direction, zero, normal);
    const double ahead = AngleAbout(normal, side.GetNormalized(), projected) + Wrap(angle);
    return {ZorGeoStartOnSide(mesh, place, ahead), ZorGeoStartOnSide(mesh, place, ahead + pi)};
}

} // namespace

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

using Result = ZORGeoCurveOnSurfaceResult;

namespace {

// Goes on straight behind an exit.
class StraightGuide
{
public:
    explicit StraightGuide(const ZORGeoMesh& mesh)
        : m_mesh(mesh)
    {
    }

    // The heading that the walker keeps behind an edge is straight.
    static std::optional<Result::StopReason> Steer(ZORGeoMeshWalker&, const ZORGeoMeshWalker::Exit&)
    {
        return std::nullopt;
    }

    std::optional<Result::StopReason> PassVertex(ZORGeoMeshWalker& walker, int corner) const
    {
        const ZORGeoVertexArrival arrival = ZorGeoArriveAtCorner(walker, corner);
        const ZORGeoVertexFan fan(m_mesh, arrival.entry);
        return ZorGeoDepart(walker, fan, fan.GoStraight(fan.GetFirstAngle() + arrival.back));
    }

private:
    const ZORGeoMesh& m_mesh;
};

} // namespace

void ZorGeoWalkStraight(const ZORGeoMesh& mesh, const ZORGeoWalkStart& start, ZORGeoTraceRecorder& recorder)
{
    StraightGuide guide(mesh);
    ZorGeoWalk(mesh, guide, start, recorder);
}
