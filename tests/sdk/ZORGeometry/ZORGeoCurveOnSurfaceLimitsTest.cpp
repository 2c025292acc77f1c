// Tests of limits of ZORGeoCurveOnSurfaceProcessor: hard and soft, on either side.

#include "LimitTest.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>
#include <ZORSystem/ZORSysException.h>

namespace {

using ZORGeoCurveOnSurfaceLimitsTest = LimitTest;

void ExpectSide(double length, Result::StopReason reason, double actualLength,
                Result::StopReason actualReason)
{
    EXPECT_NEAR(length, actualLength, 1e-9);
    EXPECT_EQ(reason, actualReason);
}

void ExpectStart(double length, Result::StopReason reason, const Result& result)
{
    ExpectSide(length, reason, result.GetStartLength(), result.GetStartReason());
    const QList<ZORGeoLocationOnSurface> locations = result.GetLocations();
    EXPECT_NEAR(0.5 - length, locations.constFirst().point.GetX(), 1e-9);
}

void ExpectEnd(double length, Result::StopReason reason, const Result& result)
{
    ExpectSide(length, reason, result.GetEndLength(), result.GetEndReason());
    const QList<ZORGeoLocationOnSurface> locations = result.GetLocations();
    EXPECT_NEAR(0.5 + length, locations.constLast().point.GetX(), 1e-9);
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, SoftLimitsEndALongerSide)
{
    const auto ahead = Line({0.83, 0.5, 0}, {0, 1, 0});
    const auto behind = Line({0.27, 0.5, 0}, {0, 1, 0});
    const QList<const ZORGeoCurveOnSurface*> both = {ahead.get(), behind.get()};
    for (const double length : {kNan, 0.4}) {
        const Result end = Shoot(both, kSoftEnd, length, length);
        ExpectEnd(0.33, Result::Limit, end);
        ExpectStart(length > 0 ? 0.4 : 0.5, length > 0 ? Result::Length : Result::Border, end);
        const Result start = Shoot(both, kSoftStart, length, length);
        ExpectStart(0.23, Result::Limit, start);
        ExpectEnd(length > 0 ? 0.4 : 0.5, length > 0 ? Result::Length : Result::Border, start);
        const Result all = Shoot(both, kSoftStart | kSoftEnd, length, length);
        ExpectStart(0.23, Result::Limit, all);
        ExpectEnd(0.33, Result::Limit, all);
    }
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, SoftLimitsLeaveAShorterSideAlone)
{
    const auto ahead = Line({0.83, 0.5, 0}, {0, 1, 0});
    const auto behind = Line({0.27, 0.5, 0}, {0, 1, 0});
    const Result result = Shoot({ahead.get(), behind.get()}, kSoftStart | kSoftEnd, 0.2, 0.3);
    ExpectStart(0.2, Result::Length, result);
    ExpectEnd(0.3, Result::Length, result);
    // Up to the limit and not farther.
    ExpectEnd(0.33, Result::Length, Shoot({ahead.get()}, kSoftEnd, 0, 0.33));
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, HardLimitsEndASideOfAnyLength)
{
    const auto ahead = Line({0.83, 0.5, 0}, {0, 1, 0});
    const auto behind = Line({0.27, 0.5, 0}, {0, 1, 0});
    const QList<const ZORGeoCurveOnSurface*> both = {ahead.get(), behind.get()};
    for (const double length : {kNan, 0.4, 0.2, 0.1, 0.05, 0.01}) {
        const Result end = Shoot(both, kHardEnd, 0.2, length);
        ExpectEnd(0.33, Result::Limit, end);
        ExpectStart(0.2, Result::Length, end);
        const Result start = Shoot(both, kHardStart, length, 0.3);
        ExpectStart(0.23, Result::Limit, start);
        ExpectEnd(0.3, Result::Length, start);
    }
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, ASideThatMeetsNoHardLimitKeepsItsLength)
{
    const auto ahead = Line({0.83, 0.5, 0}, {0, 1, 0});
    for (const double length : {0.2, 0.1, 0.07}) {
        const Result result = Shoot({ahead.get()}, kHardStart, length, 0.1);
        ExpectStart(length, Result::Length, result);
        ExpectEnd(0.1, Result::Length, result);
    }
    const auto cube = Cube().Make();
    Processor processor(cube.get(), 1, 1.25);
    const Result other =
        Processor(cube.get(), 0, 0.1).ComputeGeodesic(cube->Project({0.5, 0.1, 1}), {0, 1, 0}, 0);
    const ZORGeoCurveOnSurface aside(other.GetLocations(), false);
    Add(processor, {&aside}, kHardEnd);
    const Result closed = processor.ComputeGeodesic(cube->Project({0.5, 0.5, 1}), {1, 0, 0}, 0);
    ExpectConsistent(*cube, closed);
    EXPECT_EQ(1.25, closed.GetEndLength());
    EXPECT_EQ(Result::Length, closed.GetEndReason());
    EXPECT_TRUE(IsNear({1, 0.5, 0.25}, closed.GetLocations().constLast().point));
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, BeyondTheLengthOnlyHardLimitsCount)
{
    const auto near = Line({0.7, 0.5, 0}, {0, 1, 0});
    const auto far = Line({0.9, 0.5, 0}, {0, 1, 0});
    Processor processor(sheet.get(), 0, 0.1);
    Add(processor, {near.get()}, kSoftEnd);
    Add(processor, {far.get()}, kHardEnd);
    ExpectEnd(0.4, Result::Limit, Shoot(processor));
    Processor longer(sheet.get(), 0, 0.3);
    Add(longer, {near.get()}, kSoftEnd);
    Add(longer, {far.get()}, kHardEnd);
    ExpectEnd(0.2, Result::Limit, Shoot(longer));
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, TheFirstOfManyLimitsCounts)
{
    const auto slanting = Line({0.7, 0.5, 0}, {0.3, 1, 0});
    const auto upright = Line({0.71, 0.5, 0}, {0, 1, 0});
    ExpectEnd(0.206, Result::Limit, Shoot({upright.get(), slanting.get()}, kSoftEnd, 0, kNan));
    ExpectEnd(0.206, Result::Limit, Shoot({slanting.get(), upright.get()}, kSoftEnd, 0, kNan));
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, LimitsOnEdgesCountFromBothSides)
{
    for (const double x : {0.8, 0.3}) {
        const auto line = Line({x, 0.55, 0}, {0, 1, 0});
        const bool isAhead = x > 0.5;
        const Result result = Shoot({line.get()}, kSoftStart | kSoftEnd, kNan, kNan);
        if (isAhead)
            ExpectEnd(0.3, Result::Limit, result);
        else
            ExpectStart(0.2, Result::Limit, result);
    }
    // Through the vertices of that edge, too.
    const auto line = Line({0.8, 0.55, 0}, {0, 1, 0});
    ExpectEnd(0.3, Result::Limit, Shoot({line.get()}, kSoftEnd, 0, kNan, 0.5));
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, LimitsThroughVerticesAreMetInVertices)
{
    // Both through (0.7, 0.5) in different triangles.
    for (const ZORMathVector& direction :
         {ZORMathVector(1, 1, 0), ZORMathVector(-1, 1, 0), ZORMathVector(1, 3, 0)}) {
        const auto line = Line({0.7, 0.5, 0}, direction);
        ExpectEnd(0.2, Result::Limit, Shoot({line.get()}, kSoftEnd, 0, kNan, 0.5));
        ExpectEnd(0.2, Result::Limit, Shoot({line.get()}, kHardEnd, 0, 0.05, 0.5));
    }
    // A limit that ends in a vertex, and one that only touches the row from above or below.
    for (const double y : {0.6, 0.4}) {
        const auto start = sheet->Project({0.75, y, 0});
        const ZORMathVector direction(-0.05, 0.5 - y, 0);
        const Result touching =
            Processor(sheet.get(), 0, direction.GetLength()).ComputeGeodesic(start, direction, 0);
        const ZORGeoCurveOnSurface limit(touching.GetLocations(), false);
        ExpectEnd(0.2, Result::Limit, Shoot({&limit}, kSoftEnd, 0, kNan, 0.5));
    }
    for (const double y : {0.6, 0.4}) {
        const auto start = sheet->Project({0.77, y, 0});
        const Result touching = Processor(sheet.get(), 0, 0.1).ComputeGeodesic(start, {0, 0.5 - y, 0}, 0);
        const ZORGeoCurveOnSurface limit(touching.GetLocations(), false);
        ExpectEnd(0.27, Result::Limit, Shoot({&limit}, kSoftEnd, 0, kNan, 0.5));
    }
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, BorderCurvesAreLimits)
{
    ZORGeoContainer container;
    auto* surface = Sheet(4).Make(&container).release();
    surface->Initialize();
    const auto edges = surface->CreateEdges();
    ASSERT_EQ(1, edges.size());
    Processor processor(surface, 0.1, kNan);
    Add(processor, {edges.constFirst()}, kHardStart | kHardEnd);
    const Result result = processor.ComputeGeodesic(surface->Project({0.3, 0.6, 0}), {1, 0, 0}, 0);
    EXPECT_EQ(Result::Limit, result.GetStartReason());
    EXPECT_EQ(Result::Limit, result.GetEndReason());
    EXPECT_NEAR(0.3, result.GetStartLength(), 1e-12);
    EXPECT_NEAR(0.7, result.GetEndLength(), 1e-12);
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, ALimitThroughTheStartDoesNotEndTheCurveThere)
{
    const auto through = Line({0.5, 0.52, 0}, {0.2, 1, 0});
    const auto ahead = Line({0.9, 0.5, 0}, {0, 1, 0});
    for (const int behavior : {kSoftStart | kSoftEnd, kHardStart | kHardEnd}) {
        const Result result = Shoot({through.get(), ahead.get()}, behavior, kNan, kNan);
        ExpectEnd(0.4, Result::Limit, result);
        ExpectStart(0.5, Result::Border, result);
    }
    const auto onEdge = Line({0.5, 0.52, 0}, {0, 1, 0});
    ExpectEnd(0.5, Result::Border, Shoot({onEdge.get()}, kSoftEnd, 0, kNan));
    ExpectEnd(0.5, Result::Border, Shoot({onEdge.get()}, kSoftEnd, 0, kNan, 0.5));
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, ASideMayBeginByRunningAlongALimit)
{
    for (const double y : {0.52, 0.5}) {
        const auto along = Line({0.5, y, 0}, {1, 0, 0});
        ExpectEnd(0.5, Result::Border, Shoot({along.get()}, kSoftEnd, 0, kNan, y));
        const auto across = Line({0.87, 0.5, 0}, {0, 1, 0});
        ExpectEnd(0.37, Result::Limit, Shoot({along.get(), across.get()}, kSoftEnd, 0, kNan, y));
        // One that begins later is met where it begins.
        const Result part =
            Processor(sheet.get(), 0, 0.2).ComputeGeodesic(sheet->Project({0.64, y, 0}), {1, 0, 0}, 0);
        const ZORGeoCurveOnSurface later(part.GetLocations(), false);
        ExpectEnd(0.14, Result::Limit, Shoot({&later}, kSoftEnd, 0, kNan, y));
    }
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, EmptyListsAndCurvesLimitNothing)
{
    const ZORGeoCurveOnSurface empty({}, false);
    const ZORGeoCurveOnSurface point({sheet->Project({0.7, 0.52, 0})}, false);
    Processor processor(sheet.get(), kNan, kNan);
    for (const int behavior : {kSoftStart, kSoftEnd, kHardStart, kHardEnd}) {
        Add(processor, {}, behavior);
        Add(processor, {&empty, &point}, behavior);
    }
    const Result result = Shoot(processor);
    ExpectStart(0.5, Result::Border, result);
    ExpectEnd(0.5, Result::Border, result);
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, CanBeClearedAndOutliveTheirCurves)
{
    auto ahead = Line({0.83, 0.5, 0}, {0, 1, 0});
    Processor processor(sheet.get(), 0, kNan);
    Add(processor, {ahead.get()}, kSoftEnd);
    ahead.reset();
    ExpectEnd(0.33, Result::Limit, Shoot(processor));
    ExpectEnd(0.33, Result::Limit, Shoot(processor));
    processor.ClearGeometricLimits();
    ExpectEnd(0.5, Result::Border, Shoot(processor));
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, RefusesWrongLimits)
{
    const auto other = Sheet(3).Make();
    const Result elsewhere =
        Processor(other.get(), kNan, kNan).ComputeGeodesic(other->Project({0.5, 0.5, 0}), {1, 0, 0}, 0);
    const ZORGeoCurveOnSurface foreign(elsewhere.GetLocations(), false);
    const ZORGeoCurveOnSurface chord({sheet->Project({0.05, 0.02, 0}), sheet->Project({0.75, 0.42, 0})},
                                     false);
    const auto good = Line({0.83, 0.5, 0}, {0, 1, 0});
    Processor processor(sheet.get(), 0, kNan);
    Add(processor, {good.get()}, kSoftEnd);
    const auto message = [&](const QList<const ZORGeoCurveOnSurface*>& curves, int behavior) {
        try {
            Add(processor, curves, behavior);
        } catch (const ZORSysException& exception) {
            return exception.GetMessage();
        }
        return QString();
    };
    const auto near = Line({0.6, 0.5, 0}, {0, 1, 0});
    EXPECT_EQ(QString("limits apply to neither side"), message({near.get()}, 8));
    EXPECT_EQ(QString("limits apply to neither side"), message({near.get()}, 0));
    EXPECT_EQ(QString("limit curve 1 is null"), message({near.get(), nullptr}, kSoftEnd));
    EXPECT_EQ(QString("limit curve 1 is on another surface"), message({near.get(), &foreign}, kSoftEnd));
    EXPECT_EQ(QString("segment 0 of limit curve 1 is not within a triangle"),
              message({near.get(), &chord}, kSoftEnd));
    // The limits are those from before.
    ExpectEnd(0.33, Result::Limit, Shoot(processor));
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, RefusedHardLimitsProlongNothing)
{
    const auto good = Line({0.83, 0.5, 0}, {0, 1, 0});
    Processor processor(sheet.get(), 0, 0.1);
    EXPECT_THROW(Add(processor, {good.get(), nullptr}, kHardEnd), ZORSysException);
    ExpectEnd(0.1, Result::Length, Shoot(processor));
    Add(processor, {good.get()}, kHardEnd);
    ExpectEnd(0.33, Result::Limit, Shoot(processor));
    processor.ClearGeometricLimits();
    ExpectEnd(0.1, Result::Length, Shoot(processor));
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, OneCurveCanBeALimitOfSeveralKinds)
{
    const auto ahead = Line({0.83, 0.5, 0}, {0, 1, 0});
    Processor processor(sheet.get(), 0.1, 0.1);
    Add(processor, {ahead.get(), ahead.get()}, kSoftEnd);
    ExpectEnd(0.1, Result::Length, Shoot(processor));
    Add(processor, {ahead.get()}, kHardStart);
    ExpectEnd(0.1, Result::Length, Shoot(processor));
    Add(processor, {ahead.get()}, kHardStart | kHardEnd);
    const Result result = Shoot(processor);
    ExpectEnd(0.33, Result::Limit, result);
    ExpectStart(0.1, Result::Length, result);
}

} // namespace
