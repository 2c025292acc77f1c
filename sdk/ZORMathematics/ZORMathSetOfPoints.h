// A sequence of points.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

#include <QList>

/// Points in a given order: the vertices of a polyline, or marks.
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
