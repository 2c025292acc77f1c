// Process-wide access to the application's settings store.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

class QSettings;

/// Hands out the settings store of the application, which the application sets at start.
class ZORSYSTEM_EXPORT ZORSysSettingsManager
{
public:
    static ZORSysSettingsManager* GetManager();

    /// The current store; null until SetSource() was called.
    QSettings* GetSource() const;
    /// \param source  not owned: the caller keeps it alive or sets null before it dies
    void SetSource(QSettings* source);

private:
    ZORSysSettingsManager() = default;

    QSettings* m_source = nullptr; // not owned
};
