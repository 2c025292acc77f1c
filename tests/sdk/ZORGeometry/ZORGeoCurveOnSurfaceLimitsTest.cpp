// Tests of limits of ZORGeoCurveOnSurfaceProcessor: hard and soft, on either side.

#include "TestMeshes.h"
#include "TraceChecks.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <numbers>
#include <random>
#include <vector>

namespace {

using Processor = ZORGeoCurveOnSurfaceProcessor;
using Result = ZORGeoCurveOnSurfaceResult;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr int kSoftStart = 1;
constexpr int kSoftEnd = 2;
constexpr int kHardStart = 9;
constexpr int kHardEnd = 10;

class ZORGeoCurveOnSurfaceLimitsTest : public testing::Test
{
protected:
    // Straight from border to border.
    std::unique_ptr<ZORGeoCurveOnSurface> Line(const ZORMathPoint& point,
                                               const ZORMathVector& direction) const
    {
        const Result result =
            Processor(sheet.get(), kNan, kNan).ComputeGeodesic(sheet->Project(point), direction, 0);
        return std::make_unique<ZORGeoCurveOnSurface>(result.GetLocations(), false);
    }

    static void Add(Processor& processor, const QList<const ZORGeoCurveOnSurface*>& curves, int behavior)
    {
        ZORGeoCurveOnSurfaceLimits limits;
        limits.SetGeometry(curves);
        processor.AddGeometricLimits(limits, Processor::LimitBehaviors::fromInt(behavior));
    }

    // Along the row y from x = 0.5 to both sides.
    Result Shoot(const QList<const ZORGeoCurveOnSurface*>& curves, int behavior, double startLength,
                 double endLength, double y = 0.52) const
    {
        Processor processor(sheet.get(), startLength, endLength);
        Add(processor, curves, behavior);
        return Shoot(processor, y);
    }
    Result Shoot(const Processor& processor, double y = 0.52) const
    {
        const Result result = processor.ComputeGeodesic(sheet->Project({0.5, y, 0}), {1, 0, 0}, 0);
        ExpectConsistent(*sheet, result);
        return result;
    }

    std::unique_ptr<ZORGeoSurface> sheet = Sheet(10).Make();
};

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

// Straight limits on a plane and which sides they end how.
struct Limit
{
    std::unique_ptr<ZORGeoCurveOnSurface> curve;
    int behavior = 0;
};

std::vector<Limit> MakeRandomLimits(const ZORGeoSurface& surface, int count, std::mt19937& random)
{
    std::uniform_real_distribution<double> place(0.05, 0.95);
    std::uniform_real_distribution<double> length(0.02, 0.5);
    std::uniform_real_distribution<double> angles(0, 2 * std::numbers::pi);
    constexpr int behaviors[] = {kSoftStart, kSoftEnd, kSoftStart | kSoftEnd,
                                 kHardStart, kHardEnd, kHardStart | kHardEnd};
    std::vector<Limit> limits;
    for (int i = 0; i < count; ++i) {
        const double x = place(random);
        const double y = place(random);
        const double reach = length(random);
        const Result line = Processor(&surface, 0, reach)
                                .ComputeGeodesic(surface.Project({x, y, 0}), {1, 0, 0}, angles(random));
        limits.push_back({std::make_unique<ZORGeoCurveOnSurface>(line.GetLocations(), false),
                          behaviors[random() % std::size(behaviors)]});
    }
    return limits;
}

// Compares a side with every limit, without a search by triangle. Limits are straight from end to end.
void ExpectNearestLimit(const std::vector<Limit>& limits, int side, const ZORMathPoint& from,
                        const ZORMathVector& direction, double length, double actualLength,
                        Result::StopReason actualReason)
{
    double nearest = std::numeric_limits<double>::infinity();
    for (const Limit& limit : limits) {
        if ((limit.behavior & side) == 0)
            continue;
        const ZORMathPoint begin = limit.curve->GetPoint(0);
        const ZORMathVector along = limit.curve->GetPoint(limit.curve->GetNumPoints() - 1) - begin;
        const double cross = Cross(direction, along).GetZ();
        const double onWay = Cross(begin - from, along).GetZ() / cross;
        const double onLimit = Cross(begin - from, direction).GetZ() / cross;
        const bool isHard = (limit.behavior & Processor::Hard) != 0;
        if (onWay > 0 && onLimit >= 0 && onLimit <= 1 && (isHard || onWay < length))
            nearest = std::min(nearest, onWay);
    }
    if (nearest < std::numeric_limits<double>::infinity()) {
        EXPECT_EQ(Result::Limit, actualReason);
        EXPECT_NEAR(nearest, actualLength, 1e-9);
    } else {
        EXPECT_EQ(Result::Length, actualReason);
        EXPECT_NEAR(length, actualLength, 1e-9);
    }
}

void ExpectSameCurve(const Result& a, const Result& b)
{
    EXPECT_EQ(a.GetStartLength(), b.GetStartLength());
    EXPECT_EQ(a.GetEndLength(), b.GetEndLength());
    EXPECT_EQ(a.GetStartReason(), b.GetStartReason());
    EXPECT_EQ(a.GetEndReason(), b.GetEndReason());
    ASSERT_EQ(a.GetLocations().size(), b.GetLocations().size());
    for (qsizetype i = 0; i < a.GetLocations().size(); ++i)
        EXPECT_EQ(a.GetLocations()[i].point, b.GetLocations()[i].point);
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, AnyNumberOfLimitsGivesTheNearestOfAllSegments)
{
    const auto plane = JitteredSheet(14, 6).Make();
    std::mt19937 random(31);
    std::uniform_real_distribution<double> place(0.35, 0.65);
    std::uniform_real_distribution<double> angles(0, 2 * std::numbers::pi);
    for (const int count : {0, 1, 2, 7, 30, 200}) {
        SCOPED_TRACE(count);
        const std::vector<Limit> limits = MakeRandomLimits(*plane, count, random);
        Processor singly(plane.get(), 0.2, 0.3);
        for (const Limit& limit : limits)
            Add(singly, {limit.curve.get()}, limit.behavior);
        Processor inLists(plane.get(), 0.2, 0.3);
        for (const int behavior : {1, 2, 3, 9, 10, 11}) {
            QList<const ZORGeoCurveOnSurface*> curves;
            for (const Limit& limit : limits) {
                if (limit.behavior == behavior)
                    curves.append(limit.curve.get());
            }
            Add(inLists, curves, behavior);
        }
        for (int i = 0; i < 60; ++i) {
            SCOPED_TRACE(i);
            const double x = place(random);
            const double y = place(random);
            const double angle = angles(random);
            const auto from = plane->Project({x, y, 0});
            const ZORMathVector direction(std::cos(angle), std::sin(angle), 0);
            const Result result = singly.ComputeGeodesic(from, direction, 0);
            ExpectConsistent(*plane, result);
            ExpectNearestLimit(limits, kSoftStart, from.point, -direction, 0.2, result.GetStartLength(),
                               result.GetStartReason());
            ExpectNearestLimit(limits, kSoftEnd, from.point, direction, 0.3, result.GetEndLength(),
                               result.GetEndReason());
            ExpectSameCurve(result, inLists.ComputeGeodesic(from, direction, 0));
        }
    }
}

TEST_F(ZORGeoCurveOnSurfaceLimitsTest, AgreesWithTheCrossingOfLinesInThePlane)
{
    const auto jittered = JitteredSheet(14, 6).Make();
    std::mt19937 random(9);
    std::uniform_real_distribution<double> place(0.05, 0.95);
    std::uniform_real_distribution<double> angles(0, 2 * std::numbers::pi);
    const auto point = [&] {
        const double x = place(random);
        return ZORMathPoint(x, place(random), 0);
    };
    int hits = 0;
    for (int i = 0; i < 500; ++i) {
        const auto from = jittered->Project(point());
        const auto limitFrom = jittered->Project(point());
        const double angle = angles(random);
        const double limitAngle = angles(random);
        const ZORMathVector d(std::cos(angle), std::sin(angle), 0);
        const ZORMathVector e(std::cos(limitAngle), std::sin(limitAngle), 0);
        const Result line = Processor(jittered.get(), 0, 0.4).ComputeGeodesic(limitFrom, e, 0);
        const ZORGeoCurveOnSurface limit(line.GetLocations(), false);
        Processor processor(jittered.get(), 0, kNan);
        Add(processor, {&limit}, kSoftEnd);
        const Result result = processor.ComputeGeodesic(from, d, 0);
        ExpectConsistent(*jittered, result);
        const ZORMathVector to = limitFrom.point - from.point;
        const double cross = Cross(d, e).GetZ();
        const double onWay = Cross(to, e).GetZ() / cross;
        const double onLimit = Cross(to, d).GetZ() / cross;
        const bool isHit = onWay > 0 && onLimit > 0 && onLimit < line.GetEndLength();
        ASSERT_EQ(isHit ? Result::Limit : Result::Border, result.GetEndReason()) << i;
        if (isHit) {
            ASSERT_NEAR(onWay, result.GetEndLength(), 1e-9);
            ++hits;
        }
    }
    EXPECT_GT(hits, 40);
}

} // namespace
