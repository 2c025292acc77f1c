#include "core/ZORTestSettingsGroup.h"

ZORTestSettingsGroup::ZORTestSettingsGroup(QSettings* settings, const QString& group)
    : m_settings(settings)
    , m_debug(settings, QLatin1String("Debug"))
    , m_outer(settings, group)
{
}

ZORTestSettingsGroup::ZORTestSettingsGroup(QSettings* settings, const QString& outerGroup,
                                           const QString& group)
    : ZORTestSettingsGroup(settings, outerGroup)
{
    m_inner.emplace(settings, group);
}
