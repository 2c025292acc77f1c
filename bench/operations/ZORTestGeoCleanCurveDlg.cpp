#include "operations/ZORTestGeoCleanCurveDlg.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>

#include <QMessageBox>

ZOR_TEST_REGISTER(ZORTestGeoCleanCurveDlg)

ZORTestGeoCleanCurveDlg::ZORTestGeoCleanCurveDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_curveSel = form.AddSelector("_CurveSel", tr("Curve"), "ZORGeoCurveOnSurface");
    form.AddButtonBox();
}

bool ZORTestGeoCleanCurveDlg::Apply()
{
    if (!Require<ZORGeoCurveOnSurface>(m_curveSel, tr("Selection of curve was invalid")))
        return false;

    QMessageBox::information(this, tr("No error found"), tr("No error was found in the curve."),
                             QMessageBox::Ok);
    return true;
}
