// The loop of all walks over a mesh.

#pragma once

#include "ZORGeoTraceRecorder_p.h"
#include "walk/ZORGeoVertexFan_p.h"
#include "walk/ZORGeoWalkStart_p.h"

#include <optional>

/// The number of triangles that one side may cross.
inline qint64 ZorGeoGetMaximumCrossings(const ZORGeoMesh& mesh)
{
    return 10000 + 2 * qint64(mesh.GetNumTriangles());
}

/// Corrects the place where a walk that begins inside leaves the first triangle: never behind the start.
inline void ZorGeoShortenFirst(ZORGeoMeshWalker::Exit& exit, const ZORGeoWalkStart& start)
{
    if (start.skipped > 0 && exit.length < start.skipped) {
        const double far = start.weights[start.entry.r];
        const double near = start.weights[exit.isOverQ ? start.entry.q : start.entry.p];
        exit.s = far + near > 0 ? far / (far + near) : 0;
        exit.length = start.skipped;
    }
    exit.length -= start.skipped;
}

/// Continues from the vertex of a fan.
/// \return why the walk ends there when there is no departure
inline std::optional<ZORGeoCurveOnSurfaceResult::StopReason>
ZorGeoDepart(ZORGeoMeshWalker& walker, const ZORGeoVertexFan& fan,
             const std::optional<ZORGeoVertexFan::Departure>& departure)
{
    if (!departure)
        return fan.IsClosed() ? ZORGeoCurveOnSurfaceResult::Degenerate : ZORGeoCurveOnSurfaceResult::Border;
    walker.Enter(departure->entry);
    walker.SetHeading(departure->heading);
    return std::nullopt;
}

/// Enters the triangle behind an exit.
/// \return why the walk ends there, if it does
template<class Guide>
std::optional<ZORGeoCurveOnSurfaceResult::StopReason> ZorGeoPassExit(ZORGeoMeshWalker& walker, Guide& guide,
                                                                     const ZORGeoMeshWalker::Exit& exit)
{
    if (ZORGeoMeshWalker::IsCorner(exit)) [[unlikely]]
        return guide.PassVertex(walker, walker.GetCorner(exit));
    if (!walker.Continue(exit))
        return ZORGeoCurveOnSurfaceResult::Border;
    return guide.Steer(walker, exit);
}

/// Walks one side of a curve until the recorder has enough or the guide knows no way on.
/// \param guide  has `std::optional<StopReason> PassVertex(ZORGeoMeshWalker&, int corner)`, which enters the next
///               triangle at a vertex, and `std::optional<StopReason> Steer(ZORGeoMeshWalker&, const
///               ZORGeoMeshWalker::Exit&)`, which may change the heading of a walk that has crossed an edge; both
///               return why the walk ends there, if it does
template<class Guide>
void ZorGeoWalk(const ZORGeoMesh& mesh, Guide& guide, const ZORGeoWalkStart& start,
                ZORGeoTraceRecorder& recorder)
{
    const qint64 cap = ZorGeoGetMaximumCrossings(mesh);
    ZORGeoMeshWalker walker(mesh);
    walker.Enter(start.entry);
    walker.SetHeading(start.heading);
    ZORGeoTraceSegment segment;
    std::copy(std::begin(start.weights), std::end(start.weights), std::begin(segment.begin));
    const ZORGeoMeshEntry& entry = walker.GetEntry();
    segment.beginPoint = walker.GetP() + start.weights[entry.q] * (walker.GetQ() - walker.GetP())
                         + start.weights[entry.r] * (walker.GetR() - walker.GetP());
    for (qint64 crossed = 0;; ++crossed) {
        ZORGeoMeshWalker::Exit exit = walker.FindExit();
        if (!exit.isFinite)
            return recorder.Stop(ZORGeoCurveOnSurfaceResult::Degenerate);
        if (crossed == 0)
            ZorGeoShortenFirst(exit, start);
        else
            walker.GetEntryWeights(segment.begin);
        segment.triangle = entry.triangle;
        walker.GetExitWeights(exit, segment.end);
        segment.endPoint = walker.GetPoint(exit);
        segment.length = exit.length;
        segment.squaredScale = walker.GetSquaredLength();
        if (recorder.Add(segment))
            return;
        if (crossed >= cap)
            return recorder.Stop(ZORGeoCurveOnSurfaceResult::Cap);
        if (const auto reason = ZorGeoPassExit(walker, guide, exit))
            return recorder.Stop(*reason);
        segment.beginPoint = segment.endPoint;
    }
}
