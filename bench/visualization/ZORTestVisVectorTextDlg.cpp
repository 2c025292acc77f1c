#include "visualization/ZORTestVisVectorTextDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "core/ZORTestSettingsGroup.h"
#include "ui_ZORTestVisVectorTextDlg.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORMathematics/ZORMathPlane.h>
#include <ZORVisualization/ZORVisVectorText.h>

#include <cmath>
#include <numbers>

ZOR_TEST_REGISTER(ZORTestVisVectorTextDlg)

namespace {

constexpr unsigned kWhite = 255;

void DrawPolyline(const ZORMathSetOfPoints& points)
{
    ZORDebugVizContainer::AddPolyline(points, kWhite, kWhite, kWhite, 0, QString(), 0);
}

void DrawOrigin(const ZORMathPoint& origin)
{
    ZORDebugVizContainer::AddPoint(origin, kWhite, kWhite, kWhite, 0, QString(), 4);
}

void DrawGuideLine(const ZORMathPoint& start, const ZORMathPoint& end)
{
    ZORDebugVizContainer::AddLine(start, end, kWhite, kWhite, kWhite, 0, QString(), 4, 2);
}

/// The baseline, a text size long; the slanted height of the first line; the way to the next baseline.
void DrawGuideLines(const ZORVisVectorText& text, const ZORMathPlane& plane)
{
    const double size = text.GetTextSize();
    const double slope = std::tan(text.GetTiltAngle() * std::numbers::pi / 180);
    const double pitch = ZORVisVectorText::naturalLinePitch * size + text.GetLineSpacing();
    const ZORMathPoint origin = plane.GetOrigin();
    DrawGuideLine(origin, plane.Evaluate(size, 0));
    DrawGuideLine(origin, plane.Evaluate(slope * size, size));
    DrawGuideLine(origin, plane.Evaluate(0, -pitch));
}

ZORMathVector GetVector(const QDoubleSpinBox* x, const QDoubleSpinBox* y, const QDoubleSpinBox* z)
{
    return {x->value(), y->value(), z->value()};
}

} // namespace

ZORTestVisVectorTextDlg::ZORTestVisVectorTextDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
    , m_ui(std::make_unique<Ui::ZORTestVisVectorTextDlg>())
{
    m_ui->setupUi(this);
    FillCombos();
    ReadSettings();
}

ZORTestVisVectorTextDlg::~ZORTestVisVectorTextDlg() = default;

void ZORTestVisVectorTextDlg::FillCombos()
{
    m_ui->_FontCombo->addItems(ZORVisVectorFont::GetFontNames());
    for (const auto anchor : ZORVisVectorText::GetAnchors())
        m_ui->_AnchorCombo->addItem(ZORVisVectorText::GetAnchorLabel(anchor), int(anchor));
    for (const auto orientation : ZORVisVectorText::GetOrientations()) {
        m_ui->_OrientationCombo->addItem(ZORVisVectorText::GetOrientationLabel(orientation),
                                         int(orientation));
    }
    for (const auto justification : ZORVisVectorText::GetJustifications()) {
        m_ui->_JustificationCombo->addItem(ZORVisVectorText::GetJustificationLabel(justification),
                                           int(justification));
    }
}

QList<ZORTestVisVectorTextDlg::Number> ZORTestVisVectorTextDlg::GetNumbers() const
{
    return {{QLatin1String("LineSpacing"), m_ui->_LineSpacingSpn},
            {QLatin1String("CharSpacing"), m_ui->_CharSpacingSpn},
            {QLatin1String("TextSize"), m_ui->_TextSizeSpn},
            {QLatin1String("TiltAngle"), m_ui->_TiltAngleSpn},
            {QLatin1String("OriginX"), m_ui->_OriginXSpn},
            {QLatin1String("OriginY"), m_ui->_OriginYSpn},
            {QLatin1String("OriginZ"), m_ui->_OriginZSpn},
            {QLatin1String("FirstDirX"), m_ui->_FirstDirXSpn},
            {QLatin1String("FirstDirY"), m_ui->_FirstDirYSpn},
            {QLatin1String("FirstDirZ"), m_ui->_FirstDirZSpn},
            {QLatin1String("SecondDirX"), m_ui->_SecondDirXSpn},
            {QLatin1String("SecondDirY"), m_ui->_SecondDirYSpn},
            {QLatin1String("SecondDirZ"), m_ui->_SecondDirZSpn}};
}

int ZORTestVisVectorTextDlg::GetDecorations() const
{
    return (m_ui->_UnderlineChk->isChecked() ? ZORVisVectorText::Underline : 0)
           | (m_ui->_StrikeChk->isChecked() ? ZORVisVectorText::StrikeThrough : 0)
           | (m_ui->_OverlineChk->isChecked() ? ZORVisVectorText::Overline : 0);
}

void ZORTestVisVectorTextDlg::ReadSettings()
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("VisVectorText"));
    m_ui->_FontCombo->setCurrentText(settings->value("Font").toString());
    m_ui->_AnchorCombo->setCurrentIndex(settings->value("Anchor").toInt());
    m_ui->_OrientationCombo->setCurrentIndex(settings->value("Orientation").toInt());
    m_ui->_JustificationCombo->setCurrentIndex(settings->value("Justification").toInt());
    const int decorations = settings->value("Decorations").toInt();
    m_ui->_UnderlineChk->setChecked(decorations & ZORVisVectorText::Underline);
    m_ui->_StrikeChk->setChecked(decorations & ZORVisVectorText::StrikeThrough);
    m_ui->_OverlineChk->setChecked(decorations & ZORVisVectorText::Overline);
    for (const Number& number : GetNumbers())
        number.box->setValue(settings->value(number.key).toDouble());
}

void ZORTestVisVectorTextDlg::WriteSettings() const
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("VisVectorText"));
    settings->setValue("Font", m_ui->_FontCombo->currentText());
    settings->setValue("Anchor", m_ui->_AnchorCombo->currentIndex());
    settings->setValue("Orientation", m_ui->_OrientationCombo->currentIndex());
    settings->setValue("Justification", m_ui->_JustificationCombo->currentIndex());
    settings->setValue("Decorations", GetDecorations());
    for (const Number& number : GetNumbers())
        settings->setValue(number.key, number.box->value());
}

ZORVisVectorText ZORTestVisVectorTextDlg::GetText() const
{
    ZORVisVectorText text;
    text.SetFont(ZORVisVectorFont(m_ui->_FontCombo->currentText()));
    text.SetAnchor(static_cast<ZORVisVectorText::Anchor>(m_ui->_AnchorCombo->currentData().toInt()));
    text.SetLineSpacing(m_ui->_LineSpacingSpn->value());
    text.SetCharacterSpacing(m_ui->_CharSpacingSpn->value());
    text.SetOrientation(
        static_cast<ZORVisVectorText::Orientation>(m_ui->_OrientationCombo->currentData().toInt()));
    text.SetJustification(
        static_cast<ZORVisVectorText::Justification>(m_ui->_JustificationCombo->currentData().toInt()));
    text.SetDecorations(QFlags<ZORVisVectorText::Decoration>::fromInt(GetDecorations()));
    text.SetTextSize(m_ui->_TextSizeSpn->value());
    text.SetTiltAngle(m_ui->_TiltAngleSpn->value());
    return text;
}

bool ZORTestVisVectorTextDlg::Apply()
{
    WriteSettings();
    ZORVisVectorText text = GetText();
    ZORMathPlane plane;
    plane.SetOrigin({m_ui->_OriginXSpn->value(), m_ui->_OriginYSpn->value(), m_ui->_OriginZSpn->value()});
    plane.SetDirections(GetVector(m_ui->_FirstDirXSpn, m_ui->_FirstDirYSpn, m_ui->_FirstDirZSpn),
                        GetVector(m_ui->_SecondDirXSpn, m_ui->_SecondDirYSpn, m_ui->_SecondDirZSpn));
    text.SetPlane(plane);
    text.SetText(m_ui->_TextEdit->toPlainText());

    const QList<ZORMathSetOfPoints> polylines = text.GetPolylines();
    for (const ZORMathSetOfPoints& points : polylines)
        DrawPolyline(points);
    DrawOrigin(plane.GetOrigin());
    DrawGuideLines(text, plane);
    return true;
}
