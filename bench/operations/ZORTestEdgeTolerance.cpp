#include "operations/ZORTestEdgeTolerance.h"

#include "core/ZORTestEnvironment.h"

#include <ZORSystem/ZORSysSettingGroupContext.h>

#include <QDoubleSpinBox>
#include <QSettings>

namespace {

constexpr double Pi = 3.141592653589793;
constexpr double DefaultTolerance = 0.7853981633974483;
constexpr char Key[] = "Tolerance";

} // namespace

void ZorTestShowEdgeTolerance(const ZORTestEnvironment* environment, const char* group,
                              QDoubleSpinBox* spinBox)
{
    QSettings* settings = environment->GetSettings();
    const ZORSysSettingGroupContext debugGroup(settings, QLatin1String("Debug"));
    const ZORSysSettingGroupContext dialogGroup(settings, QLatin1String(group));
    spinBox->setValue(settings->value(QLatin1String(Key), DefaultTolerance).toDouble() * 180 / Pi);
}

double ZorTestStoreEdgeTolerance(const ZORTestEnvironment* environment, const char* group,
                                 const QDoubleSpinBox* spinBox)
{
    QSettings* settings = environment->GetSettings();
    const ZORSysSettingGroupContext debugGroup(settings, QLatin1String("Debug"));
    const ZORSysSettingGroupContext dialogGroup(settings, QLatin1String(group));
    const double tolerance = spinBox->value() * Pi / 180;
    settings->setValue(QLatin1String(Key), tolerance);
    return tolerance;
}
