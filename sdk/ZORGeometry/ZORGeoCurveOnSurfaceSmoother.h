// Gives curves over a triangulated surface a minimum radius.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnSurface.h>

#include <QCoreApplication>
#include <QList>

#include <functional>
#include <memory>
#include <optional>

namespace zor::geo {
class ProgressReporter;
}

/// Rounds off the bends of curves over a surface by arcs of constant geodesic curvature.
///
/// Radius.  At a place of a curve: the mean length of the straight ways before and behind, divided by the turn
///          between them in the unfolded triangles. A way counts with five degrees of the minimum radius at
///          most: what turns by more between long ways is a corner. Places that a straight way passes do not
///          count. Turns below 1e-6 and segments below 1e-11 of the coordinates are rounding. At a vertex of the
///          mesh the turn is the deviation from equal angles on both sides.
/// Result.  Each bend sharper than the minimum radius is replaced by an arc of this radius that begins and ends
///          tangent to the curve; its places are at most a tenth of a degree apart, so that the radius
///          between them is below the minimum by less than a part in 1,000,000. The tolerance of the check is
///          a part in 10,000. A smoothed curve is smooth: it stays as it is the next time.
/// Ends.    The first and last place stay. A curve that is too short for an arc at an end starts or ends in
///          another direction. A closed curve is one whose ends are at the same point: it may have a corner
///          there.
/// Length.  The curve never becomes longer.
/// Crowds.  Bends that follow each other in the same direction get one arc together. Bends in both directions
///          without room for arcs between them are cut short first, by the shortest way between two places of
///          the curve at most four times the radius before and behind. A loop narrower than twice the radius
///          has no arc that could follow it and is shortened until it is none.
/// Limits.  Where the surface has no room for an arc or a cut (the border is in the way, or a vertex around
///          which the angles sum up to more than 2 pi), and where nothing would be left of a closed curve,
///          smoothing fails: the curve is smoothed everywhere or not at all. With a radius below 1e-6 of the
///          coordinates only rounding would remain, so every curve counts as smooth.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoCurveOnSurfaceSmoother
{
    Q_DECLARE_TR_FUNCTIONS(ZORGeoCurveOnSurfaceSmoother)

public:
    using Locations = QList<ZORGeoLocationOnSurface>;

    /// \param radius  the minimum radius, millimeters; with 0 or NaN every curve is smooth
    /// \throws ZORSysException "radius is negative", "radius is infinite"
    explicit ZORGeoCurveOnSurfaceSmoother(double radius);
    ~ZORGeoCurveOnSurfaceSmoother();

    /// \param locations  places of one surface, in the order of the curve, any number of them; the segments
    ///                   need not lie within triangles
    /// \return the locations as they are when the curve is smooth; else those of the smoothed curve, each
    ///         segment from location i to i + 1 within the triangle of location i
    /// \throws ZORSysException as Connect(); "the surface has no room for the radius %1 at (%2, %3, %4)" with
    ///         the first bend that would be left
    Locations Smooth(const Locations& locations) const;
    /// Smooths with progress, for hosts that show it or let their users cancel.
    ///
    /// Bends that are crowded within their radius take the most time, about 30 ms each on a million triangles.
    /// \param report  called in the same thread: with 0, then typically every 10 ms with the part that is done,
    ///                never less than before, at last with 1; returns false to cancel. What it throws passes
    ///                through. An empty function reports nothing
    /// \return nothing when canceled, typically within 0.02 s
    /// \throws ZORSysException as the other function; the last report is then below 1
    std::optional<Locations> Smooth(const Locations& locations,
                                    const std::function<bool(double)>& report) const;

    /// The smallest radius of a curve, infinity for one without turns.
    /// \throws ZORSysException as Connect()
    double FindSmallestRadius(const Locations& locations) const;

    /// Joins places whose segments do not lie within triangles by shortest ways over the surface.
    /// \return the locations as they are when all of them do
    /// \throws ZORSysException "location %1 of the curve is not on a surface", "location %1 of the curve is on
    ///         another surface", "location %1 of the curve is not within its triangle", "no way over the
    ///         surface leads to location %1 of the curve", counted from 0
    static Locations Connect(const Locations& locations);

private:
    Locations Run(const Locations& locations, zor::geo::ProgressReporter& progress) const;
    bool IsEverySmooth(const Locations& locations) const;

    class Private;
    const std::unique_ptr<Private> d;
};
