#include "ZORVisBand_p.h"
#include "ZORVisLineData_p.h"
#include "ZORVisMeshData_p.h"

#include <algorithm>

namespace {

double CrossOf(const QPointF& a, const QPointF& b)
{
    return a.x() * b.y() - a.y() * b.x();
}

bool IsPicked(const ZORVisPrimitiveData& primitive)
{
    return primitive.kind != ZORVisPrimitiveKind::Text && !primitive.box.IsEmpty();
}

// Narrows the part of a line that lies below a limit: start + t * step <= limit.
bool Clip(double start, double step, double limit, double& from, double& to)
{
    if (step == 0)
        return start <= limit;
    const double t = (limit - start) / step;
    if (step > 0)
        to = std::min(to, t);
    else
        from = std::max(from, t);
    return from <= to;
}

} // namespace

ZORVisBand::ZORVisBand(const ZORVisFrame& frame, const QRectF& rectangle)
    : m_frame(frame)
    , m_rectangle(rectangle.normalized())
{
}

bool ZORVisBand::HoldsWhole(const ZORVisDrawObject& object) const
{
    bool isAny = false;
    for (const auto& item : object.items) {
        for (const auto& primitive : item->primitives) {
            if (!IsPicked(*primitive))
                continue;
            if (!HoldsWhole(*primitive))
                return false;
            isAny = true;
        }
    }
    return isAny;
}

bool ZORVisBand::Touches(const ZORVisDrawObject& object) const
{
    if (Locate(object.box) == Place::Outside)
        return false;
    return std::any_of(object.items.begin(), object.items.end(), [this](const auto& item) {
        return std::any_of(item->primitives.begin(), item->primitives.end(),
                           [this](const auto& p) { return IsPicked(*p) && this->Touches(*p); });
    });
}

ZORVisBand::Place ZORVisBand::Locate(const ZORMathBoundingBox& box) const
{
    if (box.IsEmpty())
        return Place::Outside;
    const QPointF half(ZORVisHalfExtent(box, m_frame.right) / m_frame.pixelSize,
                       ZORVisHalfExtent(box, m_frame.up) / m_frame.pixelSize);
    const QPointF center = m_frame.ToPixel(box.GetCenter());
    const QPointF low = center - half;
    const QPointF high = center + half;
    // Boxes of points and lines along an axis have no area: QRectF::intersects() would refuse them.
    if (high.x() < m_rectangle.left() || low.x() > m_rectangle.right() || high.y() < m_rectangle.top()
        || low.y() > m_rectangle.bottom())
        return Place::Outside;
    return Holds(low) && Holds(high) ? Place::Inside : Place::Across;
}

// Rectangles without area hold their edges; QRectF::contains() would refuse these.
bool ZORVisBand::Holds(const QPointF& pixel) const
{
    return pixel.x() >= m_rectangle.left() && pixel.x() <= m_rectangle.right()
           && pixel.y() >= m_rectangle.top() && pixel.y() <= m_rectangle.bottom();
}

bool ZORVisBand::Holds(const ZORMathPoint& point) const
{
    return Holds(m_frame.ToPixel(point));
}

bool ZORVisBand::HoldsAll(const QList<ZORMathPoint>& points) const
{
    return std::all_of(points.begin(), points.end(),
                       [this](const ZORMathPoint& point) { return !point.IsFinite() || Holds(point); });
}

bool ZORVisBand::HoldsWhole(const ZORVisPrimitiveData& primitive) const
{
    const Place place = Locate(primitive.box);
    if (place != Place::Across)
        return place == Place::Inside;
    switch (primitive.kind) {
    case ZORVisPrimitiveKind::Points:
        return HoldsAll(static_cast<const ZORVisPointData&>(primitive).points);
    case ZORVisPrimitiveKind::Lines:
        return HoldsAll(static_cast<const ZORVisLineData&>(primitive).points);
    case ZORVisPrimitiveKind::Mesh:
        return HoldsAll(static_cast<const ZORVisMeshData&>(primitive).vertices);
    case ZORVisPrimitiveKind::Text:
        break;
    }
    return false;
}

bool ZORVisBand::Touches(const ZORVisPrimitiveData& primitive) const
{
    const Place place = Locate(primitive.box);
    if (place != Place::Across)
        return place == Place::Inside;
    switch (primitive.kind) {
    case ZORVisPrimitiveKind::Points: {
        const auto& points = static_cast<const ZORVisPointData&>(primitive).points;
        return std::any_of(points.begin(), points.end(),
                           [this](const ZORMathPoint& point) { return point.IsFinite() && Holds(point); });
    }
    case ZORVisPrimitiveKind::Lines:
        return TouchesLines(static_cast<const ZORVisLineData&>(primitive));
    case ZORVisPrimitiveKind::Mesh:
        return TouchesMesh(static_cast<const ZORVisMeshData&>(primitive));
    case ZORVisPrimitiveKind::Text:
        break;
    }
    return false;
}

bool ZORVisBand::TouchesLines(const ZORVisLineData& data) const
{
    const qsizetype step = data.structure == ZORVisPolylinePrimitive::Pairs ? 2 : 1;
    for (qsizetype i = 0; i + 1 < data.points.size(); i += step) {
        const ZORMathPoint& from = data.points[i];
        const ZORMathPoint& to = data.points[i + 1];
        if (from.IsFinite() && to.IsFinite() && MeetsSegment(m_frame.ToPixel(from), m_frame.ToPixel(to)))
            return true;
    }
    return false;
}

bool ZORVisBand::TouchesMesh(const ZORVisMeshData& mesh) const
{
    const auto isDrawn = [&mesh](const ZORVisMeshData::Corners& corners) {
        return std::all_of(corners.begin(), corners.end(),
                           [&](int v) { return mesh.vertices[v].IsFinite(); });
    };
    const auto toPixel = [&](int vertex) { return m_frame.ToPixel(mesh.vertices[vertex]); };
    return std::any_of(mesh.corners.begin(), mesh.corners.end(), [&](const ZORVisMeshData::Corners& corners) {
        return isDrawn(corners)
               && MeetsTriangle(toPixel(corners[0]), toPixel(corners[1]), toPixel(corners[2]));
    });
}

bool ZORVisBand::MeetsSegment(const QPointF& from, const QPointF& to) const
{
    const QPointF step = to - from;
    double first = 0;
    double last = 1;
    return Clip(from.x(), step.x(), m_rectangle.right(), first, last)
           && Clip(-from.x(), -step.x(), -m_rectangle.left(), first, last)
           && Clip(from.y(), step.y(), m_rectangle.bottom(), first, last)
           && Clip(-from.y(), -step.y(), -m_rectangle.top(), first, last);
}

bool ZORVisBand::MeetsTriangle(const QPointF& a, const QPointF& b, const QPointF& c) const
{
    if (MeetsSegment(a, b) || MeetsSegment(b, c) || MeetsSegment(c, a))
        return true;
    // No edge comes in: the rectangle lies wholly inside or outside.
    const QPointF p = m_rectangle.center();
    const double ab = CrossOf(b - a, p - a);
    const double bc = CrossOf(c - b, p - b);
    const double ca = CrossOf(a - c, p - c);
    return (ab > 0 && bc > 0 && ca > 0) || (ab < 0 && bc < 0 && ca < 0);
}
