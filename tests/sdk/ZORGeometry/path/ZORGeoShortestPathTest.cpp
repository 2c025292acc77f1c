// Tests of shortest geodesics between two places of a surface.

#include "sdk/ZORGeometry/CurveChecks.h"
#include "sdk/ZORGeometry/TestMeshes.h"
#include "support/Printers.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysException.h>

#include <QFile>
#include <queue>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <numbers>

namespace {

using Result = ZORGeoCurveOnSurfaceResult;
constexpr double kPi = std::numbers::pi;

ZORGeoLocationOnSurface Locate(const ZORGeoSurface& surface, int triangle, double weightB, double weightC)
{
    ZORMathPoint a;
    ZORMathPoint b;
    ZORMathPoint c;
    surface.GetVertices(triangle, a, b, c);
    return {&surface, triangle, weightB, weightC, a + weightB * (b - a) + weightC * (c - a)};
}

ZORGeoLocationOnSurface RandomPlace(const ZORGeoSurface& surface, std::mt19937& random, bool isOnEdges = true)
{
    std::uniform_int_distribution<int> triangle(1, surface.GetNumTriangles());
    std::uniform_real_distribution<double> weight(0, 1);
    std::uniform_int_distribution<int> kind(0, 9);
    const int shape = isOnEdges ? kind(random) : 9;
    double b = shape == 0 ? 1 : weight(random);
    double c = shape <= 1 ? 0 : weight(random);
    if (b + c > 1) {
        b = 1 - b;
        c = 1 - c;
    }
    return Locate(surface, triangle(random), b, c);
}

/// The way between two places of a surface, which keeps every segment in its triangle.
Result Connect(const ZORGeoLocationOnSurface& start, const ZORGeoLocationOnSurface& end)
{
    const ZORGeoCurveOnSurfaceProcessor processor(start.surface, 0, 0);
    const Result result = processor.ComputePointToPoint(start, end);
    EXPECT_LT(DeviationFromSurface(result.GetLocations()), 1e-9);
    EXPECT_NEAR(LengthOf(result.GetLocations()), result.GetEndLength(), 1e-9 * (1 + result.GetEndLength()));
    if (!result.GetLocations().isEmpty()) {
        EXPECT_LT(start.point.DistanceTo(result.GetLocations().constFirst().point), 1e-9);
        EXPECT_LT(end.point.DistanceTo(result.GetLocations().constLast().point), 1e-9);
    }
    return result;
}

double DistanceBetween(const ZORGeoSurface& surface, const ZORMathPoint& start, const ZORMathPoint& end)
{
    return Connect(surface.Project(start), surface.Project(end)).GetEndLength();
}

/// Shortest ways on convex surfaces: every sequence of different triangles is unfolded as long as it can be
/// seen through from the start.
class ConvexSearch
{
public:
    ConvexSearch(const ZORGeoSurface& surface, const ZORGeoLocationOnSurface& end)
        : m_surface(surface)
        , m_end(end)
        , m_used(size_t(surface.GetNumTriangles()) + 1)
    {
    }

    double Run(const ZORGeoLocationOnSurface& start)
    {
        const auto corners = m_surface.GetCornerArray()[start.triangle - 1];
        for (int side = 0; side < 3; ++side) {
            const auto at = [&](int corner) {
                return m_surface.GetVertexArray()[corners[size_t(corner) % 3]];
            };
            const double length = at(side).DistanceTo(at(side + 1));
            const ZORMathVector along = (at(side + 1) - at(side)) * (1 / length);
            const ZORMathVector way = start.point - at(side);
            const double x = Dot(way, along);
            const double y = (way - x * along).GetLength();
            m_used.assign(m_used.size(), false);
            m_used[size_t(start.triangle)] = true;
            // The start at the origin, the triangle below the side.
            Unfold(start.triangle, side, {length - x, y}, {-x, y}, {length - x, y}, {-x, y});
        }
        if (start.triangle == m_end.triangle)
            m_best = std::min(m_best, start.point.DistanceTo(m_end.point));
        return m_best;
    }

private:
    struct Point
    {
        double x;
        double y;
    };
    static double Turn(const Point& a, const Point& b) { return a.x * b.y - a.y * b.x; }

    // Behind a side, whose ends lie at right and left, seen between two rays from the origin.
    void Unfold(int from, int side, const Point& right, const Point& left, const Point& rightRay,
                const Point& leftRay)
    {
        int across[3];
        m_surface.GetNeighbors(from, across[0], across[1], across[2]);
        const int triangle = across[side];
        if (triangle == 0 || m_used[size_t(triangle)])
            return;
        const auto& near = m_surface.GetCornerArray()[from - 1];
        const auto& corners = m_surface.GetCornerArray()[triangle - 1];
        const int rightVertex = near[size_t(side + 1) % 3];
        int entry = 0;
        while (corners[size_t(entry)] != rightVertex)
            ++entry; // the surface is well oriented: the side runs from right to left here
        const auto lay = [&](const ZORMathPoint& point) {
            const ZORMathPoint& r = m_surface.GetVertexArray()[rightVertex];
            const ZORMathPoint& l = m_surface.GetVertexArray()[near[size_t(side)]];
            const double squared = Dot(l - r, l - r);
            const double along = Dot(l - r, point - r) / squared;
            const double up = Cross(l - r, point - r).GetLength() / squared;
            const double dx = left.x - right.x;
            const double dy = left.y - right.y;
            return Point{right.x + along * dx + up * dy, right.y + along * dy - up * dx};
        };
        m_used[size_t(triangle)] = true;
        if (triangle == m_end.triangle) {
            const Point end = lay(m_end.point);
            if (Turn(rightRay, end) >= -1e-12 && Turn(end, leftRay) >= -1e-12)
                m_best = std::min(m_best, std::hypot(end.x, end.y));
        }
        const Point apex = lay(m_surface.GetVertexArray()[corners[size_t(entry + 2) % 3]]);
        const bool isAboveRight = Turn(rightRay, apex) > 0;
        const bool isBelowLeft = Turn(apex, leftRay) > 0;
        if (isAboveRight)
            Unfold(triangle, (entry + 2) % 3, right, apex, rightRay, isBelowLeft ? apex : leftRay);
        if (isBelowLeft)
            Unfold(triangle, (entry + 1) % 3, apex, left, isAboveRight ? apex : rightRay, leftRay);
        m_used[size_t(triangle)] = false;
    }

    const ZORGeoSurface& m_surface;
    const ZORGeoLocationOnSurface m_end;
    std::vector<bool> m_used;
    double m_best = std::numeric_limits<double>::infinity();
};

TestMesh Scaled(TestMesh mesh, double x, double y, double z)
{
    for (ZORMathPoint& vertex : mesh.vertices)
        vertex = ZORMathPoint(x * vertex.GetX(), y * vertex.GetY(), z * vertex.GetZ());
    return mesh;
}

TEST(ZORGeoShortestPathTest, GoesOverFiveFacesOfABoxOfTwelveTriangles)
{
    const auto box = Box(30, 12, 12).Make();
    EXPECT_NEAR(40, DistanceBetween(*box, {0, 6, 11}, {30, 6, 1}), 1e-9);
    EXPECT_NEAR(40, DistanceBetween(*box, {30, 6, 1}, {0, 6, 11}), 1e-9);
}

TEST(ZORGeoShortestPathTest, RunsFromAVertexOfATetrahedronToTheOppositeCentre)
{
    const auto tetrahedron = Tetrahedron().Make();
    EXPECT_NEAR(
        1.154700538379,
        DistanceBetween(*tetrahedron, tetrahedron->GetVertexArray()[3], {0.5, std::sqrt(1 / 12.0), 0}),
        1e-12);
}

TEST(ZORGeoShortestPathTest, IsExactOnSmallConvexSurfaces)
{
    std::mt19937 random(11);
    double sum = 0;
    double exactSum = 0;
    double worst = 0;
    for (const TestMesh& mesh : {Cube(), Box(30, 12, 12), Tetrahedron(), Scaled(Sphere(1, 3), 1, 0.6, 1.7),
                                 Scaled(Sphere(1, 4), 3, 1, 1), Sphere(1, 5)}) {
        const auto surface = mesh.Make();
        for (int i = 0; i < 60; ++i) {
            const auto start = RandomPlace(*surface, random, false);
            const auto end = RandomPlace(*surface, random, false);
            const double exact = ConvexSearch(*surface, end).Run(start);
            const double length = Connect(start, end).GetEndLength();
            EXPECT_GE(length, exact * (1 - 1e-9) - 1e-12);
            sum += length;
            exactSum += exact;
            worst = std::max(worst, length / exact);
        }
    }
    EXPECT_LT(sum, 1.001 * exactSum);
    EXPECT_LT(worst, 1.02);
}

/// Lengths over a dense graph: the vertices and many points on every edge. Not shorter than the shortest way.
std::vector<double> DistancesInGraph(const ZORGeoSurface& surface, const ZORGeoLocationOnSurface& start,
                                     const QList<ZORGeoLocationOnSurface>& ends, int pointsPerSide)
{
    // Nodes: vertices, then points of edges.
    std::vector<ZORMathPoint> points(surface.GetVertexArray().begin(), surface.GetVertexArray().end());
    std::map<std::pair<int, int>, int> edges;
    std::vector<std::vector<int>> nodesOf(size_t(surface.GetNumTriangles()) + 1);
    for (int triangle = 1; triangle <= surface.GetNumTriangles(); ++triangle) {
        const auto& corners = surface.GetCornerArray()[triangle - 1];
        for (size_t side = 0; side < 3; ++side) {
            const auto [low, high] = std::minmax(corners[side], corners[(side + 1) % 3]);
            const auto [edge, isNew] = edges.insert({{low, high}, int(points.size())});
            for (int i = 0; isNew && i < pointsPerSide; ++i) {
                const ZORMathPoint from = points[size_t(low)];
                points.push_back(from + (i + 1.0) / (pointsPerSide + 1) * (points[size_t(high)] - from));
            }
            nodesOf[size_t(triangle)].push_back(corners[side]);
            for (int i = 0; i < pointsPerSide; ++i)
                nodesOf[size_t(triangle)].push_back(edge->second + i);
        }
    }
    std::vector<std::vector<int>> trianglesOf(points.size());
    for (size_t triangle = 1; triangle < nodesOf.size(); ++triangle) {
        for (const int node : nodesOf[triangle])
            trianglesOf[size_t(node)].push_back(int(triangle));
    }
    std::vector<double> distances(points.size(), std::numeric_limits<double>::infinity());
    using Waiting = std::pair<double, int>;
    std::priority_queue<Waiting, std::vector<Waiting>, std::greater<>> queue;
    const auto reach = [&](int node, double distance) {
        if (distance < distances[size_t(node)]) {
            distances[size_t(node)] = distance;
            queue.push({distance, node});
        }
    };
    for (const int node : nodesOf[size_t(start.triangle)])
        reach(node, start.point.DistanceTo(points[size_t(node)]));
    while (!queue.empty()) {
        const auto [distance, node] = queue.top();
        queue.pop();
        if (distance > distances[size_t(node)])
            continue;
        for (const int triangle : trianglesOf[size_t(node)]) {
            for (const int other : nodesOf[size_t(triangle)])
                reach(other, distance + points[size_t(node)].DistanceTo(points[size_t(other)]));
        }
    }
    std::vector<double> lengths;
    for (const auto& end : ends) {
        double best = start.triangle == end.triangle ? start.point.DistanceTo(end.point)
                                                     : std::numeric_limits<double>::infinity();
        for (const int node : nodesOf[size_t(end.triangle)])
            best = std::min(best, distances[size_t(node)] + points[size_t(node)].DistanceTo(end.point));
        lengths.push_back(best);
    }
    return lengths;
}

double AngleBetween(const ZORMathVector& a, const ZORMathVector& b)
{
    return std::atan2(Cross(a, b).GetLength(), Dot(a, b));
}

/// The surface angles on both sides of a vertex that a curve passes; infinite beyond a border.
std::array<double, 2> SideAngles(const ZORGeoSurface& surface, const QList<ZORGeoLocationOnSurface>& curve,
                                 qsizetype index, int corner)
{
    const auto& vertices = surface.GetVertexArray();
    const int first = curve[index].triangle;
    const int last = curve[index - 1].triangle;
    const int vertex = surface.GetCornerArray()[first - 1][size_t(corner)];
    const ZORMathPoint& at = vertices[vertex];
    std::array<double, 2> angles = {0, 0};
    for (int way = 0; way < 2; ++way) {
        ZORMathPoint from = curve[index + 1].point;
        int triangle = first;
        int entered = -1; // the vertex at the far end of the side that was crossed last
        for (bool isFirst = true;; isFirst = false) {
            const auto& corners = surface.GetCornerArray()[triangle - 1];
            size_t here = 0;
            while (corners[here] != vertex)
                ++here;
            const bool overNext = isFirst ? way == 0 : corners[(here + 1) % 3] != entered;
            if (triangle == last && !(isFirst && first == last)) {
                angles[size_t(way)] += AngleBetween(from - at, curve[index - 1].point - at);
                break;
            }
            entered = corners[overNext ? (here + 1) % 3 : (here + 2) % 3];
            angles[size_t(way)] += AngleBetween(from - at, vertices[entered] - at);
            int across[3];
            surface.GetNeighbors(triangle, across[0], across[1], across[2]);
            triangle = across[overNext ? here : (here + 2) % 3];
            from = vertices[entered];
            if (triangle == 0) {
                angles[size_t(way)] = INFINITY;
                break;
            }
        }
    }
    return angles;
}

/// Straight over edges, at least pi wide on both sides of vertices.
void ExpectLocallyShortest(const ZORGeoSurface& surface, const QList<ZORGeoLocationOnSurface>& curve)
{
    for (qsizetype i = 1; i + 1 < curve.size(); ++i) {
        const auto& [owner, triangle, weightB, weightC, point] = curve[i];
        const double weights[3] = {1 - weightB - weightC, weightB, weightC};
        const int corner = int(std::max_element(weights, weights + 3) - weights);
        if (weights[corner] == 1) {
            const auto angles = SideAngles(surface, curve, i, corner);
            EXPECT_GT(angles[0], kPi - 1e-6);
            EXPECT_GT(angles[1], kPi - 1e-6);
            continue;
        }
        int onSide = 0;
        while (weights[(onSide + 2) % 3] > 1e-12)
            ASSERT_LT(++onSide, 3) << "turns within a triangle";
        if (weights[corner] > 1 - 1e-6)
            continue; // too close to a vertex for accurate directions
        ZORMathPoint corners[3];
        surface.GetVertices(triangle, corners[0], corners[1], corners[2]);
        const ZORMathVector edge = (corners[(onSide + 1) % 3] - corners[onSide]).GetNormalized();
        EXPECT_NEAR(Dot((point - curve[i - 1].point).GetNormalized(), edge),
                    Dot((curve[i + 1].point - point).GetNormalized(), edge), 1e-5);
    }
}

TestMesh Waves(int cells)
{
    TestMesh mesh = Sheet(cells);
    for (ZORMathPoint& vertex : mesh.vertices)
        vertex.SetZ(0.25 * std::sin(9 * vertex.GetX()) * std::cos(7 * vertex.GetY()));
    return mesh;
}

TEST(ZORGeoShortestPathTest, IsNearlyAsShortAsADenseGraphAllowsOnCurvedSurfaces)
{
    std::mt19937 random(12);
    double sum = 0;
    double graphSum = 0;
    for (const TestMesh& mesh : {Waves(16), Sphere(1, 12), Scaled(Sphere(1, 10), 1, 0.2, 3)}) {
        const auto surface = mesh.Make();
        for (int i = 0; i < 5; ++i) {
            const auto start = RandomPlace(*surface, random);
            QList<ZORGeoLocationOnSurface> ends;
            for (int k = 0; k < 8; ++k)
                ends.append(RandomPlace(*surface, random));
            const auto graph = DistancesInGraph(*surface, start, ends, 10);
            const auto edges = DistancesInGraph(*surface, start, ends, 0);
            for (int k = 0; k < 8; ++k) {
                const Result result = Connect(start, ends[k]);
                ExpectLocallyShortest(*surface, result.GetLocations());
                sum += result.GetEndLength();
                graphSum += graph[size_t(k)];
                EXPECT_LE(result.GetEndLength(), 1.01 * graph[size_t(k)] + 1e-12);
                EXPECT_LE(result.GetEndLength(), edges[size_t(k)] + 1e-12) << "longer than along edges";
                const Result back = Connect(ends[k], start);
                EXPECT_NEAR(result.GetEndLength(), back.GetEndLength(), 1e-12 * (1 + sum));
            }
        }
    }
    EXPECT_LT(sum, 1.0005 * graphSum);
}

TEST(ZORGeoShortestPathTest, FollowsGreatCirclesOfASphere)
{
    const auto sphere = Sphere(100, 60).Make();
    std::mt19937 random(13);
    for (int i = 0; i < 50; ++i) {
        const auto start = RandomPlace(*sphere, random);
        const auto end = RandomPlace(*sphere, random);
        const double angle = AngleBetween(PositionVector(start.point), PositionVector(end.point));
        EXPECT_NEAR(Connect(start, end).GetEndLength(), 100 * angle, 1e-3 * 100 * angle + 0.1);
    }
}

TEST(ZORGeoShortestPathTest, JoinsPlacesOfOneTriangleStraight)
{
    const auto sheet = Sheet(4).Make();
    const Result result = Connect(Locate(*sheet, 7, 0.1, 0.3), Locate(*sheet, 7, 0.5, 0.2));
    EXPECT_EQ(2, result.GetLocations().size());
    EXPECT_EQ(0, result.GetStartIndex());
    EXPECT_EQ(0, result.GetStartLength());
    EXPECT_EQ(Result::Length, result.GetEndReason());
}

TEST(ZORGeoShortestPathTest, StartsAndEndsOnVerticesSidesAndBordersAnywhere)
{
    const auto sheet = Sheet(2).Make();
    // All corners and middles of sides and triangles of the sheet, told by all triangles that hold them.
    QList<ZORGeoLocationOnSurface> places;
    for (int triangle = 1; triangle <= sheet->GetNumTriangles(); ++triangle) {
        const double weights[][2] = {{0, 0}, {1, 0}, {0, 1}, {0.5, 0}, {0.5, 0.5}, {0, 0.5}, {0.3, 0.3}};
        for (const auto& [b, c] : weights)
            places.append(Locate(*sheet, triangle, b, c));
    }
    const ZORGeoCurveOnSurfaceProcessor processor(sheet.get(), 1, 1);
    for (const auto& start : places) {
        for (const auto& end : places) {
            const auto result = processor.ComputePointToPoint(start, end);
            ASSERT_NEAR(start.point.DistanceTo(end.point), result.GetEndLength(), 1e-12);
            ASSERT_EQ(start.point == end.point ? 1 : 2, std::min<qsizetype>(2, result.GetLocations().size()));
        }
    }
    EXPECT_LT(DeviationFromSurface(processor.ComputePointToPoint(places[0], places.last()).GetLocations()),
              1e-9);
}

TEST(ZORGeoShortestPathTest, IgnoresLengthsOfTheProcessor)
{
    const auto sheet = Sheet(3).Make();
    const ZORGeoCurveOnSurfaceProcessor processor(sheet.get(), 0, 0.1);
    EXPECT_NEAR(1,
                processor.ComputePointToPoint(sheet->Project({0, 0.5, 0}), sheet->Project({1, 0.5, 0}))
                    .GetEndLength(),
                1e-12);
}

TEST(ZORGeoShortestPathTest, BendsAroundHolesAndConcaveCorners)
{
    // A sheet of 4 x 4 cells with the upper half of the second column cut out.
    TestMesh mesh = Sheet(4);
    for (const int cell : {13, 9})
        mesh.triangles.remove(2 * cell, 2);
    const auto surface = mesh.Make();
    const Result result = Connect(surface->Project({0.125, 0.75, 0}), surface->Project({0.625, 0.75, 0}));
    EXPECT_NEAR(2 * std::hypot(0.125, 0.25) + 0.25, result.GetEndLength(), 1e-12);
    ExpectLocallyShortest(*surface, result.GetLocations());
}

TEST(ZORGeoShortestPathTest, HasNoLocationsBetweenSeparatePieces)
{
    TestMesh mesh = Sheet(2);
    const TestMesh other = Sheet(2);
    for (const ZORMathPoint& vertex : other.vertices)
        mesh.vertices.append(vertex + ZORMathVector(0, 0, 1));
    for (const auto& [a, b, c] : other.triangles)
        mesh.triangles.append({a + 9, b + 9, c + 9});
    const auto surface = mesh.Make();
    const Result result = Connect(surface->Project({0.3, 0.3, 0}), surface->Project({0.3, 0.3, 1}));
    EXPECT_TRUE(result.GetLocations().isEmpty());
    EXPECT_EQ(Result::Unreachable, result.GetStartReason());
    EXPECT_EQ(Result::Unreachable, result.GetEndReason());
    EXPECT_EQ(0, result.GetEndLength());
}

TEST(ZORGeoShortestPathTest, DoesNotCareForWindings)
{
    TestMesh mesh = Waves(12);
    const auto surface = mesh.Make();
    for (qsizetype i = 0; i < mesh.triangles.size(); i += 3)
        std::swap(mesh.triangles[i][1], mesh.triangles[i][2]);
    const auto flipped = mesh.Make();
    std::mt19937 random(14);
    std::uniform_real_distribution<double> coordinate(0, 1);
    for (int i = 0; i < 50; ++i) {
        const ZORMathPoint start(coordinate(random), coordinate(random), 0);
        const ZORMathPoint end(coordinate(random), coordinate(random), 0);
        EXPECT_NEAR(DistanceBetween(*surface, start, end), DistanceBetween(*flipped, start, end), 1e-9);
    }
}

TEST(ZORGeoShortestPathTest, StaysFiniteOnDegenerateTriangles)
{
    // Vertices moved onto their neighbours: sides without length, triangles without area.
    TestMesh mesh = Sheet(8);
    std::mt19937 random(15);
    std::uniform_int_distribution<int> vertex(0, int(mesh.vertices.size()) - 2);
    for (int i = 0; i < 12; ++i) {
        const int moved = vertex(random);
        mesh.vertices[moved] = mesh.vertices[moved + 1];
    }
    const auto surface = mesh.Make();
    for (int i = 0; i < 300; ++i) {
        const auto start = RandomPlace(*surface, random);
        const auto end = RandomPlace(*surface, random);
        const double length = Connect(start, end).GetEndLength();
        EXPECT_TRUE(std::isfinite(length));
        EXPECT_GE(length, start.point.DistanceTo(end.point) - 1e-12);
    }
    // Points and segments as triangles.
    const auto soup = Soup(50, 1).Make();
    for (int i = 0; i < 100; ++i)
        Connect(RandomPlace(*soup, random), RandomPlace(*soup, random));
}

TEST(ZORGeoShortestPathTest, RefusesPlacesThatAreNotOnTheSurface)
{
    const auto sheet = Sheet(2).Make();
    const auto other = Sheet(2).Make();
    const ZORGeoCurveOnSurfaceProcessor processor(sheet.get(), 0, 0);
    const auto failure = [&](const ZORGeoLocationOnSurface& start, const ZORGeoLocationOnSurface& end) {
        try {
            processor.ComputePointToPoint(start, end);
        } catch (const ZORSysException& exception) {
            return exception.GetMessage();
        }
        return QString();
    };
    const auto place = Locate(*sheet, 1, 0.2, 0.2);
    auto outside = place;
    outside.weightB = 1.5;
    EXPECT_EQ("start location is not on a surface", failure({}, place));
    EXPECT_EQ("end location is not on a surface", failure(place, {}));
    EXPECT_EQ("end location is on another surface", failure(place, Locate(*other, 1, 0.2, 0.2)));
    EXPECT_EQ("end location is not within its triangle", failure(place, outside));
    EXPECT_EQ("start location is not within its triangle", failure(outside, place));
}

TEST(ZORGeoShortestPathTest, HoldsOnRealSurfaces)
{
    ZOR_REQUIRE_TEST_DATA(folder, "meshes/meshes");
    std::mt19937 random(16);
    for (const char* const name : {"fandisk.stl", "boeing.stl", "beetle.stl", "teapot.stl", "spot.stl"}) {
        SCOPED_TRACE(name);
        ZORGeoContainer container;
        QFile file(folder + '/' + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const auto surfaces = ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Millimeter);
        ASSERT_FALSE(surfaces.isEmpty());
        for (int i = 0; i < 6; ++i) {
            const auto start = RandomPlace(*surfaces.first(), random);
            const auto end = RandomPlace(*surfaces.first(), random);
            const Result result = Connect(start, end);
            EXPECT_EQ(result.GetLocations().isEmpty(), result.GetEndReason() == Result::Unreachable);
            if (!result.GetLocations().isEmpty()) {
                EXPECT_GE(result.GetEndLength(), start.point.DistanceTo(end.point) * (1 - 1e-12));
                ExpectLocallyShortest(*surfaces.first(), result.GetLocations());
            }
        }
    }
}

} // namespace
