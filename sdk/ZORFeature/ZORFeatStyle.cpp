#include "ZORFeatStyle.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysApiTracePause.h>

#include <QCborMap>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

class ZORFeatStyleData : public QSharedData
{
public:
    bool isVisible = true;
    QColor color{160, 160, 164};
    double opacity = 1;
    double lineWidth = 1;
    ZORFeatStyle::PointSymbol pointSymbol = ZORVisOptions::Cross;
    ZORFeatStyle::Display display = ZORVisOptions::Shaded;
};

namespace {

// Keys of the values in container files.
const QLatin1String kVisible("visible");
const QLatin1String kColor("color");
const QLatin1String kOpacity("opacity");
const QLatin1String kLineWidth("lineWidth");
const QLatin1String kPointSymbol("pointSymbol");
const QLatin1String kDisplay("display");

// Returns an invalid color for anything but #rrggbb.
QColor ColorOf(const QString& text)
{
    bool isNumber = false;
    const uint rgb = text.size() == 7 && text.startsWith(u'#') ? text.sliced(1).toUInt(&isNumber, 16) : 0;
    return isNumber ? QColor(rgb) : QColor();
}

} // namespace

ZORFeatStyle::ZORFeatStyle()
    : d(new ZORFeatStyleData)
{
}

ZORFeatStyle::ZORFeatStyle(const ZORFeatStyle& other) = default;
ZORFeatStyle::ZORFeatStyle(ZORFeatStyle&& other) noexcept = default;
ZORFeatStyle& ZORFeatStyle::operator=(const ZORFeatStyle& other) = default;
ZORFeatStyle& ZORFeatStyle::operator=(ZORFeatStyle&& other) noexcept = default;
ZORFeatStyle::~ZORFeatStyle() = default;

void ZORFeatStyle::SetVisible(bool isVisible)
{
    d->isVisible = isVisible;
}

bool ZORFeatStyle::IsVisible() const
{
    return d->isVisible;
}

void ZORFeatStyle::SetColor(const QColor& color)
{
    if (color.isValid())
        d->color = QColor(color.rgb());
}

QColor ZORFeatStyle::GetColor() const
{
    return d->color;
}

void ZORFeatStyle::SetOpacity(double opacity)
{
    if (!std::isnan(opacity))
        d->opacity = std::clamp(opacity, 0.0, 1.0);
}

double ZORFeatStyle::GetOpacity() const
{
    return d->opacity;
}

void ZORFeatStyle::SetLineWidth(double width)
{
    if (!std::isnan(width))
        d->lineWidth = std::clamp(width, kMinimumLineWidth, kMaximumLineWidth);
}

double ZORFeatStyle::GetLineWidth() const
{
    return d->lineWidth;
}

void ZORFeatStyle::SetPointSymbol(PointSymbol symbol)
{
    if (symbol >= 0 && symbol < ZORVisOptions::pointSymbolCount)
        d->pointSymbol = symbol;
}

ZORFeatStyle::PointSymbol ZORFeatStyle::GetPointSymbol() const
{
    return d->pointSymbol;
}

void ZORFeatStyle::SetDisplay(Display display)
{
    if (display >= 0 && display < ZORVisOptions::kDisplayCount)
        d->display = display;
}

ZORFeatStyle::Display ZORFeatStyle::GetDisplay() const
{
    return d->display;
}

ZORVisOptions ZORFeatStyle::GetOptions() const
{
    const ZORSysApiTracePause pause; // options are made inside of this call
    QColor color = d->color;
    color.setAlphaF(float(d->opacity));
    ZORVisOptions options;
    options.SetColor(color);
    options.SetLineThickness(d->lineWidth);
    options.SetPointSymbol(d->pointSymbol);
    options.SetDisplay(d->display);
    return options;
}

QCborMap ZORFeatStyle::ToStored(const ZORFeatStyle& usual) const
{
    QCborMap values;
    const auto add = [&values](QLatin1String key, const auto& value, const auto& usualValue) {
        if (value != usualValue)
            values.insert(key, value);
    };
    add(kVisible, d->isVisible, usual.d->isVisible);
    add(kColor, d->color.name(), usual.d->color.name());
    add(kOpacity, d->opacity, usual.d->opacity);
    add(kLineWidth, d->lineWidth, usual.d->lineWidth);
    add(kPointSymbol, qint64(d->pointSymbol), qint64(usual.d->pointSymbol));
    add(kDisplay, qint64(d->display), qint64(usual.d->display));
    return values;
}

ZORFeatStyle ZORFeatStyle::FromStored(const QCborMap& values, const ZORFeatStyle& usual)
{
    const auto number = [&values](QLatin1String key, double usualValue) {
        const QCborValue value = values[key];
        return value.isDouble() || value.isInteger() ? value.toDouble() : usualValue;
    };
    // Codes beyond those of this version are out of range as an int, too.
    const auto code = [&values](QLatin1String key) {
        return int(std::clamp<qint64>(values[key].toInteger(-1), -1, std::numeric_limits<int>::max()));
    };
    ZORFeatStyle style = usual;
    style.SetVisible(values[kVisible].toBool(usual.IsVisible()));
    style.SetColor(ColorOf(values[kColor].toString()));
    style.SetOpacity(number(kOpacity, usual.GetOpacity()));
    style.SetLineWidth(number(kLineWidth, usual.GetLineWidth()));
    style.SetPointSymbol(PointSymbol(code(kPointSymbol)));
    style.SetDisplay(Display(code(kDisplay)));
    return style;
}

bool operator==(const ZORFeatStyle& a, const ZORFeatStyle& b)
{
    const auto tie = [](const ZORFeatStyleData& data) {
        return std::tie(data.isVisible, data.color, data.opacity, data.lineWidth, data.pointSymbol,
                        data.display);
    };
    return tie(*a.d) == tie(*b.d);
}

void ZorTraceAppend(QByteArray& out, const ZORFeatStyle& style)
{
    out += '(';
    ZorTraceAppend(out, style.IsVisible());
    out += ", " + style.GetColor().name().toLatin1() + ", ";
    ZorTraceAppend(out, style.GetOpacity());
    out += ", ";
    ZorTraceAppend(out, style.GetLineWidth());
    out += ", ";
    ZorTraceAppend(out, style.GetPointSymbol());
    out += ", ";
    ZorTraceAppend(out, style.GetDisplay());
    out += ')';
}
