#include "console/ZORTestLaunchStandardCmd.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"

#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QMessageBox>

ZOR_TEST_REGISTER(ZORTestLaunchStandardCmd)

ZORTestLaunchStandardCmd::ZORTestLaunchStandardCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ZORTestLaunchStandardCmd::Execute()
{
    const auto* menuAction = property("action").value<QAction*>();
    const QByteArray id = menuAction ? menuAction->property("actionId").toByteArray() : QByteArray();
    QAction* action = ZORCmdController::GetController()->GetAction(id);
    if (!action) {
        QMessageBox::critical(GetEnvironment()->GetUiParent(), tr("Error"),
                              tr("No action matches the menu action."), QMessageBox::Ok);
        return;
    }
    action->activate(QAction::Trigger);
}
