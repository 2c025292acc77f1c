// Tests of ZORGeoCurveOnSurfaceProcessor: straightest geodesics from all kinds of starts.

#include "TestMeshes.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace {

using Processor = ZORGeoCurveOnSurfaceProcessor;
using Result = ZORGeoCurveOnSurfaceResult;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double pi = std::numbers::pi;

TEST(ZORGeoCurveOnSurfaceProcessorTest, RunsAroundACubeBackToItsStart)
{
    const auto cube = Cube().Make();
    const Result result =
        Processor(cube.get(), 0, 4).ComputeGeodesic(cube->Project({0.5, 0.5, 1}), {1, 0, 0}, 0);
    EXPECT_NEAR(4, result.GetEndLength(), 1e-12);
    EXPECT_EQ(Result::Length, result.GetEndReason());
    EXPECT_TRUE(IsNear({0.5, 0.5, 1}, result.GetLocations().constLast().point));
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, RunsFromTheEndBehindToTheEndAhead)
{
    const auto sheet = Sheet(20).Make();
    const Result result = Processor(sheet.get(), nan, 0.25)
                              .ComputeGeodesic(sheet->Project({0.52, 0.53, 0}), {0, 1, 0}, -pi / 2);
    const auto locations = result.GetLocations();
    EXPECT_TRUE(IsNear({0, 0.53, 0}, locations.constFirst().point));
    EXPECT_TRUE(IsNear({0.52, 0.53, 0}, locations[result.GetStartIndex()].point));
    EXPECT_TRUE(IsNear({0.77, 0.53, 0}, locations.constLast().point));
    EXPECT_NEAR(0.52, result.GetStartLength(), 1e-12);
    EXPECT_EQ(Result::Border, result.GetStartReason());
    EXPECT_EQ(0.25, result.GetEndLength());
    EXPECT_EQ(Result::Length, result.GetEndReason());
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, LengthsOfZeroGiveTheStart)
{
    const auto cube = Cube().Make();
    const auto start = cube->Project({0.2, 0.3, 1});
    const Result result = Processor(cube.get(), 0, 0).ComputeGeodesic(start, {1, 0, 0}, 0);
    ASSERT_EQ(1, result.GetLocations().size());
    EXPECT_EQ(start.point, result.GetLocations().constFirst().point);
}

} // namespace
