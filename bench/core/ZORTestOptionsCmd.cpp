#include "core/ZORTestOptionsCmd.h"

#include "core/ZORTestHostAction.h"
#include "core/ZORTestOptionsDlg.h"

namespace {

const ZORTestHostAction
    kHostAction(&ZORTestOptionsCmd::staticMetaObject, ZORTestOptionsCmd::tr("SDK Test Options"),
                ZORTestOptionsCmd::tr("Launches the SDK testing framework options dialog"));

} // namespace

ZORTestOptionsCmd::ZORTestOptionsCmd(QObject* parent)
    : ZORCmdDialogCommand(parent, 1, 0)
{
}

QWidget* ZORTestOptionsCmd::CreateContent(QWidget* parent)
{
    return new ZORTestOptionsDlg(parent);
}

void ZORTestOptionsCmd::Commit()
{
    if (auto* dialog = qobject_cast<ZORTestOptionsDlg*>(GetContentWidget()))
        dialog->OnOkClicked();
}
