#include "ZORGeoStraightWalk_p.h"
#include "ZORGeoWalk_p.h"
#include "mesh/ZORGeoVertexFan_p.h"

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

    std::optional<Result::StopReason> Advance(ZORGeoMeshWalker& walker,
                                              const ZORGeoMeshWalker::Exit& exit) const
    {
        if (ZORGeoMeshWalker::IsCorner(exit)) [[unlikely]]
            return PassVertex(walker, walker.GetCorner(exit));
        if (!walker.Continue(exit))
            return Result::Border;
        return std::nullopt;
    }

private:
    std::optional<Result::StopReason> PassVertex(ZORGeoMeshWalker& walker, int corner) const
    {
        const ZORGeoVertexArrival arrival = ZorGeoArriveAtCorner(walker, corner);
        const ZORGeoVertexFan fan(m_mesh, arrival.entry);
        return ZorGeoDepart(walker, fan, fan.GoStraight(fan.GetFirstAngle() + arrival.back));
    }

    const ZORGeoMesh& m_mesh;
};

} // namespace

void ZorGeoWalkStraight(const ZORGeoMesh& mesh, const ZORGeoWalkStart& start, ZORGeoTraceRecorder& recorder)
{
    StraightGuide guide(mesh);
    ZorGeoWalk(mesh, guide, start, recorder);
}
