// Area, length, centre of mass and box of segments.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORNesting/ZORNestResultSegment.h>

/// What ZORNestResultShape tells of its segments.
struct ZORNestShapeMeasures
{
    static ZORNestShapeMeasures Of(const QList<ZORNestResultSegment>& segments);

    double area = 0;
    double perimeter = 0;
    ZORMathPoint centerOfMass;
    ZORMathBoundingBox box;
};
