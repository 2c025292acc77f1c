// The geodesic dialog with a square for it.

#pragma once

#include "OperationTest.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QCheckBox>
#include <QSpinBox>

/// A square of 100 mm with the start point "P" in its middle.
class GeodesicDlgTest : public OperationTest
{
protected:
    static inline const QString kGroup = QStringLiteral("Debug/GeoGeodesic/");

    GeodesicDlgTest()
        : surface(AddSquare("S", 100))
    {
        AddPointOn(surface, "P", {40, 60, 0});
    }

    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestGeoGeodesicDlg")); }
    void Check(const char* objectName, bool checked = true)
    {
        Field<QCheckBox>(objectName)->setChecked(checked);
    }
    void SetLength(const char* objectName, double length)
    {
        Field<ZORCmnUnitSpinBox>(objectName)->setValue(length);
    }
    void SetBruteForce(int numIterations)
    {
        Check("_BruteForceCheck");
        Field<QSpinBox>("_BruteForceSpin")->setValue(numIterations);
    }
    QVariant Setting(const char* key) { return GetSettings()->value(kGroup + QLatin1String(key)); }
    ZORGeoCurveOnSurface* AddLimit(const QString& name, double x)
    {
        auto* curve =
            new ZORGeoCurveOnSurface({surface->Project({x, 55, 0}), surface->Project({x, 65, 0})}, false);
        curve->setObjectName(name);
        curve->Initialize();
        TakeNew();
        return curve;
    }
    /// The angles of the computations among \a calls.
    static QList<double> AnglesOf(const QStringList& calls)
    {
        QList<double> angles;
        for (const QString& call : calls.filter("::ComputeGeodesic("))
            angles.append(call.section(", ", -1).chopped(1).toDouble());
        return angles;
    }
    QList<const ZORGeoCurveOnSurface*> TakeCurves()
    {
        QList<const ZORGeoCurveOnSurface*> curves;
        for (const ZORGeoGeometry* geometry : TakeNew()) {
            curves.append(qobject_cast<const ZORGeoCurveOnSurface*>(geometry));
            EXPECT_NE(nullptr, curves.constLast());
        }
        return curves;
    }
    static ZORMathPoint EndOf(const ZORGeoCurveOnSurface* curve)
    {
        return curve->GetPoint(curve->GetNumPoints() - 1);
    }

    ZORGeoSurface* surface;
};
