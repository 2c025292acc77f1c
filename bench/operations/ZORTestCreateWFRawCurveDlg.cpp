#include "operations/ZORTestCreateWFRawCurveDlg.h"

#include "core/ZORTestRegistration.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORWireframe/ZORWFRawCurve.h>

ZOR_TEST_REGISTER(ZORTestCreateWFRawCurveDlg)

ZORTestCreateWFRawCurveDlg::ZORTestCreateWFRawCurveDlg(ZORTestEnvironment* environment)
    : ZORTestCreateWFRawDlg(environment)
{
    BuildForm(tr("Create Raw Curve"), "_CurveSel", tr("Curve: "), "ZORGeoCurve");
}

bool ZORTestCreateWFRawCurveDlg::Apply()
{
    return CreateFeature<ZORWFRawCurve, ZORGeoCurve>(tr("Selection of curve was invalid"));
}
