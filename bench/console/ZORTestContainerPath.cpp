#include "console/ZORTestContainerPath.h"

#include "core/ZORTestSettingsGroup.h"

ZORTestContainerPath::ZORTestContainerPath(QSettings* settings, const QString& group)
    : m_settings(settings)
    , m_group(group)
{
}

QString ZORTestContainerPath::Read() const
{
    const ZORTestSettingsGroup settings(m_settings, m_group);
    return settings->value("Dir").toString();
}

void ZORTestContainerPath::Write(const QString& path) const
{
    const ZORTestSettingsGroup settings(m_settings, m_group);
    settings->setValue("Dir", path);
}
