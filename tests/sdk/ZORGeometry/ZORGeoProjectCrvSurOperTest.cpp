// Tests of ZORGeoProjectCrvSurOper.

#include "CurveChecks.h"
#include "TestMeshes.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoProjectCrvSurOper.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

ZORMathSetOfPoints Circle(const ZORMathPoint& center, double radius, int points)
{
    ZORMathSetOfPoints circle;
    for (int i = 0; i <= points; ++i) {
        const double angle = 2 * M_PI * (i % points) / points;
        circle.append(center + ZORMathVector(radius * std::cos(angle), radius * std::sin(angle), 0));
    }
    return circle;
}

class ZORGeoProjectCrvSurOperTest : public testing::Test
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

TEST_F(ZORGeoProjectCrvSurOperTest, LeavesARegisteredCurveBehind)
{
    const auto* const sheet = Add(Sheet(8));
    const ZORGeoPolyline source(&m_container, {{0.1, 0.2, 1}, {0.8, 0.7, 3}}, true);
    QPointer<ZORGeoCurveOnSurface> curve;
    {
        ZORGeoProjectCrvSurOper oper(sheet, &source);
        EXPECT_EQ(nullptr, oper.GetCurve());
        oper.Run();
        curve = oper.GetCurve();
    }
    ASSERT_TRUE(curve);
    EXPECT_TRUE(curve->IsInitialized());
    EXPECT_EQ("CurveOnSurface.1", curve->objectName());
    EXPECT_EQ(sheet, curve->GetSurface());
    EXPECT_TRUE(IsNear({0.1, 0.2, 0}, curve->GetPoint(0)));
    EXPECT_TRUE(IsNear({0.8, 0.7, 0}, curve->GetPoint(curve->GetNumPoints() - 1)));
    EXPECT_NEAR(std::hypot(0.7, 0.5), curve->GetLength(), 1e-12);
    EXPECT_LT(DeviationFromSurface(curve->GetLocations()), 1e-9);
}

// The nearest places of a faceted sphere gather on its edges, the more the farther the source is: the places
// are off by up to the side length times distance / (radius + distance), their mean hardly.
TEST_F(ZORGeoProjectCrvSurOperTest, ProjectsACircleOntoASphere)
{
    const ZORMathVector axis = ZORMathVector(3, 2, 6) * (1.0 / 7);
    const ZORMathVector u = Cross(axis, {0, 0, 1}).GetNormalized();
    const ZORMathVector v = Cross(axis, u);
    ZORMathSetOfPoints circle;
    for (const ZORMathPoint& point : Circle({0, 0, 50}, 30, 720))
        circle.append(ZORMathPoint() + point.GetX() * u + point.GetY() * v + point.GetZ() * axis);
    for (const int rows : {16, 32, 64, 128}) {
        const auto* const curve = Project(Add(Sphere(100, rows)), circle);
        ASSERT_TRUE(curve);
        EXPECT_TRUE(curve->IsClosed());
        double worst = 0;
        double area = 0;
        for (int i = 0; i < curve->GetNumPoints(); ++i) {
            const ZORMathVector place = PositionVector(curve->GetPoint(i));
            worst = std::max(worst, std::abs(Cross(place, axis).GetLength() - 51.449575543));
            if (i > 0)
                area += Dot(Cross(PositionVector(curve->GetPoint(i - 1)), place), axis) / 2;
        }
        const double side = 100 * M_PI / rows;
        EXPECT_LT(std::abs(std::sqrt(area / M_PI) - 51.449575543), 0.3 * side * side / 100);
    }
}

} // namespace
