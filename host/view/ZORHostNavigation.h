// Moving about in the 3D view.

#pragma once

#include <ZORVisualization/ZORVisCamera.h>

#include <QPointF>
#include <QSizeF>

class QKeyEvent;
class QMouseEvent;

/// The camera of a view, and what mouse and keys do with it.
///
/// A press of a button becomes a drag once the mouse has moved far enough: left or middle turns, right, Shift left or
/// Shift middle moves, Ctrl left draws a band. A left press without a drag is a click. Other buttons are ignored until
/// the first one is up again.
class ZORHostNavigation
{
public:
    enum class Drag {
        None,
        Pending, ///< a button is down, and the mouse has hardly moved
        Orbit,
        Pan,
        Band
    };

    const ZORVisCamera& GetCamera() const { return m_camera; }
    void SetStandardView(ZORVisCamera::StandardView view) { m_camera.SetStandardView(view); }
    void FitAll(const ZORMathBoundingBox& box, const QSizeF& viewSize) { m_camera.FitAll(box, viewSize); }

    Drag GetDrag() const { return m_drag; }
    bool IsMovingCamera() const { return m_drag == Drag::Orbit || m_drag == Drag::Pan; }
    /// Where the button went down.
    QPointF GetPressed() const { return m_pressed; }
    /// Where the mouse was last while the button was down.
    QPointF GetLast() const { return m_last; }

    /// \return false for buttons that do nothing
    bool Press(const QMouseEvent& event);
    /// Decides what the drag is, and moves the camera.
    /// \return whether GetDrag() names a drag, and the mouse has moved
    bool Move(const QMouseEvent& event, const QSizeF& viewSize);
    /// Ends the drag when its button went up.
    /// \return whether it did
    bool Release(const QMouseEvent& event);
    /// Ends the drag at once.
    void Stop() { m_drag = Drag::None; }

    /// The point about which the next drag and the arrow keys turn; it stays at its pixel.
    void SetPivot(const ZORMathPoint& pivot) { m_pivot = pivot; }
    ZORMathPoint GetPivot() const { return m_pivot; }

    void Zoom(double steps, const QPointF& pixel, const QSizeF& viewSize);
    /// Arrows turn, with Shift they move; plus and minus zoom.
    /// \return whether the key is one of these
    bool PressKey(const QKeyEvent& event, const QSizeF& viewSize);
    /// Whether a key turns the view, about the pivot.
    static bool IsTurningKey(const QKeyEvent& event);

private:
    void Orbit(double dx, double dy);

    ZORVisCamera m_camera;
    Drag m_drag = Drag::None;
    Qt::MouseButton m_button = Qt::NoButton;
    bool m_isShift = false;
    bool m_isControl = false;
    QPointF m_pressed;
    QPointF m_last;
    ZORMathPoint m_pivot;
};
