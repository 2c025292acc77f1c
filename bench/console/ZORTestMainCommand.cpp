#include "console/ZORTestMainCommand.h"

#include "console/ZORTestMainDialog.h"
#include "core/ZORTestHostAction.h"

namespace {

const ZORTestHostAction kHostAction(&ZORTestMainCommand::staticMetaObject, ZORTestMainCommand::tr("SDK Test"),
                                    ZORTestMainCommand::tr("Launches the SDK testing framework"));

} // namespace

ZORTestMainCommand::ZORTestMainCommand(QObject* parent)
    : ZORCmdCommand(parent, 2, 2)
{
}

void ZORTestMainCommand::Start()
{
    auto* console = new ZORTestMainDialog(nullptr);
    console->show();
    FinishLater();
}
