#include "exchange/ZORTestExportSTLDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "core/ZORTestSettingsGroup.h"
#include "exchange/ZORTestUnitQuery.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORGeometry/ZORGeoStlWriter.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QFileDialog>
#include <QInputDialog>
#include <QPointer>

#include <algorithm>

ZOR_TEST_REGISTER(ZORTestExportSTLDlg)

ZORTestExportSTLDlg::ZORTestExportSTLDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    form.SetTitle(tr("Export Surface STL File"));
    m_surfaceSel = form.AddSelector("_SurfaceSel", tr("Surface: "), "ZORGeoSurface");
    form.AddButtonBox();
}

bool ZORTestExportSTLDlg::Apply()
{
    m_keepOpen = false;
    const bool exported = Export();
    m_keepOpen = !exported;
    return exported;
}

void ZORTestExportSTLDlg::accept()
{
    if (!m_keepOpen)
        ZORTestDialog::accept();
}

bool ZORTestExportSTLDlg::Export()
{
    const QPointer<const ZORGeoSurface> surface =
        Require<ZORGeoSurface>(m_surfaceSel, tr("Surface selection invalid"));
    if (!surface)
        return false;

    const Choices stored = ReadSettings();
    QWidget* parent = GetEnvironment()->GetUiParent();
    QString fileName =
        QFileDialog::getSaveFileName(parent, tr("Save STL file"), stored.path, tr("STL files (*.stl)"));
    if (fileName.isEmpty())
        return false;
    const ZORSysValue::Unit unit = ZORTestQueryUnit(parent, stored.unit);

    const QString ascii = tr("ascii STL");
    const QStringList types = {tr("binary STL"), ascii};
    const int current = std::max(int(types.indexOf(stored.type)), 0);
    const QString type =
        QInputDialog::getItem(parent, tr("Select File Type"), tr("File Type"), types, current, false);

    const auto format = static_cast<ZORGeoStlWriter::FileFormats>(type == ascii ? 0 : 1);
    // The writer rejects null: the surface may have been deleted while the questions were open.
    ZORGeoStlWriter writer(fileName, surface, format);
    writer.Write(unit);

    WriteSettings({fileName, unit, type});
    return true;
}

// The groups are left again before a dialog opens: its event loop may run others that use the store.
ZORTestExportSTLDlg::Choices ZORTestExportSTLDlg::ReadSettings() const
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("ExportSTL"));
    return {settings->value("Dir").toString(),
            static_cast<ZORSysValue::Unit>(settings->value("Units", 0).toInt()),
            settings->value("Type").toString()};
}

void ZORTestExportSTLDlg::WriteSettings(const Choices& choices) const
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("ExportSTL"));
    settings->setValue("Dir", choices.path);
    settings->setValue("Units", int(choices.unit));
    settings->setValue("Type", choices.type);
}
