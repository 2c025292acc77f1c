// Shaded surface.

#pragma once

#include <ZORVisualization/ZORVisPrimitive.h>

#include <functional>
#include <memory>

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

    /// Returns a function that makes the primitive, in any thread and whether or not the surface still lives. Measuring
    /// the extent of a large surface for the first time takes long; here that thread does it.
    /// \param surface  null gives an empty primitive
    static std::function<std::unique_ptr<ZORVisSurfacePrimitive>()> PrepareFor(const ZORGeoSurface* surface);

    int GetNumTriangles() const;

private:
    explicit ZORVisSurfacePrimitive(std::shared_ptr<const ZORVisPrimitiveData> data);
};
