#include "console/ZORTestSaveContainerCmd.h"

#include "console/ZORTestContainerPath.h"
#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QFileDialog>
#include <QMessageBox>
#include <QSaveFile>

#include <memory>

ZOR_TEST_REGISTER(ZORTestSaveContainerCmd)

namespace {

// A file is replaced in one step where its folder allows that, and only written to where it does not. What is no
// file, a device for example, can only be written to.
std::unique_ptr<QFileDevice> MakeFile(const QString& path)
{
    const QFileInfo present(path);
    if (present.exists() && !present.isFile())
        return std::make_unique<QFile>(path);
    auto file = std::make_unique<QSaveFile>(path);
    file->setDirectWriteFallback(true);
    return file;
}

} // namespace

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
    const std::unique_ptr<QFileDevice> file = MakeFile(path);
    if (!file->open(QIODevice::WriteOnly)) {
        QMessageBox::critical(nullptr, tr("Error"), tr("Cannot open the file for writing."), QMessageBox::Ok);
        emit Finished(false);
        return;
    }

    GetEnvironment()->GetEnvironment()->GetContainer()->Save(*file);
    if (auto* const whole = qobject_cast<QSaveFile*>(file.get()); whole && !whole->commit())
        throw ZORSysFileException(tr("cannot write the container file: %1").arg(whole->errorString()));

    lastPath.Write(path);
    emit Finished(true);
}
