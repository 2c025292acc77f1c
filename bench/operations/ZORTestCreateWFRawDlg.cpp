#include "operations/ZORTestCreateWFRawDlg.h"

#include "widgets/ZORTestForm.h"

void ZORTestCreateWFRawDlg::BuildForm(const QString& title, const char* selector, const QString& caption,
                                      const char* geoType)
{
    ZORTestForm form(this);
    form.SetTitle(title);
    m_geometrySel = form.AddSelector(selector, caption, geoType);
    m_folderSel = form.AddSelector("_FolderSel", tr("Folder: "), "ZORFeatFolder");
    form.AddButtonBox();
}

ZORFeatFolder* ZORTestCreateWFRawDlg::RequireFolder()
{
    return Require<ZORFeatFolder>(m_folderSel, tr("Selection of folder was invalid"));
}
