#include "ZORFeatEnvironmentManager.h"

#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZORFeatEnvironmentManager::ZORFeatEnvironmentManager() = default;

ZORFeatEnvironmentManager* ZORFeatEnvironmentManager::GetManager()
{
    // Never destroyed: environments with static storage may end later than any static manager.
    static auto* const manager = new ZORFeatEnvironmentManager;
    return manager;
}

ZORFeatEnvironment* ZORFeatEnvironmentManager::GetCurrentEnvironment() const
{
    return static_cast<ZORFeatEnvironment*>(m_current.data());
}

void ZORFeatEnvironmentManager::SetCurrentEnvironment(ZORFeatEnvironment* environment)
{
    ZOR_TRACE_CALL(environment);
    ChangeTo(environment);
}

void ZORFeatEnvironmentManager::ChangeTo(ZORFeatEnvironment* environment)
{
    if (environment == m_current)
        return;
    m_current = environment;
    emit CurrentEnvironmentChanged(environment);
}
