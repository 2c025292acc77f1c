#include "operations/ZORTestCreateWFRawCurveDlg.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORFeature/ZORFeatFolder.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORWireframe/ZORWFRawCurve.h>

ZOR_TEST_REGISTER(ZORTestCreateWFRawCurveDlg)

ZORTestCreateWFRawCurveDlg::ZORTestCreateWFRawCurveDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    form.SetTitle(tr("Create Raw Curve"));
    m_curveSel = form.AddSelector("_CurveSel", tr("Curve: "), "ZORGeoCurve");
    m_folderSel = form.AddSelector("_FolderSel", tr("Folder: "), "ZORFeatFolder");
    form.AddButtonBox();
}

bool ZORTestCreateWFRawCurveDlg::Apply()
{
    const auto* curve = qobject_cast<const ZORGeoCurve*>(m_curveSel->GetSelectedGeometry());
    auto* folder = qobject_cast<ZORFeatFolder*>(m_folderSel->GetSelectedGeometry());
    if (!curve)
        return Fail(tr("Selection of curve was invalid"));
    if (!folder)
        return Fail(tr("Selection of folder was invalid"));
    Create<ZORWFRawCurve>(folder, curve);
    return true;
}
