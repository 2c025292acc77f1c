// Checks what must hold for every draped net.

#pragma once

#include "support/MessageOf.h"

#include <ZORComposites/ZORCompKinematicDraping.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysException.h>

#include <QString>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

constexpr double kDegree = std::numbers::pi / 180;

inline ZORCompStrategyParameters WithStep(double step, double fibreAngle = 0)
{
    ZORCompStrategyParameters parameters;
    parameters.step = step;
    parameters.fibreAngle = fibreAngle;
    return parameters;
}

inline ZORCompDrapingNet Drape(const ZORGeoSurface& surface, const ZORCompStrategyParameters& parameters,
                               const ZORMathPoint& seed, const ZORMathVector& direction)
{
    return ZORCompKinematicDraping(&surface, parameters).Run(surface.Project(seed), direction);
}

inline double AreaOf(const ZORCompDrapingNet& net)
{
    double area = 0;
    for (const ZORCompDrapingCell& cell : net.GetCells())
        area += net.GetStep() * net.GetStep() * std::sin(net.GetYarnAngle() - cell.shear);
    return area;
}

/// Locations lie within their triangles, the sides of all cells are a step long, shear is that of the rhombus with
/// the diagonals of the cell, nothing is infinite.
inline void CheckNet(const ZORGeoSurface& surface, const ZORCompDrapingNet& net)
{
    ASSERT_GE(net.FindNode(0, 0), 0);
    double size = net.GetStep();
    for (const ZORCompDrapingNode& node : net.GetNodes())
        size = std::max(size, PositionVector(node.location.point).GetLength());
    for (const ZORCompDrapingNode& node : net.GetNodes()) {
        const ZORGeoLocationOnSurface& place = node.location;
        ASSERT_EQ(&surface, place.surface);
        ASSERT_TRUE(place.triangle >= 1 && place.triangle <= surface.GetNumTriangles());
        ASSERT_TRUE(place.weightB >= 0 && place.weightC >= 0 && place.weightB + place.weightC <= 1 + 1e-12);
        ZORMathPoint a, b, c;
        surface.GetVertices(place.triangle, a, b, c);
        const ZORMathPoint point = a + place.weightB * (b - a) + place.weightC * (c - a);
        ASSERT_LE(point.DistanceTo(place.point), 1e-12 * size)
            << "node (" << node.warp << ", " << node.weft << ") in triangle " << place.triangle;
    }
    for (const ZORCompDrapingCell& cell : net.GetCells()) {
        ZORMathPoint corners[4];
        for (int i = 0; i < 4; ++i)
            corners[i] = net.GetNodes()[cell.nodes[size_t(i)]].location.point;
        for (int i = 0; i < 4; ++i)
            ASSERT_NEAR(net.GetStep(), corners[i].DistanceTo(corners[(i + 1) % 4]), 1e-6 * net.GetStep());
        const double angle =
            2 * std::atan2(corners[1].DistanceTo(corners[3]), corners[0].DistanceTo(corners[2]));
        ASSERT_NEAR(net.GetYarnAngle() - angle, cell.shear, 1e-5);
        ASSERT_LT(std::abs(cell.fibreAngle), std::numbers::pi + 1e-12);
    }
}
