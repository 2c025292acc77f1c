// Base of the curve geometries.

#pragma once

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORGeometry/ZORGeoLocationOnCurve.h>
#include <ZORGeometry/ZORGeoRangeOfCurve.h>

class ZORMathBoundingBox;
class ZORMathSetOfPoints;

/// A curve: a chain of straight segments through its points, measured by arc length.
///
/// Units.    Millimeters.
/// Changes.  Only derived classes that say so change after construction.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoCurve : public ZORGeoGeometry
{
    Q_OBJECT

public:
    ~ZORGeoCurve() override;

    /// How many points the curve goes through; 0 for an empty curve.
    virtual int GetNumPoints() const;
    /// \param index  0 ... GetNumPoints() - 1 (asserted)
    virtual ZORMathPoint GetPoint(int index) const;

    /// Arc length; 0 for fewer than two points.
    double GetLength() const;
    /// Empty for a curve without points.
    ZORMathBoundingBox GetBoundingBox() const;
    /// The points of a piece of the curve, its ends included: those of the curve that lie inside the range
    /// and, where the range ends between two of them, the places there.
    /// \return empty when the range holds nothing of the curve; one point when it holds a single place
    ZORMathSetOfPoints GetPoints(const ZORGeoRangeOfCurve& range = {}) const;

    /// The place at a distance along the curve. O(log n).
    ///
    /// Beyond an end the curve goes on straight, along the first or last segment that has a length; the
    /// place's arc length is then negative or greater than GetLength(). A curve without length stays at its
    /// point.
    /// \param distance  millimetres along the curve from \a start, negative towards the curve's start
    /// \param start     where to measure from, a place on this curve; null for the start of the curve
    /// \return null for a curve without points, or a distance that is not finite or beyond 1e60
    /// \throws ZORSysException "start location lies on another curve"
    ZORGeoLocationOnCurve GetLocation(double distance, const ZORGeoLocationOnCurve* start) const;

    /// Finds the place of the curve that is nearest to \a point; the first one of several. O(log n) for
    /// points near the curve. The first call builds a search tree, O(n).
    /// \param[out] location  unchanged when the result is false
    /// \return false when the curve has no points or \a point is not finite or too far away
    bool Project(const ZORMathPoint& point, ZORGeoLocationOnCurve& location) const;

protected:
    /// \param points  kept as they are; the derived constructor calls CheckPoints() for them
    ZORGeoCurve(ZORGeoContainer* container, const ZORMathSetOfPoints& points);
    /// \throws ZORSysException "point %1 of the curve is not finite or too far away", counted from 0, for a
    ///         coordinate beyond 1e60
    void CheckPoints() const;
    /// Replaces the points and everything that is computed from them. The caller reports the change.
    /// \throws ZORSysException as CheckPoints(); the curve is unchanged then
    void ReplacePoints(const ZORMathSetOfPoints& points);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
