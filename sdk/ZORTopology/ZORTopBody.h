// Topological body: a geometry divided into vertices, edges and faces.

#pragma once

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORTopology/ZORTopEdge.h>
#include <ZORTopology/ZORTopFace.h>
#include <ZORTopology/ZORTopVertex.h>
#include <ZORTopology/ZORTopologyGlobal.h>

#include <QList>

#include <memory>

class ZORTopBodyPrivate;
struct ZORTopStructure;

/// A body of dimension 0 (points), 1 (curves) or 2 (a surface), or the empty body (-1).
///
/// Structure.  A curve is divided into edges by vertices at its ends and where it turns by more than the edge
///             tolerance. A surface is divided into faces by edges: along its border, where it turns by more
///             than the edge tolerance, and where more than two triangles meet. Edges of a surface are divided
///             by vertices where their number is not two. What is closed has an edge without vertices, or a
///             face without edges.
/// Indices.    Vertices, edges and faces are numbered from 0: faces by their first triangle, edges of a surface
///             by their first side, those of a curve along it.
/// Ownership.  Owned by its container from Initialize() on. Holds counted references to the geometry it is made
///             of from construction on, which is listed with the body as its user.
/// Changes.    When a curve or point that the body is made of changes in place, the body follows: that of a
///             single geometry is divided again by its tolerance. In one of several geometries every edge runs
///             along the whole of its changed curve, and its vertices move to the ends. Vertices, edges and
///             faces that were taken from the body before are out of date then.
/// Lifetime.   When geometry of it is destroyed all the same, it becomes the empty body.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORTOPOLOGY_EXPORT ZORTopBody : public ZORGeoGeometry
{
    Q_OBJECT

public:
    /// The dimension of the empty body.
    static constexpr int EmptyDimension = -1;

    /// Makes the body of a geometry, in as few pieces as possible: it turns nowhere by more than half a turn,
    /// so that a curve is one edge and each connected piece of a surface one face.
    ///
    /// \param container  owner of the body from Initialize() on
    /// \param geometry   a point, a curve or a surface; null makes the empty body
    /// \throws ZORSysException "a body needs a point, a curve or a surface" for other geometries
    ZORTopBody(ZORGeoContainer* container, const ZORGeoGeometry* geometry);

    /// Makes the body of a geometry. O(n) points; O(T) triangles and O(s log s) sides that lie on edges.
    ///
    /// A curve of a single point, or several equal ones, makes a body of dimension 0; one without points, or
    /// a surface without triangles, the empty body.
    /// \param tolerance  radians, 0 or more: turns up to it, and 1e-9 beyond, are smooth; pi and more: all are
    /// \throws ZORSysException also "edge tolerance %1 is not an angle of 0 or more"
    ZORTopBody(ZORGeoContainer* container, const ZORGeoGeometry* geometry, double tolerance);
    ~ZORTopBody() override;

    /// 0 for points, 1 for curves, 2 for a surface, EmptyDimension for the empty body.
    virtual int GetDimension() const;

    /// What the body is made of; null for the empty body and for one made of several geometries. Not owned.
    const ZORGeoGeometry* GetGeometry() const;
    /// All that the body is made of; none for the empty body. Not owned.
    QList<const ZORGeoGeometry*> GetGeometries() const;

    int GetNumVertices() const;
    int GetNumEdges() const;
    int GetNumFaces() const;
    /// \param index  0 ... GetNumVertices() - 1 (asserted)
    ZORTopVertex GetVertex(int index) const;
    /// \param index  0 ... GetNumEdges() - 1 (asserted)
    ZORTopEdge GetEdge(int index) const;
    /// \param index  0 ... GetNumFaces() - 1 (asserted)
    ZORTopFace GetFace(int index) const;

protected:
    void UpdateShape() override;

private:
    friend class ZORTopFactory;
    friend struct ZORTopBodyStorage;
    ZORTopBody(ZORGeoContainer* container, ZORTopStructure structure,
               const QList<const ZORGeoGeometry*>& parts);
    void AddPart(const ZORGeoGeometry* part);

    const std::unique_ptr<ZORTopBodyPrivate> d;
};
