#include "exchange/ZORTestImportSTLCmd.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "exchange/ZORTestUnitQuery.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORSystem/ZORSysSettingGroupContext.h>

#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QSettings>

ZOR_TEST_REGISTER(ZORTestImportSTLCmd)

ZORTestImportSTLCmd::ZORTestImportSTLCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ZORTestImportSTLCmd::Execute()
{
    QSettings* settings = GetEnvironment()->GetSettings();
    const ZORSysSettingGroupContext debug(settings, QStringLiteral("Debug"));
    const ZORSysSettingGroupContext group(settings, QStringLiteral("ImportSTL"));

    const QString fileName =
        QFileDialog::getOpenFileName(GetEnvironment()->GetUiParent(), tr("Open STL file"),
                                     settings->value("Dir").toString(), tr("STL files (*.stl)"));
    if (fileName.isEmpty()) {
        emit Finished(false);
        return;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        QMessageBox::critical(nullptr, tr("Error"), tr("Cannot open the file for reading."), QMessageBox::Ok);
        emit Finished(false);
        return;
    }

    const auto stored = static_cast<ZORSysValue::Unit>(settings->value("Units", 0).toInt());
    const ZORSysValue::Unit unit = ZORTestQueryUnit(GetEnvironment()->GetUiParent(), stored);
    ZORGeoStlLoader loader(&file);
    loader.Load(GetEnvironment()->GetEnvironment()->GetContainer(), unit);

    settings->setValue("Dir", fileName);
    settings->setValue("Units", int(unit));
    emit Finished(true);
}
