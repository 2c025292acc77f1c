#include "operations/ZORTestCreatePointCmd.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORFeature/ZORFeatFolder.h>
#include <ZORWireframe/ZORWFRawPoint.h>

#include <QLineEdit>

ZOR_TEST_REGISTER(ZORTestCreatePointCmd)

ZORTestCreatePointCmd::ZORTestCreatePointCmd(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_xEdit = form.AddLineEdit("_XEdit", tr("X: "));
    m_yEdit = form.AddLineEdit("_YEdit", tr("Y: "));
    m_zEdit = form.AddLineEdit("_ZEdit", tr("Z: "));
    m_folderSel = form.AddSelector("_FolderSel", tr("Folder: "), "ZORFeatFolder");
    form.AddButtonBox();
}

bool ZORTestCreatePointCmd::Apply()
{
    auto* folder = Require<ZORFeatFolder>(m_folderSel, tr("Selection of parent folder is invalid"));
    if (!folder)
        return false;

    // Text that is no number counts as 0.
    ZORMathPoint point;
    point.SetX(m_xEdit->text().toDouble());
    point.SetY(m_yEdit->text().toDouble());
    point.SetZ(m_zEdit->text().toDouble());
    Create<ZORWFRawPoint>(folder, point);
    return true;
}
