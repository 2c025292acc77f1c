// The 3D view of the main window.

#pragma once

#include "view/ZORHostNavigation.h"

#include <ZORVisualization/ZORVisRenderer.h>

#include <QImage>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>

class ZORHostViewTool;
class ZORVisEnvironment;
class ZORVisScene;

/// Shows an environment and lets the user move about in it.
///
/// Mouse: left or middle drag turns about the point under the pointer, or about the center of what is visible; Shift
/// drag or right drag moves, the wheel zooms at the pointer. Keys: arrows turn, Shift arrows move, plus and minus zoom.
/// Everything else - hovering, clicks, bands drawn with Ctrl, other keys - goes to the tool of the view.
///
/// A frame is rendered only when the scene, the camera, the size or the colors have changed. Where a full frame takes
/// longer than kSlowFrameMilliseconds, frames are rendered with half the resolution while the user moves the view.
///
/// Without graphics context a gray panel says why; RenderPicture() works all the same.
class ZORHostView3D : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kSlowFrameMilliseconds = 60;

    explicit ZORHostView3D(QWidget* parent = nullptr);
    ~ZORHostView3D() override;

    /// \param environment  not owned; null shows nothing. May die first.
    void SetEnvironment(ZORVisEnvironment* environment);
    /// The scene of the environment; null without one. Another one after SetEnvironment().
    ZORVisScene* GetScene() const { return m_scene.get(); }

    /// \param tool  not owned, must outlive the events of the view; null for none
    void SetTool(ZORHostViewTool* tool);
    ZORHostViewTool* GetTool() const { return m_tool; }

    const ZORVisCamera& GetCamera() const { return m_navigation.GetCamera(); }
    void FitAll();
    /// Fits all now, and again when OnDocumentShown() says that what has been opened is drawn.
    void FitAllOnceShown();
    void OnDocumentShown();
    /// Shows all of \a box from the present direction; an empty box changes nothing.
    void FitBox(const ZORMathBoundingBox& box);
    /// Turns to the view and fits all.
    void SetStandardView(ZORVisCamera::StandardView view);
    ZORVisRenderer::DisplayMode GetDisplayMode() const { return m_renderer->GetDisplayMode(); }
    void SetDisplayMode(ZORVisRenderer::DisplayMode mode);

    /// Finds what is seen at a position of the widget, see ZORVisRenderer::Pick().
    ZORVisPickResult PickAt(const QPointF& position, const ZORVisRenderer::Accepts& accepts = {}) const;
    /// Finds what lies in a rectangle of the widget, see ZORVisRenderer::FindIn().
    QList<QObject*> FindIn(const QRectF& rectangle, ZORVisRenderer::Extent extent,
                           const ZORVisRenderer::Accepts& accepts) const;
    /// Returns the position of a point in the widget.
    QPointF ToPosition(const ZORMathPoint& point) const;

    /// The present view in another size.
    /// \param devicePixels  size of the picture
    QImage RenderPicture(const QSize& devicePixels, double devicePixelRatio);
    /// Size of the view on the screen.
    QSize GetDevicePixels() const;

    /// Frames rendered for the screen so far.
    int GetNumFrames() const { return m_numFrames; }
    /// Whether a full frame takes so long that it should not be asked for in passing.
    bool IsSlow() const { return m_frameMilliseconds > kSlowFrameMilliseconds; }

    QSize sizeHint() const override { return {800, 600}; }
    QSize minimumSizeHint() const override { return {160, 90}; }

signals:
    /// GetScene() shows something else, or is another one.
    void SceneChanged();
    void DisplayModeChanged(ZORVisRenderer::DisplayMode mode);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Invalidate();
    /// The next frames may be coarse; a full one follows once the view rests.
    void InvalidateMoving();
    void OnSceneChanged();
    void OnRested();
    void Render();
    void UpdateBackground();
    ZORMathPoint FindPivot(const std::optional<QPointF>& position) const;
    void PaintScene(QPainter& painter);
    void PaintMarks(QPainter& painter);

    QPointer<ZORVisEnvironment> m_environment; // not owned
    std::unique_ptr<ZORVisScene> m_scene;
    std::unique_ptr<ZORVisRenderer> m_renderer;
    ZORHostNavigation m_navigation;
    ZORHostViewTool* m_tool = nullptr; // not owned
    bool m_sceneEmpty = true;
    bool m_fitsOnceShown = false;

    QImage m_image;
    bool m_dirty = true;
    bool m_coarse = false;
    qint64 m_frameMilliseconds = 0; // of the last full frame
    int m_numFrames = 0;
    QTimer m_restTimer;
};
