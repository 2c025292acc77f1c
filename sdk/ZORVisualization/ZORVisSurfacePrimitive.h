// Shaded surface.

#pragma once

#include <ZORVisualization/ZORVisPrimitive.h>

class ZORGeoSurface;

/// The triangles of a surface, lit from the viewer on both sides; smooth where the triangles at a vertex meet
/// at less than 40 degrees. Triangles with a corner that is not finite are not drawn.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisSurfacePrimitive final : public ZORVisPrimitive
{
public:
    /// Shares the surface's arrays: O(1), no copy of the mesh.
    /// \param surface  null gives an empty primitive; may die before this primitive
    explicit ZORVisSurfacePrimitive(const ZORGeoSurface* surface);

    int GetNumTriangles() const;
};
