#include "operations/ZORTestCreateTopSurfaceDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "operations/ZORTestEdgeTolerance.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopFactory.h>

ZOR_TEST_REGISTER(ZORTestCreateTopSurfaceDlg)

namespace {

constexpr char Group[] = "CreateTopSurface";

} // namespace

ZORTestCreateTopSurfaceDlg::ZORTestCreateTopSurfaceDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_surfaceSel = form.AddSelector("_SurfaceSel", tr("Surface: "), "ZORGeoSurface");
    m_toleranceSpin = form.AddSpinBox("_ToleranceSpin", tr("Edge Tolerance: "));
    form.AddButtonBox();
    ZorTestShowEdgeTolerance(environment, Group, m_toleranceSpin);
}

bool ZORTestCreateTopSurfaceDlg::Apply()
{
    const auto* surface = Require<ZORGeoSurface>(m_surfaceSel, tr("Surface selection invalid"));
    if (!surface)
        return false;

    const double tolerance = ZorTestStoreEdgeTolerance(GetEnvironment(), Group, m_toleranceSpin);
    ZORTopFactory factory(GetEnvironment()->GetEnvironment()->GetContainer());
    return factory.CreateSurface(surface, tolerance) != nullptr;
}
