// Tests of ZORGeoProjectCrvSurOper.

#include "ProjectionTest.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysException.h>

namespace {

using ZORGeoProjectCrvSurOperTest = ProjectionTest;

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
        const double side = 100 * std::numbers::pi / rows;
        EXPECT_LT(std::abs(std::sqrt(area / std::numbers::pi) - 51.449575543), 0.3 * side * side / 100);
    }
}

TEST_F(ZORGeoProjectCrvSurOperTest, HasNoCurveWhereNothingCanBeProjected)
{
    EXPECT_EQ(nullptr, Project(Add(Sheet(2)), {}));
    EXPECT_EQ(nullptr, Project(Add({}), {{0, 0, 0}, {1, 0, 0}}));
    EXPECT_EQ(nullptr, Project(Add({{{0, 0, 0}}, {}}), {{0, 0, 0}, {1, 0, 0}}));
    EXPECT_EQ(3, m_container.GetNumGeometry()) << "surfaces only";
}

TEST_F(ZORGeoProjectCrvSurOperTest, ForgetsTheCurveOfAnEarlierRun)
{
    auto* const sheet = Add(Sheet(2));
    const ZORGeoPolyline source(&m_container, {{0, 0, 1}, {1, 1, 1}}, true);
    ZORGeoProjectCrvSurOper oper(sheet, &source);
    oper.Run();
    const auto* const first = oper.GetCurve();
    oper.Run();
    EXPECT_NE(first, oper.GetCurve());
    EXPECT_EQ(3, m_container.GetNumGeometry());
    delete oper.GetCurve();
    EXPECT_EQ(nullptr, oper.GetCurve());
}

TEST_F(ZORGeoProjectCrvSurOperTest, RefusesMissingInputs)
{
    const auto failure = [](const ZORGeoSurface* surface, const ZORGeoCurve* curve) {
        try {
            ZORGeoProjectCrvSurOper(surface, curve).Run();
        } catch (const ZORSysException& exception) {
            return exception.GetMessage();
        }
        return QString();
    };
    const ZORGeoPolyline source(&m_container, {{0, 0, 1}, {1, 1, 1}}, true);
    EXPECT_EQ("surface is null", failure(nullptr, &source));
    EXPECT_EQ("curve is null", failure(Add(Sheet(2)), nullptr));
    EXPECT_EQ("geometry has no container", failure(Sheet(2).Make().get(), &source));
}

TEST_F(ZORGeoProjectCrvSurOperTest, MakesOneLocationOfOnePoint)
{
    const auto* const sheet = Add(Sheet(3));
    for (const ZORMathSetOfPoints& points :
         {ZORMathSetOfPoints{{0.4, 0.3, 2}}, ZORMathSetOfPoints{{0.4, 0.3, 2}, {0.4, 0.3, 2}},
          ZORMathSetOfPoints{{0.4, 0.3, 2}, {0.4, 0.3, 7}, {0.4, 0.3, -7}}}) {
        const auto* const curve = Project(sheet, points);
        ASSERT_TRUE(curve);
        EXPECT_EQ(1, curve->GetNumPoints());
        EXPECT_EQ(1, curve->GetLocations().size());
        EXPECT_TRUE(IsNear({0.4, 0.3, 0}, curve->GetPoint(0)));
    }
}

TEST_F(ZORGeoProjectCrvSurOperTest, RunsAlongEdgesAndThroughVertices)
{
    const auto* const sheet = Add(Sheet(8));
    for (const ZORMathSetOfPoints& points :
         {ZORMathSetOfPoints{{0, 0, 1}, {1, 1, 1}}, ZORMathSetOfPoints{{0, 0.5, 1}, {1, 0.5, 1}},
          ZORMathSetOfPoints{{0, 0, 1}, {1, 0, 1}}, ZORMathSetOfPoints{{1, 0, 1}, {0, 1, 1}}}) {
        const auto* const curve = Project(sheet, points);
        ASSERT_TRUE(curve);
        EXPECT_NEAR(points.first().DistanceTo(points.last()), curve->GetLength(), 1e-12);
    }
}

TEST_F(ZORGeoProjectCrvSurOperTest, FollowsTheBorderForWhatLiesBeyond)
{
    const auto* const sheet = Add(Sheet(8));
    const auto* const out = Project(sheet, {{0.5, 0.5, 1}, {1.5, 0.7, 1}, {1.5, 2, 1}, {0.3, 3, 1}});
    ASSERT_TRUE(out);
    EXPECT_TRUE(IsNear({0.5, 0.5, 0}, out->GetPoint(0)));
    EXPECT_TRUE(IsNear({0.3, 1, 0}, LastPoint(*out)));
    EXPECT_NEAR(std::hypot(0.5, 0.1) + 0.4 + 0.7, out->GetLength(), 1e-4);
    // All of it, around the sheet: closed.
    const auto* const around = Project(sheet, Circle({0.5, 0.5, 0}, 3, 90));
    ASSERT_TRUE(around);
    EXPECT_TRUE(around->IsClosed());
    EXPECT_NEAR(4, around->GetLength(), 1e-9);
    // A hole, seen from its middle: round it.
    TestMesh mesh = Sheet(9);
    mesh.triangles.remove(2 * 40, 2);
    const auto* const hole = Project(Add(mesh), Circle({0.5, 0.5, 0}, 0.02, 90));
    ASSERT_TRUE(hole);
    EXPECT_TRUE(hole->IsClosed());
    EXPECT_NEAR(4 / 9.0, hole->GetLength(), 1e-3);
}

TEST_F(ZORGeoProjectCrvSurOperTest, CrossesEdgesOfSeveralTriangles)
{
    // A sheet with a fin along its middle.
    TestMesh mesh = Sheet(2);
    mesh.vertices << ZORMathPoint(0.5, 0, -1) << ZORMathPoint(0.5, 1, -1);
    mesh.triangles << ZORGeoSurface::Corners{1, 4, 9} << ZORGeoSurface::Corners{4, 7, 10};
    const auto* const curve = Project(Add(mesh), {{0.1, 0.3, 1}, {0.9, 0.4, 1}});
    ASSERT_TRUE(curve);
    EXPECT_NEAR(std::hypot(0.8, 0.1), curve->GetLength(), 1e-9);
}

} // namespace
