// Geodesics along the rows of a flat sheet, with limits.

#pragma once

#include "TestMeshes.h"
#include "TraceChecks.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

using Processor = ZORGeoCurveOnSurfaceProcessor;
using Result = ZORGeoCurveOnSurfaceResult;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr int kSoftStart = 1;
constexpr int kSoftEnd = 2;
constexpr int kHardStart = 9;
constexpr int kHardEnd = 10;

class LimitTest : public testing::Test
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

// Straight limits on a plane and which sides they end how.
struct Limit
{
    std::unique_ptr<ZORGeoCurveOnSurface> curve;
    int behavior = 0;
};
