// Tests that raw features come back from container files.

#include "WireframeTest.h"
#include "support/ContainerFiles.h"

#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORWireframe/ZORWFRawCurve.h>
#include <ZORWireframe/ZORWFRawPoint.h>
#include <ZORWireframe/ZORWFRawSurface.h>

namespace {

class ZORWFContainerFileTest : public WireframeTest
{
protected:
    /// The feature of the loaded container that takes the place of \a feature.
    template<class Feature>
    Feature* LoadedCopy(const Feature* feature) const
    {
        return CounterpartOf(feature, container, loaded);
    }

    ZORFeatContainer loaded;
};

TEST_F(ZORWFContainerFileTest, ARawPointKeepsItsBodyAndTakesItAwayWithIt)
{
    auto* const feature = Add<ZORWFRawPoint>(ZORMathPoint(1, 2, 3));
    feature->SetLabel("seed");
    ASSERT_TRUE(RoundTrips(container, loaded));
    auto* const copy = LoadedCopy(feature);
    ASSERT_TRUE(copy);
    EXPECT_EQ(QString("seed"), copy->GetLabel());
    ASSERT_TRUE(copy->GetBody());
    EXPECT_EQ(1, copy->GetBody()->GetReferenceCount());
    const auto* point = qobject_cast<const ZORGeoPoint*>(copy->GetBody()->GetGeometry());
    ASSERT_TRUE(point);
    EXPECT_EQ(ZORMathPoint(1, 2, 3), point->GetMathPoint());
    copy->Remove();
    EXPECT_EQ(2, loaded.GetNumGeometry()) << "root and folder stay";
}

TEST_F(ZORWFContainerFileTest, RawCurvesAndSurfacesKeepTheirBodiesAndLeaveTheirGeometry)
{
    ZORGeoSurface* const surface = AddSquare("S");
    auto* const line = Make<ZORGeoPolyline>("L", ZORMathSetOfPoints{{0, 0, 0}, {1, 2, 3}}, true);
    auto* const curve = Add<ZORWFRawCurve>(line);
    curve->SetLabel("edge");
    auto* const skin = Add<ZORWFRawSurface>(surface);
    Add<ZORWFRawCurve>(nullptr);
    Add<ZORWFRawSurface>(nullptr);
    ASSERT_TRUE(RoundTrips(container, loaded));
    auto* const curveCopy = LoadedCopy(curve);
    auto* const skinCopy = LoadedCopy(skin);
    ASSERT_TRUE(curveCopy && skinCopy);
    EXPECT_EQ(QString("edge"), curveCopy->GetLabel());
    EXPECT_EQ(LoadedCopy<ZORGeoGeometry>(line), curveCopy->GetBody()->GetGeometry());
    EXPECT_EQ(LoadedCopy<ZORGeoGeometry>(surface), skinCopy->GetBody()->GetGeometry());
    const int before = loaded.GetNumGeometry();
    curveCopy->Remove();
    skinCopy->Remove();
    EXPECT_EQ(before - 4, loaded.GetNumGeometry()) << "with their bodies";
    EXPECT_EQ(LoadedCopy<ZORGeoGeometry>(line)->GetReferenceCount(), 0);
}

TEST_F(ZORWFContainerFileTest, FeaturesWithoutTheirBodiesAreSavedWithoutThem)
{
    ZORGeoSurface* const surface = AddSquare("S");
    delete Add<ZORWFRawPoint>(ZORMathPoint(1, 2, 3))->GetBody();
    delete Add<ZORWFRawSurface>(surface)->GetBody();
    delete Add<ZORWFRawCurve>(nullptr)->GetBody();
    auto* const lost = Add<ZORWFRawSurface>(surface);
    delete surface;
    ASSERT_TRUE(RoundTrips(container, loaded));
    EXPECT_EQ(ZORTopBody::EmptyDimension, LoadedCopy(lost)->GetBody()->GetDimension());
}

} // namespace
