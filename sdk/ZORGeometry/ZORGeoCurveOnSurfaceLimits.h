// Curves at which computed curves over a surface end.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QByteArray>
#include <QList>

class ZORGeoCurveOnSurface;

/// A set of limit curves for ZORGeoCurveOnSurfaceProcessor; a value, empty by default.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoCurveOnSurfaceLimits
{
public:
    /// Replaces the curves.
    /// \param curves  any number, in any order; not owned, they must live until the limits have been added to a
    ///                processor, which copies what it needs
    void SetGeometry(const QList<const ZORGeoCurveOnSurface*>& curves);
    QList<const ZORGeoCurveOnSurface*> GetGeometry() const { return m_curves; }

    /// As a list of the curves: [n].
    friend ZORGEOMETRY_EXPORT void ZorTraceAppend(QByteArray& out, const ZORGeoCurveOnSurfaceLimits& limits);

private:
    QList<const ZORGeoCurveOnSurface*> m_curves; // not owned
};
