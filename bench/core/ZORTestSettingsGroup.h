// A group of the bench's settings.

#pragma once

#include <ZORSystem/ZORSysSettingGroupContext.h>

#include <QSettings>

#include <optional>

/// Enters the group "Debug" and one or two groups within it until destroyed; values are read and written with "->".
///
/// Leave the group before a dialog opens: its event loop may run others that use the store.
class ZORTestSettingsGroup
{
public:
    /// \param settings  not owned; see ZORTestEnvironment::GetSettings()
    /// \throws ZORSysException "no settings store set" when \a settings is null
    [[nodiscard]] ZORTestSettingsGroup(QSettings* settings, const QString& group);
    [[nodiscard]] ZORTestSettingsGroup(QSettings* settings, const QString& outerGroup, const QString& group);
    Q_DISABLE_COPY_MOVE(ZORTestSettingsGroup)

    QSettings* operator->() const { return m_settings; }

private:
    QSettings* const m_settings; // not owned
    const ZORSysSettingGroupContext m_debug;
    const ZORSysSettingGroupContext m_outer;
    std::optional<const ZORSysSettingGroupContext> m_inner;
};
