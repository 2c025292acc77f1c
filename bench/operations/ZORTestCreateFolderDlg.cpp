#include "operations/ZORTestCreateFolderDlg.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORFeature/ZORFeatFolder.h>

#include <QLineEdit>

ZOR_TEST_REGISTER(ZORTestCreateFolderDlg)

ZORTestCreateFolderDlg::ZORTestCreateFolderDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_parentSel = form.AddSelector("_ParentSel", tr("Parent Folder: "), "ZORFeatFolder");
    m_labelEdit = form.AddLineEdit("_LabelEdit", tr("Label: "));
    form.AddButtonBox();
}

bool ZORTestCreateFolderDlg::Apply()
{
    auto* parent = Require<ZORFeatFolder>(m_parentSel, tr("Selection of parent folder is invalid"));
    if (!parent)
        return false;

    auto* folder = Create<ZORFeatFolder>(parent);
    const QString label = m_labelEdit->text();
    if (!label.isEmpty())
        folder->SetLabel(label);
    return true;
}
