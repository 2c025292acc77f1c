#include "exchange/ZORTestImportSTLCmd.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "core/ZORTestSettingsGroup.h"
#include "exchange/ZORTestUnitQuery.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORSystem/ZORSysFile.h>

#include <QFileDialog>
#include <QMessageBox>

ZOR_TEST_REGISTER(ZORTestImportSTLCmd)

ZORTestImportSTLCmd::ZORTestImportSTLCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ZORTestImportSTLCmd::Execute()
{
    const auto [startPath, storedUnit] = ReadSettings();
    const QString fileName = QFileDialog::getOpenFileName(
        GetEnvironment()->GetUiParent(), tr("Open STL file"), startPath, tr("STL files (*.stl)"));
    if (fileName.isEmpty()) {
        emit Finished(false);
        return;
    }
    ZORSysFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        QMessageBox::critical(nullptr, tr("Error"), tr("Cannot open the file for reading."), QMessageBox::Ok);
        emit Finished(false);
        return;
    }

    const ZORSysValue::Unit unit = ZORTestQueryUnit(GetEnvironment()->GetUiParent(), storedUnit);
    ZORGeoStlLoader loader(&file);
    loader.Load(GetEnvironment()->GetEnvironment()->GetContainer(), unit);

    WriteSettings({fileName, unit});
    emit Finished(true);
}

// The groups are left again before a dialog opens: its event loop may run others that use the store.
ZORTestImportSTLCmd::Choices ZORTestImportSTLCmd::ReadSettings() const
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("ImportSTL"));
    return {settings->value("Dir").toString(),
            static_cast<ZORSysValue::Unit>(settings->value("Units", 0).toInt())};
}

void ZORTestImportSTLCmd::WriteSettings(const Choices& choices) const
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("ImportSTL"));
    settings->setValue("Dir", choices.path);
    settings->setValue("Units", int(choices.unit));
}
