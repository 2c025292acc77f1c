// Loose triangles.

#pragma once

#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisPrimitive.h>

/// Triangles of three points each, flat shaded, lit from the viewer on both sides.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisTrianglePrimitive final : public ZORVisPrimitive
{
public:
    /// \param points  millimetres; points 0-1-2, 3-4-5, ... are the triangles, an incomplete last triangle is
    ///                not drawn, nor is one with a point that is not finite
    explicit ZORVisTrianglePrimitive(const ZORMathSetOfPoints& points);

    int GetNumTriangles() const;
};
