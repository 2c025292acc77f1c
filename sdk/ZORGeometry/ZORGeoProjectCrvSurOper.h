// Operator that projects a curve onto a surface.

#pragma once

#include <ZORGeometry/ZORGeoCurveOnSurOper.h>

#include <QCoreApplication>

#include <memory>

class ZORGeoCurve;
class ZORGeoSurface;

/// Projects a curve onto a surface: every point of it goes to the nearest place of the surface.
///
/// Result.   One curve on the surface, each segment within one triangle. A source of one point gives a curve of
///           one location. A source whose ends coincide to 1e-9 of its length gives a closed curve unless the
///           surface is torn between.
/// Border.   What lies beyond the border of the surface goes to the nearest place of the border, as the
///           nearest place of the surface is there: the curve follows the border.
/// Jumps.    Where the nearest place jumps (to another piece of the surface, to the other face of a thin
///           plate, across a gap) the curve goes on beside its last place if that is not much farther from
///           the source. Else it ends there and another one begins. The longest one is the result, the first
///           of several.
/// Accuracy. The source is sampled at steps of at most the local side length; between samples the curve runs
///           straight over the mesh. For smooth surfaces the error falls with the square of the side length.
/// Cost.     O(log T) a step. Very long or finely divided sources get longer steps: at most about 300,000
///           closest points are computed.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoProjectCrvSurOper : public ZORGeoCurveOnSurOper
{
    Q_DECLARE_TR_FUNCTIONS(ZORGeoProjectCrvSurOper)

public:
    /// \param surface,curve  not owned; must live until Run()
    ZORGeoProjectCrvSurOper(const ZORGeoSurface* surface, const ZORGeoCurve* curve);
    ~ZORGeoProjectCrvSurOper() override;

    /// Computes the curve and registers it with the container of the surface, which owns it. GetCurve() is
    /// null afterwards when nothing can be projected: the surface has no triangles or the curve no points.
    /// Every run makes another curve.
    /// \throws ZORSysException "surface is null", "curve is null", "geometry has no container" when the surface
    ///         has none
    void Run();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
