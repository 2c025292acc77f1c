// The 3D view of the main window.

#pragma once

#include <ZORVisualization/ZORVisCamera.h>
#include <ZORVisualization/ZORVisRenderer.h>

#include <QElapsedTimer>
#include <QImage>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>

class ZORVisEnvironment;
class ZORVisScene;
class ZORVisVirtualObject;

/// Shows an environment and lets the user move about in it.
///
/// Mouse: left or middle drag turns, shift drag or right drag moves, the wheel zooms at the cursor, a click
/// picks. Keys: arrows turn, shift arrows move, plus and minus zoom, Escape drops the pick. A frame is
/// rendered only when the scene, the camera, the size or the colours have changed. Where a full frame takes
/// longer than SlowFrameMilliseconds, frames are rendered with half the resolution while the user moves the
/// view.
///
/// Without graphics context a grey panel says why; RenderPicture() works all the same.
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

    const ZORVisCamera& GetCamera() const { return m_camera; }
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

    /// The present view in another size.
    /// \param devicePixels  size of the picture
    QImage RenderPicture(const QSize& devicePixels, double devicePixelRatio);
    /// Size of the view on the screen.
    QSize GetDevicePixels() const;

    /// Frames rendered for the screen so far.
    int GetNumFrames() const { return m_numFrames; }

    QSize sizeHint() const override { return {800, 600}; }
    QSize minimumSizeHint() const override { return {160, 90}; }

signals:
    /// The user has clicked at an object.
    /// \param owner  what the visual object stands for; may be null
    void Picked(QObject* owner, const QString& name, const ZORMathPoint& point);
    /// The user has clicked beside all objects or dropped the pick, or the picked object was removed.
    void PickCleared();
    void DisplayModeChanged(ZORVisRenderer::DisplayMode mode);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Drag { None, Click, Orbit, Pan };

    void Invalidate();
    /// The next frames may be coarse; a full one follows once the view rests.
    void InvalidateMoving();
    void OnSceneChanged();
    void Render();
    void UpdateBackground();
    void PickAt(const QPointF& position);
    void ClearPick();
    void PaintReason(QPainter& painter);
    void PaintText(QPainter& painter, const QString& text);
    /// Draws a mark and the name at the picked point; leaves the state of \a painter as it was.
    void PaintPick(QPainter& painter);
    void PaintFocus(QPainter& painter);

    QPointer<ZORVisEnvironment> m_environment; // not owned
    std::unique_ptr<ZORVisScene> m_scene;
    std::unique_ptr<ZORVisRenderer> m_renderer;
    ZORVisCamera m_camera;
    bool m_sceneEmpty = true;
    bool m_fitsOnceShown = false;

    QImage m_image;
    bool m_dirty = true;
    bool m_coarse = false;
    qint64 m_frameMilliseconds = 0; // of the last full frame
    int m_numFrames = 0;
    QTimer m_restTimer;

    Drag m_drag = Drag::None;
    QPointF m_pressed;
    QPointF m_last;

    std::optional<ZORMathPoint> m_pickedPoint;
    const ZORVisVirtualObject* m_pickedObject = nullptr; // for comparison only
    QString m_pickedName;
};
