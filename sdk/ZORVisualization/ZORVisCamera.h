// Where a view looks from.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QPointF>
#include <QSizeF>

/// Orthographic camera: a target in the middle of the view, an orientation and the height of the view.
///
/// Pixels are those of the given view size, x to the right, y down from the upper left corner; view sizes
/// without area count as 1 x 1. Arguments that are not finite change nothing.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisCamera
{
public:
    /// Named after the side that is seen: Front looks along +y with z up, Top along -z with y up.
    enum StandardView { Front, Back, Left, Right, Top, Bottom, Isometric };

    /// Isometric view of the origin, 100 mm high.
    ZORVisCamera();

    /// Turns to the view; target and height stay.
    void SetStandardView(StandardView view);
    /// Turns about the target as if the scene were a ball under the mouse, 0.4 degrees per pixel.
    void Orbit(double dx, double dy);
    /// Moves the scene by (dx, dy) pixels.
    void Pan(double dx, double dy, const QSizeF& viewSize);
    /// Magnifies by \a factor (above 1: nearer) while the place under \a pixel stays there. The height of the
    /// view stays within 1e-6 ... 1e9 mm.
    void Zoom(double factor, const QPointF& pixel, const QSizeF& viewSize);
    /// Shows all of \a box from the present direction, with a margin of 5 percent on each side. An empty box
    /// changes nothing; a box without extent is shown in the middle, height unchanged.
    void FitAll(const ZORMathBoundingBox& box, const QSizeF& viewSize);

    /// Sets everything at once.
    /// \param direction  into the screen
    /// \param up         need not be perpendicular to \a direction; parallel or zero vectors change nothing
    /// \param height     of the view, millimetres; limited as by Zoom()
    void SetView(const ZORMathPoint& target, const ZORMathVector& direction, const ZORMathVector& up,
                 double height);

    /// Unit vectors; right, up and -direction form a right-handed frame.
    ZORMathVector GetViewDirection() const { return m_direction; }
    ZORMathVector GetUpDirection() const { return m_up; }
    ZORMathVector GetRightDirection() const { return Cross(m_direction, m_up); }
    ZORMathPoint GetTarget() const { return m_target; }
    /// Height of the view, millimetres.
    double GetHeight() const { return m_height; }
    /// Edge of a pixel, millimetres.
    double GetPixelSize(const QSizeF& viewSize) const;

    QPointF WorldToPixel(const ZORMathPoint& point, const QSizeF& viewSize) const;
    /// The point under \a pixel in the plane of the target.
    ZORMathPoint PixelToWorld(const QPointF& pixel, const QSizeF& viewSize) const;
    /// Distance behind the plane of the target along the view direction, millimetres.
    double GetDepth(const ZORMathPoint& point) const { return Dot(point - m_target, m_direction); }

    friend bool operator==(const ZORVisCamera&, const ZORVisCamera&) = default;

private:
    ZORMathPoint m_target;
    ZORMathVector m_direction;
    ZORMathVector m_up;
    double m_height = 100;
};
