#include "operations/ZORTestGeoProjectCurveSurDlg.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoProjectCrvSurOper.h>
#include <ZORGeometry/ZORGeoSurface.h>

ZOR_TEST_REGISTER(ZORTestGeoProjectCurveSurDlg)

ZORTestGeoProjectCurveSurDlg::ZORTestGeoProjectCurveSurDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_curveSel = form.AddSelector("_CurveSel", tr("Curve: "), "ZORGeoCurve");
    m_surfaceSel = form.AddSelector("_SurfaceSel", tr("Surface: "), "ZORGeoSurface");
    form.AddButtonBox();
}

bool ZORTestGeoProjectCurveSurDlg::Apply()
{
    const auto* curve = Require<ZORGeoCurve>(m_curveSel, tr("Curve selection invalid"));
    if (!curve)
        return false;
    const auto* surface = Require<ZORGeoSurface>(m_surfaceSel, tr("Surface selection invalid"));
    if (!surface)
        return false;

    // The operator creates and registers the curve itself.
    ZORGeoProjectCrvSurOper projection(surface, curve);
    projection.Run();
    return projection.GetCurve() || Fail(tr("Projection failed"));
}
