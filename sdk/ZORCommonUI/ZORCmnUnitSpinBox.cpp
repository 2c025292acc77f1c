#include "ZORCmnUnitSpinBox.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysValue.h>

#include <QDynamicPropertyChangeEvent>
#include <QFocusEvent>
#include <QLineEdit>
#include <QLocale>

#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr double kRange = 1e9;
constexpr int kShownDecimals = 6;

} // namespace

class ZORCmnUnitSpinBox::Private
{
public:
    double factor = 1;      // internal units in a shown unit
    double exact = 0;       // internal value behind the number exactShown
    double exactShown = 0;  // not a number when there is none
    bool isClicked = false; // the focus came by the mouse button that is still down
};

ZORCmnUnitSpinBox::ZORCmnUnitSpinBox(QWidget* parent)
    : QDoubleSpinBox(parent)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(parent);
    setDecimals(kShownDecimals);
    setRange(-kRange, kRange);
    setGroupSeparatorShown(false);
    lineEdit()->installEventFilter(this);
}

ZORCmnUnitSpinBox::~ZORCmnUnitSpinBox() = default;

double ZORCmnUnitSpinBox::GetInternalValue() const
{
    return value() == d->exactShown ? d->exact : value() * d->factor;
}

void ZORCmnUnitSpinBox::SetInternalValue(double value)
{
    ZOR_TRACE_CALL(value);
    if (!std::isnan(value))
        Show(value);
}

void ZORCmnUnitSpinBox::Show(double internal)
{
    const double wanted = internal / d->factor;
    setValue(wanted);
    const bool isRounded = std::fabs(value() - wanted) <= std::pow(10.0, -decimals());
    d->exactShown = isRounded ? value() : std::numeric_limits<double>::quiet_NaN(); // else it was clamped
    d->exact = internal;
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
    const bool isHandled = QDoubleSpinBox::event(event);
    if (event->type() == QEvent::FocusIn)
        SelectOnFocus(static_cast<QFocusEvent*>(event)->reason());
    return isHandled;
}

// Typed digits must not join the number that is there. A return to the window or from a menu keeps the cursor.
void ZORCmnUnitSpinBox::SelectOnFocus(Qt::FocusReason reason)
{
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
        return;
    d->isClicked = reason == Qt::MouseFocusReason;
    selectAll();
}

bool ZORCmnUnitSpinBox::eventFilter(QObject* watched, QEvent* event)
{
    // The press that brought the focus has placed the cursor and dropped the selection; a drag has made another one.
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease
        && std::exchange(d->isClicked, false) && !lineEdit()->hasSelectedText())
        selectAll();
    return QDoubleSpinBox::eventFilter(watched, event);
}

void ZORCmnUnitSpinBox::UpdateMagnitude()
{
    const double internal = GetInternalValue();
    const QString magnitude = property("magnitude").toString();
    if (magnitude == QLatin1String("Angle")) {
        d->factor = ZORSysValue::GetUnitFactor(ZORSysValue::Degree);
        setSuffix(QStringLiteral("\u00b0"));
    } else {
        d->factor = 1;
        setSuffix(magnitude == QLatin1String("Length")
                      ? u' ' + ZORSysValue::GetUnitLabel(ZORSysValue::Millimeter)
                      : QString());
    }
    Show(internal);
}

QString ZORCmnUnitSpinBox::WithLocalSeparator(const QString& text) const
{
    const QString separator = locale().decimalPoint();
    return separator == QLatin1String(".") || text.contains(separator)
               ? text
               : QString(text).replace(u'.', separator);
}
