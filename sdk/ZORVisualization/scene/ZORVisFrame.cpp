#include "ZORVisFrame_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

double WidthOfLines(const ZORVisRepItem& item)
{
    double width = item.options.GetDisplay() == ZORVisOptions::WithEdges ? 1 : 0;
    for (const auto& primitive : item.primitives) {
        if (primitive->kind == ZORVisPrimitiveKind::Lines)
            return item.options.GetDrawnThickness();
    }
    return width;
}

} // namespace

double ZORVisHalfExtent(const ZORMathBoundingBox& box, const ZORMathVector& direction)
{
    const ZORMathVector half = 0.5 * (box.GetUpperPoint() - box.GetLowerPoint());
    return std::abs(half.GetX() * direction.GetX()) + std::abs(half.GetY() * direction.GetY())
           + std::abs(half.GetZ() * direction.GetZ());
}

ZORVisFrame::ZORVisFrame(const ZORVisCamera& view, const QSize& devicePixels, double devicePixelRatio,
                         const ZORVisDrawList& drawn)
    : camera(view)
    , size(devicePixels)
    , ratio(devicePixelRatio)
    , right(view.GetRightDirection())
    , up(view.GetUpDirection())
    , direction(view.GetViewDirection())
    , pixelSize(view.GetPixelSize(devicePixels))
{
    double nearest = std::numeric_limits<double>::infinity();
    double farthest = -nearest;
    for (const ZORVisDrawObject* object : drawn) {
        if (object->box.IsEmpty() || !IsVisible(object->box, 64 * ratio))
            continue;
        const double center = camera.GetDepth(object->box.GetCenter());
        const double half = ZORVisHalfExtent(object->box, direction);
        for (const auto& item : object->items)
            lineWidth = std::max(lineWidth, WidthOfLines(*item));
        nearest = std::min(nearest, center - half);
        farthest = std::max(farthest, center + half);
    }
    if (nearest > farthest)
        nearest = farthest = 0;
    const double margin = std::max(0.01 * (farthest - nearest), 4 * pixelSize);
    nearDistance = nearest - margin;
    farDistance = farthest + margin;
}

bool ZORVisFrame::IsVisible(const ZORMathBoundingBox& box, double margin) const
{
    const QPointF center = ToPixel(box.GetCenter());
    const double halfWidth = size.width() / 2.0;
    const double halfHeight = size.height() / 2.0;
    return std::abs(center.x() - halfWidth) <= halfWidth + margin + ZORVisHalfExtent(box, right) / pixelSize
           && std::abs(center.y() - halfHeight)
                  <= halfHeight + margin + ZORVisHalfExtent(box, up) / pixelSize;
}

QPointF ZORVisFrame::ToPixel(const ZORMathPoint& point) const
{
    const ZORMathVector offset = point - camera.GetTarget();
    return {size.width() / 2.0 + Dot(offset, right) / pixelSize,
            size.height() / 2.0 - Dot(offset, up) / pixelSize};
}

double ZORVisFrame::ToDepth(const ZORMathPoint& point) const
{
    return (camera.GetDepth(point) - nearDistance) / (farDistance - nearDistance);
}

QRgb ZORVisFrame::GetRowColor(int row) const
{
    const double t = (row + 0.5) / size.height();
    const auto mix = [t](int a, int b) { return int(std::lround(a + t * (b - a))); };
    return qRgb(mix(qRed(top), qRed(bottom)), mix(qGreen(top), qGreen(bottom)),
                mix(qBlue(top), qBlue(bottom)));
}
