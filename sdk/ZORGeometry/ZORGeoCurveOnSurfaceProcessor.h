// Computes curves over a triangulated surface from a start location.

#pragma once

#include <ZORGeometry/ZORGeoCurveOnSurfaceLimits.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceResult.h>
#include <ZORGeometry/ZORGeoLocationOnSurface.h>

#include <QCoreApplication>
#include <QFlags>

#include <memory>

class ZORGeoSurface;
class ZORMathVector;

/// Walks from a start location over the triangles of a surface, in two directions.
///
/// Sides.      The end side runs in the given direction, the start side the opposite way. The curve runs from
///             the end of the start side over the start location to the end of the end side.
/// Lengths.    Each side has a length of its own, NaN or infinity for no bound: the side then runs to the
///             border, a limit, back to its start (Closed; the other side then has length 0), or to the cap.
///             A side of given length goes on beyond a closing, over itself.
/// Border.     Sides without a neighbour, also those of edges with more than two triangles. A curve that
///             comes to a border vertex goes on where it can go straight on, along the border or past a
///             concave corner, and ends where it cannot.
/// Cap.        A side crosses at most 10000 + 2 T triangles, then it ends with a warning of category
///             "zor.geometry".
/// Windings.   Which triangles are flipped does not matter beyond that of the start location, whose normal
///             tells which way is counter-clockwise.
/// Accuracy.   Every segment lies within its triangle to 1e-9 of its size, places near a vertex or edge by
///             less than 1e-12 of the weights count as on it.
///
/// Straightest geodesics after K. Polthier, M. Schmies: Straightest Geodesics on Polyhedral Surfaces, in:
/// Mathematical Visualization, Springer 1998.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoCurveOnSurfaceProcessor
{
    Q_DECLARE_TR_FUNCTIONS(ZORGeoCurveOnSurfaceProcessor)

public:
    /// What limits do. Start and End say which sides they apply to; both may be given. A soft limit ends a
    /// side that would run past it, given its length. A hard limit, with Hard added, ends a side at the first
    /// hit whatever its length: a shorter side is prolonged up to the limit, and keeps its length only where
    /// the way straight on meets no hard limit.
    enum LimitBehavior : int {
        Start = 1,
        End = 2,
        Hard = 8,
    };
    Q_DECLARE_FLAGS(LimitBehaviors, LimitBehavior)

    /// No limits yet.
    /// \param surface      not owned, must outlive the processor
    /// \param startLength  millimetres behind the start location; NaN or infinity: no bound
    /// \param endLength    millimetres ahead of the start location; NaN or infinity: no bound
    /// \throws ZORSysException "surface is null", "start length is negative", "end length is negative"
    ZORGeoCurveOnSurfaceProcessor(const ZORGeoSurface* surface, double startLength, double endLength);
    ~ZORGeoCurveOnSurfaceProcessor();
    Q_DISABLE_COPY_MOVE(ZORGeoCurveOnSurfaceProcessor)

    /// Removes all limits.
    void ClearGeometricLimits();

    /// Adds limits to those that are there. The curves are copied.
    ///
    /// Touching a limit in one point counts as a hit. A limit through the start location does not end a side
    /// there, nor where the side begins by running along it: only a later meeting does. Curves without a
    /// segment limit nothing.
    /// Linear in the number of segments added, whatever is there already.
    /// \throws ZORSysException "limits apply to neither side" without Start and End, "limit curve %1 is null",
    ///         "limit curve %1 is on another surface", "segment %1 of limit curve %2 is not within a triangle",
    ///         counted from 0; the limits are then those from before
    void AddGeometricLimits(const ZORGeoCurveOnSurfaceLimits& limits, QFlags<LimitBehavior> behavior);

    /// The straightest curve through \a start: it crosses an edge as a straight line does once the triangles
    /// are unfolded into a plane, and leaves as much surface angle left as right where it meets a vertex.
    ///
    /// Direction. \a direction, projected on the plane of the start triangle, is turned by \a angle
    /// counter-clockwise about the normal of the triangle. On an edge or vertex the plane is perpendicular to
    /// the sum of area times normal of the triangles around. In a vertex the projection points into one of the
    /// projected triangles, at a fraction of its angle; the same fraction of the triangle itself is the
    /// reference, and \a angle is scaled by th / 2 pi, th the sum of the angles of the triangles around; the
    /// start side leaves at th / 2 from the end side. On the border nothing is scaled, the start side leaves
    /// at pi from the end side, and a side that leaves the surface has length 0.
    /// Where \a direction vanishes in projection (below 1e-12), the side AB of the start triangle stands in.
    ///
    /// About 0.1 us a triangle crossed.
    /// \param direction  of any length
    /// \param angle      radians
    /// \throws ZORSysException "start location is not on a surface", "start location is on another surface",
    ///         "start location is not within its triangle", "direction is not finite", "angle is not finite"
    ZORGeoCurveOnSurfaceResult ComputeGeodesic(const ZORGeoLocationOnSurface& start,
                                               const ZORMathVector& direction, double angle) const;

    /// The curve that runs in every triangle at \a angle, counter-clockwise, to the projection of
    /// \a direction on the plane of the triangle; the start side runs the opposite way.
    ///
    /// Where the triangles on both sides of an edge push into it the curve slides along the edge, the way that
    /// both push together. In a vertex it goes on where the triangles lead away from it, by the least turn. It
    /// ends where the projection vanishes (below 1e-12) and in vertices that all triangles around lead into:
    /// Degenerate. So it does at once for a zero direction. A start on an edge or vertex takes the triangle
    /// of the location where that leads on. Triangles without area are passed straight on.
    /// \param direction  of any length
    /// \param angle      radians
    /// \throws ZORSysException as ComputeGeodesic()
    ZORGeoCurveOnSurfaceResult ComputeConstantAngle(const ZORGeoLocationOnSurface& start,
                                                    const ZORMathVector& direction, double angle) const;

    /// A shortest way over the surface: straight everywhere but at vertices, and there at least pi wide on both
    /// sides. No small change makes it shorter; of several such ways a search over points on the edges chooses
    /// the shortest or one that is hardly longer. The same way in both directions.
    ///
    /// It crosses edges that two triangles share, no edges of more than two. Lengths and limits of the processor
    /// do not apply.
    /// Up to 0.5 us for every triangle that is nearer than the end.
    /// \return the way from \a start to \a end, with an end side only: its reason is Length. One location when
    ///         both are at the same point. No locations, for the reason Unreachable, when the surface does not
    ///         connect them
    /// \throws ZORSysException "start location is not on a surface", "start location is on another surface",
    ///         "start location is not within its triangle", and the same of the "end location"
    ZORGeoCurveOnSurfaceResult ComputePointToPoint(const ZORGeoLocationOnSurface& start,
                                                   const ZORGeoLocationOnSurface& end) const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ZORGeoCurveOnSurfaceProcessor::LimitBehaviors)
