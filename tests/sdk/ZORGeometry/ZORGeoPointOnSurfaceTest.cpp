// Tests of ZORGeoPointOnSurface.

#include "TestMeshes.h"
#include "support/ContainerContent.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

namespace {

class ZORGeoPointOnSurfaceTest : public testing::Test
{
protected:
    ZORGeoSurface* Add(const TestMesh& mesh) { return Register(mesh.Make(&m_container).release()); }

    ZORGeoContainer m_container;
};

TEST_F(ZORGeoPointOnSurfaceTest, LivesInTheContainerOfItsSurfaceAndReferencesIt)
{
    ZORGeoSurface* const surface = Add(Cube());
    auto* const point = new ZORGeoPointOnSurface(surface->Project({0.25, 0.5, 3}));
    point->Initialize();
    EXPECT_EQ(1, surface->GetReferenceCount());
    EXPECT_EQ("PointOnSurface.1", point->objectName());
    EXPECT_EQ(ZORMathPoint(0.25, 0.5, 1), point->GetMathPoint());
    EXPECT_EQ(surface, point->GetSurface());
    EXPECT_EQ(surface, point->GetLocationOnSurface().surface);
    EXPECT_EQ(4, point->GetLocationOnSurface().triangle);
    point->RemoveNoReferences();
    EXPECT_EQ(0, surface->GetReferenceCount());
}

TEST_F(ZORGeoPointOnSurfaceTest, KeepsItsPlaceWhenTheSurfaceIsDestroyed)
{
    ZORGeoSurface* const surface = Add(Cube());
    const ZORGeoPointOnSurface point(surface->Project({0.25, 0.5, 3}));
    delete surface;
    EXPECT_EQ(nullptr, point.GetSurface());
    EXPECT_TRUE(point.GetLocationOnSurface().IsNull());
    EXPECT_EQ(ZORMathPoint(0.25, 0.5, 1), point.GetMathPoint());
}

TEST_F(ZORGeoPointOnSurfaceTest, RefusesTheProjectionOnASurfaceWithoutTriangles)
{
    const ZORGeoLocationOnSurface nowhere = Add({})->Project({0, 0, 0});
    try {
        const ZORGeoPointOnSurface point(nowhere);
        FAIL();
    } catch (const ZORSysException& exception) {
        EXPECT_EQ("location is not on a surface", exception.GetMessage());
    }
}

} // namespace
