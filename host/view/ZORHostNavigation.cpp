#include "view/ZORHostNavigation.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <cmath>

namespace {

constexpr double kKeyStep = 20; // pixels
constexpr double kWheelStep = 1.2;

// Right and down are positive.
QPointF ArrowStep(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-kKeyStep, 0};
    case Qt::Key_Right:
        return {kKeyStep, 0};
    case Qt::Key_Up:
        return {0, -kKeyStep};
    case Qt::Key_Down:
        return {0, kKeyStep};
    default:
        return {};
    }
}

} // namespace

bool ZORHostNavigation::Press(const QMouseEvent& event)
{
    const bool isKnown = event.button() == Qt::LeftButton || event.button() == Qt::MiddleButton
                         || event.button() == Qt::RightButton;
    if (!isKnown)
        return false;
    // The release of the former button may have gone to another window.
    if (m_drag != Drag::None && event.buttons().testFlag(m_button) && m_button != event.button())
        return true;
    m_drag = Drag::Pending;
    m_button = event.button();
    m_isShift = event.modifiers().testFlag(Qt::ShiftModifier);
    m_isControl = event.modifiers().testFlag(Qt::ControlModifier);
    m_pressed = m_last = event.position();
    return true;
}

bool ZORHostNavigation::Move(const QMouseEvent& event, const QSizeF& viewSize)
{
    if (m_drag == Drag::None)
        return false;
    if (!event.buttons().testFlag(m_button)) {
        Stop();
        return false;
    }
    const QPointF position = event.position();
    if (m_drag == Drag::Pending) {
        if ((position - m_pressed).manhattanLength() < QApplication::startDragDistance())
            return false;
        if (m_button == Qt::LeftButton && m_isControl)
            m_drag = Drag::Band;
        else
            m_drag = m_button == Qt::RightButton || m_isShift ? Drag::Pan : Drag::Orbit;
    }
    const QPointF moved = position - m_last;
    m_last = position;
    if (m_drag == Drag::Orbit)
        Orbit(moved.x(), moved.y());
    else if (m_drag == Drag::Pan)
        m_camera.Pan(moved.x(), moved.y(), viewSize);
    return !moved.isNull();
}

bool ZORHostNavigation::Release(const QMouseEvent& event)
{
    if (m_drag == Drag::None || event.button() != m_button)
        return false;
    m_last = event.position();
    Stop();
    return true;
}

void ZORHostNavigation::Orbit(double dx, double dy)
{
    const ZORMathVector offset = m_pivot - m_camera.GetTarget();
    const double right = Dot(offset, m_camera.GetRightDirection());
    const double up = Dot(offset, m_camera.GetUpDirection());
    const double depth = Dot(offset, m_camera.GetViewDirection());
    m_camera.Orbit(dx, dy);
    const ZORMathVector turned = right * m_camera.GetRightDirection() + up * m_camera.GetUpDirection()
                                 + depth * m_camera.GetViewDirection();
    m_camera.SetView(m_pivot - turned, m_camera.GetViewDirection(), m_camera.GetUpDirection(),
                     m_camera.GetHeight());
}

void ZORHostNavigation::Zoom(double steps, const QPointF& pixel, const QSizeF& viewSize)
{
    m_camera.Zoom(std::pow(kWheelStep, steps), pixel, viewSize);
}

bool ZORHostNavigation::IsTurningKey(const QKeyEvent& event)
{
    return !event.modifiers().testFlag(Qt::ShiftModifier) && !ArrowStep(event.key()).isNull();
}

bool ZORHostNavigation::PressKey(const QKeyEvent& event, const QSizeF& viewSize)
{
    const QPointF middle(viewSize.width() / 2, viewSize.height() / 2);
    if (event.key() == Qt::Key_Plus || event.key() == Qt::Key_Minus) {
        Zoom(event.key() == Qt::Key_Plus ? 1 : -1, middle, viewSize);
        return true;
    }
    const QPointF step = ArrowStep(event.key());
    if (step.isNull())
        return false;
    if (event.modifiers().testFlag(Qt::ShiftModifier))
        m_camera.Pan(step.x(), step.y(), viewSize);
    else
        Orbit(step.x(), step.y());
    return true;
}
