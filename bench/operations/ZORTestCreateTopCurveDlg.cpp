#include "operations/ZORTestCreateTopCurveDlg.h"

#include "core/ZORTestRegistration.h"

#include <ZORGeometry/ZORGeoCurve.h>

ZOR_TEST_REGISTER(ZORTestCreateTopCurveDlg)

ZORTestCreateTopCurveDlg::ZORTestCreateTopCurveDlg(ZORTestEnvironment* environment)
    : ZORTestCreateTopDlg(environment, "CreateTopCurve")
{
    BuildForm("_CurveSel", tr("Curve: "), "ZORGeoCurve");
}

bool ZORTestCreateTopCurveDlg::Apply()
{
    return CreateBody(&ZORTopFactory::CreateCurve, tr("Curve selection invalid"));
}
