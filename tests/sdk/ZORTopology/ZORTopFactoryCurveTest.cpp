// Tests of ZORTopFactory::CreateCurve.

#include "TopologyTest.h"

namespace {

class ZORTopFactoryCurveTest : public TopologyTest
{
protected:
    // The points of an edge as text, their x and y.
    static QString PointsOf(const ZORTopEdge& edge)
    {
        QStringList texts;
        for (const ZORMathPoint& point : edge.GetPoints())
            texts.append(QString("%1 %2").arg(QString::number(point.GetX()), QString::number(point.GetY())));
        return texts.join(", ");
    }
    static QString PointsOf(const ZORTopBody* body)
    {
        QStringList texts;
        for (int i = 0; i < body->GetNumEdges(); ++i)
            texts.append(PointsOf(body->GetEdge(i)));
        return texts.join("; ");
    }

    const ZORMathSetOfPoints square{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}};
};

TEST_F(ZORTopFactoryCurveTest, ClosedSquareHasFourEdgesAndVertices)
{
    const ZORTopBody* const body = Divide(square);
    ASSERT_EQ("0/4/4", Figures(body));
    EXPECT_EQ(1, body->GetDimension());
    EXPECT_EQ("0 0, 1 0; 1 0, 1 1; 1 1, 0 1; 0 1, 0 0", PointsOf(body));
    for (int i = 0; i < 4; ++i) {
        const ZORTopEdge edge = body->GetEdge(i);
        EXPECT_EQ(body->GetGeometry(), edge.GetCurve());
        EXPECT_FALSE(edge.IsClosed());
        EXPECT_EQ(0, edge.GetNumFaces());
        EXPECT_TRUE(edge.GetSides().isEmpty());
        ASSERT_EQ(2, edge.GetNumVertices());
        EXPECT_EQ(body->GetVertex(i), edge.GetVertex(0));
        EXPECT_EQ(body->GetVertex((i + 1) % 4), edge.GetVertex(1));
        EXPECT_EQ(2, body->GetVertex(i).GetNumEdges());
        EXPECT_EQ(square[i], body->GetVertex(i).GetPoint());
    }
}

TEST_F(ZORTopFactoryCurveTest, SmoothClosedPolygonIsOneEdgeWithoutVertices)
{
    const ZORTopBody* const body = Divide(Polygon(64));
    ASSERT_EQ("0/1/0", Figures(body));
    EXPECT_TRUE(body->GetEdge(0).IsClosed());
    EXPECT_EQ(65, body->GetEdge(0).GetPoints().size());
    EXPECT_EQ("0/64/64", Figures(Divide(Polygon(64), 5.6))); // it turns by 5.625 degrees
    EXPECT_EQ("0/1/0", Figures(Divide(Polygon(64), 5.63)));
}

TEST_F(ZORTopFactoryCurveTest, TurnOfExactlyTheToleranceIsSmooth)
{
    for (const int sides : {3, 4, 5, 6, 8, 12, 36, 360, 3600}) {
        SCOPED_TRACE(sides);
        const double turn = 360.0 / sides;
        EXPECT_EQ("0/1/0", Figures(Divide(Polygon(sides), turn)));
        EXPECT_EQ(QString("0/%1/%1").arg(sides), Figures(Divide(Polygon(sides), turn - 1e-3)));
    }
}

TEST_F(ZORTopFactoryCurveTest, StraightLineIsSmoothAtToleranceZero)
{
    ZORMathSetOfPoints points;
    for (int i = 0; i < 100; ++i)
        points.append(ZORMathPoint(0.1 * i, 0.3 * i, 0.7 * i));
    EXPECT_EQ("0/1/2", Figures(Divide(points, 0)));
}

TEST_F(ZORTopFactoryCurveTest, OpenCurveHasItsEndsAsVertices)
{
    const ZORTopBody* const body = Divide({{0, 0, 0}, {2, 0, 0}, {3, 0.5, 0}, {3, 5, 0}});
    ASSERT_EQ("0/2/3", Figures(body));
    EXPECT_EQ("0 0, 2 0, 3 0.5; 3 0.5, 3 5", PointsOf(body));
    EXPECT_EQ(1, body->GetVertex(0).GetNumEdges());
    EXPECT_EQ(2, body->GetVertex(1).GetNumEdges());
}

TEST_F(ZORTopFactoryCurveTest, EdgeOfAClosedCurveRunsOnThroughItsSmoothStart)
{
    const ZORTopBody* const body =
        Divide({{0.5, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}, {0.5, 0, 0}});
    ASSERT_EQ("0/4/4", Figures(body));
    EXPECT_EQ("1 0, 1 1; 1 1, 0 1; 0 1, 0 0; 0 0, 0.5 0, 1 0", PointsOf(body));
}

TEST_F(ZORTopFactoryCurveTest, ClosedCurveWithOneCornerStartsAndEndsThere)
{
    const ZORMathPoint tip(0, 10 * std::numbers::sqrt2, 0); // on the tangents at 45 and 135 degrees
    ZORMathSetOfPoints drop;
    for (const ZORMathPoint& point : Polygon(64)) {
        if (point.GetY() < 7.1)
            drop.append(point);
        else if (drop.constLast() != tip)
            drop.append(tip);
    }
    const ZORTopBody* const body = Divide(drop);
    ASSERT_EQ("0/1/1", Figures(body));
    const ZORTopEdge edge = body->GetEdge(0);
    EXPECT_TRUE(edge.IsClosed());
    ASSERT_EQ(1, edge.GetNumVertices());
    EXPECT_EQ(tip, edge.GetVertex(0).GetPoint());
    EXPECT_EQ(tip, edge.GetPoints().constFirst());
    EXPECT_EQ(tip, edge.GetPoints().constLast());
    EXPECT_EQ(drop.size(), edge.GetPoints().size());
    EXPECT_EQ(1, body->GetVertex(0).GetNumEdges());
}

TEST_F(ZORTopFactoryCurveTest, RepeatedPointsChangeNothing)
{
    ZORMathSetOfPoints repeated;
    for (const ZORMathPoint& point : square)
        repeated << point << point << point + ZORMathVector(1e-12, -1e-12, 0);
    EXPECT_EQ("0/4/4", Figures(Divide(repeated)));
    ZORMathSetOfPoints polygon;
    for (const ZORMathPoint& point : Polygon(64))
        polygon << point << point;
    EXPECT_EQ("0/1/0", Figures(Divide(polygon)));
    const ZORTopBody* const line = Divide({{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 0, 0}});
    ASSERT_EQ("0/1/2", Figures(line));
    EXPECT_EQ("0 0, 0 0, 1 0, 2 0, 2 0", PointsOf(line)) << "they stay points of the edge";
}

TEST_F(ZORTopFactoryCurveTest, CurveThereAndBackHasItsTurningPoints)
{
    const ZORTopBody* const body = Divide({{0, 0, 0}, {1, 0, 0}, {0, 0, 0}});
    ASSERT_EQ("0/2/2", Figures(body));
    EXPECT_EQ("0 0, 1 0; 1 0, 0 0", PointsOf(body));
}

TEST_F(ZORTopFactoryCurveTest, CurveWithoutLengthIsAPoint)
{
    for (const ZORMathSetOfPoints& points :
         {ZORMathSetOfPoints{{1, 2, 3}}, ZORMathSetOfPoints{{1, 2, 3}, {1, 2, 3}, {1, 2, 3}}}) {
        const ZORTopBody* const body = Divide(points);
        ASSERT_EQ("0/0/1", Figures(body));
        EXPECT_EQ(0, body->GetDimension());
        EXPECT_EQ(ZORMathPoint(1, 2, 3), body->GetVertex(0).GetPoint());
        EXPECT_EQ(nullptr, body->GetVertex(0).GetGeometry());
        EXPECT_EQ(0, body->GetVertex(0).GetNumEdges());
    }
}

TEST_F(ZORTopFactoryCurveTest, SizeAndPlaceOfTheCurveDoNotMatter)
{
    for (const double scale : {1e-120, 1e-6, 1e6, 1e50}) {
        ZORMathSetOfPoints points;
        for (const ZORMathPoint& point : square)
            points.append(ZORMathPoint(scale * point.GetX(), scale * point.GetY(), scale));
        EXPECT_EQ("0/4/4", Figures(Divide(points))) << scale;
    }
}

TEST_F(ZORTopFactoryCurveTest, EdgesCoverTheCurveInItsOrder)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coordinate(-1, 1);
    for (int run = 0; run < 200; ++run) {
        const int count = 2 + int(random() % 12);
        ZORMathSetOfPoints points;
        for (int i = 0; i < count; ++i)
            points.append(ZORMathPoint(coordinate(random), coordinate(random), coordinate(random)));
        const bool isClosed = count > 2 && run % 2 == 1;
        if (isClosed)
            points.append(points.constFirst());
        const double degrees = 180.0 * double(random() % 1000) / 1000;
        const ZORTopBody* const body = Divide(points, degrees);

        QList<ZORMathPoint> corners;
        const auto size = points.size();
        for (qsizetype i = 0; i < (isClosed ? size - 1 : size); ++i) {
            const ZORMathVector after = points[(i + 1) % size] - points[i];
            const ZORMathVector before = points[i] - points[i > 0 ? i - 1 : size - (isClosed ? 2 : 1)];
            const double turn = std::atan2(Cross(before, after).GetLength(), Dot(before, after));
            if ((!isClosed && (i == 0 || i == size - 1)) || turn > degrees * kDegree)
                corners.append(points[i]);
        }
        ASSERT_EQ(corners.size(), body->GetNumVertices()) << run;
        double length = 0;
        for (int i = 0; i < body->GetNumVertices(); ++i)
            EXPECT_EQ(corners[i], body->GetVertex(i).GetPoint());
        for (int i = 0; i < body->GetNumEdges(); ++i) {
            const ZORTopEdge edge = body->GetEdge(i);
            length += ZORGeoPolyline(nullptr, edge.GetPoints(), true).GetLength();
            for (int end = 0; end < edge.GetNumVertices(); ++end) {
                EXPECT_EQ(end == 0 ? edge.GetPoints().constFirst() : edge.GetPoints().constLast(),
                          edge.GetVertex(end).GetPoint());
            }
        }
        const auto* curve = qobject_cast<const ZORGeoCurve*>(body->GetGeometry());
        EXPECT_NEAR(curve->GetLength(), length, 1e-12);
    }
}

} // namespace
