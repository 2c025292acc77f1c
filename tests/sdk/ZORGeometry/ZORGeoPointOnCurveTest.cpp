// Tests of ZORGeoPointOnCurve.

#include "TestMeshes.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPointOnCurve.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysException.h>

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

class ZORGeoPointOnCurveTest : public testing::Test
{
protected:
    ZORGeoPolyline* AddPolyline(const ZORMathSetOfPoints& points)
    {
        auto* const polyline = new ZORGeoPolyline(&m_container, points, true);
        polyline->Initialize();
        return polyline;
    }

    ZORGeoContainer m_container;
};

TEST_F(ZORGeoPointOnCurveTest, LivesInTheContainerOfItsCurveAndReferencesIt)
{
    ZORGeoPolyline* const curve = AddPolyline({{0, 0, 0}, {4, 0, 0}});
    auto* const point = new ZORGeoPointOnCurve(curve->GetLocation(1, nullptr));
    EXPECT_EQ(1, curve->GetReferenceCount());
    point->Initialize();
    EXPECT_EQ(&m_container, point->GetContainer());
    EXPECT_EQ(2, m_container.GetNumGeometry());
    EXPECT_EQ("PointOnCurve.1", point->objectName());
    EXPECT_EQ(ZORMathPoint(1, 0, 0), point->GetMathPoint());
    EXPECT_EQ(curve, point->GetCurve());
    EXPECT_EQ(1, point->GetLocationOnCurve().distance);

    curve->RemoveNoReferences();
    EXPECT_EQ(2, m_container.GetNumGeometry()) << "a curve in use stays";
    point->RemoveNoReferences();
    EXPECT_EQ(0, curve->GetReferenceCount());
    curve->RemoveNoReferences();
    EXPECT_EQ(0, m_container.GetNumGeometry());
}

TEST_F(ZORGeoPointOnCurveTest, MayLieBeyondTheEndOfTheCurve)
{
    const ZORGeoPointOnCurve point(AddPolyline({{0, 0, 0}, {4, 0, 0}})->GetLocation(7, nullptr));
    EXPECT_EQ(ZORMathPoint(7, 0, 0), point.GetMathPoint());
}

TEST_F(ZORGeoPointOnCurveTest, KeepsItsPlaceWhenTheCurveIsDestroyed)
{
    ZORGeoPolyline* const curve = AddPolyline({{0, 0, 0}, {4, 0, 0}});
    const ZORGeoPointOnCurve point(curve->GetLocation(2, nullptr));
    delete curve;
    EXPECT_EQ(nullptr, point.GetCurve());
    EXPECT_TRUE(point.GetLocationOnCurve().IsNull());
    EXPECT_EQ(ZORMathPoint(2, 0, 0), point.GetMathPoint());
}

TEST_F(ZORGeoPointOnCurveTest, FollowsACurveThatChangesInPlace)
{
    const std::unique_ptr<ZORGeoSurface> surface = Sheet(4).Make();
    const auto locate = [&](const ZORMathPoint& point) { return surface->Project(point); };
    ZORGeoCurveOnSurface curve({locate({0, 0, 0}), locate({1, 0, 0})}, false);
    const auto at = [&](double distance) {
        return std::make_unique<ZORGeoPointOnCurve>(curve.GetLocation(distance, nullptr));
    };
    const auto start = at(0);
    const auto middle = at(0.25);
    const auto end = at(1);
    const auto before = at(-0.5);
    // Of another curve it is known only where the point was put.
    const ZORGeoPointOnCurve odd(
        ZORGeoLocationOnCurve{&curve, std::numeric_limits<double>::quiet_NaN(), {5, 5, 5}});
    QSignalSpy changes(middle.get(), &ZORGeoGeometry::ShapeChanged);

    curve.SetLocations({locate({1, 1, 0}), locate({1, 0.5, 0})});
    EXPECT_EQ(1, changes.size());
    EXPECT_EQ(ZORMathPoint(1, 1, 0), start->GetMathPoint());
    EXPECT_EQ(ZORMathPoint(1, 0.75, 0), middle->GetMathPoint());
    EXPECT_EQ(ZORMathPoint(1, 0.5, 0), end->GetMathPoint());
    EXPECT_EQ(0.5, end->GetLocationOnCurve().distance) << "clamped";
    EXPECT_EQ(ZORMathPoint(1, 1.5, 0), before->GetMathPoint());
    EXPECT_EQ(ZORMathPoint(5, 5, 5), odd.GetMathPoint());

    curve.SetLocations({locate({0, 0, 0}), locate({0, 1, 0})});
    EXPECT_EQ(ZORMathPoint(0, 0.5, 0), end->GetMathPoint()) << "keeps the distance it has now";
    curve.SetLocations({locate({1, 0, 0})});
    for (const ZORGeoPointOnCurve* point : {start.get(), middle.get(), end.get()})
        EXPECT_EQ(ZORMathPoint(1, 0, 0), point->GetMathPoint()) << "a curve without length";
    EXPECT_EQ(5, curve.GetReferenceCount());
}

TEST_F(ZORGeoPointOnCurveTest, RefusesANullLocation)
{
    const ZORGeoLocationOnCurve nowhere = AddPolyline({})->GetLocation(0, nullptr);
    try {
        const ZORGeoPointOnCurve point(nowhere);
        FAIL();
    } catch (const ZORSysException& exception) {
        EXPECT_EQ("location is not on a curve", exception.GetMessage());
    }
    EXPECT_EQ(1, m_container.GetNumGeometry());
}

} // namespace
