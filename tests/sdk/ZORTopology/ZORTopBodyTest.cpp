#include "support/ContainerContent.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

class ZORTopBodyTest : public testing::Test
{
public:
    ZORGeoCartesianPoint* AddPoint() { return Register(new ZORGeoCartesianPoint(&container, {1, 2, 3})); }
    ZORTopBody* AddBody(const ZORGeoGeometry* geometry)
    {
        return Register(new ZORTopBody(&container, geometry));
    }

    ZORGeoContainer container;
};

TEST_F(ZORTopBodyTest, HasTheDimensionOfItsGeometry)
{
    const ZORMathSetOfPoints corners{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const ZORGeoGeometry* const point = AddPoint();
    const ZORGeoGeometry* const polyline = Register(new ZORGeoPolyline(&container, corners, true));
    const ZORGeoGeometry* const surface = Register(new ZORGeoSurface(&container, corners, {{0, 1, 2}}));
    EXPECT_EQ(AddBody(nullptr)->GetDimension(), -1);
    EXPECT_EQ(AddBody(point)->GetDimension(), 0);
    EXPECT_EQ(AddBody(polyline)->GetDimension(), 1);
    EXPECT_EQ(AddBody(surface)->GetDimension(), 2);
    EXPECT_EQ(AddBody(surface)->GetGeometry(), surface);
}

TEST_F(ZORTopBodyTest, IsInOnePieceWithoutATolerance)
{
    const ZORGeoGeometry* const point = AddPoint();
    const ZORTopBody* const pointBody = AddBody(point);
    ASSERT_EQ(pointBody->GetNumVertices(), 1);
    EXPECT_EQ(pointBody->GetVertex(0).GetGeometry(), point);
    EXPECT_EQ(pointBody->GetVertex(0).GetPoint(), ZORMathPoint(1, 2, 3));

    const ZORMathSetOfPoints corners{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const ZORTopBody* const curve = AddBody(Register(new ZORGeoPolyline(&container, corners, true)));
    EXPECT_EQ(curve->GetNumEdges(), 1);
    EXPECT_EQ(curve->GetNumVertices(), 2);
    EXPECT_EQ(curve->GetEdge(0).GetPoints(), corners);

    const QList<ZORGeoSurface::Corners> sides{{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}};
    const ZORTopBody* const surface = AddBody(Register(new ZORGeoSurface(&container, corners, sides)));
    EXPECT_EQ(surface->GetNumFaces(), 1);
    EXPECT_EQ(surface->GetNumEdges(), 0);
    EXPECT_EQ(surface->GetFace(0).GetNumTriangles(), 4);
}

TEST_F(ZORTopBodyTest, OfNothingIsEmpty)
{
    EXPECT_EQ(AddBody(Register(new ZORGeoPolyline(&container, {}, true)))->GetDimension(), -1);
    EXPECT_EQ(AddBody(Register(new ZORGeoSurface(&container, {}, {})))->GetDimension(), -1);
}

TEST_F(ZORTopBodyTest, PartsOutliveTheirGeometryWithoutTheirPoints)
{
    auto* const curve = Register(new ZORGeoLine(&container, {0, 0, 0}, {1, 0, 0}));
    const ZORTopBody* const body = AddBody(curve);
    const ZORTopEdge edge = body->GetEdge(0);
    delete curve;
    EXPECT_EQ(body->GetNumEdges(), 0);
    EXPECT_EQ(edge.GetCurve(), nullptr);
    EXPECT_TRUE(edge.GetPoints().isEmpty());
    EXPECT_TRUE(edge.GetSides().isEmpty());
    EXPECT_EQ(edge.GetVertex(1).GetPoint(), ZORMathPoint(1, 0, 0));
}

TEST_F(ZORTopBodyTest, RefusesGeometriesThatAreNoShapes)
{
    const ZORTopBody* const body = AddBody(nullptr);
    try {
        ZORTopBody other(&container, body);
        ADD_FAILURE() << "a body of a body";
    } catch (const ZORSysException& exception) {
        EXPECT_EQ(exception.GetMessage(), QStringLiteral("a body needs a point, a curve or a surface"));
    }
    EXPECT_EQ(body->GetReferenceCount(), 0);
    EXPECT_EQ(container.GetNumGeometry(), 1);
}

TEST_F(ZORTopBodyTest, CountsAsAUserOfItsGeometryFromConstructionOn)
{
    ZORGeoCartesianPoint* const point = AddPoint();
    auto body = std::make_unique<ZORTopBody>(&container, point);
    EXPECT_EQ(point->GetReferenceCount(), 1);
    body->Initialize();
    EXPECT_EQ(point->GetReferenceCount(), 1);
    body.reset();
    EXPECT_EQ(point->GetReferenceCount(), 0);
    EXPECT_EQ(container.GetNumGeometry(), 1);
}

TEST_F(ZORTopBodyTest, KeepsItsGeometryFromBeingRemoved)
{
    ZORGeoCartesianPoint* const point = AddPoint();
    ZORTopBody* const body = AddBody(point);
    point->RemoveNoReferences();
    ASSERT_EQ(container.GetNumGeometry(), 2);
    body->RemoveNoReferences();
    point->RemoveNoReferences();
    EXPECT_EQ(container.GetNumGeometry(), 0);
}

TEST_F(ZORTopBodyTest, BecomesEmptyWhenItsGeometryIsDestroyed)
{
    const ZORGeoCartesianPoint* const point = AddPoint();
    const ZORTopBody* const body = AddBody(point);
    delete point;
    EXPECT_EQ(body->GetDimension(), ZORTopBody::EmptyDimension);
    EXPECT_EQ(body->GetGeometry(), nullptr);
}

TEST_F(ZORTopBodyTest, SurvivesTheContainerOfItsGeometry)
{
    auto other = std::make_unique<ZORGeoContainer>();
    auto* const point = Register(new ZORGeoCartesianPoint(other.get(), {0, 0, 0}));
    const ZORTopBody* const body = AddBody(point);
    other.reset();
    EXPECT_EQ(body->GetDimension(), ZORTopBody::EmptyDimension);
}

TEST_F(ZORTopBodyTest, IsARegisteredTypeWithANameOfItsOwn)
{
    EXPECT_TRUE(container.GetRegisteredTypes().contains(&ZORTopBody::staticMetaObject));
    EXPECT_EQ(AddBody(nullptr)->objectName(), QStringLiteral("Body.1"));
    EXPECT_EQ(AddBody(nullptr)->objectName(), QStringLiteral("Body.2"));
}

} // namespace
