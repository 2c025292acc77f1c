#include "console/ZORTestContainerPath.h"

#include <ZORSystem/ZORSysSettingGroupContext.h>

#include <QSettings>

ZORTestContainerPath::ZORTestContainerPath(QSettings* settings, const QString& group)
    : m_settings(settings)
    , m_group(group)
{
}

QString ZORTestContainerPath::Read() const
{
    const ZORSysSettingGroupContext debug(m_settings, QLatin1String("Debug"));
    const ZORSysSettingGroupContext group(m_settings, m_group);
    return m_settings->value("Dir").toString();
}

void ZORTestContainerPath::Write(const QString& path) const
{
    const ZORSysSettingGroupContext debug(m_settings, QLatin1String("Debug"));
    const ZORSysSettingGroupContext group(m_settings, m_group);
    m_settings->setValue("Dir", path);
}
