#include "VisTest.h"

#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>

#include <limits>

namespace {

constexpr QSize kViewSize(200, 100);
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
using Extent = ZORVisRenderer::Extent;

class ZORVisBandTest : public VisTest
{
protected:
    ZORVisBandTest() { camera.SetView({0, 0, 0}, {0, 0, -1}, {0, 1, 0}, 100); }

    /// \param rectangle  in millimeters: x to the right, y up, the origin in the middle of the picture
    bool IsIn(const QRectF& rectangle, Extent extent, const ZORVisRenderer::Accepts& accepts = {})
    {
        const QRectF pixels(rectangle.left() + 100, 50 - rectangle.bottom(), rectangle.width(),
                            rectangle.height());
        return renderer.FindIn(camera, kViewSize, pixels, extent, accepts).contains(&owner);
    }

    QObject owner;
};

TEST_F(ZORVisBandTest, ASurfaceIsWholeInARectangleThatHoldsAllItsCornersAlone)
{
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 7}, 20))}, Options(Qt::red), &owner);
    EXPECT_TRUE(IsIn({-10.5, -10.5, 21, 21}, Extent::Whole));
    EXPECT_TRUE(IsIn({-10.5, -10.5, 21, 21}, Extent::Part));
    EXPECT_FALSE(IsIn({-9.5, -10.5, 21, 21}, Extent::Whole));
    EXPECT_TRUE(IsIn({9.5, 9.5, 5, 5}, Extent::Part));
    EXPECT_FALSE(IsIn({10.5, 9.5, 5, 5}, Extent::Part));
    EXPECT_TRUE(IsIn({2, -5, 1, 1}, Extent::Part)) << "inside of a triangle, no edge comes in";
    EXPECT_FALSE(IsIn({2, -5, 1, 1}, Extent::Whole));
}

TEST_F(ZORVisBandTest, AnObjectIsWholeThoughItsBoxReachesOut)
{
    // Seen along (1, 1, 0), the box of the diagonal is broader than the diagonal, which is a point.
    camera.SetView({0, 0, 0}, {1, 1, 0}, {0, 0, 1}, 100);
    Show({new ZORVisPolylinePrimitive({{-20, -20, 0}, {20, 20, 0}}, ZORVisPolylinePrimitive::Chain)},
         Options(Qt::red), &owner);
    EXPECT_TRUE(IsIn({-1, -1, 2, 2}, Extent::Whole));
    EXPECT_FALSE(IsIn({5, -1, 2, 2}, Extent::Part)) << "the box alone comes in";
}

TEST_F(ZORVisBandTest, ALineTouchesWithoutAPointInTheRectangle)
{
    Show({new ZORVisPolylinePrimitive({{-40, -20, 0}, {40, 20, 0}, {40, 40, 0}},
                                      ZORVisPolylinePrimitive::Chain)},
         Options(Qt::red), &owner);
    EXPECT_TRUE(IsIn({-1, -1, 2, 2}, Extent::Part));
    EXPECT_FALSE(IsIn({-1, 3, 2, 2}, Extent::Part));
    EXPECT_TRUE(IsIn({39, 30, 5, 5}, Extent::Part));
    EXPECT_FALSE(IsIn({-45, -25, 84, 80}, Extent::Whole));
    EXPECT_TRUE(IsIn({-45, -25, 90, 70}, Extent::Whole));
}

TEST_F(ZORVisBandTest, PairsHaveNoLinesBetweenThem)
{
    Show({new ZORVisPolylinePrimitive({{-40, 0, 0}, {-20, 0, 0}, {20, 0, 0}, {40, 0, 0}},
                                      ZORVisPolylinePrimitive::Pairs)},
         Options(Qt::red), &owner);
    EXPECT_FALSE(IsIn({-1, -1, 2, 2}, Extent::Part));
    EXPECT_TRUE(IsIn({-31, -1, 2, 2}, Extent::Part));
}

TEST_F(ZORVisBandTest, APointIsInARectangleWithoutArea)
{
    Show({new ZORVisPointPrimitive(QList<ZORMathPoint>{{5, 5, 0}})}, Options(Qt::red), &owner);
    EXPECT_TRUE(IsIn({5, 5, 0, 0}, Extent::Part));
    EXPECT_TRUE(IsIn({4, 4, 2, 2}, Extent::Whole));
    EXPECT_FALSE(IsIn({6, 4, 2, 2}, Extent::Part));
}

TEST_F(ZORVisBandTest, WhatIsNotFiniteDoesNotCount)
{
    Show({new ZORVisPolylinePrimitive({{0, 0, 0}, {kNan, 0, 0}, {10, 0, 0}}, ZORVisPolylinePrimitive::Chain)},
         Options(Qt::red), &owner);
    EXPECT_TRUE(IsIn({-1, -1, 12, 2}, Extent::Whole));
    EXPECT_FALSE(IsIn({4, -1, 2, 2}, Extent::Part));
    EXPECT_FALSE(IsIn({kNan, kNan, kNan, kNan}, Extent::Part));
}

TEST_F(ZORVisBandTest, AllThatStandsForAnOwnerHasToBeWhole)
{
    Show({new ZORVisSurfacePrimitive(CreateSquare({-20, 0, 0}, 10))}, Options(Qt::red), &owner);
    Show({new ZORVisSurfacePrimitive(CreateSquare({20, 0, 0}, 10))}, Options(Qt::red), &owner);
    EXPECT_FALSE(IsIn({-30, -10, 20, 20}, Extent::Whole));
    EXPECT_FALSE(IsIn({10, -10, 20, 20}, Extent::Whole));
    EXPECT_TRUE(IsIn({10, -10, 20, 20}, Extent::Part));
    EXPECT_TRUE(IsIn({-30, -10, 60, 20}, Extent::Whole));
    EXPECT_EQ(renderer.FindIn(camera, kViewSize, {0, 0, 200, 100}, Extent::Part, {}).size(), 1);
}

TEST_F(ZORVisBandTest, WhatIsRefusedIsNotFoundAndHidesNothing)
{
    QObject front;
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, 20))}, Options(Qt::red), &owner);
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 9}, 20))}, Options(Qt::blue), &front);
    const auto behind = [&front](QObject* candidate) { return candidate != &front; };
    EXPECT_EQ(renderer.Pick(camera, kViewSize, {102, 47}).owner, &front);
    EXPECT_EQ(renderer.Pick(camera, kViewSize, {102, 47}, 1, behind).owner, &owner);
    EXPECT_EQ(renderer.FindIn(camera, kViewSize, {0, 0, 200, 100}, Extent::Part, behind),
              QList<QObject*>{&owner});
    EXPECT_EQ(renderer.FindIn(camera, kViewSize, {0, 0, 200, 100}, Extent::Part, {}),
              (QList<QObject*>{&owner, &front}));
}

TEST_F(ZORVisBandTest, DrawingsOfTheSceneAreFoundUnlessTheyAreHidden)
{
    const auto* primitive = new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, 20));
    scene.SetDrawing(&owner, std::make_unique<ZORVisRepGraphics>(QList<const ZORVisPrimitive*>{primitive},
                                                                 Options(Qt::red)));
    EXPECT_TRUE(IsIn({-30, -30, 60, 60}, Extent::Whole));
    scene.RemoveDrawing(&owner);
    EXPECT_FALSE(IsIn({-30, -30, 60, 60}, Extent::Part));
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, 20))}, Options(Qt::red), &owner);
    scene.SetHidden(&owner, true);
    EXPECT_FALSE(IsIn({-30, -30, 60, 60}, Extent::Part));
}

} // namespace
