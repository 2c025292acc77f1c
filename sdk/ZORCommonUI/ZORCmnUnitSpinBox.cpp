#include "ZORCmnUnitSpinBox.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysValue.h>

#include <QDynamicPropertyChangeEvent>
#include <QLocale>

#include <cmath>

namespace {

constexpr double range = 1e9;
constexpr int shownDecimals = 6;

} // namespace

ZORCmnUnitSpinBox::ZORCmnUnitSpinBox(QWidget* parent)
    : QDoubleSpinBox(parent)
{
    ZOR_TRACE_CALL(parent);
    setDecimals(shownDecimals);
    setRange(-range, range);
    setGroupSeparatorShown(false);
}

ZORCmnUnitSpinBox::~ZORCmnUnitSpinBox() = default;

double ZORCmnUnitSpinBox::GetInternalValue() const
{
    return value() * m_factor;
}

void ZORCmnUnitSpinBox::SetInternalValue(double value)
{
    ZOR_TRACE_CALL(value);
    if (!std::isnan(value))
        setValue(value / m_factor);
}

QString ZORCmnUnitSpinBox::textFromValue(double value) const
{
    QString text = QDoubleSpinBox::textFromValue(value);
    const QString separator = locale().decimalPoint();
    if (!text.contains(separator))
        return text;
    const QString zero = locale().zeroDigit();
    while (text.endsWith(zero))
        text.chop(zero.size());
    if (text.endsWith(separator))
        text.chop(separator.size());
    return text == locale().negativeSign() + zero ? zero : text;
}

double ZORCmnUnitSpinBox::valueFromText(const QString& text) const
{
    return QDoubleSpinBox::valueFromText(WithLocalSeparator(text));
}

QValidator::State ZORCmnUnitSpinBox::validate(QString& text, int& position) const
{
    QString local = WithLocalSeparator(text);
    return QDoubleSpinBox::validate(local, position);
}

bool ZORCmnUnitSpinBox::event(QEvent* event)
{
    if (event->type() == QEvent::DynamicPropertyChange
        && static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName() == "magnitude")
        UpdateMagnitude();
    return QDoubleSpinBox::event(event);
}

void ZORCmnUnitSpinBox::UpdateMagnitude()
{
    const double internal = GetInternalValue();
    const QString magnitude = property("magnitude").toString();
    if (magnitude == QLatin1String("Angle")) {
        m_factor = ZORSysValue::GetUnitFactor(ZORSysValue::Degree);
        setSuffix(QStringLiteral("\u00b0"));
    } else {
        m_factor = 1;
        setSuffix(magnitude == QLatin1String("Length")
                      ? u' ' + ZORSysValue::GetUnitLabel(ZORSysValue::Millimeter)
                      : QString());
    }
    setValue(internal / m_factor);
}

QString ZORCmnUnitSpinBox::WithLocalSeparator(const QString& text) const
{
    const QString separator = locale().decimalPoint();
    return separator == QLatin1String(".") || text.contains(separator)
               ? text
               : QString(text).replace(u'.', separator);
}
