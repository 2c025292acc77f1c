// Projects the points of a curve onto a mesh and joins them over it.

#pragma once

#include "mesh/ZORGeoMeshTree_p.h"
#include "walk/ZORGeoMeshJoin_p.h"

#include <ZORMathematics/ZORMathBoundingBox.h>

class ZORGeoCurve;

/// One projection; see ZORGeoProjectCrvSurOper for what the result is.
///
/// The source is sampled, each sample goes to its nearest place, and consecutive places are joined over the
/// mesh. Where two cannot be joined by a short way, the source between them is halved again and again; what is
/// still torn then is either bridged by the place locally nearest, found by descending from the last one over
/// the mesh, or ends the run.
class ZORGeoCurveProjection
{
public:
    /// \param mesh,tree  not owned, outlive this object
    ZORGeoCurveProjection(const ZORGeoMesh& mesh, const ZORGeoMeshTree& tree, const ZORMathBoundingBox& box);

    /// \return the longest run, the first of several; empty when the curve has no points or the mesh no triangles
    ZORGeoMeshPath Run(const ZORGeoCurve& source);

private:
    struct Sample
    {
        ZORMathPoint point;
        ZORGeoMeshPlace place; // the nearest
        double distance = 0;   // from the point to the place
        int depth = 0;         // how often the source was halved for it
    };

    void Measure(const ZORGeoCurve& source);
    bool Take(const ZORMathPoint& point, int depth, Sample& sample);
    double GetStep(const Sample& sample) const;
    void Follow(const ZORMathPoint& end);
    void Reach(const ZORMathPoint& point);
    bool TryJoin(const Sample& sample);
    bool Halve(std::vector<Sample>& pending);
    void Jump(const Sample& sample);
    ZORGeoMeshPlace Descend(const ZORMathPoint& point) const;
    ZORGeoMeshPath FinishRuns();

    const ZORGeoMesh& m_mesh;
    const ZORGeoMeshTree& m_tree;
    ZORGeoMeshJoin m_join;
    double m_minimumSide = 0; // shorter sides do not shorten the steps
    double m_minimumStep = 0;
    double m_part = 0;       // of the source that is done
    bool m_isClosed = false; // the source ends where it starts
    int m_halvings = 0;
    int m_jumps = 0;
    Sample m_last;
    bool m_isDetached = false; // the path is beside the nearest places
    std::vector<ZORGeoMeshPath> m_runs;
};
