// Curves at which computed curves over a surface end.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QByteArray>
#include <QList>
#include <QSharedDataPointer>

class ZORGeoCurveOnSurface;
class ZORGeoCurveOnSurfaceLimitsData;

/// A set of limit curves for ZORGeoCurveOnSurfaceProcessor; empty by default. A value: copies share their data until
/// one of them is changed, O(1). One that was moved from may only be assigned or destroyed.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoCurveOnSurfaceLimits
{
public:
    ZORGeoCurveOnSurfaceLimits();
    ZORGeoCurveOnSurfaceLimits(const ZORGeoCurveOnSurfaceLimits& other);
    ZORGeoCurveOnSurfaceLimits(ZORGeoCurveOnSurfaceLimits&& other) noexcept;
    ZORGeoCurveOnSurfaceLimits& operator=(const ZORGeoCurveOnSurfaceLimits& other);
    ZORGeoCurveOnSurfaceLimits& operator=(ZORGeoCurveOnSurfaceLimits&& other) noexcept;
    ~ZORGeoCurveOnSurfaceLimits();
    void swap(ZORGeoCurveOnSurfaceLimits& other) noexcept { d.swap(other.d); }

    /// Replaces the curves.
    /// \param curves  any number, in any order; not owned, they must live until the limits have been added to a
    ///                processor, which copies what it needs
    void SetGeometry(const QList<const ZORGeoCurveOnSurface*>& curves);
    QList<const ZORGeoCurveOnSurface*> GetGeometry() const;

    /// As a list of the curves: [n].
    friend ZORGEOMETRY_EXPORT void ZorTraceAppend(QByteArray& out, const ZORGeoCurveOnSurfaceLimits& limits);

private:
    QSharedDataPointer<ZORGeoCurveOnSurfaceLimitsData> d;
};

Q_DECLARE_SHARED(ZORGeoCurveOnSurfaceLimits)
