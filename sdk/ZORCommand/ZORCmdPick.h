// What a user has pointed at.

#pragma once

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORGeometry/ZORGeoLocationOnSurface.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QPointer>

/// An object of a document, and where on it the user pointed.
/// Thread safety: thread of the container; objects may be shared read-only.
struct ZORCmdPick
{
    /// The feature or geometry under the pointer; not owned, null for none.
    QPointer<ZORGeoGeometry> object;
    /// The point that was hit, millimeters.
    ZORMathPoint point;
    /// The same point on its surface; null unless a surface was hit.
    ZORGeoLocationOnSurface location;
};
