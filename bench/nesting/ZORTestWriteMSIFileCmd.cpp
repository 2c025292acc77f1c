#include "nesting/ZORTestWriteMSIFileCmd.h"

#include "core/ZORTestRegistration.h"

#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestResultWriter.h>

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>

ZOR_TEST_REGISTER(ZORTestWriteMSIFileCmd)

ZORTestWriteMSIFileCmd::ZORTestWriteMSIFileCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ZORTestWriteMSIFileCmd::Execute()
{
    const QString path = QFileDialog::getOpenFileName(nullptr, QString(), QString(), tr("MSI files (*.msi)"));
    const ZORNestResult result = ZORNestResultReader(path).Read(nullptr);
    if (!result.IsValid()) {
        emit Finished(false);
        return;
    }
    const QFileInfo info(path);
    const QString copy =
        info.absolutePath() + QDir::separator() + info.completeBaseName() + QLatin1String("_2.msi");
    if (QFile::exists(copy))
        QFile::remove(copy);
    ZORNestResultWriter(copy).Write(result);
    emit Finished(true);
}
