#include "ZORSysSettingsManager.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <QSettings>

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
    ZOR_TRACE_CALL(source);
    m_source = source;
}
