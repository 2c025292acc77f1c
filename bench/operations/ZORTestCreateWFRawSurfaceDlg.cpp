#include "operations/ZORTestCreateWFRawSurfaceDlg.h"

#include "core/ZORTestRegistration.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORWireframe/ZORWFRawSurface.h>

ZOR_TEST_REGISTER(ZORTestCreateWFRawSurfaceDlg)

ZORTestCreateWFRawSurfaceDlg::ZORTestCreateWFRawSurfaceDlg(ZORTestEnvironment* environment)
    : ZORTestCreateWFRawDlg(environment)
{
    BuildForm(tr("Create Raw Surface"), "_SurfaceSel", tr("Surface: "), "ZORGeoSurface");
}

bool ZORTestCreateWFRawSurfaceDlg::Apply()
{
    return CreateFeature<ZORWFRawSurface, ZORGeoSurface>(tr("Selection of surface was invalid"));
}
