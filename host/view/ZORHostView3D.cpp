#include "view/ZORHostView3D.h"

#include "base/ZORHostTheme.h"
#include "view/ZORHostViewMarks.h"
#include "view/ZORHostViewTool.h"

#include <ZORVisualization/ZORVisEnvironment.h>
#include <ZORVisualization/ZORVisGraphicsContext.h>
#include <ZORVisualization/ZORVisScene.h>

#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPainter>

#include <new>
#include <utility>

namespace {

constexpr int kRestMilliseconds = 150;

} // namespace

ZORHostView3D::ZORHostView3D(QWidget* parent)
    : QWidget(parent)
    , m_renderer(std::make_unique<ZORVisRenderer>())
{
    setObjectName("_View3D");
    setAccessibleName(tr("3D view"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    m_renderer->SetAxisTriadVisible(true);
    UpdateBackground();
    m_restTimer.setSingleShot(true);
    m_restTimer.setInterval(kRestMilliseconds);
    connect(&m_restTimer, &QTimer::timeout, this, &ZORHostView3D::OnRested);
}

ZORHostView3D::~ZORHostView3D() = default;

void ZORHostView3D::SetEnvironment(ZORVisEnvironment* environment)
{
    m_renderer->SetScene(nullptr);
    m_environment = environment;
    m_scene = environment ? std::make_unique<ZORVisScene>(environment) : nullptr;
    m_renderer->SetScene(m_scene.get());
    m_sceneEmpty = true;
    if (m_scene)
        connect(m_scene.get(), &ZORVisScene::Changed, this, &ZORHostView3D::OnSceneChanged);
    OnSceneChanged();
}

void ZORHostView3D::SetTool(ZORHostViewTool* tool)
{
    if (tool == m_tool)
        return;
    if (m_tool)
        m_tool->Leave();
    m_tool = tool;
    update();
}

void ZORHostView3D::FitAll()
{
    if (m_scene)
        FitBox(m_scene->GetBoundingBox());
    Invalidate();
}

void ZORHostView3D::FitBox(const ZORMathBoundingBox& box)
{
    m_navigation.FitAll(box, size());
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

void ZORHostView3D::SetStandardView(ZORVisCamera::StandardView view)
{
    m_navigation.SetStandardView(view);
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

ZORVisPickResult ZORHostView3D::PickAt(const QPointF& position, const ZORVisRenderer::Accepts& accepts) const
{
    const double ratio = devicePixelRatioF();
    return m_renderer->Pick(GetCamera(), GetDevicePixels(), position * ratio, ratio, accepts);
}

QList<QObject*> ZORHostView3D::FindIn(const QRectF& rectangle, ZORVisRenderer::Extent extent,
                                      const ZORVisRenderer::Accepts& accepts) const
{
    const double ratio = devicePixelRatioF();
    const QRectF pixels(rectangle.topLeft() * ratio, rectangle.bottomRight() * ratio);
    return m_renderer->FindIn(GetCamera(), GetDevicePixels(), pixels, extent, accepts);
}

QPointF ZORHostView3D::ToPosition(const ZORMathPoint& point) const
{
    return GetCamera().WorldToPixel(point, size());
}

// What is under the pointer stays there; else the middle of the part, where it is in the view, or what is in the
// middle of the view.
ZORMathPoint ZORHostView3D::FindPivot(const std::optional<QPointF>& position) const
{
    if (position) {
        if (const ZORVisPickResult hit = PickAt(*position); hit.IsHit())
            return hit.point;
    }
    const ZORMathBoundingBox box = m_scene ? m_scene->GetBoundingBox() : ZORMathBoundingBox();
    if (box.IsEmpty())
        return GetCamera().GetTarget();
    if (QRectF(rect()).contains(ToPosition(box.GetCenter())))
        return box.GetCenter();
    const ZORVisPickResult middle = PickAt(QRectF(rect()).center());
    return middle.IsHit() ? middle.point : GetCamera().GetTarget();
}

QImage ZORHostView3D::RenderPicture(const QSize& devicePixels, double devicePixelRatio)
{
    return m_renderer->Render(GetCamera(), devicePixels, devicePixelRatio);
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
    m_coarse = IsSlow();
    if (m_coarse)
        m_restTimer.start();
    Invalidate();
}

void ZORHostView3D::OnRested()
{
    if (!m_coarse || m_navigation.GetDrag() != ZORHostNavigation::Drag::None)
        return;
    m_coarse = false;
    Invalidate();
}

void ZORHostView3D::OnSceneChanged()
{
    const bool isEmpty = !m_scene || m_scene->GetBoundingBox().IsEmpty();
    // The first thing in an empty view may lie anywhere: show it.
    if (m_sceneEmpty && !isEmpty)
        m_navigation.FitAll(m_scene->GetBoundingBox(), size());
    m_sceneEmpty = isEmpty;
    Invalidate();
    emit SceneChanged();
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
        m_image = m_renderer->Render(GetCamera(), (QSizeF(size()) * ratio).toSize(), ratio);
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
    if (ZORVisGraphicsContext::GetInstance()->IsAvailable()) {
        PaintScene(painter);
        PaintMarks(painter);
    } else {
        ZORHostViewMarks::PaintText(painter, *this,
                                    tr("The 3D view is not available: no graphics context could be made.")
                                        + "\n\n" + ZORVisGraphicsContext::GetInstance()->GetFailureReason()
                                        + "\n\n"
                                        + tr("Pictures can be saved all the same with File > Save Picture."));
    }
    if (hasFocus())
        ZORHostViewMarks::PaintFocus(painter, *this);
}

void ZORHostView3D::PaintScene(QPainter& painter)
{
    const bool isStale = !m_coarse && m_image.size() != GetDevicePixels();
    if (m_dirty || isStale || m_image.isNull())
        Render();
    if (m_image.isNull()) {
        ZORHostViewMarks::PaintText(painter, *this, tr("There is not enough memory to draw the 3D view."));
    } else if (m_coarse) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(rect(), m_image);
    } else {
        painter.drawImage(QPoint(0, 0), m_image); // pixel for pixel
    }
}

void ZORHostView3D::PaintMarks(QPainter& painter)
{
    painter.save();
    if (m_tool)
        m_tool->Paint(painter);
    painter.restore();
    painter.save();
    if (m_navigation.GetDrag() == ZORHostNavigation::Drag::Orbit)
        ZORHostViewMarks::PaintPivot(painter, *this, ToPosition(m_navigation.GetPivot()));
    if (m_navigation.GetDrag() == ZORHostNavigation::Drag::Band) {
        const QPointF from = m_navigation.GetPressed();
        const QPointF to = m_navigation.GetLast();
        ZORHostViewMarks::PaintBand(painter, *this, QRectF(from, to).normalized(), to.x() >= from.x());
    }
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

void ZORHostView3D::leaveEvent(QEvent* event)
{
    if (m_tool)
        m_tool->Leave();
    QWidget::leaveEvent(event);
}

void ZORHostView3D::mousePressEvent(QMouseEvent* event)
{
    const bool wasDown = m_navigation.GetDrag() != ZORHostNavigation::Drag::None;
    if (!m_navigation.Press(*event)) {
        event->ignore();
        return;
    }
    if (!wasDown && event->button() != Qt::RightButton)
        m_navigation.SetPivot(FindPivot(event->position()));
}

void ZORHostView3D::mouseMoveEvent(QMouseEvent* event)
{
    const ZORHostNavigation::Drag before = m_navigation.GetDrag();
    const bool isMoved = m_navigation.Move(*event, size());
    const ZORHostNavigation::Drag now = m_navigation.GetDrag();
    if (now == ZORHostNavigation::Drag::None) {
        if (before != now)
            update(); // the button went up in another window
        if (m_tool)
            m_tool->Hover(event->position());
        return;
    }
    if (now != before && m_tool)
        m_tool->Leave();
    if (m_navigation.IsMovingCamera() && isMoved)
        InvalidateMoving();
    else if (isMoved)
        update();
}

void ZORHostView3D::mouseReleaseEvent(QMouseEvent* event)
{
    const ZORHostNavigation::Drag drag = m_navigation.GetDrag();
    if (!m_navigation.Release(*event))
        return;
    if (m_coarse)
        m_restTimer.start();
    if (drag != ZORHostNavigation::Drag::Pending)
        update(); // the pivot or the band goes
    if (!m_tool)
        return;
    if (drag == ZORHostNavigation::Drag::Band)
        m_tool->SelectBand(m_navigation.GetPressed(), m_navigation.GetLast(), event->modifiers());
    else if (drag == ZORHostNavigation::Drag::Pending && event->button() == Qt::LeftButton)
        m_tool->Click(event->position(), event->modifiers());
    if (m_tool && drag != ZORHostNavigation::Drag::Pending)
        m_tool->Hover(event->position());
}

void ZORHostView3D::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        mousePressEvent(event);
    else if (m_tool)
        m_tool->DoubleClick(event->position());
}

void ZORHostView3D::wheelEvent(QWheelEvent* event)
{
    const double steps = event->angleDelta().y() / 120.0;
    if (steps == 0)
        return;
    m_navigation.Zoom(steps, event->position(), size());
    InvalidateMoving();
    event->accept();
}

void ZORHostView3D::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_navigation.GetDrag() == ZORHostNavigation::Drag::Band) {
        m_navigation.Stop();
        update();
        return;
    }
    if (m_tool && m_tool->PressKey(*event))
        return;
    if (ZORHostNavigation::IsTurningKey(*event))
        m_navigation.SetPivot(FindPivot({}));
    if (m_navigation.PressKey(*event, size()))
        InvalidateMoving();
    else
        QWidget::keyPressEvent(event);
}
