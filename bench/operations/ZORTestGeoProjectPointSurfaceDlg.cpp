#include "operations/ZORTestGeoProjectPointSurfaceDlg.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>

ZOR_TEST_REGISTER(ZORTestGeoProjectPointSurfaceDlg)

ZORTestGeoProjectPointSurfaceDlg::ZORTestGeoProjectPointSurfaceDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_pointSel = form.AddSelector("_PointSel", tr("Point: "), "ZORGeoPoint");
    m_surfaceSel = form.AddSelector("_SurfaceSel", tr("Surface: "), "ZORGeoSurface");
    form.AddButtonBox();
}

bool ZORTestGeoProjectPointSurfaceDlg::Apply()
{
    const auto* point = Require<ZORGeoPoint>(m_pointSel, tr("Point selection invalid"));
    if (!point)
        return false;
    const auto* surface = Require<ZORGeoSurface>(m_surfaceSel, tr("Surface selection invalid"));
    if (!surface)
        return false;

    Create<ZORGeoPointOnSurface>(surface->Project(point->GetMathPoint()));
    return true;
}
