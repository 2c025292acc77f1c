#include "BodyChecks.h"
#include "TopologyTest.h"
#include "support/ContainerFiles.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORSystem/ZORSysFileException.h>

namespace {

class ZORTopContainerFileTest : public TopologyTest
{
protected:
    /// Bodies come back with all they are made of.
    void RoundTrip()
    {
        ASSERT_TRUE(RoundTrips(container, loaded));
        for (int i = 0; i < container.GetNumGeometry(); ++i) {
            const auto* a = qobject_cast<ZORTopBody*>(container.GetGeometryByIndex(i));
            const auto* b = qobject_cast<ZORTopBody*>(loaded.GetGeometryByIndex(i));
            if (a)
                Compare(*a, *b);
        }
    }
    static void Compare(const ZORTopBody& a, const ZORTopBody& b)
    {
        EXPECT_EQ(Figures(&a), Figures(&b));
        EXPECT_EQ(a.GetDimension(), b.GetDimension());
        for (int i = 0; i < a.GetNumVertices(); ++i)
            EXPECT_EQ(a.GetVertex(i).GetPoint(), b.GetVertex(i).GetPoint());
        for (int i = 0; i < a.GetNumEdges(); ++i) {
            EXPECT_EQ(a.GetEdge(i).GetPoints(), b.GetEdge(i).GetPoints());
            EXPECT_EQ(a.GetEdge(i).GetSides().size(), b.GetEdge(i).GetSides().size());
            EXPECT_EQ(a.GetEdge(i).GetNumVertices(), b.GetEdge(i).GetNumVertices());
        }
        for (int i = 0; i < a.GetNumFaces(); ++i) {
            EXPECT_EQ(a.GetFace(i).GetNumTriangles(), b.GetFace(i).GetNumTriangles());
            EXPECT_EQ(a.GetFace(i).GetNumEdges(), b.GetFace(i).GetNumEdges());
        }
    }

    ZORGeoContainer loaded;
};

TEST_F(ZORTopContainerFileTest, RoundTripsBodiesOfEveryKind)
{
    ASSERT_EQ(QString("6/12/8"), Figures(Divide(Cube())));
    Divide(ZORMathSetOfPoints{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    Divide(Polygon(200));
    Register(new ZORTopBody(&container, Register(new ZORGeoCartesianPoint(&container, {1, 2, 3}))));
    Register(new ZORTopBody(&container, nullptr));
    RoundTrip();
}

TEST_F(ZORTopContainerFileTest, RoundTripsABodyOfSeveralGeometries)
{
    const ZORTopBody* const support = Divide(Cube());
    const ZORTopBody* const body =
        factory.Project(support, Divide(ZORMathSetOfPoints{{0.2, 0.2, 3}, {0.8, 0.2, 3}, {0.8, 0.7, 3}}));
    ASSERT_TRUE(body);
    ASSERT_GT(body->GetGeometries().size(), 1);
    RoundTrip();
}

TEST_F(ZORTopContainerFileTest, ABodyThatLostItsGeometryStaysEmpty)
{
    const ZORTopBody* const body = Divide(Cube());
    delete body->GetGeometry();
    RoundTrip();
    EXPECT_EQ(ZORTopBody::EmptyDimension,
              qobject_cast<ZORTopBody*>(loaded.GetGeometryByIndex(0))->GetDimension());
}

} // namespace
