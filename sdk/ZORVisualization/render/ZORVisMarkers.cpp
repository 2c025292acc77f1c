#include "ZORVisMarkers_p.h"

#include <QPainter>
#include <QPolygonF>

#include <cmath>

namespace {

constexpr int kLargestCache = 1024;
constexpr double kLargestRadius = 6.5; // of any symbol, with its pen

void DrawCircle(QPainter& painter, double radius)
{
    painter.drawEllipse(QPointF(0, 0), radius, radius);
}

void DrawSquare(QPainter& painter, double radius)
{
    painter.drawRect(QRectF(-radius, -radius, 2 * radius, 2 * radius));
}

void DrawPlus(QPainter& painter, double radius)
{
    painter.drawLine(QPointF(-radius, 0), QPointF(radius, 0));
    painter.drawLine(QPointF(0, -radius), QPointF(0, radius));
}

void DrawStar(QPainter& painter)
{
    QPolygonF star;
    for (int i = 0; i < 10; ++i) {
        const double angle = i * 0.62831853071795865; // 36 degrees
        const double radius = i % 2 == 0 ? kLargestRadius : 2.7;
        star << QPointF(radius * std::sin(angle), -radius * std::cos(angle));
    }
    painter.drawPolygon(star);
}

// Around the origin, in device independent pixels.
void DrawSymbol(QPainter& painter, ZORVisOptions::PointSymbol symbol, const QColor& color)
{
    const auto usePen = [&](double width) {
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        painter.setBrush(Qt::NoBrush);
    };
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    switch (symbol) {
    case ZORVisOptions::Plus:
        usePen(1);
        DrawPlus(painter, 5.5);
        break;
    case ZORVisOptions::Concentric:
        usePen(1.2);
        DrawCircle(painter, 5.5);
        DrawCircle(painter, 2.5);
        break;
    case ZORVisOptions::Coincident:
        usePen(1.2);
        DrawCircle(painter, 4.5);
        usePen(1);
        DrawPlus(painter, kLargestRadius);
        break;
    case ZORVisOptions::FullCircle:
        DrawCircle(painter, 3.5);
        break;
    case ZORVisOptions::FullSquare:
        DrawSquare(painter, 3.5);
        break;
    case ZORVisOptions::Star:
        DrawStar(painter);
        break;
    case ZORVisOptions::NestingDot:
        DrawCircle(painter, 2.2);
        usePen(1);
        DrawCircle(painter, 4.2);
        break;
    case ZORVisOptions::SmallDot:
        DrawCircle(painter, 1.5);
        break;
    case ZORVisOptions::FullCircle2:
        DrawCircle(painter, 5.5);
        break;
    case ZORVisOptions::FullSquare2:
        DrawSquare(painter, 5.5);
        break;
    default: // a cross
        usePen(1.4);
        painter.drawLine(QPointF(-4.5, -4.5), QPointF(4.5, 4.5));
        painter.drawLine(QPointF(-4.5, 4.5), QPointF(4.5, -4.5));
    }
}

} // namespace

QImage ZORVisMarkers::GetImage(ZORVisOptions::PointSymbol symbol, const QColor& color, double ratio)
{
    const QString key = QStringLiteral("%1 %2 %3")
                            .arg(QString::number(int(symbol)), QString::number(color.rgba(), 16),
                                 QString::number(ratio, 'g', 17));
    if (const auto found = m_images.constFind(key); found != m_images.cend())
        return *found;
    if (m_images.size() >= kLargestCache)
        m_images.clear();

    const int half = int(std::ceil(kLargestRadius * ratio));
    QImage image(2 * half + 1, 2 * half + 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(half + 0.5, half + 0.5);
        painter.scale(ratio, ratio);
        DrawSymbol(painter, symbol, color);
    }
    m_images.insert(key, image);
    return image;
}
