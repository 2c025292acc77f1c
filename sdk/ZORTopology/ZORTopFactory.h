// Makes topological bodies.

#pragma once

#include <ZORTopology/ZORTopologyGlobal.h>

#include <QCoreApplication>

#include <memory>

class ZORGeoContainer;
class ZORGeoCurve;
class ZORGeoGeometry;
class ZORGeoSurface;
class ZORTopBody;

/// Makes bodies and registers them with a container, which owns them.
///
/// Geometry that a projection creates belongs to the container of the surface that it lies on. A call that
/// throws or returns null leaves nothing behind.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORTOPOLOGY_EXPORT ZORTopFactory
{
    Q_DECLARE_TR_FUNCTIONS(ZORTopFactory)

public:
    /// \param container  owner of the bodies; not owned
    explicit ZORTopFactory(ZORGeoContainer* container);
    ~ZORTopFactory();
    Q_DISABLE_COPY_MOVE(ZORTopFactory)

    /// Divides a curve into edges, at its ends and where it turns by more than the tolerance; O(n). See
    /// ZORTopBody. A closed curve that is smooth everywhere is one edge without vertices.
    /// \param tolerance  radians, 0 or more
    /// \return of dimension 1; of dimension 0 for a curve without length; null for one without points
    /// \throws ZORSysException "curve is null", "geometry has no container", "edge tolerance %1 is not an
    ///         angle of 0 or more"
    ZORTopBody* CreateCurve(const ZORGeoCurve* curve, double tolerance);

    /// Divides a surface into faces, at its border, where it turns by more than the tolerance, and where more
    /// than two triangles meet. O(T), and O(s log s) for s sides on edges. See ZORTopBody.
    /// \param tolerance  radians, 0 or more
    /// \return of dimension 2; null for a surface without triangles
    /// \throws ZORSysException "surface is null", "geometry has no container", "edge tolerance %1 is not an
    ///         angle of 0 or more"
    ZORTopBody* CreateSurface(const ZORGeoSurface* surface, double tolerance);

    /// Projects points or curves onto a surface. Every point goes to the nearest place of the surface, as a
    /// ZORGeoPointOnSurface; every edge becomes an edge of a ZORGeoCurveOnSurface, see ZORGeoProjectCrvSurOper.
    /// Edges share their vertices as before, unless the surface is torn between. An edge that the projection
    /// makes a point is left out and joins its vertices; where no edge is left the vertex is a
    /// ZORGeoPointOnSurface.
    /// \param support    a body of dimension 2
    /// \param projected  a body of dimension 0 or 1
    /// \return null for bodies of other dimensions
    /// \throws ZORSysException "support is null", "projected body is null", "geometry has no container"
    ZORTopBody* Project(const ZORTopBody* support, const ZORTopBody* projected);

private:
    void RequireContainer() const;
    ZORTopBody* Create(const ZORGeoGeometry* geometry, double tolerance);

    class Private;
    const std::unique_ptr<Private> d;
};
