#include "ZORFeatBrowserIcons_p.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>

namespace {

constexpr double kGridSize = 16; // the drawings below are made on a square of this side

double HueOf(ZORFeatBrowserKind kind)
{
    switch (kind) {
    case ZORFeatBrowserKind::Root:
    case ZORFeatBrowserKind::Folder:
        return 40.0 / 360;
    case ZORFeatBrowserKind::Shape:
    case ZORFeatBrowserKind::Feature:
        return 330.0 / 360;
    case ZORFeatBrowserKind::Point:
        return 15.0 / 360;
    case ZORFeatBrowserKind::Curve:
        return 210.0 / 360;
    case ZORFeatBrowserKind::Surface:
        return 145.0 / 360;
    case ZORFeatBrowserKind::Body:
        return 270.0 / 360;
    case ZORFeatBrowserKind::Other:
        break;
    }
    return -1;
}

/// Dark on light bases and light on dark ones.
QColor AccentOf(ZORFeatBrowserKind kind, const QPalette& palette)
{
    const bool dark = palette.color(QPalette::Base).lightnessF() < 0.5F;
    const double hue = HueOf(kind);
    const double lightness = dark ? 0.68 : 0.34;
    return hue < 0 ? palette.color(QPalette::Text)
                   : QColor::fromHslF(static_cast<float>(hue), 0.65F, static_cast<float>(lightness));
}

/// The closed outline and the open lines of a drawing.
struct Drawing
{
    QPainterPath filled;
    QPainterPath lines;
};

QPainterPath Polygon(std::initializer_list<QPointF> points)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(points));
    path.closeSubpath();
    return path;
}

void AddLine(QPainterPath& path, const QPointF& from, const QPointF& to)
{
    path.moveTo(from);
    path.lineTo(to);
}

Drawing DrawTree(ZORFeatBrowserKind kind)
{
    Drawing drawing;
    if (kind == ZORFeatBrowserKind::Root) {
        drawing.filled.addRect(1.5, 1.5, 5, 4);
        drawing.filled.addRect(9.5, 5.5, 5, 4);
        drawing.filled.addRect(9.5, 10.9, 5, 3.6);
        AddLine(drawing.lines, {4, 5.5}, {4, 12.7});
        AddLine(drawing.lines, {4, 7.5}, {9.5, 7.5});
        AddLine(drawing.lines, {4, 12.7}, {9.5, 12.7});
    } else if (kind == ZORFeatBrowserKind::Folder) {
        drawing.filled = Polygon({{1.5, 3.5}, {6, 3.5}, {7.5, 5.5}, {14.5, 5.5}, {14.5, 13.5}, {1.5, 13.5}});
        AddLine(drawing.lines, {1.5, 7.5}, {14.5, 7.5});
    } else {
        drawing.filled = Polygon({{8, 1.5}, {13.8, 4.8}, {13.8, 11.2}, {8, 14.5}, {2.2, 11.2}, {2.2, 4.8}});
        if (kind == ZORFeatBrowserKind::Shape) {
            drawing.lines.moveTo(4.5, 10);
            drawing.lines.cubicTo(6.5, 4, 9.5, 12, 11.5, 6);
        } else {
            drawing.lines.addEllipse(QPointF(8, 8), 2, 2);
        }
    }
    return drawing;
}

Drawing DrawGeometry(ZORFeatBrowserKind kind)
{
    Drawing drawing;
    switch (kind) {
    case ZORFeatBrowserKind::Point:
        drawing.filled.addEllipse(QPointF(8, 8), 2.5, 2.5);
        AddLine(drawing.lines, {8, 1.5}, {8, 5.5});
        AddLine(drawing.lines, {8, 10.5}, {8, 14.5});
        AddLine(drawing.lines, {1.5, 8}, {5.5, 8});
        AddLine(drawing.lines, {10.5, 8}, {14.5, 8});
        break;
    case ZORFeatBrowserKind::Curve:
        drawing.lines.moveTo(2.5, 13);
        drawing.lines.cubicTo(5, 1, 11, 15, 13.5, 3);
        drawing.filled.addEllipse(QPointF(2.5, 13), 1.3, 1.3);
        drawing.filled.addEllipse(QPointF(13.5, 3), 1.3, 1.3);
        break;
    case ZORFeatBrowserKind::Surface:
        drawing.filled.moveTo(1.5, 11.5);
        drawing.filled.quadTo(3, 6, 6, 3.5);
        drawing.filled.quadTo(10, 5.5, 14.5, 4);
        drawing.filled.quadTo(11.5, 7, 10, 12.5);
        drawing.filled.quadTo(5.5, 13.5, 1.5, 11.5);
        drawing.lines.moveTo(3.4, 7);
        drawing.lines.quadTo(7.5, 9.3, 11.8, 7.8);
        drawing.lines.moveTo(10.2, 4.5);
        drawing.lines.quadTo(7, 8, 5.8, 12.8);
        break;
    case ZORFeatBrowserKind::Body:
        drawing.filled = Polygon({{8, 1.5}, {14, 4.5}, {14, 11.5}, {8, 14.5}, {2, 11.5}, {2, 4.5}});
        AddLine(drawing.lines, {2, 4.5}, {8, 7.5});
        AddLine(drawing.lines, {14, 4.5}, {8, 7.5});
        AddLine(drawing.lines, {8, 7.5}, {8, 14.5});
        break;
    default:
        drawing.filled = Polygon({{8, 2}, {14, 8}, {8, 14}, {2, 8}});
        break;
    }
    return drawing;
}

/// Draws on the grid at any size and pixel ratio.
class GridIconEngine : public QIconEngine
{
public:
    explicit GridIconEngine(const QPalette& palette)
        : m_palette(palette)
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const double scale = std::min(rect.width(), rect.height()) / kGridSize;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center());
        painter->scale(scale, scale);
        painter->translate(-kGridSize / 2, -kGridSize / 2);
        Draw(*painter, mode);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

protected:
    virtual void Draw(QPainter& painter, QIcon::Mode mode) const = 0;
    QColor GetStroke(QIcon::Mode mode, const QColor& normal) const
    {
        if (mode == QIcon::Selected)
            return m_palette.color(QPalette::HighlightedText);
        return mode == QIcon::Disabled ? m_palette.color(QPalette::Disabled, QPalette::Text) : normal;
    }

    QPalette m_palette;
};

QPen MakePen(const QColor& color)
{
    return {color, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

class IconEngine final : public GridIconEngine
{
public:
    IconEngine(ZORFeatBrowserKind kind, const QPalette& palette)
        : GridIconEngine(palette)
        , m_kind(kind)
    {
    }

    QIconEngine* clone() const override { return new IconEngine(m_kind, m_palette); }

protected:
    void Draw(QPainter& painter, QIcon::Mode mode) const override
    {
        const bool tree = m_kind <= ZORFeatBrowserKind::Feature;
        const Drawing drawing = tree ? DrawTree(m_kind) : DrawGeometry(m_kind);
        const QColor stroke = GetStroke(mode, AccentOf(m_kind, m_palette));
        QColor fill = stroke;
        fill.setAlphaF(0.22F);
        painter.setPen(MakePen(stroke));
        painter.setBrush(fill);
        painter.drawPath(drawing.filled);
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(drawing.lines);
    }

private:
    ZORFeatBrowserKind m_kind;
};

class EyeIconEngine final : public GridIconEngine
{
public:
    EyeIconEngine(ZORFeatBrowserEye eye, const QPalette& palette)
        : GridIconEngine(palette)
        , m_eye(eye)
    {
    }

    QIconEngine* clone() const override { return new EyeIconEngine(m_eye, m_palette); }

protected:
    void Draw(QPainter& painter, QIcon::Mode mode) const override
    {
        QColor stroke = GetStroke(mode, m_palette.color(QPalette::Text));
        if (m_eye != ZORFeatBrowserEye::Open)
            stroke.setAlphaF(0.6F);
        painter.setPen(MakePen(stroke));
        QPainterPath lids;
        lids.moveTo(1.5, 8);
        if (m_eye == ZORFeatBrowserEye::Closed) {
            lids.quadTo(8, 13, 14.5, 8);
            AddLine(lids, {3.6, 10}, {2.4, 12});
            AddLine(lids, {8, 10.6}, {8, 13});
            AddLine(lids, {12.4, 10}, {13.6, 12});
        } else {
            lids.quadTo(8, 0.5, 14.5, 8);
            lids.quadTo(8, 15.5, 1.5, 8);
        }
        painter.drawPath(lids);
        if (m_eye == ZORFeatBrowserEye::Open)
            painter.setBrush(stroke);
        if (m_eye != ZORFeatBrowserEye::Closed)
            painter.drawEllipse(QPointF(8, 8), 2.1, 2.1);
    }

private:
    ZORFeatBrowserEye m_eye;
};

} // namespace

QIcon ZORFeatBrowserIcon(ZORFeatBrowserKind kind, const QPalette& palette)
{
    return QIcon(new IconEngine(kind, palette)); // the icon owns its engine
}

QIcon ZORFeatBrowserEyeIcon(ZORFeatBrowserEye eye, const QPalette& palette)
{
    return eye == ZORFeatBrowserEye::None ? QIcon() : QIcon(new EyeIconEngine(eye, palette));
}
