#include "ZORGeoConstantAngleWalk_p.h"
#include "ZORGeoWalk_p.h"
#include "walk/ZORGeoVertexFan_p.h"

#include <ZORGeometry/ZORGeoOnSurface.h>
#include <ZORMathematics/ZORMathFunctions.h>

#include <algorithm>
#include <cmath>
#include <numbers>

using Result = ZORGeoCurveOnSurfaceResult;

namespace {

// A field vector in a triangle as a heading of unit length times the side PQ: both parts are 1 at most.
struct Push
{
    double along = 0;
    double across = 0; // above 0 into the triangle
    bool isZero = true;
    ZORMathVector vector;
};

Push MakePush(const ZORGeoAngleField& field, const ZORMathVector& side, const ZORMathVector& toThird)
{
    const ZORMathVector normal = Cross(side, toThird);
    const ZORMathVector vector = field.Get(normal);
    const ZORMathVector unit = side.GetNormalized();
    return {Dot(vector, unit), Dot(vector, Cross(normal.GetNormalized(), unit)), IsZero(vector), vector};
}

// The way on from a vertex that turns least from `before`.
std::optional<ZORGeoVertexFan::Departure>
LeaveAlongField(const ZORGeoVertexFan& fan, const ZORGeoAngleField& field, const ZORMathVector& before)
{
    const auto& sectors = fan.GetSectors();
    double best = -2;
    std::optional<double> angle;
    const auto offer = [&](const ZORMathVector& vector, double value) {
        const double cosine = Dot(vector, before);
        if (cosine > best + ZORGeoMeshWalker::kSnap) {
            best = cosine;
            angle = value;
        }
    };
    for (size_t i = 0; i < sectors.size(); ++i) {
        const auto& sector = sectors[i];
        const Push push = MakePush(field, sector.right, sector.left);
        if (push.isZero)
            continue;
        const double width = sector.end - sector.begin;
        const double turn = std::atan2(push.across, push.along);
        if (turn >= -ZORGeoMeshWalker::kSnap && turn <= width + ZORGeoMeshWalker::kSnap)
            offer(push.vector, sector.begin + std::clamp(turn, 0.0, width));
        // The edge to the left, when both of its triangles push into it and, together, away from the vertex.
        if (i + 1 == sectors.size() && !fan.IsClosed())
            continue;
        const auto& next = sectors[(i + 1) % sectors.size()];
        const Push left = MakePush(field, next.right, next.left);
        const ZORMathVector edge = sector.left.GetNormalized();
        const double along = Dot(push.vector, edge);
        const double across = Dot(Cross(edge, push.vector), Cross(sector.right, sector.left).GetNormalized());
        if (!left.isZero && across >= 0 && left.across <= 0 && along + left.along > 0)
            offer(edge, sector.end);
    }
    return angle ? fan.Leave(*angle) : std::nullopt;
}

class FieldGuide
{
public:
    FieldGuide(const ZORGeoMesh& mesh, const ZORGeoAngleField& field)
        : m_mesh(mesh)
        , m_field(field)
    {
    }

    std::optional<Result::StopReason> Steer(ZORGeoMeshWalker& walker,
                                            const ZORGeoMeshWalker::Exit& exit) const
    {
        const ZORMathVector side = walker.GetQ() - walker.GetP();
        const ZORMathVector toThird = walker.GetR() - walker.GetP();
        const double squared = walker.GetSquaredLength();
        const ZORMathVector normal = Cross(side, toThird);
        // What has no area is passed straight on.
        if (!(walker.GetApexAcross()
              > ZORGeoMeshWalker::kSnap * std::max(1.0, std::abs(walker.GetApexAlong()))))
            return std::nullopt;
        const ZORMathVector vector = m_field.Get(normal);
        if (IsZero(vector))
            return Result::Degenerate;
        const double across = Dot(vector, Cross(normal, side)) / (squared * squared * walker.GetApexAcross());
        const double along = Dot(vector, side) / squared;
        const double length = std::sqrt(squared);
        if (across * length > ZORGeoMeshWalker::kSnap) {
            walker.SetHeading({along, across});
            return std::nullopt;
        }
        // The part along the edge is that of the triangle behind: it stays in crossing.
        const double slide = exit.heading.along + along;
        if (slide == 0)
            return Result::Degenerate;
        walker.SetHeading({std::copysign(1 / length, slide), 0});
        return std::nullopt;
    }

    std::optional<Result::StopReason> PassVertex(ZORGeoMeshWalker& walker, int corner) const
    {
        const ZORMathVector side = walker.GetQ() - walker.GetP();
        const ZORMathVector normal = Cross(side, walker.GetR() - walker.GetP()).GetNormalized();
        const ZORMathVector before =
            walker.GetHeading().along * side + walker.GetHeading().across * Cross(normal, side);
        const ZORGeoVertexFan fan(m_mesh, ZorGeoArriveAtCorner(walker, corner).entry);
        return ZorGeoDepart(walker, fan, LeaveAlongField(fan, m_field, before));
    }

private:
    const ZORGeoMesh& m_mesh;
    const ZORGeoAngleField& m_field;
};

std::optional<ZORGeoWalkStart> StartOnSide(const ZORGeoMesh& mesh, const ZORGeoAngleField& field,
                                           const ZORGeoWalkPlace& place, bool& isBorder)
{
    const auto measure = [&](const ZORGeoMeshEntry& entry) {
        const ZORGeoMesh::Corners& corners = mesh.triangles[entry.triangle];
        const ZORMathPoint& p = mesh.vertices[corners[size_t(entry.p)]];
        return MakePush(field, mesh.vertices[corners[size_t(entry.q)]] - p,
                        mesh.vertices[corners[size_t(entry.r)]] - p);
    };
    const ZORGeoMeshEntry entry = ZorGeoMakeEntry(place);
    const auto beyond = ZorGeoEnterBeyond(mesh, entry);
    const Push here = measure(entry);
    const Push there = beyond ? measure(*beyond) : Push();
    isBorder = !beyond && !here.isZero;
    if (!here.isZero && here.across >= -ZORGeoMeshWalker::kSnap)
        return ZorGeoStartOnSide(mesh, place, std::atan2(here.across, here.along));
    if (!beyond || there.isZero)
        return std::nullopt;
    if (there.across >= -ZORGeoMeshWalker::kSnap)
        return ZorGeoStartOnSide(mesh, place, std::atan2(-there.across, -there.along));
    const double slide = here.along - there.along;
    if (here.isZero || slide == 0)
        return std::nullopt;
    return ZorGeoStartOnSide(mesh, place, slide > 0 ? 0 : std::numbers::pi);
}

} // namespace

ZORGeoAngleField::ZORGeoAngleField(const ZORMathVector& direction, double angle)
    : m_direction(direction.GetNormalized())
    , m_cos(std::cos(angle))
    , m_sin(std::sin(angle))
{
}

ZORMathVector ZORGeoAngleField::Get(const ZORMathVector& normal) const
{
    const ZORMathVector unit = normal.GetNormalized();
    const ZORMathVector projected = m_direction - Dot(m_direction, unit) * unit;
    if (IsZero(unit) || !(projected.GetLength() > ZORGeoOnSurface::kVanishingProjection))
        return {};
    const ZORMathVector zero = projected.GetNormalized();
    return m_cos * zero + m_sin * Cross(unit, zero);
}

std::optional<ZORGeoWalkStart> ZorGeoStartAlongField(const ZORGeoMesh& mesh, const ZORGeoAngleField& field,
                                                     const ZORGeoWalkPlace& place, bool& isBorder)
{
    isBorder = false;
    if (place.part == ZORGeoWalkPlace::OnSide)
        return StartOnSide(mesh, field, place, isBorder);
    const ZORMathVector vector = field.Get(ZorGeoTwiceAreaNormal(mesh, place.triangle));
    if (place.part == ZORGeoWalkPlace::Inside) {
        if (IsZero(vector))
            return std::nullopt;
        return ZorGeoStartInside(mesh, place, vector);
    }
    const ZORGeoVertexFan fan(mesh, ZorGeoMakeEntry(place));
    const auto departure = LeaveAlongField(fan, field, vector);
    isBorder = !fan.IsClosed() && !IsZero(vector);
    if (!departure)
        return std::nullopt;
    return ZorGeoStartAt(departure->entry, departure->heading);
}

void ZorGeoWalkAlongField(const ZORGeoMesh& mesh, const ZORGeoAngleField& field, const ZORGeoWalkStart& start,
                          ZORGeoTraceRecorder& recorder)
{
    FieldGuide guide(mesh, field);
    ZorGeoWalk(mesh, guide, start, recorder);
}
