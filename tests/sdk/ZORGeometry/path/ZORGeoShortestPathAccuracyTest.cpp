// Shortest geodesics against other searches and closed forms.

#include "ShortestPaths.h"
#include "support/Printers.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>

#include <QFile>
#include <queue>

#include <limits>
#include <map>

namespace {

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

TEST(ZORGeoShortestPathAccuracyTest, IsExactOnSmallConvexSurfaces)
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

TEST(ZORGeoShortestPathAccuracyTest, IsNearlyAsShortAsADenseGraphAllowsOnCurvedSurfaces)
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

TEST(ZORGeoShortestPathAccuracyTest, FollowsGreatCirclesOfASphere)
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

TEST(ZORGeoShortestPathAccuracyTest, HoldsOnRealSurfaces)
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
