// Fixture of the tests of curves on support.

#pragma once

#include "WireframeTest.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORWireframe/ZORWFCurveOnSupport.h>
#include <ZORWireframe/ZORWFRawCurve.h>
#include <ZORWireframe/ZORWFRawPoint.h>
#include <ZORWireframe/ZORWFRawSurface.h>

#include <limits>
#include <numbers>

/// A floor of 100 x 100 mm in the plane z = 0, normal up, that goes on into a wall at x = 100 up to z = 100.
class CurveOnSupportTest : public WireframeTest
{
protected:
    CurveOnSupportTest()
    {
        const QList<ZORMathPoint> corners{{0, 0, 0},   {100, 0, 0},     {100, 100, 0},
                                          {0, 100, 0}, {100, 100, 100}, {100, 0, 100}};
        surface = Make<ZORGeoSurface>(
            "S", corners, QList<ZORGeoSurface::Corners>{{0, 1, 2}, {0, 2, 3}, {2, 1, 5}, {2, 5, 4}});
        support = Add<ZORWFRawSurface>(surface);
        start = Add<ZORWFRawPoint>(ZORMathPoint(50, 20, 0));
    }

    ZORWFRawPoint* AddPoint(const ZORMathPoint& point) { return Add<ZORWFRawPoint>(point); }
    ZORWFRawCurve* AddLine(const ZORMathPoint& from, const ZORMathPoint& to)
    {
        return Add<ZORWFRawCurve>(Make<ZORGeoPolyline>({}, ZORMathSetOfPoints{from, to}, true));
    }
    /// A raw curve over the support along the straight segment between two of its points.
    ZORWFRawCurve* AddLimit(const ZORMathPoint& from, const ZORMathPoint& to)
    {
        auto* const curve = new ZORGeoCurveOnSurface({surface->Project(from), surface->Project(to)}, false);
        curve->Initialize();
        return Add<ZORWFRawCurve>(curve);
    }
    /// From the start point along X with 10 mm back and 30 mm ahead: (40, 20, 0) to (80, 20, 0).
    ZORWFCurveOnSupport* AddDirected(ZORWFCurveOnSupport::ComputationMethod method)
    {
        auto* const curve = Add<ZORWFCurveOnSupport>();
        curve->SetSupport(support);
        curve->SetComputationMethod(method);
        curve->SetStartPoint(start);
        curve->SetStartLength(10);
        curve->SetEndLength(30);
        curve->SetDirection(folder);
        return curve;
    }
    ZORWFCurveOnSupport* AddPointToPoint(ZORFeatGeometry* from, ZORFeatGeometry* to)
    {
        auto* const curve = Add<ZORWFCurveOnSupport>();
        curve->SetSupport(support);
        curve->SetStartPoint(from);
        curve->SetEndPoint(to);
        return curve;
    }

    static const ZORGeoCurveOnSurface* CurveOf(const ZORFeatGeometry* feature)
    {
        const ZORTopBody* const body = feature->GetBody();
        return body ? qobject_cast<const ZORGeoCurveOnSurface*>(body->GetGeometry()) : nullptr;
    }
    /// The ends of the curve of a feature lie within 1e-9 mm of two points.
    static testing::AssertionResult Runs(const ZORFeatGeometry* feature, const ZORMathPoint& from,
                                         const ZORMathPoint& to)
    {
        const ZORGeoCurveOnSurface* const curve = CurveOf(feature);
        if (!curve)
            return testing::AssertionFailure() << "no curve";
        const ZORMathPoint first = curve->GetPoint(0);
        const ZORMathPoint last = curve->GetPoint(curve->GetNumPoints() - 1);
        if (IsNear(first, from) && IsNear(last, to))
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << testing::PrintToString(first) << " to " << testing::PrintToString(last);
    }

    static constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    static constexpr double kPi = std::numbers::pi;
    static constexpr auto kPointToPoint = ZORWFCurveOnSupport::PointToPoint;
    static constexpr auto kPointDirection = ZORWFCurveOnSupport::PointDirection;
    static constexpr auto kConstantAngle = ZORWFCurveOnSupport::ConstantAngle;

    ZORGeoSurface* surface;
    ZORWFRawSurface* support;
    ZORWFRawPoint* start;
};
