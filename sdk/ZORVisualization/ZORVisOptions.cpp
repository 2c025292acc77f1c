#include "ZORVisOptions.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kDefaultTextSize = 13;
constexpr double kLargestThickness = 32;

} // namespace

ZORVisOptions::ZORVisOptions()
{
    ZOR_TRACE_CALL();
}

void ZORVisOptions::SetColor(const QColor& color)
{
    ZOR_TRACE_CALL(color.isValid() ? color.name(QColor::HexArgb) : QString());
    m_color = color;
}

QColor ZORVisOptions::GetDrawnColor() const
{
    return m_color.isValid() ? m_color : QColor(160, 160, 164);
}

void ZORVisOptions::SetLineThickness(double thickness)
{
    ZOR_TRACE_CALL(thickness);
    m_lineThickness = thickness;
}

double ZORVisOptions::GetDrawnThickness() const
{
    return std::isnan(m_lineThickness) ? 1 : std::clamp(m_lineThickness, 1.0, kLargestThickness);
}

void ZORVisOptions::SetLineStyle(LineStyle style)
{
    ZOR_TRACE_CALL(style);
    m_lineStyle = style;
}

void ZORVisOptions::SetPointSymbol(PointSymbol symbol)
{
    ZOR_TRACE_CALL(symbol);
    m_pointSymbol = symbol;
}

void ZORVisOptions::SetTextSize(double size)
{
    ZOR_TRACE_CALL(size);
    m_textSize = size;
}

double ZORVisOptions::GetDrawnTextSize() const
{
    return std::isfinite(m_textSize) && m_textSize > 0 ? m_textSize : kDefaultTextSize;
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
    out += ')';
}
