#include "ZORVisOptions.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

constexpr double kDefaultTextSize = 13;
constexpr double kLargestThickness = 32;

} // namespace

class ZORVisOptionsData : public QSharedData
{
public:
    QColor color;
    double lineThickness = 1;
    ZORVisOptions::LineStyle lineStyle = ZORVisOptions::Solid;
    ZORVisOptions::PointSymbol pointSymbol = ZORVisOptions::Cross;
    double textSize = kDefaultTextSize;
    ZORVisOptions::Display display = ZORVisOptions::Shaded;
};

ZORVisOptions::ZORVisOptions()
    : d(new ZORVisOptionsData)
{
    ZOR_TRACE_CALL();
}

ZORVisOptions::ZORVisOptions(const ZORVisOptions& other) = default;
ZORVisOptions::ZORVisOptions(ZORVisOptions&& other) noexcept = default;
ZORVisOptions& ZORVisOptions::operator=(const ZORVisOptions& other) = default;
ZORVisOptions& ZORVisOptions::operator=(ZORVisOptions&& other) noexcept = default;
ZORVisOptions::~ZORVisOptions() = default;

void ZORVisOptions::SetColor(const QColor& color)
{
    ZOR_TRACE_CALL(color.isValid() ? color.name(QColor::HexArgb) : QString());
    d->color = color;
}

QColor ZORVisOptions::GetColor() const
{
    return d->color;
}

QColor ZORVisOptions::GetDrawnColor() const
{
    return d->color.isValid() ? d->color : QColor(160, 160, 164);
}

void ZORVisOptions::SetLineThickness(double thickness)
{
    ZOR_TRACE_CALL(thickness);
    d->lineThickness = thickness;
}

double ZORVisOptions::GetLineThickness() const
{
    return d->lineThickness;
}

double ZORVisOptions::GetDrawnThickness() const
{
    return std::isnan(d->lineThickness) ? 1 : std::clamp(d->lineThickness, 1.0, kLargestThickness);
}

void ZORVisOptions::SetLineStyle(LineStyle style)
{
    ZOR_TRACE_CALL(style);
    d->lineStyle = style;
}

ZORVisOptions::LineStyle ZORVisOptions::GetLineStyle() const
{
    return d->lineStyle;
}

void ZORVisOptions::SetPointSymbol(PointSymbol symbol)
{
    ZOR_TRACE_CALL(symbol);
    d->pointSymbol = symbol;
}

ZORVisOptions::PointSymbol ZORVisOptions::GetPointSymbol() const
{
    return d->pointSymbol;
}

void ZORVisOptions::SetTextSize(double size)
{
    ZOR_TRACE_CALL(size);
    d->textSize = size;
}

double ZORVisOptions::GetTextSize() const
{
    return d->textSize;
}

double ZORVisOptions::GetDrawnTextSize() const
{
    return std::isfinite(d->textSize) && d->textSize > 0 ? d->textSize : kDefaultTextSize;
}

void ZORVisOptions::SetDisplay(Display display)
{
    ZOR_TRACE_CALL(display);
    d->display = display;
}

ZORVisOptions::Display ZORVisOptions::GetDisplay() const
{
    return d->display;
}

bool operator==(const ZORVisOptions& a, const ZORVisOptions& b)
{
    const auto tie = [](const ZORVisOptionsData& data) {
        return std::tie(data.color, data.lineThickness, data.lineStyle, data.pointSymbol, data.textSize,
                        data.display);
    };
    return tie(*a.d) == tie(*b.d);
}

void ZorTraceAppend(QByteArray& out, const ZORVisOptions& options)
{
    const QColor color = options.GetColor();
    out += '(' + (color.isValid() ? color.name(QColor::HexArgb).toLatin1() : QByteArray("none")) + ", ";
    ZorTraceAppend(out, options.GetLineThickness());
    out += ", ";
    ZorTraceAppend(out, options.GetLineStyle());
    out += ", ";
    ZorTraceAppend(out, options.GetPointSymbol());
    out += ", ";
    ZorTraceAppend(out, options.GetTextSize());
    if (options.GetDisplay() != ZORVisOptions::Shaded) {
        out += ", ";
        ZorTraceAppend(out, options.GetDisplay());
    }
    out += ')';
}
