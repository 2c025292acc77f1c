#include "ZORVisLineData_p.h"
#include "ZORVisMeshData_p.h"
#include "ZORVisPicking_p.h"

#include <ZORGeometry/ZORGeoRange.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <cmath>
#include <limits>
#include <tuple>

namespace {

double Distance(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

// Of the place on the segment that is nearest to the pixel, 0 at its start, 1 at its end.
double NearestOnSegment(const QPointF& pixel, const QPointF& from, const QPointF& to)
{
    const QPointF along = to - from;
    const double squaredLength = QPointF::dotProduct(along, along);
    if (!(squaredLength > 0))
        return 0;
    return std::clamp(QPointF::dotProduct(pixel - from, along) / squaredLength, 0.0, 1.0);
}

} // namespace

ZORVisPointPicker::ZORVisPointPicker(const QList<ZORMathPoint>& points)
    : m_numPoints(points.size())
{
    for (qsizetype first = 0; first < m_numPoints; first += kRunLength) {
        ZORMathBoundingBox box;
        for (qsizetype i = first; i <= std::min(first + kRunLength, m_numPoints - 1); ++i)
            box.Add(points[i]);
        m_boxes.push_back(box);
    }
}

bool ZORVisPointPicker::MayTouch(const ZORMathBoundingBox& box, const ZORVisFrame& frame,
                                 const QPointF& pixel, double tolerance)
{
    if (box.IsEmpty())
        return false;
    const QPointF offset = frame.ToPixel(box.GetCenter()) - pixel;
    return std::abs(offset.x()) <= tolerance + ZORVisHalfExtent(box, frame.right) / frame.pixelSize
           && std::abs(offset.y()) <= tolerance + ZORVisHalfExtent(box, frame.up) / frame.pixelSize;
}

ZORVisMeshPicker::ZORVisMeshPicker(const ZORVisMeshData& mesh)
{
    QList<ZORMathPoint> vertices = mesh.vertices;
    QList<ZORGeoSurface::Corners> triangles;
    for (int i = 0; i < int(mesh.corners.size()); ++i) {
        const ZORVisMeshData::Corners& corners = mesh.corners[i];
        if (std::all_of(corners.begin(), corners.end(),
                        [&](int v) { return ZORGeoRange::Contains(mesh.vertices[v]); })) {
            triangles.append(corners);
            m_numbers.push_back(i + 1);
        }
    }
    for (ZORMathPoint& vertex : vertices) { // of no triangle that is left
        if (!ZORGeoRange::Contains(vertex))
            vertex = {};
    }
    m_surface = std::make_unique<ZORGeoSurface>(nullptr, vertices, triangles);
}

ZORVisMeshPicker::~ZORVisMeshPicker() = default;

int ZORVisMeshPicker::Intersect(const ZORVisMeshData& mesh, const ZORMathPoint& origin,
                                const ZORMathVector& direction, ZORMathPoint& place)
{
    const ZORVisMeshPicker* const picker = mesh.surface ? nullptr : &mesh.picker.Get(mesh);
    const ZORGeoSurface& surface = picker ? *picker->m_surface : *mesh.surface;
    const ZORGeoLocationOnSurface hit = surface.IntersectRay(origin, direction);
    if (!hit.surface)
        return 0;
    place = hit.point;
    return picker ? picker->m_numbers[size_t(hit.triangle) - 1] : hit.triangle;
}

ZORVisPicking::ZORVisPicking(const ZORVisFrame& frame, const QPointF& pixel, double tolerance)
    : m_frame(frame)
    , m_pixel(pixel)
    , m_tolerance(tolerance)
{
}

void ZORVisPicking::Add(const ZORVisDrawObject& object)
{
    if (!ZORVisPointPicker::MayTouch(object.box, m_frame, m_pixel, m_tolerance))
        return;
    m_object = &object;
    for (const auto& item : object.items) {
        m_isWireframe = m_frame.wireframe || item->options.GetDisplay() == ZORVisOptions::Wireframe;
        for (const auto& primitive : item->primitives) {
            if (!ZORVisPointPicker::MayTouch(primitive->box, m_frame, m_pixel, m_tolerance))
                continue;
            if (primitive->kind == ZORVisPrimitiveKind::Points)
                AddPoints(static_cast<const ZORVisPointData&>(*primitive));
            else if (primitive->kind == ZORVisPrimitiveKind::Lines)
                AddLines(static_cast<const ZORVisLineData&>(*primitive));
            else if (primitive->kind == ZORVisPrimitiveKind::Mesh)
                AddMesh(static_cast<const ZORVisMeshData&>(*primitive));
        }
    }
}

void ZORVisPicking::AddPoints(const ZORVisPointData& data)
{
    data.picker.Get(data.points)
        .ForEachRun(m_frame, m_pixel, m_tolerance, [&](qsizetype first, qsizetype last) {
            for (qsizetype i = first; i <= last; ++i)
                AddCandidate(Point, data.points[i], 0);
        });
}

void ZORVisPicking::AddLines(const ZORVisLineData& data)
{
    const qsizetype step = data.structure == ZORVisPolylinePrimitive::Pairs ? 2 : 1;
    data.picker.Get(data.points)
        .ForEachRun(m_frame, m_pixel, m_tolerance, [&](qsizetype first, qsizetype last) {
            for (qsizetype i = first; i < last; i += step)
                AddSegment(data.points[i], data.points[i + 1]);
        });
}

void ZORVisPicking::AddSegment(const ZORMathPoint& from, const ZORMathPoint& to)
{
    if (!from.IsFinite() || !to.IsFinite())
        return;
    const double t = NearestOnSegment(m_pixel, m_frame.ToPixel(from), m_frame.ToPixel(to));
    AddCandidate(Line, from + t * (to - from), 0);
}

void ZORVisPicking::AddMesh(const ZORVisMeshData& mesh)
{
    const QSizeF size = m_frame.size;
    const ZORMathPoint start = m_frame.camera.PixelToWorld(m_pixel, size)
                               + (m_frame.camera.GetDepth(mesh.box.GetCenter())
                                  - ZORVisHalfExtent(mesh.box, m_frame.direction) - 2 * m_frame.pixelSize)
                                     * m_frame.direction;
    ZORMathPoint place;
    if (const int triangle = ZORVisMeshPicker::Intersect(mesh, start, m_frame.direction, place); triangle > 0)
        AddCandidate(Surface, place, triangle);
}

void ZORVisPicking::AddCandidate(Rank rank, const ZORMathPoint& point, int triangle)
{
    const double pixels = Distance(m_frame.ToPixel(point), m_pixel);
    if (rank != Surface && !(pixels <= m_tolerance))
        return;
    ZORVisVirtualObject* const object = m_object->object;
    QObject* const owner = object ? object->GetOwner() : m_object->owner;
    m_candidates.push_back({rank,
                            rank != Surface || !m_isWireframe,
                            pixels,
                            m_frame.camera.GetDepth(point),
                            {object, owner, point, triangle}});
}

ZORVisPickResult ZORVisPicking::GetResult() const
{
    const auto hides = [](const Candidate& c) { return c.hides; };
    const bool anyHides = std::any_of(m_candidates.begin(), m_candidates.end(), hides);
    double nearest = std::numeric_limits<double>::infinity();
    for (const Candidate& candidate : m_candidates) {
        if (hides(candidate) || !anyHides)
            nearest = std::min(nearest, candidate.depth);
    }
    const double reach = nearest + 2 * m_tolerance * m_frame.pixelSize;
    const Candidate* best = nullptr;
    for (const Candidate& candidate : m_candidates) {
        if (candidate.depth > reach || (anyHides && !hides(candidate)))
            continue;
        const auto key = [](const Candidate& c) { // surfaces are hit exactly: the nearest one counts
            return std::make_tuple(c.rank, c.rank == Surface ? c.depth : c.pixels, c.depth);
        };
        if (!best || key(candidate) < key(*best))
            best = &candidate;
    }
    return best ? best->result : ZORVisPickResult();
}
