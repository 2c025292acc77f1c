#include "ZORVisLineStyles_p.h"
#include "ZORVisSoftware_p.h"
#include "scene/ZORVisLineData_p.h"
#include "scene/ZORVisMeshArrays_p.h"
#include "scene/ZORVisMeshData_p.h"

#include <QPainter>
#include <QPen>
#include <QPolygonF>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr float kAmbient = 0.3F; // the lights are those of the scene graph
constexpr float kLightIntensity = 0.8F;
constexpr float kSpecularStrength = 0.12F;

float Cross(float ax, float ay, float bx, float by)
{
    return ax * by - ay * bx;
}

QPen CreatePen(const ZORVisOptions& options, double ratio)
{
    const double width = options.GetDrawnThickness() * ratio;
    QPen pen(options.GetDrawnColor(), width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
    QList<qreal> dashes;
    const QList<int> steps = ZORVisLineDashes(options.GetLineStyle());
    for (const int length : steps)
        dashes << length * ZORVisLinePatternStep(width) / width; // QPen counts in pen widths
    if (!dashes.isEmpty())
        pen.setDashPattern(dashes);
    return pen;
}

} // namespace

ZORVisSoftware::ZORVisSoftware(const ZORVisFrame& frame, const QRect& tile, QImage& picture,
                               std::vector<float>& depth)
    : m_frame(frame)
    , m_tile(tile)
    , m_picture(picture)
    , m_depth(depth)
    , m_pixels(reinterpret_cast<QRgb*>(picture.bits()))
{
    m_depth.assign(size_t(tile.width()) * size_t(tile.height()), 1.0F);
    m_lineDepth = m_depth;
}

void ZORVisSoftware::Draw(const ZORVisDrawList& objects)
{
    DrawBackground();
    DrawMeshes(objects, Pass::Opaque);
    {
        // QPainter cannot address all of a large picture.
        QImage view(
            reinterpret_cast<uchar*>(m_pixels + qsizetype(m_tile.y()) * m_picture.width() + m_tile.x()),
            m_tile.width(), m_tile.height(), m_picture.bytesPerLine(), m_picture.format());
        QPainter painter(&view);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(-m_tile.topLeft());
        for (const ZORVisDrawObject* object : objects) {
            for (const auto& item : object->items)
                DrawLines(painter, *item);
        }
    }
    DrawMeshes(objects, Pass::Transparent);
}

void ZORVisSoftware::DrawBackground()
{
    for (int y = m_tile.top(); y <= m_tile.bottom(); ++y) {
        QRgb* row = m_pixels + qsizetype(y) * m_picture.width();
        std::fill(row + m_tile.left(), row + m_tile.right() + 1, m_frame.GetRowColor(y));
    }
}

// Transparent ones come last, the farthest object first, and leave the depth buffer alone.
void ZORVisSoftware::DrawMeshes(const ZORVisDrawList& objects, Pass pass)
{
    const bool transparent = pass == Pass::Transparent;
    ZORVisDrawList sorted = objects;
    if (transparent) {
        std::stable_sort(sorted.begin(), sorted.end(), [this](const auto* a, const auto* b) {
            return m_frame.camera.GetDepth(a->box.GetCenter()) > m_frame.camera.GetDepth(b->box.GetCenter());
        });
    }
    for (const ZORVisDrawObject* object : sorted) {
        for (const auto& item : object->items) {
            const QColor color = item->options.GetDrawnColor();
            if ((color.alpha() < 255) != transparent)
                continue;
            ZORVisForEach<ZORVisMeshData, ZORVisPrimitiveKind::Mesh>(
                *item, [&](const ZORVisMeshData& mesh) { DrawMesh(mesh, item->options); });
        }
    }
}

void ZORVisSoftware::DrawMesh(const ZORVisMeshData& mesh, const ZORVisOptions& options)
{
    if (mesh.corners.isEmpty() || !m_frame.IsVisible(mesh.box, 1))
        return;
    const auto arrays = mesh.GetArrays(ZORVisMeshData::Arrays::Kept);
    Project(*arrays, mesh.box.GetCenter());
    const std::vector<uint32_t>& corners = arrays->corners;
    const QColor color = options.GetDrawnColor();
    if (m_frame.wireframe || options.GetDisplay() == ZORVisOptions::Wireframe) {
        DrawEdges(corners, color);
    } else {
        for (size_t i = 0; i + 2 < corners.size(); i += 3)
            FillTriangle(m_vertices[corners[i]], m_vertices[corners[i + 1]], m_vertices[corners[i + 2]],
                         color);
        if (options.GetDisplay() == ZORVisOptions::WithEdges)
            DrawEdges(corners, ZORVisEdgeColor(color));
    }
    m_hasDepth = true;
}

void ZORVisSoftware::DrawEdges(const std::vector<uint32_t>& corners, const QColor& color)
{
    for (size_t i = 0; i + 2 < corners.size(); i += 3) {
        const Vertex& a = m_vertices[corners[i]];
        const Vertex& b = m_vertices[corners[i + 1]];
        const Vertex& c = m_vertices[corners[i + 2]];
        DrawEdge(a, b, color);
        DrawEdge(b, c, color);
        DrawEdge(c, a, color);
    }
}

void ZORVisSoftware::Project(const ZORVisMeshArrays& arrays, const ZORMathPoint& origin)
{
    const QPointF base = m_frame.ToPixel(origin) - m_tile.topLeft();
    const double baseDepth = m_frame.ToDepth(origin);
    const double depthScale = 1 / (m_frame.farDistance - m_frame.nearDistance);
    const ZORMathVector light =
        (0.15 * m_frame.right - 0.25 * m_frame.up + m_frame.direction).GetNormalized();
    const ZORMathVector halfway = (light + m_frame.direction).GetNormalized();
    m_vertices.resize(arrays.positions.size() / 3);
    ZORMathVector normal;
    double shine = 0;
    for (size_t i = 0; i < m_vertices.size(); ++i) {
        const float* p = arrays.positions.data() + 3 * i;
        const float* n = arrays.normals.data() + 3 * i;
        const ZORMathVector offset = {double(p[0]), double(p[1]), double(p[2])};
        const ZORMathVector next = {double(n[0]), double(n[1]), double(n[2])};
        if (i == 0 || next != normal) { // else a flat area goes on
            normal = next;
            shine = std::pow(std::abs(Dot(normal, halfway)), 32);
        }
        m_vertices[i] = {float(base.x() + Dot(offset, m_frame.right) / m_frame.pixelSize),
                         float(base.y() - Dot(offset, m_frame.up) / m_frame.pixelSize),
                         float(baseDepth + Dot(offset, m_frame.direction) * depthScale),
                         kAmbient + kLightIntensity * float(std::abs(Dot(normal, light))),
                         kSpecularStrength * float(shine)};
    }
}

void ZORVisSoftware::FillTriangle(const Vertex& a, const Vertex& b, const Vertex& c, const QColor& color)
{
    const float area = Cross(b.x - a.x, b.y - a.y, c.x - a.x, c.y - a.y);
    if (area == 0.0F || !std::isfinite(area))
        return;
    const auto [left, right] = std::minmax({a.x, b.x, c.x});
    const auto [top, bottom] = std::minmax({a.y, b.y, c.y});
    if (right < 0 || bottom < 0 || left > float(m_tile.width()) || top > float(m_tile.height()))
        return;
    const int firstX = int(std::max(0.0F, left));
    const int lastX = int(std::min(float(m_tile.width() - 1), right));
    const int firstY = int(std::max(0.0F, top));
    const int lastY = int(std::min(float(m_tile.height() - 1), bottom));

    // Steps of the weights of b and c per pixel, and of the depth, which is pushed back as lines must stay in
    // front.
    const float inverse = 1 / area;
    const float bx = (c.y - a.y) * inverse;
    const float by = (a.x - c.x) * inverse;
    const float cx = (a.y - b.y) * inverse;
    const float cy = (b.x - a.x) * inverse;
    const float slope = std::max(std::abs(bx * (b.depth - a.depth) + cx * (c.depth - a.depth)),
                                 std::abs(by * (b.depth - a.depth) + cy * (c.depth - a.depth)));
    const float pushBack = float(ZORVisFrame::kPushBackFactor) * slope + float(m_frame.GetPushBack());
    const float linePushBack = float(m_frame.GetLinePushBackFactor() - ZORVisFrame::kPushBackFactor) * slope;
    for (int y = firstY; y <= lastY; ++y) {
        const float dy = float(y) + 0.5F - a.y;
        for (int x = firstX; x <= lastX; ++x) {
            const float dx = float(x) + 0.5F - a.x;
            const float wb = dx * bx + dy * by;
            const float wc = dx * cx + dy * cy;
            if (wb < 0 || wc < 0 || wb + wc > 1)
                continue;
            const float depth = a.depth + wb * (b.depth - a.depth) + wc * (c.depth - a.depth) + pushBack;
            SetPixel(x, y, depth, depth + linePushBack, color,
                     a.diffuse + wb * (b.diffuse - a.diffuse) + wc * (c.diffuse - a.diffuse),
                     a.specular + wb * (b.specular - a.specular) + wc * (c.specular - a.specular));
        }
    }
}

void ZORVisSoftware::DrawEdge(const Vertex& a, const Vertex& b, const QColor& color)
{
    double first = 0;
    double last = 1;
    m_margin = 1;
    const Place from{QPointF(a.x, a.y) + m_tile.topLeft(), double(a.depth)};
    const Place to{QPointF(b.x, b.y) + m_tile.topLeft(), double(b.depth)};
    if (!Clip(from, to, first, last))
        return;
    const double length = std::max(std::abs(double(b.x - a.x)), std::abs(double(b.y - a.y)));
    const int steps = std::max(1, int(std::ceil((last - first) * length)));
    for (int i = 0; i <= steps; ++i) {
        const auto t = float(first + (last - first) * i / steps);
        const int x = int(std::floor(a.x + t * (b.x - a.x)));
        const int y = int(std::floor(a.y + t * (b.y - a.y)));
        if (x < 0 || y < 0 || x >= m_tile.width() || y >= m_tile.height())
            continue;
        const float depth = a.depth + t * (b.depth - a.depth);
        const size_t index = size_t(y) * size_t(m_tile.width()) + size_t(x);
        if (depth > m_lineDepth[index])
            continue;
        Blend(x, y, color, 1, 0);
        if (color.alpha() == 255)
            m_depth[index] = m_lineDepth[index] = std::min(depth, m_depth[index]);
    }
}

void ZORVisSoftware::SetPixel(int x, int y, float depth, float lineDepth, const QColor& color, float diffuse,
                              float specular)
{
    const size_t index = size_t(y) * size_t(m_tile.width()) + size_t(x);
    if (depth > m_depth[index])
        return;
    Blend(x, y, color, diffuse, specular);
    if (color.alpha() < 255)
        return;
    m_depth[index] = depth;
    m_lineDepth[index] = lineDepth;
}

void ZORVisSoftware::Blend(int x, int y, const QColor& color, float diffuse, float specular)
{
    QRgb& pixel = m_pixels[qsizetype(m_tile.y() + y) * m_picture.width() + m_tile.x() + x];
    const float alpha = float(color.alphaF());
    const auto shade = [&](int component, int below) {
        const float lit = std::min(255.0F, float(component) * diffuse + 255 * specular);
        return int(std::lround(alpha * lit + (1 - alpha) * float(below)));
    };
    pixel = qRgb(shade(color.red(), qRed(pixel)), shade(color.green(), qGreen(pixel)),
                 shade(color.blue(), qBlue(pixel)));
}

void ZORVisSoftware::DrawLines(QPainter& painter, const ZORVisRepItem& item)
{
    const QPen pen = CreatePen(item.options, m_frame.ratio);
    m_margin = pen.widthF();
    std::vector<Place> chain;
    const auto draw = [&] {
        DrawChain(painter, chain, pen);
        chain.clear();
    };
    ZORVisForEach<ZORVisLineData, ZORVisPrimitiveKind::Lines>(item, [&](const ZORVisLineData& lines) {
        if (lines.box.IsEmpty() || !m_frame.IsVisible(lines.box, m_margin))
            return;
        const bool pairs = lines.structure == ZORVisPolylinePrimitive::Pairs;
        for (qsizetype i = 0; i < lines.points.size(); ++i) {
            const ZORMathPoint& point = lines.points[i];
            if (point.IsFinite())
                chain.push_back({m_frame.ToPixel(point), m_frame.ToDepth(point)});
            if (!point.IsFinite() || (pairs && i % 2 == 1))
                draw();
        }
        draw();
    });
}

// Draws the runs of the chain that are in the tile and not covered; the pattern goes on along the whole
// chain.
void ZORVisSoftware::DrawChain(QPainter& painter, const std::vector<Place>& chain, const QPen& pen)
{
    QPolygonF run;
    double runStart = 0; // pixels from the start of the chain, as is the next
    double travelled = 0;
    QPen runPen = pen;
    const auto endRun = [&] {
        if (run.size() > 1) {
            if (pen.style() == Qt::CustomDashLine)
                runPen.setDashOffset(runStart / pen.widthF());
            painter.setPen(runPen);
            painter.drawPolyline(run);
        }
        run.clear();
    };
    for (size_t i = 0; i + 1 < chain.size(); ++i) {
        const Place& from = chain[i];
        const Place& to = chain[i + 1];
        const QPointF along = to.pixel - from.pixel;
        const double length = std::hypot(along.x(), along.y());
        double first = 0;
        double last = 1;
        if (!Clip(from, to, first, last)) {
            endRun();
            travelled += length;
            continue;
        }
        if (first > 0)
            endRun();
        const int steps = m_hasDepth ? std::max(1, int(std::ceil((last - first) * length))) : 1;
        int seenFrom = 0; // first step of those in sight
        for (int step = 0; step <= steps; ++step) {
            const double t = first + (last - first) * step / steps;
            const Place place{from.pixel + t * along, from.depth + t * (to.depth - from.depth)};
            if (m_hasDepth && !IsSeen(place)) {
                endRun();
                seenFrom = step + 1;
                continue;
            }
            if (run.isEmpty())
                runStart = travelled + t * length;
            // Steps of one line need no points of their own between its ends.
            if (step > seenFrom + 1)
                run.last() = place.pixel;
            else if (step > 0 || run.isEmpty())
                run << place.pixel;
        }
        if (last < 1)
            endRun();
        travelled += length;
    }
    endRun();
}

// Liang and Barsky's clipping of a segment at the tile: the part from first to last may touch it.
bool ZORVisSoftware::Clip(const Place& from, const Place& to, double& first, double& last) const
{
    const QPointF d = to.pixel - from.pixel;
    const std::array<double, 4> p = {-d.x(), d.x(), -d.y(), d.y()};
    const std::array<double, 4> q = {
        from.pixel.x() - (m_tile.left() - m_margin), m_tile.right() + 1 + m_margin - from.pixel.x(),
        from.pixel.y() - (m_tile.top() - m_margin), m_tile.bottom() + 1 + m_margin - from.pixel.y()};
    for (size_t i = 0; i < 4; ++i) {
        if (p[i] == 0.0) {
            if (q[i] < 0)
                return false;
        } else if (p[i] < 0) {
            first = std::max(first, q[i] / p[i]);
        } else {
            last = std::min(last, q[i] / p[i]);
        }
    }
    return first <= last;
}

bool ZORVisSoftware::IsSeen(const Place& place) const
{
    const int x = int(std::floor(place.pixel.x())) - m_tile.x();
    const int y = int(std::floor(place.pixel.y())) - m_tile.y();
    if (x < 0 || y < 0 || x >= m_tile.width() || y >= m_tile.height())
        return true;
    const float depth = m_lineDepth[size_t(y) * size_t(m_tile.width()) + size_t(x)];
    return place.depth <= double(depth) + ZORVisFrame::kDepthTolerance;
}
