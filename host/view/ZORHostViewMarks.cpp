#include "view/ZORHostViewMarks.h"

#include "base/ZORHostTheme.h"

#include <QPainter>
#include <QPolygonF>
#include <QWidget>

#include <algorithm>

namespace {

QColor MarkColor(const QWidget& view)
{
    return view.palette().color(QPalette::Highlight);
}

QColor RimColor(const QWidget& view)
{
    return view.palette().color(QPalette::HighlightedText);
}

// Once broad in the color of the rim, once in that of the mark: seen on every ground.
template<class Function>
void Stroke(QPainter& painter, const QWidget& view, Function draw)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(RimColor(view), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw();
    painter.setPen(QPen(MarkColor(view), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw();
}

void PaintDot(QPainter& painter, const QWidget& view, const QPointF& point)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(MarkColor(view), 2));
    painter.setBrush(RimColor(view));
    painter.drawEllipse(point, 4, 4);
}

} // namespace

void ZORHostViewMarks::PaintFocus(QPainter& painter, const QWidget& view)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(MarkColor(view));
    painter.setBrush(Qt::NoBrush); // the frame surrounds the scene, which must stay visible
    painter.drawRect(view.rect().adjusted(0, 0, -1, -1));
}

void ZORHostViewMarks::PaintText(QPainter& painter, const QWidget& view, const QString& text)
{
    const bool isDark = ZORHostTheme::IsDark(view.palette());
    painter.fillRect(view.rect(), isDark ? QColor(0x48, 0x4b, 0x50) : QColor(0xc8, 0xca, 0xcd));
    painter.setPen(isDark ? Qt::white : Qt::black);
    painter.drawText(view.rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap, text);
}

void ZORHostViewMarks::PaintNamedPoint(QPainter& painter, const QWidget& view, const QPointF& point,
                                       const QString& name)
{
    constexpr double kMargin = 4;
    PaintDot(painter, view, point);
    const QString shown =
        view.fontMetrics().elidedText(name, Qt::ElideMiddle, std::max(40, view.width() - 24));
    QRectF frame = view.fontMetrics().boundingRect(shown);
    frame.adjust(-6, -3, 6, 3);
    frame.moveTopLeft(point + QPointF(10, -frame.height() - 6));
    frame.moveRight(std::min(frame.right(), view.width() - kMargin));
    frame.moveLeft(std::max(frame.left(), kMargin));
    frame.moveTop(std::max(frame.top(), kMargin));
    painter.setPen(Qt::NoPen);
    painter.setBrush(MarkColor(view));
    painter.drawRoundedRect(frame, 3, 3);
    painter.setPen(RimColor(view));
    painter.drawText(frame, Qt::AlignCenter, shown);
}

void ZORHostViewMarks::PaintTarget(QPainter& painter, const QWidget& view, const QPointF& point)
{
    Stroke(painter, view, [&] {
        painter.drawEllipse(point, 8, 8);
        painter.drawPoint(point);
    });
}

void ZORHostViewMarks::PaintPivot(QPainter& painter, const QWidget& view, const QPointF& point)
{
    Stroke(painter, view, [&] {
        painter.drawLine(point - QPointF(6, 0), point + QPointF(6, 0));
        painter.drawLine(point - QPointF(0, 6), point + QPointF(0, 6));
    });
}

void ZORHostViewMarks::PaintPath(QPainter& painter, const QWidget& view, const QPolygonF& path)
{
    if (path.isEmpty())
        return;
    if (path.size() > 1)
        Stroke(painter, view, [&] { painter.drawPolyline(path); });
    PaintDot(painter, view, path.constFirst());
    PaintDot(painter, view, path.constLast());
}

void ZORHostViewMarks::PaintBand(QPainter& painter, const QWidget& view, const QRectF& band, bool isWhole)
{
    constexpr int kFill = 48; // of 255: the scene stays visible
    QColor fill = MarkColor(view);
    fill.setAlpha(kFill);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(MarkColor(view), 1, isWhole ? Qt::SolidLine : Qt::DashLine));
    painter.setBrush(fill);
    painter.drawRect(band);
}
