#include "operations/ZORTestGeoGeodesicDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "core/ZORTestSettingsGroup.h"
#include "operations/ZORTestOptionalLength.h"
#include "ui_ZORTestGeoGeodesicDlg.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathVector.h>

#include <numbers>
#include <utility>

ZOR_TEST_REGISTER(ZORTestGeoGeodesicDlg)

namespace {

constexpr double kFullTurn = 2 * std::numbers::pi;

} // namespace

ZORTestGeoGeodesicDlg::ZORTestGeoGeodesicDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
    , m_ui(std::make_unique<Ui::ZORTestGeoGeodesicDlg>())
{
    m_ui->setupUi(this);
    ReadSettings();
}

ZORTestGeoGeodesicDlg::~ZORTestGeoGeodesicDlg() = default;

void ZORTestGeoGeodesicDlg::ReadSettings()
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("GeoGeodesic"));
    m_ui->_AngleSpin->SetInternalValue(settings->value("Angle", 0.0).toDouble());
    m_ui->_StartLenSpin->SetInternalValue(settings->value("StartLen", 0.0).toDouble());
    m_ui->_EndLenSpin->SetInternalValue(settings->value("EndLen", 0.0).toDouble());
    m_ui->_StartLenCheck->setChecked(settings->value("UseStartLen", false).toBool());
    m_ui->_EndLenCheck->setChecked(settings->value("UseEndLen", false).toBool());
    m_ui->_DirCombo->setCurrentIndex(settings->value("Direction", 0).toInt());
    m_ui->_FanCheck->setChecked(settings->value("ComputeAsFan", false).toBool());
    m_ui->_BruteForceCheck->setChecked(settings->value("BruteForce", false).toBool());
    m_ui->_BruteForceSpin->setValue(settings->value("BruteForceIter", 1).toInt());
    m_ui->_BruteForceLimitsCheck->setChecked(settings->value("BruteForceLimits", false).toBool());
}

// The end length is not stored: this is established.
void ZORTestGeoGeodesicDlg::WriteSettings() const
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("GeoGeodesic"));
    settings->setValue("UseStartLen", m_ui->_StartLenCheck->isChecked());
    settings->setValue("UseEndLen", m_ui->_EndLenCheck->isChecked());
    if (m_ui->_StartLenCheck->isChecked())
        settings->setValue("StartLen", m_ui->_StartLenSpin->GetInternalValue());
    settings->setValue("BruteForce", m_ui->_BruteForceCheck->isChecked());
    settings->setValue("BruteForceLimits", m_ui->_BruteForceLimitsCheck->isChecked());
    if (m_ui->_BruteForceCheck->isChecked())
        settings->setValue("BruteForceIter", m_ui->_BruteForceSpin->value());
    settings->setValue("ComputeAsFan", m_ui->_FanCheck->isChecked());
    settings->setValue("Angle", m_ui->_AngleSpin->GetInternalValue());
    settings->setValue("Direction", m_ui->_DirCombo->currentIndex());
}

bool ZORTestGeoGeodesicDlg::Apply()
{
    WriteSettings();
    const double startLength = ZORTestGetOptionalLength(m_ui->_StartLenCheck, m_ui->_StartLenSpin);
    const double endLength = ZORTestGetOptionalLength(m_ui->_EndLenCheck, m_ui->_EndLenSpin);
    const int numIterations = m_ui->_BruteForceCheck->isChecked() ? m_ui->_BruteForceSpin->value() : 1;
    const ZORMathVector direction = GetDirection();

    const auto* start = Require<ZORGeoPointOnSurface>(m_ui->_StartSel, tr("Invalid start point selection"));
    if (!start)
        return false;
    const ZORGeoLocationOnSurface location = start->GetLocationOnSurface();
    const LimitCurves limitCurves = GetLimitCurves();

    ZORGeoCurveOnSurfaceProcessor processor(start->GetSurface(), startLength, endLength);
    for (int i = 0; i < numIterations; ++i) {
        if (i == 0 || m_ui->_BruteForceLimitsCheck->isChecked())
            SetLimits(processor, limitCurves);
        const double angle = double(i) / numIterations * kFullTurn + m_ui->_AngleSpin->GetInternalValue();
        const ZORGeoCurveOnSurfaceResult result = processor.ComputeGeodesic(location, direction, angle);
        if (i == 0 || m_ui->_FanCheck->isChecked())
            Create<ZORGeoCurveOnSurface>(result.GetLocations(), false);
    }
    return true;
}

/// The zero vector for "Second Pt".
ZORMathVector ZORTestGeoGeodesicDlg::GetDirection() const
{
    switch (m_ui->_DirCombo->currentIndex()) {
    case 0:
        return {1, 0, 0};
    case 1:
        return {0, 1, 0};
    case 2:
        return {0, 0, 1};
    default:
        return {0, 0, 0};
    }
}

/// By their behaviour: 1 limits the start of the curve, 2 its end, 8 in addition stands for a hard limit.
ZORTestGeoGeodesicDlg::LimitCurves ZORTestGeoGeodesicDlg::GetLimitCurves() const
{
    // That the lists beside the two points hold the hard limits is established.
    const std::pair<const ZORTestGeometrySelector*, int> sources[] = {
        {m_ui->_StartSel, 9}, {m_ui->_EndSel, 10}, {m_ui->_StartSoftSel, 1}, {m_ui->_EndSoftSel, 2}};
    LimitCurves limitCurves;
    for (const auto& [selector, behavior] : sources) {
        QList<const ZORGeoCurveOnSurface*>& curves = limitCurves[behavior];
        const QList<ZORGeoGeometry*> selected = selector->GetSelectedGeometries();
        for (const ZORGeoGeometry* geometry : selected) {
            if (const auto* curve = qobject_cast<const ZORGeoCurveOnSurface*>(geometry))
                curves.append(curve);
        }
    }
    return limitCurves;
}

void ZORTestGeoGeodesicDlg::SetLimits(ZORGeoCurveOnSurfaceProcessor& processor,
                                      const LimitCurves& limitCurves)
{
    processor.ClearGeometricLimits();
    for (auto entry = limitCurves.begin(); entry != limitCurves.end(); ++entry) {
        ZORGeoCurveOnSurfaceLimits limits;
        limits.SetGeometry(entry.value());
        processor.AddGeometricLimits(limits,
                                     static_cast<ZORGeoCurveOnSurfaceProcessor::LimitBehavior>(entry.key()));
    }
}
