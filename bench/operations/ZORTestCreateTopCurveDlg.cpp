#include "operations/ZORTestCreateTopCurveDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "operations/ZORTestEdgeTolerance.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORTopology/ZORTopFactory.h>

ZOR_TEST_REGISTER(ZORTestCreateTopCurveDlg)

namespace {

constexpr char Group[] = "CreateTopCurve";

} // namespace

ZORTestCreateTopCurveDlg::ZORTestCreateTopCurveDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_curveSel = form.AddSelector("_CurveSel", tr("Curve: "), "ZORGeoCurve");
    m_toleranceSpin = form.AddSpinBox("_ToleranceSpin", tr("Edge Tolerance: "));
    form.AddButtonBox();
    ZorTestShowEdgeTolerance(environment, Group, m_toleranceSpin);
}

bool ZORTestCreateTopCurveDlg::Apply()
{
    const auto* curve = Require<ZORGeoCurve>(m_curveSel, tr("Curve selection invalid"));
    if (!curve)
        return false;

    const double tolerance = ZorTestStoreEdgeTolerance(GetEnvironment(), Group, m_toleranceSpin);
    ZORTopFactory factory(GetEnvironment()->GetEnvironment()->GetContainer());
    return factory.CreateCurve(curve, tolerance) != nullptr;
}
