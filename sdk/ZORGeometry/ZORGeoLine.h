// A straight segment.

#pragma once

#include <ZORGeometry/ZORGeoCurve.h>

class ZORMathPoint;

/// A curve of one segment between two points, which may coincide.
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoLine : public ZORGeoCurve
{
    Q_OBJECT

public:
    /// \param container   owner of the line from Initialize() on
    /// \param start,end   millimetres
    /// \throws ZORSysException "point %1 of the curve is not finite or too far away", counted from 0
    ZORGeoLine(ZORGeoContainer* container, const ZORMathPoint& start, const ZORMathPoint& end);
    ~ZORGeoLine() override;
};
