#include "ZORSysSettingsManager.h"

ZORSysSettingsManager* ZORSysSettingsManager::GetManager()
{
    static ZORSysSettingsManager manager;
    return &manager;
}

QSettings* ZORSysSettingsManager::GetSource() const
{
    return m_source;
}

void ZORSysSettingsManager::SetSource(QSettings* source)
{
    m_source = source;
}
