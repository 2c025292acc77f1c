#include "operations/ZORTestGeoProjectPointCurveDlg.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoPointOnCurve.h>

ZOR_TEST_REGISTER(ZORTestGeoProjectPointCurveDlg)

ZORTestGeoProjectPointCurveDlg::ZORTestGeoProjectPointCurveDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_pointSel = form.AddSelector("_PointSel", tr("Point: "), "ZORGeoPoint");
    m_curveSel = form.AddSelector("_CurveSel", tr("Curve: "), "ZORGeoCurve");
    form.AddButtonBox();
}

bool ZORTestGeoProjectPointCurveDlg::Apply()
{
    const auto* point = Require<ZORGeoPoint>(m_pointSel, tr("Point selection invalid"));
    if (!point)
        return false;
    // The text speaks of a surface: this is established.
    const auto* curve = Require<ZORGeoCurve>(m_curveSel, tr("Surface selection invalid"));
    if (!curve)
        return false;

    ZORGeoLocationOnCurve location;
    if (!curve->Project(point->GetMathPoint(), location))
        return Fail(tr("Projection failed"));
    Create<ZORGeoPointOnCurve>(location);
    return true;
}
