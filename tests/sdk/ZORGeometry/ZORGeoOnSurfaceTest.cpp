// Tests of points and directions on a surface, and of the range of coordinates.

#include "TestMeshes.h"
#include "support/ContainerContent.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoOnSurface.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoRange.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

class ZORGeoOnSurfaceTest : public testing::Test
{
protected:
    /// A triangle in the plane z = 0.
    ZORGeoSurface* AddTriangle(double size = 1)
    {
        const QList<ZORMathPoint> corners{{0, 0, 0}, {size, 0, 0}, {0, size, 0}};
        return Register(new ZORGeoSurface(&container, corners, {{0, 1, 2}}));
    }
    static bool IsPerpendicular(const ZORMathVector& direction, const ZORGeoSurface* surface)
    {
        return ZORGeoOnSurface::IsPerpendicular(direction, {surface, 1, 0, 0, {}}, 1e-9);
    }

    ZORGeoContainer container;
};

TEST_F(ZORGeoOnSurfaceTest, ATiedPointIsWhereItIsTied)
{
    const ZORGeoSurface* const cube = Register(Cube().Make(&container).release());
    // The vertex belongs to several triangles, of which projections find another one than the last.
    const ZORGeoLocationOnSurface last{cube, cube->GetNumTriangles(), 0, 0, {}};
    const auto* const tied = Register(new ZORGeoPointOnSurface(last));
    EXPECT_EQ(last.triangle, ZORGeoOnSurface::Locate(*tied, *cube).triangle);

    const ZORGeoSurface* const other = AddTriangle();
    EXPECT_EQ(other, ZORGeoOnSurface::Locate(*tied, *other).surface);
}

TEST_F(ZORGeoOnSurfaceTest, AnyOtherPointIsProjected)
{
    const auto* const point = Register(new ZORGeoCartesianPoint(&container, {0.25, 0.25, 8}));
    EXPECT_EQ(ZORMathPoint(0.25, 0.25, 0), ZORGeoOnSurface::Locate(*point, *AddTriangle()).point);
    const auto* const empty = Register(new ZORGeoSurface(&container, {}, {}));
    EXPECT_TRUE(ZORGeoOnSurface::Locate(*point, *empty).IsNull());
}

TEST_F(ZORGeoOnSurfaceTest, PerpendicularDirectionsAreFoundAtEverySize)
{
    for (const double size : {1e-150, 1.0, 1e60}) {
        const ZORGeoSurface* const surface = AddTriangle(size);
        for (const double length : {1e-200, 1.0, 1e100}) {
            EXPECT_TRUE(IsPerpendicular({0, 0, length}, surface)) << size << ' ' << length;
            EXPECT_TRUE(IsPerpendicular({0.9e-9 * length, 0, -length}, surface)) << size << ' ' << length;
            EXPECT_FALSE(IsPerpendicular({1.1e-9 * length, 0, length}, surface)) << size << ' ' << length;
            EXPECT_FALSE(IsPerpendicular({length, length, 0}, surface)) << size << ' ' << length;
        }
        EXPECT_TRUE(IsPerpendicular({}, surface)) << size;
    }
    const auto* const line =
        Register(new ZORGeoSurface(&container, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {{0, 1, 2}}));
    EXPECT_FALSE(IsPerpendicular({0, 0, 1}, line)) << "it has no normal";
}

TEST_F(ZORGeoOnSurfaceTest, WeightsMayLieOutsideByRoundingOnly)
{
    const auto isWithin = [](double weightB, double weightC) {
        return ZORGeoOnSurface::IsWithinTriangle({nullptr, 1, weightB, weightC, {}});
    };
    EXPECT_TRUE(isWithin(0, 0));
    EXPECT_TRUE(isWithin(1, 0));
    EXPECT_TRUE(isWithin(0.25, 0.75));
    EXPECT_TRUE(isWithin(-0.9e-9, 0.5));
    EXPECT_TRUE(isWithin(0.5, 0.5 + 0.9e-9));
    EXPECT_FALSE(isWithin(-1.1e-9, 0.5));
    EXPECT_FALSE(isWithin(0.5, -1.1e-9));
    EXPECT_FALSE(isWithin(0.5, 0.5 + 1.1e-9));
    EXPECT_FALSE(isWithin(std::nan(""), 0.5));
}

TEST(ZORGeoRangeTest, TheBoundItselfIsWithinTheRange)
{
    const double largest = ZORGeoRange::kLargestCoordinate;
    EXPECT_EQ(1e60, largest);
    EXPECT_TRUE(ZORGeoRange::Contains({largest, -largest, 0}));
    EXPECT_FALSE(ZORGeoRange::Contains({0, 0, std::nextafter(largest, HUGE_VAL)}));
    EXPECT_FALSE(ZORGeoRange::Contains({0, std::nan(""), 0}));
}

} // namespace
