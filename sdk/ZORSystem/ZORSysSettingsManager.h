// Process-wide access to the application's settings store.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QSettings>

#include <memory>

/// Hands out the settings store of the application, which the application sets at start.
/// Thread safety: main thread only.
class ZORSYSTEM_EXPORT ZORSysSettingsManager
{
public:
    static ZORSysSettingsManager* GetManager();

    /// The current store; null until SetSource() was called, and after the store was destroyed.
    QSettings* GetSource() const;
    /// \param source  not owned; replaces the one before it
    void SetSource(QSettings* source);

private:
    ZORSysSettingsManager();
    ~ZORSysSettingsManager();
    Q_DISABLE_COPY_MOVE(ZORSysSettingsManager)

    class Private;
    const std::unique_ptr<Private> d;
};
