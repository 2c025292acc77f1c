// Draws a scene into images.

#pragma once

#include <ZORVisualization/ZORVisCamera.h>
#include <ZORVisualization/ZORVisPickResult.h>
#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QColor>
#include <QImage>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSize>

#include <functional>
#include <memory>

class ZORVisScene;

/// Renders pictures of a scene and tells what lies under a pixel. Needs no window and no display server.
///
/// Drawn with the graphics context where there is one (see ZORVisGraphicsContext) and in its thread, usually
/// that of the user interface; else by software of its own, with the same contents and less speed. Edges are
/// smoothed by several samples per pixel; where OpenGL is computed by the processor, scenes of more than
/// 200000 triangles and segments go without. The same picture twice is the same bytes.
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORVISUALIZATION_EXPORT ZORVisRenderer
{
public:
    enum DisplayMode {
        Shaded,
        Wireframe ///< surfaces show the edges of their triangles only
    };

    /// No scene, shaded, white background, no triad.
    ZORVisRenderer();
    ~ZORVisRenderer();
    Q_DISABLE_COPY_MOVE(ZORVisRenderer)

    /// \param scene  not owned; may be null and may die first, the renderer then draws the background
    void SetScene(ZORVisScene* scene);
    ZORVisScene* GetScene() const;
    void SetDisplayMode(DisplayMode mode);
    DisplayMode GetDisplayMode() const;
    /// Gradient from the top to the bottom row; exactly one colour where both are the same. Alpha is ignored,
    /// an invalid colour counts as white.
    void SetBackground(const QColor& top, const QColor& bottom);
    /// The axes of the world in the lower left corner, x red, y green, z blue.
    void SetAxisTriadVisible(bool visible);
    bool IsAxisTriadVisible() const;

    /// Draws a picture.
    /// \param devicePixels      size of the picture
    /// \param devicePixelRatio  factor on line widths, point symbols and texts; the picture carries it.
    ///                          Taken as 1 unless positive and finite
    ///
    /// \return of format RGB32; null for a size without area, or of more than 2^27 pixels
    QImage Render(const ZORVisCamera& camera, const QSize& devicePixels, double devicePixelRatio = 1);

    /// What is seen at a pixel: points and lines within 5 device independent pixels, surfaces exactly at it.
    /// The nearest to the eye wins; points, then lines, win over surfaces at the same depth. Texts are not
    /// picked. The size is that of the picture, the pixel is in device pixels of that picture.
    ZORVisPickResult Pick(const ZORVisCamera& camera, const QSize& devicePixels, const QPointF& pixel,
                          double devicePixelRatio = 1) const;

    /// Whether what stands for an owner counts; the owner may be null. What does not count hides nothing.
    using Accepts = std::function<bool(QObject* owner)>;
    /// As Pick(), of what counts alone.
    /// \param accepts  an empty function accepts everything
    ZORVisPickResult Pick(const ZORVisCamera& camera, const QSize& devicePixels, const QPointF& pixel,
                          double devicePixelRatio, const Accepts& accepts) const;

    /// What a rectangle has to contain.
    enum class Extent {
        Whole, ///< all that is drawn for an owner
        Part   ///< a point, or a part of a line or triangle
    };
    /// Finds what lies in a rectangle, also what other objects hide. Texts do not count.
    /// O(points and triangles of the objects at the border of the rectangle)
    /// \param rectangle  device pixels of the picture
    /// \param accepts    an empty function accepts everything
    /// \return the owners, each once, in drawing order; without null
    QList<QObject*> FindIn(const ZORVisCamera& camera, const QSize& devicePixels, const QRectF& rectangle,
                           Extent extent, const Accepts& accepts) const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
