#include "operations/ZORTestGeoCreatePointOnCurveDlg.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPointOnCurve.h>

ZOR_TEST_REGISTER(ZORTestGeoCreatePointOnCurveDlg)

ZORTestGeoCreatePointOnCurveDlg::ZORTestGeoCreatePointOnCurveDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_curveSel = form.AddSelector("_CurveSel", tr("Curve: "), "ZORGeoCurve");
    m_distanceSpin = form.AddUnitSpinBox("_DistanceSpin", tr("Distance along curve: "), "Length");
    form.AddButtonBox();
}

bool ZORTestGeoCreatePointOnCurveDlg::Apply()
{
    const auto* curve = Require<ZORGeoCurve>(m_curveSel, tr("Selection of curve was invalid"));
    if (!curve)
        return false;

    Create<ZORGeoPointOnCurve>(curve->GetLocation(m_distanceSpin->GetInternalValue(), nullptr));
    return true;
}
