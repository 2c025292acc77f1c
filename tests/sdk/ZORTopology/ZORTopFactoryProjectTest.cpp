// Tests of ZORTopFactory::Project.

#include "TopologyTest.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>

#include <QSignalSpy>

namespace {

class ZORTopFactoryProjectTest : public TopologyTest
{
protected:
    ZORTopBody* AddPointBody(const ZORMathPoint& point)
    {
        return Register(new ZORTopBody(&container, Register(new ZORGeoCartesianPoint(&container, point))));
    }

    // From the third geometry on: what a projection added behind its inputs.
    QStringList NamesFrom(int first) const { return GetNames(container, first); }
};

TEST_F(ZORTopFactoryProjectTest, PointGoesToTheNearestPlaceOfTheSurface)
{
    const ZORTopBody* const support = Divide(Sheet(4));
    const ZORTopBody* const body = factory.Project(support, AddPointBody({0.3, 0.6, 7}));
    ASSERT_EQ("0/0/1", Figures(body));
    EXPECT_EQ(0, body->GetDimension());
    const ZORTopVertex vertex = body->GetVertex(0);
    EXPECT_TRUE(IsNear({0.3, 0.6, 0}, vertex.GetPoint()));
    const auto* point = qobject_cast<const ZORGeoPointOnSurface*>(vertex.GetGeometry());
    ASSERT_NE(nullptr, point);
    EXPECT_EQ(point, body->GetGeometry());
    EXPECT_EQ(support->GetGeometry(), point->GetSurface());
    EXPECT_TRUE(point->IsInitialized());
    EXPECT_EQ(1, point->GetReferenceCount());
    EXPECT_EQ(QStringList({"PointOnSurface.1", "Body.3"}), NamesFrom(4));
}

TEST_F(ZORTopFactoryProjectTest, EdgesBecomeCurvesThatShareTheirVertices)
{
    const ZORTopBody* const support = Divide(JitteredSheet(8, 1));
    const ZORTopBody* const square =
        Divide({{0.2, 0.2, 3}, {0.8, 0.2, 1}, {0.8, 0.8, 1}, {0.2, 0.8, -2}, {0.2, 0.2, 3}});
    const ZORTopBody* const body = factory.Project(support, square);
    ASSERT_EQ("0/4/4", Figures(body));
    EXPECT_EQ(1, body->GetDimension());
    EXPECT_EQ(nullptr, body->GetGeometry());
    EXPECT_EQ(4, body->GetGeometries().size());
    for (int i = 0; i < 4; ++i) {
        const ZORTopEdge edge = body->GetEdge(i);
        const auto* curve = qobject_cast<const ZORGeoCurveOnSurface*>(edge.GetCurve());
        ASSERT_NE(nullptr, curve);
        EXPECT_EQ(curve, body->GetGeometries()[i]);
        EXPECT_EQ(support->GetGeometry(), curve->GetSurface());
        EXPECT_EQ(1, curve->GetReferenceCount());
        EXPECT_NEAR(0.6, curve->GetLength(), 1e-9);
        EXPECT_EQ(curve->GetPoints(), edge.GetPoints());
        ASSERT_EQ(2, edge.GetNumVertices());
        EXPECT_EQ(body->GetVertex(i), edge.GetVertex(0));
        EXPECT_EQ(body->GetVertex((i + 1) % 4), edge.GetVertex(1));
        EXPECT_EQ(2, body->GetVertex(i).GetNumEdges());
        EXPECT_EQ(nullptr, body->GetVertex(i).GetGeometry());
    }
    EXPECT_EQ(QStringList(
                  {"CurveOnSurface.1", "CurveOnSurface.2", "CurveOnSurface.3", "CurveOnSurface.4", "Body.3"}),
              NamesFrom(4));
}

TEST_F(ZORTopFactoryProjectTest, ClosedEdgeStaysClosed)
{
    const ZORTopBody* const support = Divide(Sphere(40, 24));
    ZORMathSetOfPoints circle = Polygon(64);
    for (ZORMathPoint& point : circle)
        point = point + ZORMathVector(0, 0, 60);
    const ZORTopBody* const body = factory.Project(support, Divide(circle));
    ASSERT_EQ("0/1/0", Figures(body));
    EXPECT_TRUE(body->GetEdge(0).IsClosed());
    EXPECT_EQ(body->GetGeometry(), body->GetEdge(0).GetCurve());
}

TEST_F(ZORTopFactoryProjectTest, OpenCurveHasTheEndsOfItsProjection)
{
    const ZORTopBody* const support = Divide(Sheet(4));
    const ZORTopBody* const body =
        factory.Project(support, Divide(ZORMathSetOfPoints{{0.1, 0.1, 1}, {0.9, 0.3, 5}}));
    ASSERT_EQ("0/1/2", Figures(body));
    EXPECT_TRUE(IsNear({0.1, 0.1, 0}, body->GetVertex(0).GetPoint()));
    EXPECT_TRUE(IsNear({0.9, 0.3, 0}, body->GetVertex(1).GetPoint()));
}

TEST_F(ZORTopFactoryProjectTest, EdgeAlongTheProjectionJoinsItsVertices)
{
    const ZORTopBody* const support = Divide(Sheet(4));
    const ZORTopBody* const stairs = Divide({{0.1, 0.1, 1}, {0.5, 0.1, 1}, {0.5, 0.1, 3}, {0.5, 0.9, 3}});
    ASSERT_EQ("0/3/4", Figures(stairs));
    const int count = container.GetNumGeometry();
    const ZORTopBody* const body = factory.Project(support, stairs);
    ASSERT_EQ("0/2/3", Figures(body));
    EXPECT_EQ(body->GetEdge(0).GetVertex(1), body->GetEdge(1).GetVertex(0));
    EXPECT_EQ(count + 3, container.GetNumGeometry()) << "two curves and the body";
}

TEST_F(ZORTopFactoryProjectTest, LineAlongTheProjectionBecomesAPoint)
{
    const ZORTopBody* const support = Divide(Sheet(4));
    const ZORTopBody* const body =
        factory.Project(support, Divide(ZORMathSetOfPoints{{0.3, 0.3, 1}, {0.3, 0.3, 5}}));
    ASSERT_EQ("0/0/1", Figures(body));
    EXPECT_EQ(0, body->GetDimension());
    EXPECT_NE(nullptr, qobject_cast<const ZORGeoPointOnSurface*>(body->GetGeometry()));
}

TEST_F(ZORTopFactoryProjectTest, ProjectionCanBeProjectedAgain)
{
    const ZORTopBody* const lower = Divide(Sheet(4));
    TestMesh raised = Sheet(3);
    for (ZORMathPoint& vertex : raised.vertices)
        vertex = vertex + ZORMathVector(0, 0, 1);
    const ZORTopBody* const upper = Divide(raised);
    const ZORTopBody* const square =
        Divide({{0.2, 0.2, 3}, {0.8, 0.2, 3}, {0.8, 0.8, 3}, {0.2, 0.8, 3}, {0.2, 0.2, 3}});
    const ZORTopBody* const body = factory.Project(lower, factory.Project(upper, square));
    ASSERT_EQ("0/4/4", Figures(body));
    const ZORTopBody* const point = factory.Project(lower, factory.Project(upper, AddPointBody({0, 0, 9})));
    ASSERT_EQ("0/0/1", Figures(point));
}

TEST_F(ZORTopFactoryProjectTest, ClosedCurveStaysClosedWhereTwoFacetsAreEquallyNear)
{
    // The curve starts above the bottom of a valley, where both sides are equally near.
    const ZORTopBody* const support =
        Divide(TestMesh{{{0, -4, 0}, {0, 4, 0}, {4, -4, 4}, {4, 4, 4}, {-4, -4, 4}, {-4, 4, 4}},
                        {{0, 2, 3}, {0, 3, 1}, {0, 5, 4}, {0, 1, 5}}},
               180);
    for (const double offset : {0.0, 5e-15}) {
        const ZORTopBody* const source =
            Divide(ZORMathSetOfPoints{{-offset, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0.5, 1, 1}, {offset, 0, 1}});
        ASSERT_EQ(QString("0/4/4"), Figures(source));
        EXPECT_EQ(source->GetEdge(0).GetPoints().constFirst(), source->GetEdge(3).GetPoints().constLast());
        EXPECT_EQ(QString("0/4/4"), Figures(factory.Project(support, source))) << offset;
    }
}

TEST_F(ZORTopFactoryProjectTest, BodyOfSeveralCurvesFollowsThem)
{
    ZORGeoSurface* const surface = AddSurface(Sheet(8));
    const ZORTopBody* const support = factory.CreateSurface(surface, kDegree);
    const ZORTopBody* const body = factory.Project(
        support, Divide(ZORMathSetOfPoints{{0.25, 0.25, 1}, {0.75, 0.25, 1}, {0.75, 0.75, 1}}));
    ASSERT_EQ(QString("0/2/3"), Figures(body));
    const ZORMathSetOfPoints other = body->GetEdge(1).GetPoints();
    QSignalSpy changes(body, &ZORGeoGeometry::ShapeChanged);
    const_cast<ZORGeoCurveOnSurface*>(qobject_cast<const ZORGeoCurveOnSurface*>(body->GetEdge(0).GetCurve()))
        ->SetLocations({surface->Project({0, 0, 0}), surface->Project({0.125, 0.0625, 0}),
                        surface->Project({0.75, 0.25, 0})});
    EXPECT_EQ(1, changes.size());
    ASSERT_EQ(QString("0/2/3"), Figures(body));
    EXPECT_EQ((ZORMathSetOfPoints{{0, 0, 0}, {0.125, 0.0625, 0}, {0.75, 0.25, 0}}),
              body->GetEdge(0).GetPoints());
    EXPECT_EQ(ZORMathPoint(0, 0, 0), body->GetEdge(0).GetVertex(0).GetPoint());
    EXPECT_EQ(ZORMathPoint(0.75, 0.25, 0), body->GetEdge(0).GetVertex(1).GetPoint());
    EXPECT_EQ(other, body->GetEdge(1).GetPoints());
}

TEST_F(ZORTopFactoryProjectTest, EdgesThatTheSurfaceTearsApartKeepVerticesOfTheirOwn)
{
    // Two plates with a wide gap; the corner of the angle is nearer to the one, its leg ends at the other.
    TestMesh plates = Sheet(2);
    const int first = int(plates.vertices.size());
    for (const ZORMathPoint& vertex : Sheet(2).vertices)
        plates.vertices.append(vertex + ZORMathVector(3, 0, 0));
    for (const auto& [a, b, c] : Sheet(2).triangles)
        plates.triangles.append({first + a, first + b, first + c});
    const ZORTopBody* const support = Divide(plates);
    const ZORTopBody* const angle = Divide({{0.5, 0.2, 1}, {1.2, 0.2, 1}, {1.2, 0.2, 40}, {3.8, 0.2, 40}});
    const ZORTopBody* const body = factory.Project(support, angle);
    ASSERT_NE(nullptr, body);
    for (int i = 0; i < body->GetNumEdges(); ++i) {
        const ZORTopEdge edge = body->GetEdge(i);
        ASSERT_EQ(2, edge.GetNumVertices());
        EXPECT_TRUE(IsNear(edge.GetPoints().constFirst(), edge.GetVertex(0).GetPoint()));
        EXPECT_TRUE(IsNear(edge.GetPoints().constLast(), edge.GetVertex(1).GetPoint()));
    }
}

TEST_F(ZORTopFactoryProjectTest, EdgesAndVerticesFitTogetherWhateverTheSurface)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> coordinate(-1.5, 1.5);
    const TestMesh meshes[] = {Soup(60, 3), Cube(), Torus(12, 8, 1, 0.4),
                               WithRandomWindings(Sphere(1, 6), 5)};
    for (int run = 0; run < 80; ++run) {
        SCOPED_TRACE(run);
        const TestMesh& mesh = meshes[run % 4];
        ZORMathSetOfPoints points;
        for (unsigned i = 2 + random() % 5; i > 0; --i)
            points.append(ZORMathPoint(coordinate(random), coordinate(random), coordinate(random)));
        if (run % 3 == 0)
            points.append(points.constFirst());
        const ZORTopBody* const source = Divide(points, 30);
        const int count = container.GetNumGeometry();
        const ZORTopBody* const body = factory.Project(Divide(mesh), source);
        ASSERT_NE(nullptr, body);
        EXPECT_GE(body->GetDimension(), 0);
        EXPECT_LE(body->GetNumEdges(), source->GetNumEdges());
        EXPECT_EQ(count + 3 + body->GetGeometries().size(), container.GetNumGeometry())
            << "support with surface, parts and body, nothing else";
        for (int i = 0; i < body->GetNumEdges(); ++i) {
            const ZORTopEdge edge = body->GetEdge(i);
            const ZORMathSetOfPoints path = edge.GetPoints();
            const int numVertices = edge.GetNumVertices();
            EXPECT_GE(path.size(), 2);
            EXPECT_LT(0, edge.GetCurve()->GetLength());
            if (numVertices < 2) {
                EXPECT_TRUE(IsNear(path.constFirst(), path.constLast()));
            }
            if (numVertices > 0) {
                EXPECT_TRUE(IsNear(edge.GetVertex(0).GetPoint(), path.constFirst()));
                EXPECT_TRUE(IsNear(edge.GetVertex(numVertices - 1).GetPoint(), path.constLast()));
            }
        }
        for (int i = 0; i < body->GetNumVertices(); ++i) {
            const ZORTopVertex vertex = body->GetVertex(i);
            EXPECT_EQ(vertex.GetNumEdges() == 0, vertex.GetGeometry() != nullptr);
        }
    }
}

TEST_F(ZORTopFactoryProjectTest, OtherDimensionsMakeNoBody)
{
    const ZORTopBody* const surface = Divide(Sheet(2));
    const ZORTopBody* const curve = Divide(Polygon(4));
    const ZORTopBody* const point = AddPointBody({0, 0, 0});
    const ZORTopBody* const empty = Register(new ZORTopBody(&container, nullptr));
    const int count = container.GetNumGeometry();
    EXPECT_EQ(nullptr, factory.Project(surface, surface));
    EXPECT_EQ(nullptr, factory.Project(curve, curve));
    EXPECT_EQ(nullptr, factory.Project(curve, point));
    EXPECT_EQ(nullptr, factory.Project(curve, surface));
    EXPECT_EQ(nullptr, factory.Project(point, point));
    EXPECT_EQ(nullptr, factory.Project(surface, empty));
    EXPECT_EQ(nullptr, factory.Project(empty, point));
    EXPECT_EQ(count, container.GetNumGeometry());
}

TEST_F(ZORTopFactoryProjectTest, BodyBecomesEmptyWithOneOfItsCurves)
{
    const ZORTopBody* const support = Divide(Sheet(4));
    const ZORTopBody* const square =
        Divide({{0.2, 0.2, 3}, {0.8, 0.2, 3}, {0.8, 0.8, 3}, {0.2, 0.8, 3}, {0.2, 0.2, 3}});
    const ZORTopBody* const body = factory.Project(support, square);
    delete body->GetEdge(2).GetCurve();
    EXPECT_EQ(ZORTopBody::EmptyDimension, body->GetDimension());
    EXPECT_EQ("0/0/0", Figures(body));
    EXPECT_TRUE(body->GetGeometries().isEmpty());
}

} // namespace
