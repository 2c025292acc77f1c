// Base of the operators that make a curve on a surface.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QtGlobal>

#include <memory>

class ZORGeoCurveOnSurface;

/// An operator whose result is one curve. The curve belongs to the container of its surface and stays when
/// the operator is destroyed.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoCurveOnSurOper
{
public:
    virtual ~ZORGeoCurveOnSurOper();

    /// The curve of the last run, registered with its container.
    /// \return null before a run, when the run made no curve, and once the curve has been destroyed
    ZORGeoCurveOnSurface* GetCurve() const;

protected:
    ZORGeoCurveOnSurOper();
    /// \param curve  not owned; may be null
    void SetCurve(ZORGeoCurveOnSurface* curve);

private:
    Q_DISABLE_COPY_MOVE(ZORGeoCurveOnSurOper)
    class Private;
    const std::unique_ptr<Private> d;
};
