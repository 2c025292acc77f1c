// Shortest way between two places of a mesh.

#pragma once

#include "ZORGeoProgressReporter_p.h"
#include "ZORGeoTriangleStrip_p.h"
#include "walk/ZORGeoMeshJoin_p.h"

/// Searches a good strip of triangles from one place to the other, then shortens it to a shortest geodesic of
/// its surroundings.
///
/// The strip comes from a search over the edges of the mesh (ZORGeoStripSearch). In the strip, unfolded, the
/// shortest way is found with a funnel; it turns at vertices only. Where the surface on the other side of such
/// a vertex spans less than pi, the strip is led round it there, and so on until no vertex is left.
class ZORGeoShortestPath
{
public:
    /// \param mesh      not owned, outlives this object
    /// \param progress  checked during a search; null or not owned, outlives this object
    explicit ZORGeoShortestPath(const ZORGeoMesh& mesh, zor::geo::ProgressReporter* progress = nullptr)
        : m_mesh(mesh)
        , m_progress(progress)
    {
    }

    /// The same way in both directions.
    /// \return the path; one place when both are at the same point; empty when no way leads over the mesh
    /// \throws zor::geo::Canceled
    ZORGeoMeshPath Find(const ZORGeoMeshPlace& start, const ZORGeoMeshPlace& end) const;

private:
    void Shorten(ZORGeoTriangleStrip& strip) const;

    const ZORGeoMesh& m_mesh;
    zor::geo::ProgressReporter* const m_progress;
};
