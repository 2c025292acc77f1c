// Triangulated surface: the support of projections, geodesics and draping.

#pragma once

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORGeometry/ZORGeoLocationOnSurface.h>

#include <QList>

#include <array>
#include <memory>

class ZORGeoSurfacePrivate;
class ZORGeoTriangleEdgeCurve;
class ZORMathBoundingBox;
class ZORMathPoint;
class ZORMathVector;

/// A surface in 3-space, represented by a triangle mesh of any shape.
///
/// Shape.      V vertices and T triangles, both fixed at construction. The mesh may be open, in several
///             pieces, badly oriented, not manifold, and may hold degenerate triangles.
/// Numbering.  Triangles are numbered 1 ... T; the number 0 means "no triangle". The corners of a triangle
///             are A, B, C, counter-clockwise seen from the tip of its normal; its sides are AB, BC, CA, in
///             this order wherever three values are given.
/// Neighbours. Two triangles are neighbours across an edge when they are the only two on it, whatever their
///             winding. Of triangles with the same three corners only the first has neighbours; a triangle
///             with two equal corners has none.
/// Units.      Millimetres.
/// Ownership.  Owned by its container from Initialize() on. Locations on the surface point to it without
///             owning it and must not outlive it.
/// Memory.     About 36 bytes a triangle and as many more after the first Project() or IntersectRay(), which
///             build a search tree.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoSurface : public ZORGeoGeometry
{
    Q_OBJECT

public:
    /// Zero-based vertex indices of the corners A, B, C.
    using Corners = std::array<int, 3>;

    /// Builds the surface and its neighbour table, in O(V + T) time. Shares the lists with the caller.
    ///
    /// \param container  owner of the surface from Initialize() on
    /// \param vertices   V points; a point used by no triangle is allowed
    /// \param triangles  T corner triples, each index in 0 ... V - 1
    /// \throws ZORSysException "triangle %1 refers to vertex %2 of %3" for an index out of range, "vertex %1
    ///         is not finite or too far away", counted from 0, for a coordinate beyond 1e60, "surface has too
    ///         many triangles" for more than 536870910
    ZORGeoSurface(ZORGeoContainer* container, const QList<ZORMathPoint>& vertices,
                  const QList<Corners>& triangles);
    ~ZORGeoSurface() override;

    /// T, the number of triangles; 0 for an empty surface.
    int GetNumTriangles() const;

    /// The corners of a triangle.
    /// \param triangle   1 ... T (asserted)
    /// \param[out] a,b,c  positions of the corners A, B and C
    void GetVertices(int triangle, ZORMathPoint& a, ZORMathPoint& b, ZORMathPoint& c) const;

    /// The triangles on the other side of each side.
    /// \param triangle  1 ... T (asserted)
    /// \param[out] acrossAB,acrossBC,acrossCA  1 ... T, or 0 where there is no neighbour
    void GetNeighbors(int triangle, int& acrossAB, int& acrossBC, int& acrossCA) const;

    /// All vertices; V entries, index base 0.
    const QList<ZORMathPoint>& GetVertexArray() const;
    /// The corners of all triangles; T entries, triangle t at index t - 1, vertex indices of base 0.
    const QList<Corners>& GetCornerArray() const;

    /// The box around the corners of all triangles; empty for a surface without triangles. Measured once.
    ZORMathBoundingBox GetBoundingBox() const;
    /// The sum of the areas of the triangles, square millimetres.
    double GetArea() const;

    /// The place of the surface nearest to a point; in the lowest-numbered triangle when several are equally
    /// near. Exact up to rounding; degenerate triangles count as the segment or point that they are.
    ///
    /// O(log T) for points near the surface. The first call of this or IntersectRay() builds the search tree,
    /// O(T log T).
    /// \return null when the surface is empty, or \a point is not finite or beyond 1e60
    ZORGeoLocationOnSurface Project(const ZORMathPoint& point) const;

    /// The first place where a ray meets the surface, from either face; edges between triangles leave no gap.
    ///
    /// \param direction       of any length from 1e-60 on
    /// \param[out] parameter  when not null: the place is origin + parameter * direction, parameter >= 0;
    ///                        unchanged when nothing is hit
    /// \return null when nothing is hit, or a value is not finite or beyond 1e60, or the direction is
    ///         shorter than 1e-60
    ZORGeoLocationOnSurface IntersectRay(const ZORMathPoint& origin, const ZORMathVector& direction,
                                         double* parameter = nullptr) const;

    /// Creates one closed curve for every border loop: every side without a neighbour is in one of them, once.
    /// O(T). A loop starts with its lowest triangle and runs in that one's winding; the loops are in the order
    /// of their first triangles. Pieces that touch in a vertex, or in an edge of more than two triangles, keep
    /// loops of their own.
    /// \return the curves, registered with and owned by the container of the surface; none for a closed surface
    /// \throws ZORSysException "geometry has no container" when there are loops
    QList<const ZORGeoTriangleEdgeCurve*> CreateEdges();

private:
    friend class ZORGeoSurfacePrivate;
    const std::unique_ptr<ZORGeoSurfacePrivate> d;
};
