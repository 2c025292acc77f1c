// Test dialog "Create Geodesic Curve".

#pragma once

#include "core/ZORTestDialog.h"

#include <QList>
#include <QMap>

#include <memory>

class ZORGeoCurveOnSurface;
class ZORGeoCurveOnSurfaceProcessor;
class ZORMathVector;
namespace Ui {
class ZORTestGeoGeodesicDlg;
}

/// Adds the geodesic curve from a point on a surface, or a fan of them.
///
/// "Brute Force" computes once for each of a number of angles that divide the full turn; without "Compute as
/// fan" only the first of these curves is kept. Hard limits are the curves listed with the start and end point,
/// not those of "Start Limits: " and "End Limits: ", which nothing reads; the end point is not read either.
///
/// Settings group "Debug/GeoGeodesic": "UseStartLen", "UseEndLen", "StartLen", "EndLen" (never written),
/// "BruteForce", "BruteForceLimits", "BruteForceIter", "ComputeAsFan", "Angle" (radians), "Direction" (index).
class ZORTestGeoGeodesicDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Geodesic Curve"))
    Q_CLASSINFO("createdTypes", "ZORGeoCurveOnSurface")

public:
    Q_INVOKABLE explicit ZORTestGeoGeodesicDlg(ZORTestEnvironment* environment);
    ~ZORTestGeoGeodesicDlg() override;

    bool Apply() override;

private:
    using LimitCurves = QMap<int, QList<const ZORGeoCurveOnSurface*>>;

    void ReadSettings();
    void WriteSettings() const;
    ZORMathVector GetDirection() const;
    LimitCurves GetLimitCurves() const;
    static void SetLimits(ZORGeoCurveOnSurfaceProcessor& processor, const LimitCurves& limitCurves);

    const std::unique_ptr<Ui::ZORTestGeoGeodesicDlg> m_ui;
};
