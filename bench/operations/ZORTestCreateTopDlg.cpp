#include "operations/ZORTestCreateTopDlg.h"

#include "core/ZORTestSettingsGroup.h"
#include "widgets/ZORTestForm.h"

#include <QDoubleSpinBox>

#include <numbers>

namespace {

constexpr double kDefaultTolerance = std::numbers::pi / 4;
constexpr char kKey[] = "Tolerance";

} // namespace

ZORTestCreateTopDlg::ZORTestCreateTopDlg(ZORTestEnvironment* environment, const char* group)
    : ZORTestDialog(environment)
    , m_group(group)
{
}

void ZORTestCreateTopDlg::BuildForm(const char* selector, const QString& caption, const char* geoType)
{
    ZORTestForm form(this);
    m_selector = form.AddSelector(selector, caption, geoType);
    m_toleranceSpin = form.AddSpinBox("_ToleranceSpin", tr("Edge Tolerance: "));
    form.AddButtonBox();

    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String(m_group));
    const double tolerance = settings->value(QLatin1String(kKey), kDefaultTolerance).toDouble();
    m_toleranceSpin->setValue(tolerance * 180 / std::numbers::pi);
}

/// Returns the tolerance of the field in radians.
double ZORTestCreateTopDlg::StoreTolerance() const
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String(m_group));
    const double tolerance = m_toleranceSpin->value() * std::numbers::pi / 180;
    settings->setValue(QLatin1String(kKey), tolerance);
    return tolerance;
}
