#include "ZORNestVisualizationManager.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysSettingGroupContext.h>
#include <ZORSystem/ZORSysSettingsManager.h>

namespace {

const QLatin1String kGroup("Nesting/Visualization");
const QLatin1String kFiltersKey("Filters");

} // namespace

ZORNestVisualizationManager* ZORNestVisualizationManager::GetInstance()
{
    static ZORNestVisualizationManager manager;
    return &manager;
}

ZORNestVisOptions ZORNestVisualizationManager::GetOptionsFromCurrentSetting() const
{
    ZORNestVisOptions options;
    QSettings* const settings = ZORSysSettingsManager::GetManager()->GetSource();
    if (!settings)
        return options;
    const ZORSysSettingGroupContext context(settings, kGroup);
    bool isNumber = false;
    const int filters = settings->value(kFiltersKey).toInt(&isNumber);
    if (isNumber)
        options.SetFilters(filters);
    return options;
}

void ZORNestVisualizationManager::SetOptionsInCurrentSetting(const ZORNestVisOptions& options)
{
    ZOR_TRACE_CALL(options);
    QSettings* const settings = ZORSysSettingsManager::GetManager()->GetSource();
    const ZORSysSettingGroupContext context(settings, kGroup);
    settings->setValue(kFiltersKey, options.GetFilters());
}
