#include "operations/ZORTestWFCurveOnSupportDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "core/ZORTestSettingsGroup.h"
#include "operations/ZORTestOptionalLength.h"
#include "ui_ZORTestWFCurveOnSupportDlg.h"

#include <ZORFeature/ZORFeatFolder.h>
#include <ZORWireframe/ZORWFCurveOnSupport.h>

ZOR_TEST_REGISTER(ZORTestWFCurveOnSupportDlg)

namespace {

constexpr int kPointToPoint = 0; // index of the type

} // namespace

ZORTestWFCurveOnSupportDlg::ZORTestWFCurveOnSupportDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
    , m_ui(std::make_unique<Ui::ZORTestWFCurveOnSupportDlg>())
{
    m_ui->setupUi(this);
    ReadSettings();
    connect(m_ui->_TypeCombo, &QComboBox::currentIndexChanged, this,
            &ZORTestWFCurveOnSupportDlg::OnTypeChanged);
    OnTypeChanged(m_ui->_TypeCombo->currentIndex());
}

ZORTestWFCurveOnSupportDlg::~ZORTestWFCurveOnSupportDlg() = default;

void ZORTestWFCurveOnSupportDlg::OnTypeChanged(int type)
{
    const bool isDirected = type != kPointToPoint;
    m_ui->_EndPtSel->setVisible(!isDirected);
    m_ui->_DirSel->setVisible(isDirected);
    m_ui->_AngleLabel->setVisible(isDirected);
    m_ui->_AngleSpin->setVisible(isDirected);
    m_ui->_FlipCheck->setVisible(isDirected);
}

void ZORTestWFCurveOnSupportDlg::ReadSettings()
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("WFCurveOnSupport"));
    m_ui->_TypeCombo->setCurrentIndex(settings->value("Type", 0).toInt());
    m_ui->_AngleSpin->SetInternalValue(settings->value("Angle", 0.0).toDouble());
    m_ui->_FlipCheck->setChecked(settings->value("Flip", false).toBool());
    m_ui->_StartLenCheck->setChecked(settings->value("UseStartLen", true).toBool());
    m_ui->_StartLenSpin->SetInternalValue(settings->value("StartLen", 0.0).toDouble());
    m_ui->_EndLenCheck->setChecked(settings->value("UseEndLen", true).toBool());
    m_ui->_EndLenSpin->SetInternalValue(settings->value("EndLen", 100.0).toDouble());
}

void ZORTestWFCurveOnSupportDlg::WriteSettings() const
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("WFCurveOnSupport"));
    settings->setValue("Type", m_ui->_TypeCombo->currentIndex());
    settings->setValue("UseStartLen", m_ui->_StartLenCheck->isChecked());
    settings->setValue("UseEndLen", m_ui->_EndLenCheck->isChecked());
    settings->setValue("Flip", m_ui->_FlipCheck->isChecked());
    if (m_ui->_StartLenCheck->isChecked())
        settings->setValue("StartLen", m_ui->_StartLenSpin->GetInternalValue());
    if (m_ui->_EndLenCheck->isChecked())
        settings->setValue("EndLen", m_ui->_EndLenSpin->GetInternalValue());
}

void ZORTestWFCurveOnSupportDlg::WriteAngle() const
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("WFCurveOnSupport"));
    settings->setValue("Angle", m_ui->_AngleSpin->GetInternalValue());
}

std::optional<QList<ZORFeatGeometry*>>
ZORTestWFCurveOnSupportDlg::RequireLimits(const ZORTestGeometrySelector* selector, const QString& message)
{
    QList<ZORFeatGeometry*> limits;
    const QList<ZORGeoGeometry*> selected = selector->GetSelectedGeometries();
    for (ZORGeoGeometry* geometry : selected) {
        limits.append(qobject_cast<ZORFeatGeometry*>(geometry));
        if (!limits.constLast()) {
            ShowError(message);
            return {};
        }
    }
    return limits;
}

bool ZORTestWFCurveOnSupportDlg::Apply()
{
    WriteSettings();
    const int type = m_ui->_TypeCombo->currentIndex();
    const double startLength = ZORTestGetOptionalLength(m_ui->_StartLenCheck, m_ui->_StartLenSpin);
    const double endLength = ZORTestGetOptionalLength(m_ui->_EndLenCheck, m_ui->_EndLenSpin);
    const double angle = m_ui->_AngleSpin->GetInternalValue();

    auto* support = Require<ZORFeatGeometry>(m_ui->_SurfaceSel, tr("Surface selection invalid"));
    if (!support)
        return false;
    auto* startPoint = Require<ZORFeatGeometry>(m_ui->_StartPtSel, tr("Start point selection invalid"));
    if (!startPoint)
        return false;
    ZORFeatGeometry* endPoint = nullptr;
    if (type == kPointToPoint) {
        endPoint = Require<ZORFeatGeometry>(m_ui->_EndPtSel, tr("End point selection invalid"));
        if (!endPoint)
            return false;
    }
    WriteAngle();
    auto* folder = Require<ZORFeatFolder>(m_ui->_FolderSel, tr("Folder selection invalid"));
    if (!folder)
        return false;
    ZORFeatObject* direction = nullptr;
    if (type != kPointToPoint) {
        direction = Require<ZORFeatObject>(m_ui->_DirSel, tr("Direction selection invalid"));
        if (!direction)
            return false;
    }
    const auto startLimits = RequireLimits(m_ui->_StartLimitSel, tr("Start limit selection invalid"));
    if (!startLimits)
        return false;
    const auto endLimits = RequireLimits(m_ui->_EndLimitSel, tr("End limit selection invalid"));
    if (!endLimits)
        return false;

    auto* curve = Create<ZORWFCurveOnSupport>(folder);
    curve->SetSupport(support);
    curve->SetComputationMethod(static_cast<ZORWFCurveOnSupport::ComputationMethod>(type));
    curve->SetStartPoint(startPoint);
    curve->SetEndPoint(endPoint);
    curve->SetStartLength(startLength);
    curve->SetEndLength(endLength);
    for (ZORFeatGeometry* limit : *startLimits)
        curve->AddStartLimit(limit);
    for (ZORFeatGeometry* limit : *endLimits)
        curve->AddEndLimit(limit);
    curve->SetDirection(direction);
    curve->SetAngle(angle);
    curve->SetDirectionFlipped(m_ui->_FlipCheck->isChecked());
    return true;
}
