// What is drawn over the picture of the scene.

#pragma once

#include <QPointF>
#include <QString>

class QPainter;
class QPolygonF;
class QRectF;
class QWidget;

/// Drawing over the 3D view, in the colors of the view's palette. Positions are pixels of the widget.
namespace ZORHostViewMarks {

/// A frame around the view that has the focus.
void PaintFocus(QPainter& painter, const QWidget& view);
/// A panel with a text in place of the picture.
void PaintText(QPainter& painter, const QWidget& view, const QString& text);
/// A dot with a name beside it, which is kept inside of the view.
void PaintNamedPoint(QPainter& painter, const QWidget& view, const QPointF& point, const QString& name);
/// A ring with a dot, visible on every ground.
void PaintTarget(QPainter& painter, const QWidget& view, const QPointF& point);
/// A small cross about which the view turns.
void PaintPivot(QPainter& painter, const QWidget& view, const QPointF& point);
/// A path with dots at its points; a single point is a dot alone.
void PaintPath(QPainter& painter, const QWidget& view, const QPolygonF& path);
/// The band of a selection: whole objects have a solid border, touched ones a dashed one.
void PaintBand(QPainter& painter, const QWidget& view, const QRectF& band, bool isWhole);

} // namespace ZORHostViewMarks
