// Straightest geodesics of the processor, checked as they are computed.

#pragma once

#include "TestMeshes.h"
#include "TraceChecks.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

using Processor = ZORGeoCurveOnSurfaceProcessor;
using Result = ZORGeoCurveOnSurfaceResult;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kPi = std::numbers::pi;

inline Result Shoot(const ZORGeoSurface& surface, const ZORGeoLocationOnSurface& start, double length,
                    const ZORMathVector& direction, double angle = 0)
{
    const Result result = Processor(&surface, 0, length).ComputeGeodesic(start, direction, angle);
    ExpectConsistent(surface, result);
    ExpectStraight(surface, result.GetLocations());
    return result;
}

inline Result ShootBoth(const ZORGeoSurface& surface, const ZORGeoLocationOnSurface& start,
                        const ZORMathVector& direction, double angle = 0)
{
    const Result result = Processor(&surface, kNan, kNan).ComputeGeodesic(start, direction, angle);
    ExpectConsistent(surface, result);
    return result;
}

inline ZORGeoLocationOnSurface CornerOf(const ZORGeoSurface& surface, int triangle, int corner)
{
    return {&surface, triangle, corner == 1 ? 1.0 : 0.0, corner == 2 ? 1.0 : 0.0,
            CornersOf(surface, triangle)[size_t(corner)]};
}
