#include "operations/ZORTestCreateTopSurfaceDlg.h"

#include "core/ZORTestRegistration.h"

#include <ZORGeometry/ZORGeoSurface.h>

ZOR_TEST_REGISTER(ZORTestCreateTopSurfaceDlg)

ZORTestCreateTopSurfaceDlg::ZORTestCreateTopSurfaceDlg(ZORTestEnvironment* environment)
    : ZORTestCreateTopDlg(environment, "CreateTopSurface")
{
    BuildForm("_SurfaceSel", tr("Surface: "), "ZORGeoSurface");
}

bool ZORTestCreateTopSurfaceDlg::Apply()
{
    return CreateBody(&ZORTopFactory::CreateSurface, tr("Surface selection invalid"));
}
