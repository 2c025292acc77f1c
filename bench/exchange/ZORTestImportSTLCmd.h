// Test command "Import STL Surface".

#pragma once

#include "core/ZORTestCommand.h"

#include <ZORSystem/ZORSysValue.h>

#include <QString>

/// Asks for an STL file and its unit and adds its surfaces to the container.
///
/// Settings group "Debug/ImportSTL": "Dir" (path of the last file), "Units" (code of the last unit).
class ZORTestImportSTLCmd final : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Import STL Surface"))
    Q_CLASSINFO("createdTypes", "ZORGeoSurface")

public:
    Q_INVOKABLE explicit ZORTestImportSTLCmd(ZORTestEnvironment* environment);

    /// \throws ZORSysException from the loader; nothing is added then
    void Execute() override;

private:
    struct Choices
    {
        QString path;
        ZORSysValue::Unit unit;
    };
    Choices ReadSettings() const;
    void WriteSettings(const Choices& choices) const;
};
