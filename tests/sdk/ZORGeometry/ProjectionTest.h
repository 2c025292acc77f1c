// Projections of curves onto surfaces, checked as they are computed.

#pragma once

#include "CurveChecks.h"
#include "TestMeshes.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoProjectCrvSurOper.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

inline ZORMathSetOfPoints Circle(const ZORMathPoint& center, double radius, int points)
{
    ZORMathSetOfPoints circle;
    for (int i = 0; i <= points; ++i) {
        const double angle = 2 * std::numbers::pi * (i % points) / points;
        circle.append(center + ZORMathVector(radius * std::cos(angle), radius * std::sin(angle), 0));
    }
    return circle;
}

class ProjectionTest : public testing::Test
{
protected:
    ZORGeoSurface* Add(const TestMesh& mesh)
    {
        auto* const surface = mesh.Make(&m_container).release();
        surface->Initialize();
        return surface;
    }

    /// The projection, which keeps every segment in its triangle; null when there is none.
    ZORGeoCurveOnSurface* Project(const ZORGeoSurface* surface, const ZORMathSetOfPoints& points)
    {
        const ZORGeoPolyline source(&m_container, points, true);
        ZORGeoProjectCrvSurOper oper(surface, &source);
        oper.Run();
        ZORGeoCurveOnSurface* const curve = oper.GetCurve();
        if (curve) {
            EXPECT_LT(DeviationFromSurface(curve->GetLocations()), 1e-9);
        }
        return curve;
    }

    ZORGeoContainer m_container;
};

inline ZORMathPoint LastPoint(const ZORGeoCurve& curve)
{
    return curve.GetPoint(curve.GetNumPoints() - 1);
}
