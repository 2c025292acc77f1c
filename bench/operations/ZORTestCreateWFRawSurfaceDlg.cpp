#include "operations/ZORTestCreateWFRawSurfaceDlg.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORFeature/ZORFeatFolder.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORWireframe/ZORWFRawSurface.h>

ZOR_TEST_REGISTER(ZORTestCreateWFRawSurfaceDlg)

ZORTestCreateWFRawSurfaceDlg::ZORTestCreateWFRawSurfaceDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    form.SetTitle(tr("Create Raw Surface"));
    m_surfaceSel = form.AddSelector("_SurfaceSel", tr("Surface: "), "ZORGeoSurface");
    m_folderSel = form.AddSelector("_FolderSel", tr("Folder: "), "ZORFeatFolder");
    form.AddButtonBox();
}

bool ZORTestCreateWFRawSurfaceDlg::Apply()
{
    const auto* surface = qobject_cast<const ZORGeoSurface*>(m_surfaceSel->GetSelectedGeometry());
    auto* folder = qobject_cast<ZORFeatFolder*>(m_folderSel->GetSelectedGeometry());
    if (!surface)
        return Fail(tr("Selection of surface was invalid"));
    if (!folder)
        return Fail(tr("Selection of folder was invalid"));
    Create<ZORWFRawSurface>(folder, surface);
    return true;
}
