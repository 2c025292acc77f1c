#include "view/ZORHostView3D.h"

#include "base/ZORHostTheme.h"
#include "view/ZORHostDisplayName.h"

#include <ZORVisualization/ZORVisEnvironment.h>
#include <ZORVisualization/ZORVisGraphicsContext.h>
#include <ZORVisualization/ZORVisScene.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

#include <cmath>
#include <new>
#include <utility>

namespace {

constexpr int kRestMilliseconds = 150;
constexpr double kKeyStep = 20; // pixels
constexpr double kWheelStep = 1.2;

} // namespace

ZORHostView3D::ZORHostView3D(QWidget* parent)
    : QWidget(parent)
    , m_renderer(std::make_unique<ZORVisRenderer>())
{
    setObjectName("_View3D");
    setAccessibleName(tr("3D view"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    m_renderer->SetAxisTriadVisible(true);
    UpdateBackground();
    m_restTimer.setSingleShot(true);
    m_restTimer.setInterval(kRestMilliseconds);
    connect(&m_restTimer, &QTimer::timeout, this, [this] {
        if (m_coarse && m_drag == Drag::None) {
            m_coarse = false;
            Invalidate();
        }
    });
}

ZORHostView3D::~ZORHostView3D() = default;

void ZORHostView3D::SetEnvironment(ZORVisEnvironment* environment)
{
    m_renderer->SetScene(nullptr);
    if (m_environment)
        disconnect(m_environment, nullptr, this, nullptr);
    m_environment = environment;
    m_scene = environment ? std::make_unique<ZORVisScene>(environment) : nullptr;
    m_renderer->SetScene(m_scene.get());
    m_sceneEmpty = true;
    ClearPick();
    if (m_scene) {
        connect(m_scene.get(), &ZORVisScene::Changed, this, &ZORHostView3D::OnSceneChanged);
        connect(environment, &ZORVisEnvironment::ObjectRemoved, this,
                [this](const ZORVisVirtualObject* object) {
                    if (object == m_pickedObject)
                        ClearPick();
                });
    }
    OnSceneChanged();
}

void ZORHostView3D::FitAll()
{
    if (m_scene)
        m_camera.FitAll(m_scene->GetBoundingBox(), size());
    Invalidate();
}

void ZORHostView3D::FitAllOnceShown()
{
    m_fitsOnceShown = true;
    FitAll();
}

void ZORHostView3D::OnDocumentShown()
{
    if (std::exchange(m_fitsOnceShown, false))
        FitAll();
}

void ZORHostView3D::FitBox(const ZORMathBoundingBox& box)
{
    m_camera.FitAll(box, size());
    Invalidate();
}

void ZORHostView3D::SetStandardView(ZORVisCamera::StandardView view)
{
    m_camera.SetStandardView(view);
    FitAll();
}

void ZORHostView3D::SetDisplayMode(ZORVisRenderer::DisplayMode mode)
{
    if (mode == m_renderer->GetDisplayMode())
        return;
    m_renderer->SetDisplayMode(mode);
    Invalidate();
    emit DisplayModeChanged(mode);
}

QImage ZORHostView3D::RenderPicture(const QSize& devicePixels, double devicePixelRatio)
{
    return m_renderer->Render(m_camera, devicePixels, devicePixelRatio);
}

QSize ZORHostView3D::GetDevicePixels() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

void ZORHostView3D::Invalidate()
{
    m_dirty = true;
    update();
}

void ZORHostView3D::InvalidateMoving()
{
    m_coarse = m_frameMilliseconds > kSlowFrameMilliseconds;
    if (m_coarse)
        m_restTimer.start();
    Invalidate();
}

void ZORHostView3D::OnSceneChanged()
{
    const bool empty = !m_scene || m_scene->GetBoundingBox().IsEmpty();
    // The first thing in an empty view may lie anywhere: show it.
    if (m_sceneEmpty && !empty)
        m_camera.FitAll(m_scene->GetBoundingBox(), size());
    if (empty)
        ClearPick();
    m_sceneEmpty = empty;
    Invalidate();
}

void ZORHostView3D::UpdateBackground()
{
    const QColor window = palette().color(QPalette::Window);
    if (ZORHostTheme::IsDark(palette()))
        m_renderer->SetBackground(window.lighter(110), window.darker(190));
    else
        m_renderer->SetBackground(window.lighter(105), window.darker(115));
}

void ZORHostView3D::Render()
{
    const double ratio = m_coarse ? devicePixelRatioF() / 2 : devicePixelRatioF();
    QElapsedTimer timer;
    timer.start();
    try {
        m_image = m_renderer->Render(m_camera, (QSizeF(size()) * ratio).toSize(), ratio);
    } catch (const std::bad_alloc&) {
        m_image = {}; // tried again at the next paint event
    }
    if (!m_coarse)
        m_frameMilliseconds = timer.elapsed();
    m_dirty = false;
    ++m_numFrames;
}

void ZORHostView3D::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!ZORVisGraphicsContext::GetInstance()->IsAvailable()) {
        PaintReason(painter);
    } else {
        const bool stale = !m_coarse && m_image.size() != GetDevicePixels();
        if (m_dirty || stale || m_image.isNull())
            Render();
        if (m_image.isNull()) {
            PaintText(painter, tr("There is not enough memory to draw the 3D view."));
        } else if (m_coarse) {
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawImage(rect(), m_image);
        } else {
            painter.drawImage(QPoint(0, 0), m_image); // pixel for pixel
        }
        PaintPick(painter);
    }
    if (hasFocus())
        PaintFocus(painter);
}

void ZORHostView3D::PaintFocus(QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(palette().color(QPalette::Highlight));
    painter.setBrush(Qt::NoBrush); // the frame surrounds the scene, which must stay visible
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void ZORHostView3D::PaintReason(QPainter& painter)
{
    PaintText(painter, tr("The 3D view is not available: no graphics context could be made.") + "\n\n"
                           + ZORVisGraphicsContext::GetInstance()->GetFailureReason() + "\n\n"
                           + tr("Pictures can be saved all the same with File > Save Picture."));
}

void ZORHostView3D::PaintText(QPainter& painter, const QString& text)
{
    const bool dark = ZORHostTheme::IsDark(palette());
    painter.fillRect(rect(), dark ? QColor(0x48, 0x4b, 0x50) : QColor(0xc8, 0xca, 0xcd));
    painter.setPen(dark ? Qt::white : Qt::black);
    painter.drawText(rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap, text);
}

void ZORHostView3D::PaintPick(QPainter& painter)
{
    if (!m_pickedPoint)
        return;
    const QPointF point = m_camera.WorldToPixel(*m_pickedPoint, size());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(palette().color(QPalette::HighlightedText));
    painter.drawEllipse(point, 4, 4);

    QRectF frame = fontMetrics().boundingRect(m_pickedName);
    frame.adjust(-6, -3, 6, 3);
    frame.moveTopLeft(point + QPointF(10, -frame.height() - 6));
    frame.moveRight(std::min(frame.right(), width() - 4.0));
    frame.moveTop(std::max(frame.top(), 4.0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Highlight));
    painter.drawRoundedRect(frame, 3, 3);
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawText(frame, Qt::AlignCenter, m_pickedName);
    painter.restore();
}

void ZORHostView3D::resizeEvent(QResizeEvent*)
{
    InvalidateMoving();
}

void ZORHostView3D::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange) {
        UpdateBackground();
        Invalidate();
    }
    QWidget::changeEvent(event);
}

void ZORHostView3D::mousePressEvent(QMouseEvent* event)
{
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->button()) {
    case Qt::LeftButton:
        m_drag = shift ? Drag::Pan : Drag::Click;
        break;
    case Qt::MiddleButton:
        m_drag = shift ? Drag::Pan : Drag::Orbit;
        break;
    case Qt::RightButton:
        m_drag = Drag::Pan;
        break;
    default:
        event->ignore();
        return;
    }
    m_pressed = m_last = event->position();
}

void ZORHostView3D::mouseMoveEvent(QMouseEvent* event)
{
    if (m_drag == Drag::None)
        return;
    const QPointF position = event->position();
    if (m_drag == Drag::Click) {
        if ((position - m_pressed).manhattanLength() < QApplication::startDragDistance())
            return;
        m_drag = Drag::Orbit;
    }
    const QPointF moved = position - m_last;
    m_last = position;
    if (moved.isNull())
        return;
    if (m_drag == Drag::Orbit)
        m_camera.Orbit(moved.x(), moved.y());
    else
        m_camera.Pan(moved.x(), moved.y(), size());
    InvalidateMoving();
}

void ZORHostView3D::mouseReleaseEvent(QMouseEvent* event)
{
    const Drag drag = m_drag;
    m_drag = Drag::None;
    if (drag == Drag::Click)
        PickAt(event->position());
    else if (m_coarse)
        m_restTimer.start();
}

void ZORHostView3D::wheelEvent(QWheelEvent* event)
{
    const double steps = event->angleDelta().y() / 120.0;
    if (steps == 0)
        return;
    m_camera.Zoom(std::pow(kWheelStep, steps), event->position(), size());
    InvalidateMoving();
    event->accept();
}

void ZORHostView3D::keyPressEvent(QKeyEvent* event)
{
    const QPointF middle(width() / 2.0, height() / 2.0);
    QPointF step;
    switch (event->key()) {
    case Qt::Key_Left:
        step.setX(-kKeyStep);
        break;
    case Qt::Key_Right:
        step.setX(kKeyStep);
        break;
    case Qt::Key_Up:
        step.setY(-kKeyStep);
        break;
    case Qt::Key_Down:
        step.setY(kKeyStep);
        break;
    case Qt::Key_Plus:
        m_camera.Zoom(kWheelStep, middle, size());
        break;
    case Qt::Key_Minus:
        m_camera.Zoom(1 / kWheelStep, middle, size());
        break;
    case Qt::Key_Escape:
        ClearPick();
        return;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    if (event->modifiers().testFlag(Qt::ShiftModifier))
        m_camera.Pan(step.x(), step.y(), size());
    else
        m_camera.Orbit(step.x(), step.y());
    InvalidateMoving();
}

void ZORHostView3D::PickAt(const QPointF& position)
{
    const double ratio = devicePixelRatioF();
    const ZORVisPickResult result = m_renderer->Pick(m_camera, GetDevicePixels(), position * ratio, ratio);
    if (!result.IsHit()) {
        ClearPick();
        return;
    }
    m_pickedPoint = result.point;
    m_pickedObject = result.object;
    m_pickedName = ZORHostDisplayName(result.owner);
    update();
    emit Picked(result.owner, m_pickedName, result.point);
}

void ZORHostView3D::ClearPick()
{
    if (!m_pickedPoint)
        return;
    m_pickedPoint.reset();
    m_pickedObject = nullptr;
    m_pickedName.clear();
    update();
    emit PickCleared();
}
