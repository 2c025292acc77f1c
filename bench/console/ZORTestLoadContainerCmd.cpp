#include "console/ZORTestLoadContainerCmd.h"

#include "console/ZORTestContainerPath.h"
#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORSystem/ZORSysFile.h>

#include <QFileDialog>
#include <QMessageBox>

ZOR_TEST_REGISTER(ZORTestLoadContainerCmd)

ZORTestLoadContainerCmd::ZORTestLoadContainerCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ZORTestLoadContainerCmd::Execute()
{
    const ZORTestContainerPath lastPath(GetEnvironment()->GetSettings(), QLatin1String("LoadContainer"));
    const QString path =
        QFileDialog::getOpenFileName(GetEnvironment()->GetUiParent(), tr("Load Container"), lastPath.Read(),
                                     tr("Zorvane Container Files (*.ZORCont)"));
    if (path.isEmpty()) {
        emit Finished(false);
        return;
    }
    ZORSysFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        QMessageBox::critical(nullptr, tr("Error"), tr("Cannot open the file for reading."), QMessageBox::Ok);
        emit Finished(false);
        return;
    }

    GetEnvironment()->GetEnvironment()->GetContainer()->Load(file);

    lastPath.Write(path);
    emit Finished(true);
}
