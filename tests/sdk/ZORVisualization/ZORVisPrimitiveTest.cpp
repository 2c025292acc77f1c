#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>
#include <ZORVisualization/ZORVisTrianglePrimitive.h>

#include <gtest/gtest.h>

#include <limits>

TEST(ZORVisPolylinePrimitiveTest, TakesAllPointsOfACurve)
{
    ZORGeoContainer container;
    const ZORMathSetOfPoints points = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}};
    ZORGeoPolyline curve(&container, points, true);
    const ZORVisPolylinePrimitive primitive(&curve, ZORGeoRangeOfCurve());
    EXPECT_EQ(primitive.GetPoints(), curve.GetPoints());
    EXPECT_EQ(primitive.GetStructure(), ZORVisPolylinePrimitive::Chain);
}

TEST(ZORVisPolylinePrimitiveTest, TakesARangeOfACurve)
{
    ZORGeoContainer container;
    ZORGeoPolyline curve(&container, ZORMathSetOfPoints{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, true);
    const ZORVisPolylinePrimitive primitive(&curve, ZORGeoRangeOfCurve(5, 12));
    EXPECT_EQ(primitive.GetPoints(), (ZORMathSetOfPoints{{5, 0, 0}, {10, 0, 0}, {10, 2, 0}}));
}

TEST(ZORVisPolylinePrimitiveTest, IsEmptyWithoutACurve)
{
    const ZORVisPolylinePrimitive primitive(nullptr, ZORGeoRangeOfCurve());
    EXPECT_TRUE(primitive.GetPoints().isEmpty());
    EXPECT_TRUE(primitive.GetBoundingBox().IsEmpty());
}

TEST(ZORVisPolylinePrimitiveTest, StructureZeroIsPairs)
{
    const ZORVisPolylinePrimitive primitive(ZORMathSetOfPoints{{1, 2, 3}, {4, 5, 6}},
                                            ZORVisPolylinePrimitive::Structure(0));
    EXPECT_EQ(primitive.GetStructure(), ZORVisPolylinePrimitive::Pairs);
    EXPECT_EQ(primitive.GetBoundingBox(), ZORMathBoundingBox({1, 2, 3}, {4, 5, 6}));
}

TEST(ZORVisPointPrimitiveTest, TheBoxLeavesOutPointsThatAreNotFinite)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const ZORVisPointPrimitive primitive({{1, 2, 3}, {nan, 0, 0}, {4, 5, 6}});
    EXPECT_EQ(primitive.GetPoints().size(), 3);
    EXPECT_EQ(primitive.GetBoundingBox(), ZORMathBoundingBox({1, 2, 3}, {4, 5, 6}));
}

TEST(ZORVisTextPrimitiveTest, KeepsItsArguments)
{
    const ZORVisTextPrimitive primitive(QStringLiteral(" 7"), {1, 2, 3},
                                        ZORVisTextPrimitive::AnchorLocation(0),
                                        ZORVisTextPrimitive::Scalability(1));
    EXPECT_EQ(primitive.GetText(), QStringLiteral(" 7"));
    EXPECT_EQ(primitive.GetPosition(), ZORMathPoint(1, 2, 3));
    EXPECT_EQ(primitive.GetAnchorLocation(), ZORVisTextPrimitive::LowerLeft);
    EXPECT_EQ(primitive.GetScalability(), ZORVisTextPrimitive::FixedSize);
}

TEST(ZORVisSurfacePrimitiveTest, SurvivesItsSurface)
{
    ZORGeoContainer container;
    auto surface = std::make_unique<ZORGeoSurface>(
        &container, QList<ZORMathPoint>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {99, 99, 99}},
        QList<ZORGeoSurface::Corners>{{0, 1, 2}});
    const ZORVisSurfacePrimitive primitive(surface.get());
    surface.reset();
    EXPECT_EQ(primitive.GetNumTriangles(), 1);
    EXPECT_EQ(primitive.GetBoundingBox(), ZORMathBoundingBox({0, 0, 0}, {1, 1, 0}));
}

TEST(ZORVisSurfacePrimitiveTest, IsEmptyWithoutASurface)
{
    const ZORVisSurfacePrimitive primitive(nullptr);
    EXPECT_EQ(primitive.GetNumTriangles(), 0);
    EXPECT_TRUE(primitive.GetBoundingBox().IsEmpty());
}

TEST(ZORVisTrianglePrimitiveTest, CountsCompleteTriangles)
{
    EXPECT_EQ(ZORVisTrianglePrimitive(ZORMathSetOfPoints()).GetNumTriangles(), 0);
    EXPECT_EQ(ZORVisTrianglePrimitive(ZORMathSetOfPoints(7)).GetNumTriangles(), 2);
}
