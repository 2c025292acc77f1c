#include "ZORVisCamera.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double kSmallestHeight = 1e-6;
constexpr double kLargestHeight = 1e9;
constexpr double kOrbitRadiansPerPixel = 0.4 * 0.017453292519943295;
constexpr double kFitMargin = 0.05;

struct Axes
{
    ZORMathVector direction;
    ZORMathVector up;
};

QSizeF Usable(const QSizeF& viewSize)
{
    return viewSize.width() > 0 && viewSize.height() > 0 ? viewSize : QSizeF(1, 1);
}

// Rodrigues' formula; axis of length 1.
ZORMathVector Rotate(const ZORMathVector& v, const ZORMathVector& axis, double angle)
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return c * v + s * Cross(axis, v) + (1 - c) * Dot(axis, v) * axis;
}

bool IsUsable(const ZORMathVector& v)
{
    return std::isfinite(v.GetX()) && std::isfinite(v.GetY()) && std::isfinite(v.GetZ()) && v.GetLength() > 0;
}

} // namespace

ZORVisCamera::ZORVisCamera()
{
    SetStandardView(Isometric);
}

void ZORVisCamera::SetStandardView(StandardView view)
{
    static const std::array<Axes, 7> axes = {{{{0, 1, 0}, {0, 0, 1}},
                                              {{0, -1, 0}, {0, 0, 1}},
                                              {{1, 0, 0}, {0, 0, 1}},
                                              {{-1, 0, 0}, {0, 0, 1}},
                                              {{0, 0, -1}, {0, 1, 0}},
                                              {{0, 0, 1}, {0, -1, 0}},
                                              {{-1, 1, -1}, {0, 0, 1}}}};
    if (view < Front || view > Isometric)
        return;
    SetView(m_target, axes[view].direction, axes[view].up, m_height);
}

void ZORVisCamera::Orbit(double dx, double dy)
{
    if (!std::isfinite(dx) || !std::isfinite(dy))
        return;
    const ZORMathVector right = GetRightDirection();
    ZORMathVector direction = Rotate(m_direction, m_up, -dx * kOrbitRadiansPerPixel);
    const ZORMathVector turnedRight = Rotate(right, m_up, -dx * kOrbitRadiansPerPixel);
    direction = Rotate(direction, turnedRight, -dy * kOrbitRadiansPerPixel);
    const ZORMathVector up = Rotate(m_up, turnedRight, -dy * kOrbitRadiansPerPixel);
    SetView(m_target, direction, up, m_height);
}

void ZORVisCamera::Pan(double dx, double dy, const QSizeF& viewSize)
{
    if (!std::isfinite(dx) || !std::isfinite(dy))
        return;
    const double pixelSize = GetPixelSize(viewSize);
    m_target = m_target - dx * pixelSize * GetRightDirection() + dy * pixelSize * m_up;
}

void ZORVisCamera::Zoom(double factor, const QPointF& pixel, const QSizeF& viewSize)
{
    if (!std::isfinite(factor) || factor <= 0 || !std::isfinite(pixel.x()) || !std::isfinite(pixel.y()))
        return;
    const ZORMathPoint before = PixelToWorld(pixel, viewSize);
    m_height = std::clamp(m_height / factor, kSmallestHeight, kLargestHeight);
    m_target = m_target + (before - PixelToWorld(pixel, viewSize));
}

void ZORVisCamera::FitAll(const ZORMathBoundingBox& box, const QSizeF& viewSize)
{
    if (box.IsEmpty())
        return;
    const ZORMathVector half = 0.5 * (box.GetUpperPoint() - box.GetLowerPoint());
    const auto extent = [&half](const ZORMathVector& axis) { // of the box, projected on the axis
        return 2
               * (std::abs(half.GetX() * axis.GetX()) + std::abs(half.GetY() * axis.GetY())
                  + std::abs(half.GetZ() * axis.GetZ()));
    };
    m_target = box.GetCenter();
    const QSizeF size = Usable(viewSize);
    const double height = std::max(extent(m_up), extent(GetRightDirection()) * size.height() / size.width());
    if (height > 0)
        m_height = std::clamp(height / (1 - 2 * kFitMargin), kSmallestHeight, kLargestHeight);
}

void ZORVisCamera::SetView(const ZORMathPoint& target, const ZORMathVector& direction,
                           const ZORMathVector& up, double height)
{
    if (!target.IsFinite() || !IsUsable(direction) || !IsUsable(up) || !(height > 0)
        || !std::isfinite(height))
        return;
    const ZORMathVector forward = direction.GetNormalized();
    const ZORMathVector right = Cross(forward, up.GetNormalized());
    if (right.GetLength() < 1e-9)
        return;
    m_target = target;
    m_direction = forward;
    m_up = Cross(right.GetNormalized(), forward).GetNormalized();
    m_height = std::clamp(height, kSmallestHeight, kLargestHeight);
}

double ZORVisCamera::GetPixelSize(const QSizeF& viewSize) const
{
    return m_height / Usable(viewSize).height();
}

QPointF ZORVisCamera::WorldToPixel(const ZORMathPoint& point, const QSizeF& viewSize) const
{
    const QSizeF size = Usable(viewSize);
    const double pixelSize = GetPixelSize(viewSize);
    const ZORMathVector offset = point - m_target;
    return {size.width() / 2 + Dot(offset, GetRightDirection()) / pixelSize,
            size.height() / 2 - Dot(offset, m_up) / pixelSize};
}

ZORMathPoint ZORVisCamera::PixelToWorld(const QPointF& pixel, const QSizeF& viewSize) const
{
    const QSizeF size = Usable(viewSize);
    const double pixelSize = GetPixelSize(viewSize);
    return m_target + (pixel.x() - size.width() / 2) * pixelSize * GetRightDirection()
           - (pixel.y() - size.height() / 2) * pixelSize * m_up;
}
