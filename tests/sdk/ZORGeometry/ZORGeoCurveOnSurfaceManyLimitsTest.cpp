// Tests of ZORGeoCurveOnSurfaceProcessor: many random limits against brute force.

#include "LimitTest.h"

#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>
#include <random>
#include <vector>

namespace {

using ZORGeoCurveOnSurfaceManyLimitsTest = LimitTest;

std::vector<Limit> MakeRandomLimits(const ZORGeoSurface& surface, int count, std::mt19937& random)
{
    std::uniform_real_distribution<double> place(0.05, 0.95);
    std::uniform_real_distribution<double> length(0.02, 0.5);
    std::uniform_real_distribution<double> angles(0, 2 * std::numbers::pi);
    constexpr int kBehaviors[] = {kSoftStart, kSoftEnd, kSoftStart | kSoftEnd,
                                  kHardStart, kHardEnd, kHardStart | kHardEnd};
    std::vector<Limit> limits;
    for (int i = 0; i < count; ++i) {
        const double x = place(random);
        const double y = place(random);
        const double reach = length(random);
        const Result line = Processor(&surface, 0, reach)
                                .ComputeGeodesic(surface.Project({x, y, 0}), {1, 0, 0}, angles(random));
        limits.push_back({std::make_unique<ZORGeoCurveOnSurface>(line.GetLocations(), false),
                          kBehaviors[random() % std::size(kBehaviors)]});
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
        EXPECT_EQ(a.GetLocations().at(i).point, b.GetLocations().at(i).point);
}

TEST_F(ZORGeoCurveOnSurfaceManyLimitsTest, AnyNumberOfLimitsGivesTheNearestOfAllSegments)
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

TEST_F(ZORGeoCurveOnSurfaceManyLimitsTest, AgreesWithTheCrossingOfLinesInThePlane)
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
