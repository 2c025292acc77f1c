#include "operations/ZORTestCreateDrapingDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "core/ZORTestSettingsGroup.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORComposites/ZORCompStrategy.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>

ZOR_TEST_REGISTER(ZORTestCreateDrapingDlg)

ZORTestCreateDrapingDlg::ZORTestCreateDrapingDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_strategySel = form.AddSelector("_StrategySel", tr("Strategy: "), "ZORCompStrategy");
    m_pointSel = form.AddSelector("_PointOnSurSel", tr("Point: "), "ZORGeoPointOnSurface");
    m_surfaceSel = form.AddSelector("_SurfaceSel", tr("Surface: "), "ZORGeoSurface");
    form.AddButtonBox();
}

bool ZORTestCreateDrapingDlg::Apply()
{
    // The surface before the point, although the point stands first.
    if (!Require<ZORCompStrategy>(m_strategySel, tr("Strategy selection invalid"))
        || !Require<ZORGeoSurface>(m_surfaceSel, tr("Surface selection invalid"))
        || !Require<ZORGeoPointOnSurface>(m_pointSel, tr("Point selection invalid")))
        return false;

    // The groups of its settings, of which there are none yet.
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("CreateDraping"));
    return true;
}
