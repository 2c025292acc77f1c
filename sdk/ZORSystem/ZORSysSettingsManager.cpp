#include "ZORSysSettingsManager.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <QPointer>
#include <QSettings>

class ZORSysSettingsManager::Private
{
public:
    QPointer<QSettings> source; // not owned
};

ZORSysSettingsManager::ZORSysSettingsManager()
    : d(std::make_unique<Private>())
{
}

ZORSysSettingsManager::~ZORSysSettingsManager() = default;

ZORSysSettingsManager* ZORSysSettingsManager::GetManager()
{
    static ZORSysSettingsManager manager;
    return &manager;
}

QSettings* ZORSysSettingsManager::GetSource() const
{
    return d->source;
}

void ZORSysSettingsManager::SetSource(QSettings* source)
{
    ZOR_TRACE_CALL(source);
    d->source = source;
}
