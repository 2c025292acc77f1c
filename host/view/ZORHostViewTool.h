// What the user does in the 3D view beyond moving about.

#pragma once

#include <QPointF>
#include <QRectF>

class QKeyEvent;
class QPainter;

/// Gets what the mouse and the keys do in a view unless they move the camera. Positions are pixels of the widget.
class ZORHostViewTool
{
public:
    virtual ~ZORHostViewTool() = default;

    /// The pointer has come to a position without a button.
    virtual void Hover(const QPointF& position) = 0;
    /// The pointer has left the view, or a drag begins.
    virtual void Leave() = 0;
    /// The left button went down and up again without a drag.
    virtual void Click(const QPointF& position, Qt::KeyboardModifiers modifiers) = 0;
    /// The left button went down twice; the first click has been reported.
    virtual void DoubleClick(const QPointF& position) = 0;
    /// A band was drawn from one corner to the other.
    virtual void SelectBand(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers) = 0;
    /// \return whether the key was used
    virtual bool PressKey(const QKeyEvent& event) = 0;
    /// Draws over the scene. The state of the painter is restored by the caller.
    virtual void Paint(QPainter& painter) = 0;
};
