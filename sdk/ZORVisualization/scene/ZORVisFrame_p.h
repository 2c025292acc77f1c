// Everything that is fixed while one picture is drawn.

#pragma once

#include "ZORVisDrawing_p.h"

#include <ZORVisualization/ZORVisCamera.h>

#include <QPointF>
#include <QRgb>
#include <QSize>

#include <vector>

/// Objects in drawing order. Not owned.
using ZORVisDrawList = std::vector<const ZORVisDrawObject*>;

/// Camera, size and modes of a picture, and the mapping of points to its pixels.
class ZORVisFrame
{
public:
    /// \param drawn  give the depth range; those outside of the picture do not count
    ZORVisFrame(const ZORVisCamera& view, const QSize& devicePixels, double devicePixelRatio,
                const ZORVisDrawList& drawn);

    /// \param box  as seen by this camera
    /// \return whether the box may touch the picture, grown by \a margin pixels on each side
    bool IsVisible(const ZORMathBoundingBox& box, double margin) const;

    /// x right, y down from the upper left corner of the picture.
    QPointF ToPixel(const ZORMathPoint& point) const;
    /// Depths that differ by less are the same: what lies on a surface is seen.
    static constexpr double kDepthTolerance = 1e-5;
    /// 0 at the near plane, 1 at the far plane.
    double ToDepth(const ZORMathPoint& point) const;
    /// Colour of the background in a row of the picture.
    QRgb GetRowColor(int row) const;

    /// Surfaces are pushed back by this part of their slope per pixel and by GetPushBack(), so that lines on
    /// them stay in front. A larger part would let the back of thin bodies show along their edges.
    static constexpr double kPushBackFactor = 0.25;
    /// Lines are tested against surfaces that are pushed back farther: their pixels may be that far from the exact line.
    double GetLinePushBackFactor() const { return 0.75 * lineWidth * ratio + 1; }
    double GetPushBack() const { return 2 * ratio * pixelSize / (farDistance - nearDistance); }

    const ZORVisCamera camera;
    const QSize size;
    const double ratio;
    const ZORMathVector right;
    const ZORMathVector up;
    const ZORMathVector direction;
    const double pixelSize; // millimetres
    double lineWidth = 0;   // of the widest line to draw, device independent pixels; 0 without lines
    bool wireframe = false;
    bool triad = false;
    int samples = 1; // per pixel, with OpenGL
    QRgb top = 0xffffffff;
    QRgb bottom = 0xffffffff;
    double nearDistance = 0; // of the depth range, along the direction from the target, millimetres
    double farDistance = 1;
};

/// Half the extent of a box along a direction of length 1.
double ZORVisHalfExtent(const ZORMathBoundingBox& box, const ZORMathVector& direction);
