#include "operations/ZORTestTopProjectDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORTopology/ZORTopFactory.h>

ZOR_TEST_REGISTER(ZORTestTopProjectDlg)

ZORTestTopProjectDlg::ZORTestTopProjectDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    form.SetTitle(tr("Create Topological Projection"));
    m_projectedSel = form.AddSelector("_ProjectedSel", tr("Projected: "), "ZORTopBody");
    m_projectedSel->setProperty("bodyDim", QLatin1String("0 1"));
    m_supportSel = form.AddSelector("_SupportSel", tr("Support: "), "ZORTopBody");
    m_supportSel->setProperty("bodyDim", QLatin1String("2"));
    form.AddButtonBox();
}

bool ZORTestTopProjectDlg::Apply()
{
    const auto* projected =
        Require<ZORTopBody>(m_projectedSel, tr("Selection of projected geometry was invalid"));
    if (!projected)
        return false;
    const auto* support = Require<ZORTopBody>(m_supportSel, tr("Selection of support geometry was invalid"));
    if (!support)
        return false;
    if (projected->GetDimension() >= support->GetDimension())
        return Fail(tr("Cannot project greater or equal dimension geometry"));

    ZORTopFactory factory(GetEnvironment()->GetEnvironment()->GetContainer());
    return factory.Project(support, projected) != nullptr;
}
