// A sequence of points.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

#include <QList>

/// Points in a given order: the vertices of a polyline, or marks.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORMathSetOfPoints : public QList<ZORMathPoint>
{
public:
    using QList<ZORMathPoint>::QList;
    ZORMathSetOfPoints() = default;
    ZORMathSetOfPoints(const QList<ZORMathPoint>& points)
        : QList<ZORMathPoint>(points)
    {
    }
};
