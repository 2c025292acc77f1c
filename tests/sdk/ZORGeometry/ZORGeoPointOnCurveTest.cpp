// Tests of ZORGeoPointOnCurve.

#include "support/Printers.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoPointOnCurve.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

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
