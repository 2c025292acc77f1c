// What holds for every smoothed curve, and curves to smooth.

#pragma once

#include "CurveChecks.h"
#include "TestMeshes.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceSmoother.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

inline constexpr double kAllowed = 1 + 1.1e-4; // tolerance of the radius and some rounding

inline TestMesh Scaled(TestMesh mesh, double factor, const ZORMathVector& shift)
{
    for (ZORMathPoint& vertex : mesh.vertices)
        vertex = ZORMathPoint() + factor * (vertex - ZORMathPoint()) + shift;
    return mesh;
}

/// A square of 600 mm around the origin in the plane z = 0.
inline TestMesh Plane(int cells)
{
    return Scaled(Sheet(cells), 600, {-300, -300, 0});
}

inline QList<ZORGeoLocationOnSurface> Through(const ZORGeoSurface& surface, const QList<ZORMathPoint>& points)
{
    QList<ZORGeoLocationOnSurface> locations;
    for (const ZORMathPoint& point : points)
        locations.append(surface.Project(point));
    return ZORGeoCurveOnSurfaceSmoother::Connect(locations);
}

/// The corner of the closed forms: two legs, the second one turned to the left by an angle.
inline QList<ZORMathPoint> Corner(double angle, double before, double behind)
{
    return {{-before, 0, 0}, {0, 0, 0}, {behind * std::cos(angle), behind * std::sin(angle), 0}};
}

/// Distance of a point from the chain of segments.
inline double DistanceTo(const QList<ZORGeoLocationOnSurface>& curve, const ZORMathPoint& point)
{
    double distance = curve.constFirst().point.DistanceTo(point);
    for (qsizetype i = 1; i < curve.size(); ++i) {
        const ZORMathVector along = curve[i].point - curve[i - 1].point;
        const double squared = Dot(along, along);
        const double t = squared > 0 ? Dot(point - curve[i - 1].point, along) / squared : 0;
        const ZORMathPoint foot = curve[i - 1].point + std::clamp(t, 0.0, 1.0) * along;
        distance = std::min(distance, foot.DistanceTo(point));
    }
    return distance;
}

/// Mean adjacent length over turn of a curve in a plane, where unfolding changes nothing. Straight ways over
/// several places count as one, with five degrees of the radius at most.
inline double SmallestPlaneRadius(const QList<ZORGeoLocationOnSurface>& curve, double minimum)
{
    struct Way
    {
        ZORMathVector direction;
        double length;
        double turn; // at its end
    };
    QList<Way> ways;
    for (qsizetype i = 1; i < curve.size(); ++i) {
        const ZORMathVector segment = curve[i].point - curve[i - 1].point;
        const double length = segment.GetLength();
        if (length < 1e-7)
            continue;
        if (!ways.isEmpty()) {
            Way& last = ways.last();
            last.turn = std::atan2(Cross(last.direction, segment).GetLength(), Dot(last.direction, segment));
            if (last.turn < 1e-6) {
                last.length += length;
                continue;
            }
        }
        ways.append({segment, length, 0});
    }
    const double longest = minimum * std::numbers::pi / 36;
    double radius = std::numeric_limits<double>::infinity();
    for (qsizetype i = 1; i < ways.size(); ++i) {
        const double length = std::min(ways[i - 1].length, longest) + std::min(ways[i].length, longest);
        radius = std::min(radius, length / 2 / ways[i - 1].turn);
    }
    return radius;
}

inline bool IsSame(const QList<ZORGeoLocationOnSurface>& a, const QList<ZORGeoLocationOnSurface>& b)
{
    return a.size() == b.size()
           && std::equal(a.begin(), a.end(), b.begin(), [](const auto& first, const auto& second) {
                  return first.surface == second.surface && first.triangle == second.triangle
                         && first.weightB == second.weightB && first.weightC == second.weightC
                         && first.point == second.point;
              });
}

/// What holds for every smoothed curve.
inline void ExpectSmoothed(const QList<ZORGeoLocationOnSurface>& before,
                           const QList<ZORGeoLocationOnSurface>& after, double radius)
{
    const ZORGeoCurveOnSurfaceSmoother smoother(radius);
    EXPECT_GE(smoother.FindSmallestRadius(after) * kAllowed, radius);
    EXPECT_EQ(before.constFirst().point, after.constFirst().point);
    EXPECT_EQ(before.constLast().point, after.constLast().point);
    EXPECT_LE(LengthOf(after), LengthOf(before));
    EXPECT_LT(DeviationFromSurface(after), 1e-9);
    EXPECT_TRUE(IsSame(after, smoother.Smooth(after))) << "smooth curves stay as they are";
}

inline QList<ZORGeoLocationOnSurface> SmoothAndCheck(const QList<ZORGeoLocationOnSurface>& curve,
                                                     double radius)
{
    const QList<ZORGeoLocationOnSurface> smooth = ZORGeoCurveOnSurfaceSmoother(radius).Smooth(curve);
    ExpectSmoothed(curve, smooth, radius);
    return smooth;
}
