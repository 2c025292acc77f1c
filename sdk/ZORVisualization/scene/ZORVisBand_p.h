// Finds what lies in a rectangle of a picture.

#pragma once

#include "ZORVisFrame_p.h"

#include <QRectF>

struct ZORVisLineData;
struct ZORVisMeshData;
struct ZORVisPointData;

/// A rectangle of a picture that holds objects, or parts of them. Texts do not count.
class ZORVisBand
{
public:
    /// \param frame      must outlive the band
    /// \param rectangle  pixels of the picture
    ZORVisBand(const ZORVisFrame& frame, const QRectF& rectangle);

    /// Checks whether the object has points and all of them lie in the rectangle.
    bool HoldsWhole(const ZORVisDrawObject& object) const;
    /// Checks whether any point, line or triangle of the object comes into the rectangle.
    bool Touches(const ZORVisDrawObject& object) const;

private:
    enum class Place { Outside, Inside, Across };
    Place Locate(const ZORMathBoundingBox& box) const;
    bool Holds(const QPointF& pixel) const;
    bool Holds(const ZORMathPoint& point) const;
    bool HoldsAll(const QList<ZORMathPoint>& points) const;
    bool HoldsWhole(const ZORVisPrimitiveData& primitive) const;
    bool Touches(const ZORVisPrimitiveData& primitive) const;
    bool TouchesLines(const ZORVisLineData& data) const;
    bool TouchesMesh(const ZORVisMeshData& mesh) const;
    bool MeetsSegment(const QPointF& from, const QPointF& to) const;
    bool MeetsTriangle(const QPointF& a, const QPointF& b, const QPointF& c) const;

    const ZORVisFrame& m_frame;
    const QRectF m_rectangle;
};
