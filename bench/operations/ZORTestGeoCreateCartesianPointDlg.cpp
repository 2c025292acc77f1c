#include "operations/ZORTestGeoCreateCartesianPointDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>

ZOR_TEST_REGISTER(ZORTestGeoCreateCartesianPointDlg)

ZORTestGeoCreateCartesianPointDlg::ZORTestGeoCreateCartesianPointDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_xSpin = form.AddUnitSpinBox("_XSpin", tr("X"), "Length");
    m_ySpin = form.AddUnitSpinBox("_YSpin", tr("Y"), "Length");
    m_zSpin = form.AddUnitSpinBox("_ZSpin", tr("Z"), "Length");
    form.AddButtonBox();
}

bool ZORTestGeoCreateCartesianPointDlg::Apply()
{
    const ZORMathPoint point(m_xSpin->GetInternalValue(), m_ySpin->GetInternalValue(),
                             m_zSpin->GetInternalValue());
    Create<ZORGeoCartesianPoint>(GetEnvironment()->GetEnvironment()->GetContainer(), point);
    return true;
}
