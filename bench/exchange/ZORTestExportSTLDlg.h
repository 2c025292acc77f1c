// Test dialog "Export STL Surface".

#pragma once

#include "core/ZORTestDialog.h"

#include <ZORSystem/ZORSysValue.h>

#include <QString>

class ZORTestGeometrySelector;

/// Writes a surface to an STL file, after asking for its name, unit and type.
///
/// Settings group "Debug/ExportSTL": "Dir" (path of the last file), "Units" (code of the last unit), "Type"
/// (text of the last type).
class ZORTestExportSTLDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Export STL Surface"))

public:
    Q_INVOKABLE explicit ZORTestExportSTLDlg(ZORTestEnvironment* environment);

    /// \return false when no surface or no file was chosen: the dialog then stays open
    bool Apply() override;

public slots:
    /// OK closes a test dialog whatever Apply() says; this one stays while Apply() said false.
    void accept() override;

private:
    struct Choices
    {
        QString path;
        ZORSysValue::Unit unit;
        QString type;
    };
    Choices ReadSettings() const;
    void WriteSettings(const Choices& choices) const;
    bool Export();

    ZORTestGeometrySelector* m_surfaceSel = nullptr;
    bool m_keepOpen = false; // the last Apply() returned false
};
