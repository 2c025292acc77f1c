#include "visualization/ZORTestSurfaceVisualizer.h"

#include "VisualizationTest.h"
#include "support/MessageOf.h"

#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>

#include <QCheckBox>

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <vector>

namespace {

constexpr char kDialogClass[] = "ZORTestSurfaceVisOptionsDlg";
using Corners = QList<ZORGeoSurface::Corners>;
using Coordinates = std::array<double, 3>;
using Segment = std::pair<Coordinates, Coordinates>; // the lesser end first

Segment MakeSegment(const ZORMathPoint& p, const ZORMathPoint& q)
{
    const Coordinates a = {p.GetX(), p.GetY(), p.GetZ()};
    const Coordinates b = {q.GetX(), q.GetY(), q.GetZ()};
    return {std::min(a, b), std::max(a, b)};
}

/// By definition: every side at a border, and one of every two sides at which triangles meet.
std::multiset<Segment> FindEdges(const ZORGeoSurface* surface)
{
    std::multiset<Segment> edges;
    for (int triangle = 1; triangle <= surface->GetNumTriangles(); ++triangle) {
        std::array<ZORMathPoint, 3> corners;
        std::array<int, 3> neighbors = {};
        surface->GetVertices(triangle, corners[0], corners[1], corners[2]);
        surface->GetNeighbors(triangle, neighbors[0], neighbors[1], neighbors[2]);
        for (size_t side = 0; side < 3; ++side) {
            if (neighbors[side] == 0 || neighbors[side] > triangle)
                edges.insert(MakeSegment(corners[side], corners[(side + 1) % 3]));
        }
    }
    return edges;
}

class ZORTestSurfaceVisualizerTest : public VisualizationTest
{
protected:
    ZORGeoSurface* AddMesh(const QList<ZORMathPoint>& vertices, const Corners& triangles)
    {
        auto* surface = new ZORGeoSurface(GetContainer(), vertices, triangles);
        surface->Initialize();
        return surface;
    }
    void AnswerWireframe()
    {
        AnswerOptions(kDialogClass, [](QDialog* options) {
            options->findChild<QCheckBox*>("_WireframeChk")->setChecked(true);
        });
    }
    /// Returns the points of the wireframe as they were drawn, two for each segment.
    QList<ZORMathPoint> DrawPoints(ZORGeoSurface* surface)
    {
        AnswerWireframe();
        const auto object = Visualize(surface);
        const auto* lines = GetPrimitive<ZORVisPolylinePrimitive>(GetGraphics(object.get()), 0);
        if (!lines) {
            ADD_FAILURE() << "no wireframe";
            return {};
        }
        EXPECT_EQ(0, int(lines->GetStructure()));
        return lines->GetPoints();
    }
    /// The segments of the wireframe, in the order in which they were drawn.
    std::vector<Segment> DrawWireframe(ZORGeoSurface* surface)
    {
        const QList<ZORMathPoint> points = DrawPoints(surface);
        EXPECT_EQ(0, points.size() % 2);
        std::vector<Segment> segments;
        for (qsizetype i = 0; i + 1 < points.size(); i += 2)
            segments.push_back(MakeSegment(points[i], points[i + 1]));
        return segments;
    }
};

TEST_F(ZORTestSurfaceVisualizerTest, DrawsTheSurfaceShaded)
{
    auto* surface = AddSurface("S");
    SetSetting("Surface/Color", QColor(50, 60, 70));
    AnswerOptions(kDialogClass);
    const auto object = Visualize(surface);
    ASSERT_NE(nullptr, object);
    EXPECT_EQ(surface, object->GetOwner());
    const auto* graphics = GetGraphics(object.get());
    ASSERT_EQ(1, graphics->GetPrimitives().size());
    const auto* shaded = GetPrimitive<ZORVisSurfacePrimitive>(graphics, 0);
    ASSERT_NE(nullptr, shaded);
    EXPECT_EQ(2, shaded->GetNumTriangles());
    ZORVisOptions expected;
    expected.SetColor(QColor(50, 60, 70));
    EXPECT_EQ(expected, graphics->GetOptions()) << "nothing but the color";
}

TEST_F(ZORTestSurfaceVisualizerTest, VisualObjectsAreMadeForTheFeatureEnvironment)
{
    auto* surface = AddSurface("S");
    EXPECT_EQ(QString("ZORVisVirtualObject::ZORVisVirtualObject(<Features>, <S>)"),
              TraceObject(surface, kDialogClass));
}

TEST_F(ZORTestSurfaceVisualizerTest, WireframeKeepsOwnerAndColor)
{
    auto* surface = AddSurface("S");
    AnswerWireframe();
    const auto object = Visualize(surface);
    EXPECT_EQ(surface, object->GetOwner());
    EXPECT_EQ(QColor(127, 127, 127), GetGraphics(object.get())->GetOptions().GetColor());
    EXPECT_EQ(1, GetGraphics(object.get())->GetPrimitives().size());
}

TEST_F(ZORTestSurfaceVisualizerTest, WireframeOfNothingIsEmpty)
{
    EXPECT_TRUE(DrawWireframe(AddMesh({}, {})).empty());
}

TEST_F(ZORTestSurfaceVisualizerTest, WireframeOfATriangleGoesAroundIt)
{
    const ZORMathPoint a(0, 0, 0);
    const ZORMathPoint b(1, 0, 0);
    const ZORMathPoint c(0, 1, 0);
    EXPECT_EQ(QList<ZORMathPoint>({a, b, b, c, c, a}), DrawPoints(AddMesh({a, b, c}, {{0, 1, 2}})));
}

// Three triangles around a vertex. Whichever of their sides is the border, it is drawn in the order of the corners.
TEST_F(ZORTestSurfaceVisualizerTest, BordersAtEverySideAreDrawnFromCornerToCorner)
{
    const ZORMathPoint o(0, 0, 0);
    const ZORMathPoint p(1, 0, 0);
    const ZORMathPoint q(-1, 1, 0);
    const ZORMathPoint r(-1, -1, 0);
    const QList<ZORMathPoint> vertices = {o, p, q, r};
    EXPECT_EQ(QList<ZORMathPoint>({p, q, q, o, o, p, r, p, o, r, q, r}),
              DrawPoints(AddMesh(vertices, {{1, 2, 0}, {2, 3, 0}, {3, 1, 0}})))
        << "first sides";
    EXPECT_EQ(QList<ZORMathPoint>({o, p, p, q, q, o, q, r, r, o, r, p}),
              DrawPoints(AddMesh(vertices, {{0, 1, 2}, {0, 2, 3}, {0, 3, 1}})))
        << "second sides";
    EXPECT_EQ(QList<ZORMathPoint>({q, o, o, p, p, q, o, r, r, p, q, r}),
              DrawPoints(AddMesh(vertices, {{2, 0, 1}, {3, 0, 2}, {1, 0, 3}})))
        << "third sides";
}

TEST_F(ZORTestSurfaceVisualizerTest, SharedEdgeIsDrawnOnce)
{
    auto* surface = AddSurface("S");
    const std::vector<Segment> segments = DrawWireframe(surface);
    EXPECT_EQ(5u, segments.size());
    EXPECT_EQ(1, std::count(segments.begin(), segments.end(), MakeSegment({0, 0, 0}, {1, 1, 0})));
}

// The second and third triangle are both neighbours of the first and of each other.
TEST_F(ZORTestSurfaceVisualizerTest, TrianglesAroundAVertexGiveSixSegments)
{
    const QList<ZORMathPoint> vertices = {{0, 0, 0}, {1, 0, 0}, {-1, 1, 0}, {-1, -1, 0}};
    const std::vector<Segment> segments = DrawWireframe(AddMesh(vertices, {{0, 1, 2}, {0, 2, 3}, {0, 3, 1}}));
    EXPECT_EQ(6u, segments.size());
    EXPECT_EQ(6u, std::set<Segment>(segments.begin(), segments.end()).size());
}

TEST_F(ZORTestSurfaceVisualizerTest, EveryPieceOfTheSurfaceIsDrawn)
{
    const QList<ZORMathPoint> vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 0, 0}, {6, 0, 0}, {5, 1, 0}};
    EXPECT_EQ(6u, DrawWireframe(AddMesh(vertices, {{0, 1, 2}, {3, 4, 5}})).size());
}

TEST_F(ZORTestSurfaceVisualizerTest, EveryEdgeIsDrawnOnceOnRandomMeshes)
{
    std::mt19937 random(20240229);
    const auto upTo = [&random](int limit) { return std::uniform_int_distribution<int>(0, limit)(random); };
    for (int mesh = 0; mesh < 300; ++mesh) {
        QList<ZORMathPoint> vertices;
        for (int i = 0; i < 4 + mesh % 12; ++i)
            vertices.append({double(i), double(i * i % 7), double(upTo(1000))});
        Corners triangles;
        const int last = int(vertices.size()) - 1;
        for (int i = upTo(40); i > 0; --i)
            triangles.append({upTo(last), upTo(last), upTo(last)});
        auto* surface = AddMesh(vertices, triangles);
        const std::vector<Segment> segments = DrawWireframe(surface);
        EXPECT_EQ(FindEdges(surface), std::multiset<Segment>(segments.begin(), segments.end()))
            << "mesh " << mesh;
    }
}

TEST_F(ZORTestSurfaceVisualizerTest, CancelGivesNothing)
{
    auto* surface = AddSurface("S");
    answers.Answer(kDialogClass, [](QDialog* options) { Press(options, "Cancel"); });
    EXPECT_EQ(nullptr, Visualize(surface));
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ZORTestSurfaceVisualizerTest, SurfaceThatDiesBehindTheDialogGivesNothing)
{
    auto* surface = AddSurface("S");
    AnswerOptions(kDialogClass, [surface](QDialog*) { surface->RemoveNoReferences(); });
    EXPECT_EQ(nullptr, Visualize(surface));
}

TEST_F(ZORTestSurfaceVisualizerTest, OtherClassesAreRejected)
{
    auto* point = AddPoint("P");
    ZORTestSurfaceVisualizer visualizer;
    EXPECT_EQ(QString("geometry is not a surface"),
              MessageOf([&] { visualizer.Visualize(GetEnvironment(), point); }));
}

} // namespace
