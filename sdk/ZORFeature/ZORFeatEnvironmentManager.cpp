#include "ZORFeatEnvironmentManager.h"

#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QPointer>

class ZORFeatEnvironmentManager::Private
{
public:
    QPointer<QObject> current; // not owned
};

ZORFeatEnvironmentManager::ZORFeatEnvironmentManager()
    : d(std::make_unique<Private>())
{
}

ZORFeatEnvironmentManager::~ZORFeatEnvironmentManager() = default;

ZORFeatEnvironmentManager* ZORFeatEnvironmentManager::GetManager()
{
    // Never destroyed: environments with static storage may end later than any static manager.
    static auto* const manager = new ZORFeatEnvironmentManager;
    return manager;
}

ZORFeatEnvironment* ZORFeatEnvironmentManager::GetCurrentEnvironment() const
{
    return static_cast<ZORFeatEnvironment*>(d->current.data());
}

void ZORFeatEnvironmentManager::SetCurrentEnvironment(ZORFeatEnvironment* environment)
{
    ZOR_TRACE_CALL(environment);
    ChangeTo(environment);
}

void ZORFeatEnvironmentManager::ChangeTo(ZORFeatEnvironment* environment)
{
    if (environment == d->current)
        return;
    d->current = environment;
    emit CurrentEnvironmentChanged(environment);
}
