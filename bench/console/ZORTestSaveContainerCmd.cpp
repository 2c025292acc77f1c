#include "console/ZORTestSaveContainerCmd.h"

#include "console/ZORTestContainerPath.h"
#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QFileDevice>
#include <QFileDialog>
#include <QMessageBox>

ZOR_TEST_REGISTER(ZORTestSaveContainerCmd)

ZORTestSaveContainerCmd::ZORTestSaveContainerCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ZORTestSaveContainerCmd::Execute()
{
    const ZORTestContainerPath lastPath(GetEnvironment()->GetSettings(), QLatin1String("SaveContainer"));
    const QString path =
        QFileDialog::getSaveFileName(GetEnvironment()->GetUiParent(), tr("Save Container"), lastPath.Read(),
                                     tr("Zorvane Container Files (*.ZORCont)"));
    if (path.isEmpty()) {
        emit Finished(false);
        return;
    }
    ZORSysReplacedFile file(path);
    try {
        file.Open();
    } catch (const ZORSysFileException&) {
        QMessageBox::critical(nullptr, tr("Error"), tr("Cannot open the file for writing."), QMessageBox::Ok);
        emit Finished(false);
        return;
    }

    GetEnvironment()->GetEnvironment()->GetContainer()->Save(file.GetDevice());
    if (!file.Commit())
        throw ZORSysFileException(tr("cannot write the container file: %1").arg(file.GetErrorString()));

    lastPath.Write(path);
    emit Finished(true);
}
