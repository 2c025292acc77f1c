// A curve along the edges of triangles.

#pragma once

#include <ZORGeometry/ZORGeoCurveOnSurface.h>

#include <memory>

/// A curve on a surface that follows sides of triangles; its segments are whole sides.
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoTriangleEdgeCurve : public ZORGeoCurveOnSurface
{
    Q_OBJECT

public:
    struct Edge
    {
        int triangle = 0;        // 1 ... GetNumTriangles()
        int side = 0;            // 0: AB, 1: BC, 2: CA
        bool isReversed = false; // true: runs from the end of the side to its start
    };

    /// The container is that of the surface, which owns the curve from Initialize() on.
    /// \param surface  not null
    /// \param edges    every edge starts at the vertex where the one before it ends
    /// \throws ZORSysException "edge %1 of the curve is not on the surface", "edge %1 of the curve does not
    ///         start where the one before it ends", counted from 0
    ZORGeoTriangleEdgeCurve(const ZORGeoSurface* surface, const QList<Edge>& edges);
    ~ZORGeoTriangleEdgeCurve() override;

    /// The edges in the order of the curve, one fewer than points; none for a curve without edges.
    const QList<Edge>& GetEdges() const;

private:
    friend struct ZORGeoTriangleEdgeCurveStorage;
    /// A curve whose surface has been destroyed.
    ZORGeoTriangleEdgeCurve(ZORGeoContainer* container, const ZORMathSetOfPoints& points,
                            const QList<Edge>& edges);

    class Private;
    const std::unique_ptr<Private> d;
};
