// Tests of what all functions of ZORTopFactory have in common.

#include "TopologyTest.h"
#include "support/TraceCalls.h"

#include <limits>

namespace {

class ZORTopFactoryTest : public TopologyTest
{
};

TEST_F(ZORTopFactoryTest, BodiesAreRegisteredWithTheContainer)
{
    const ZORGeoPolyline* const curve = AddPolyline(Polygon(4));
    const ZORTopBody* const body = factory.CreateCurve(curve, 45 * kDegree);
    ASSERT_EQ(2, container.GetNumGeometry());
    EXPECT_EQ(body, container.GetGeometryByIndex(1));
    EXPECT_TRUE(body->IsInitialized());
    EXPECT_EQ("Body.1", body->objectName());
    EXPECT_EQ(1, curve->GetReferenceCount());
    EXPECT_EQ(curve, body->GetGeometry());
}

TEST_F(ZORTopFactoryTest, ToleranceThatIsNoAngleIsRefused)
{
    const ZORGeoPolyline* const curve = AddPolyline(Polygon(4));
    const ZORGeoSurface* const surface = AddSurface(Cube());
    for (const double tolerance : {-1.0, -1e-300, -std::numeric_limits<double>::infinity(),
                                   std::numeric_limits<double>::quiet_NaN()}) {
        const QString message = QString("edge tolerance %1 is not an angle of 0 or more").arg(tolerance);
        EXPECT_EQ(message, MessageOf([&] { factory.CreateCurve(curve, tolerance); }));
        EXPECT_EQ(message, MessageOf([&] { factory.CreateSurface(surface, tolerance); }));
    }
    EXPECT_EQ(2, container.GetNumGeometry());
    EXPECT_EQ(0, surface->GetReferenceCount());
}

TEST_F(ZORTopFactoryTest, ToleranceBeyondHalfATurnTakesEverythingForSmooth)
{
    for (const double degrees : {180.0, 181.0, 1e300, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ("1/0/0", Figures(Divide(Cube(), degrees)));
        EXPECT_EQ("0/1/0", Figures(Divide(Polygon(4), degrees)));
        EXPECT_EQ("0/1/0", Figures(Divide(ZORMathSetOfPoints{{0, 0, 0}, {1, 0, 0}, {0, 0, 0}}, degrees)));
    }
}

TEST_F(ZORTopFactoryTest, NullInputsAreRefused)
{
    ZORTopBody* const body = Divide(Cube());
    EXPECT_EQ("curve is null", MessageOf([&] { factory.CreateCurve(nullptr, 1); }));
    EXPECT_EQ("surface is null", MessageOf([&] { factory.CreateSurface(nullptr, 1); }));
    EXPECT_EQ("support is null", MessageOf([&] { factory.Project(nullptr, body); }));
    EXPECT_EQ("projected body is null", MessageOf([&] { factory.Project(body, nullptr); }));
    EXPECT_EQ(2, container.GetNumGeometry());
}

TEST_F(ZORTopFactoryTest, ContainerIsNeeded)
{
    const QString message = "geometry has no container";
    const ZORGeoPolyline* const curve = AddPolyline(Polygon(4));
    ZORTopBody* const support = Divide(Cube());
    ZORTopBody* const projected = factory.CreateCurve(curve, 1);
    const int count = container.GetNumGeometry();
    ZORTopFactory homeless(nullptr);
    EXPECT_EQ(message, MessageOf([&] { homeless.CreateCurve(curve, 1); }));
    EXPECT_EQ(message, MessageOf([&] { homeless.Project(support, projected); }));
    EXPECT_EQ(count, container.GetNumGeometry());
}

TEST_F(ZORTopFactoryTest, NothingMakesNoBody)
{
    EXPECT_EQ(nullptr, Divide(ZORMathSetOfPoints()));
    EXPECT_EQ(nullptr, Divide(TestMesh()));
    EXPECT_EQ(2, container.GetNumGeometry());
}

TEST_F(ZORTopFactoryTest, CallsAreTraced)
{
    ZORGeoPolyline* const curve = AddPolyline(Polygon(4));
    ZORGeoSurface* const surface = AddSurface(Cube());
    const QStringList lines = TraceCalls([&] {
        ZORTopFactory traced(&container);
        const ZORTopBody* const edges = traced.CreateCurve(curve, 0.5);
        const ZORTopBody* const faces = traced.CreateSurface(surface, 0.5);
        traced.Project(faces, edges);
    });
    EXPECT_EQ(
        QStringList({"ZORTopFactory::ZORTopFactory(<>)", "ZORTopFactory::CreateCurve(<Polyline.1>, 0.5)",
                     "ZORTopFactory::CreateSurface(<Surface.1>, 0.5)",
                     "ZORTopFactory::Project(<Body.2>, <Body.1>)"}),
        lines);
}

} // namespace
