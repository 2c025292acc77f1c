// Tests of ZORGeoCurveOnSurfaceProcessor: straightest geodesics from all kinds of starts.

#include "TraceShots.h"

#include <cmath>
#include <functional>
#include <random>

namespace {

TEST(ZORGeoCurveOnSurfaceProcessorTest, RunsAroundACubeBackToItsStart)
{
    const auto cube = Cube().Make();
    const Result result = Shoot(*cube, cube->Project({0.5, 0.5, 1}), 4, {1, 0, 0});
    EXPECT_EQ(4, result.GetEndLength());
    EXPECT_EQ(Result::Length, result.GetEndReason());
    EXPECT_TRUE(IsNear({0.5, 0.5, 1}, EndOf(result)));
    EXPECT_TRUE(IsNear({0, 0.3, 0.5}, EndOf(Shoot(*cube, cube->Project({0.5, 0.3, 1}), 3, {1, 0, 0}))));
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, RunsFromTheEndBehindToTheEndAhead)
{
    const auto sheet = Sheet(20).Make();
    const Result result = Processor(sheet.get(), kNan, 0.25)
                              .ComputeGeodesic(sheet->Project({0.52, 0.53, 0}), {0, 1, 0}, -kPi / 2);
    ExpectConsistent(*sheet, result);
    EXPECT_TRUE(IsNear({0, 0.53, 0}, BeginOf(result)));
    EXPECT_TRUE(IsNear({0.52, 0.53, 0}, result.GetLocations().at(result.GetStartIndex()).point));
    EXPECT_TRUE(IsNear({0.77, 0.53, 0}, EndOf(result)));
    EXPECT_NEAR(0.52, result.GetStartLength(), 1e-12);
    EXPECT_EQ(Result::Border, result.GetStartReason());
    EXPECT_EQ(0.25, result.GetEndLength());
    EXPECT_EQ(Result::Length, result.GetEndReason());
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, LengthsOfZeroGiveTheStart)
{
    const auto cube = Cube().Make();
    for (const auto& start :
         {cube->Project({0.2, 0.3, 1}), cube->Project({1, 1, 1}), CornerOf(*cube, 3, 2)}) {
        const Result result = Processor(cube.get(), 0, 0).ComputeGeodesic(start, {1, 0, 0}, 0);
        ASSERT_EQ(1, result.GetLocations().size());
        EXPECT_EQ(start.point, BeginOf(result));
        EXPECT_EQ(start.triangle, result.GetLocations().constFirst().triangle);
        EXPECT_EQ(0, result.GetStartIndex());
        EXPECT_EQ(0, result.GetStartLength() + result.GetEndLength());
        EXPECT_EQ(Result::Length, result.GetEndReason());
    }
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, ClimbsAPrism)
{
    const auto prism = Prism(64, 50, 400).Make();
    // From an edge of the first facet, so that the facets count from there.
    const Result result = Shoot(*prism, prism->Project({50, 0, 10}), 500, {0, 0, 1}, -kPi / 3);
    EXPECT_EQ(Result::Length, result.GetEndReason());
    EXPECT_NEAR(260, EndOf(result).GetZ(), 1e-9);
    const double width = 100 * std::sin(kPi / 64);
    EXPECT_NEAR(88.248058998, 500 * std::sin(kPi / 3) / width, 1e-9);
    // 88 facets are 24 more than around, then a part of the next.
    const double turned = 2 * kPi * 24 / 64;
    const ZORMathPoint from(50 * std::cos(turned), 50 * std::sin(turned), 260);
    const double next = turned + 2 * kPi / 64;
    const ZORMathPoint to(50 * std::cos(next), 50 * std::sin(next), 260);
    EXPECT_LE((from + 0.248058998 * (to - from)).DistanceTo(EndOf(result)), 1e-7);
}

// How the error falls when the mesh gets finer: with the square of the factor for one of second order.
double GainOfFiner(const std::function<double(int)>& error, int cells, int factor)
{
    const double coarse = error(cells);
    const double fine = error(factor * cells);
    EXPECT_GT(fine, 0);
    return coarse / fine;
}

double MeanOf(int count, const std::function<double(int)>& error)
{
    double sum = 0;
    for (int i = 0; i < count; ++i)
        sum += error(i);
    return sum / count;
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, ConvergesOnACylinder)
{
    const auto error = [](int cells) {
        const auto prism = Prism(cells, 50, 400, 16).Make();
        const Result result = Shoot(*prism, prism->Project({50, 0, 10}), 500, {0, 0, 1}, -kPi / 3);
        const ZORMathPoint exact(50 * std::cos(8.660254038), 50 * std::sin(8.660254038), 260);
        return EndOf(result).DistanceTo(exact);
    };
    EXPECT_NEAR(16, GainOfFiner(error, 64, 4), 2);
    EXPECT_LT(error(512), 0.003);
}

// On which side of a vertex a curve passes makes a difference of its curvature. These errors fall with the square
// of the cell, too, but add up like a random walk over the vertices; hence the means and the wide bounds.
TEST(ZORGeoCurveOnSurfaceProcessorTest, ConvergesToTheAntipodeOnASphere)
{
    const auto error = [](int rows) {
        const auto sphere = Sphere(100, rows).Make();
        std::mt19937 random(1);
        std::uniform_real_distribution<double> coordinate(-1, 1);
        return MeanOf(40, [&](int) {
            const double x = coordinate(random);
            const double y = coordinate(random);
            const ZORMathVector toStart = ZORMathVector(x, y, coordinate(random)).GetNormalized();
            const auto start = sphere->Project(ZORMathPoint() + 100 * toStart);
            const double angle = kPi * coordinate(random);
            const Result result = Shoot(*sphere, start, 100 * kPi, {0.2, -0.4, 1}, angle);
            return EndOf(result).DistanceTo(ZORMathPoint() - 100 * toStart);
        });
    };
    EXPECT_GT(GainOfFiner(error, 24, 4), 7);
    EXPECT_LT(error(96), 0.25);
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, ConvergesOnATorus)
{
    const auto error = [](int cells) {
        return MeanOf(3, [cells](int i) {
            const auto torus = Torus(2 * cells, cells, 100, 30, 0.3 * i).Make();
            const Result result = Shoot(*torus, torus->Project({130, 0, 0}), 600, {0, 0, 1}, -kPi / 3);
            return EndOf(result).DistanceTo({-6.021401, -126.809620, 13.174324});
        });
    };
    EXPECT_GT(GainOfFiner(error, 24, 8), 15);
    EXPECT_LT(error(192), 0.2);
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, IsAStraightLineOnFlatSheets)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> inside(0.001, 0.999);
    std::uniform_real_distribution<double> angles(-kPi, kPi);
    for (const auto& mesh :
         {JitteredSheet(16, 3), SliverSheet(16), DoubledSheet(16),
          WithRandomWindings(JitteredSheet(16, 4), 1), WithRandomWindings(DoubledSheet(9), 2)}) {
        const auto sheet = mesh.Make();
        for (int i = 0; i < 200; ++i) {
            const double x = inside(random);
            const double y = inside(random);
            const double angle = angles(random);
            auto start = sheet->Project({x, y, 0});
            const ZORMathPoint origin = start.point;
            // Seen from below, angles turn the other way.
            const TestTriangle t = CornersOf(*sheet, start.triangle);
            const double turn = Cross(t[1] - t[0], t[2] - t[0]).GetZ() < 0 ? -angle : angle;
            const Result result = ShootBoth(*sheet, start, {1, 0, 0}, turn);
            const ZORMathVector direction(std::cos(angle), std::sin(angle), 0);
            const auto toBorder = [&](double sign) {
                const double dx = sign * direction.GetX();
                const double dy = sign * direction.GetY();
                return std::min((dx > 0 ? 1 - origin.GetX() : -origin.GetX()) / dx,
                                (dy > 0 ? 1 - origin.GetY() : -origin.GetY()) / dy);
            };
            ASSERT_EQ(Result::Border, result.GetStartReason());
            ASSERT_EQ(Result::Border, result.GetEndReason());
            ASSERT_NEAR(toBorder(1), result.GetEndLength(), 1e-9);
            ASSERT_NEAR(toBorder(-1), result.GetStartLength(), 1e-9);
            double last = -kInfinity;
            for (const auto& location : result.GetLocations()) {
                const ZORMathVector from = location.point - origin;
                ASSERT_NEAR(0, Cross(direction, from).GetZ(), 1e-9);
                ASSERT_GT(Dot(direction, from), last);
                last = Dot(direction, from);
            }
        }
    }
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, RunsThroughTheVerticesOfADiagonal)
{
    for (const auto& mesh : {Sheet(10), DoubledSheet(10), SliverSheet(8)}) {
        const auto sheet = mesh.Make();
        for (const double sign : {1.0, -1.0}) {
            const Result result = ShootBoth(*sheet, sheet->Project({0.5, 0.5, 0}), {1, sign, 0});
            EXPECT_TRUE(IsNear({1, 0.5 + sign * 0.5, 0}, EndOf(result)));
            EXPECT_TRUE(IsNear({0, 0.5 - sign * 0.5, 0}, BeginOf(result)));
            EXPECT_NEAR(std::sqrt(2), result.GetStartLength() + result.GetEndLength(), 1e-12);
        }
    }
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, RunsAlongTheEdgesOfARow)
{
    for (const auto& mesh : {Sheet(10), DoubledSheet(10), WithRandomWindings(Sheet(10), 3)}) {
        const auto sheet = mesh.Make();
        for (const ZORMathPoint& start : {ZORMathPoint(0.5, 0.5, 0), ZORMathPoint(0.43, 0.5, 0)}) {
            const Result result = ShootBoth(*sheet, sheet->Project(start), {-1, 0, 0});
            EXPECT_TRUE(IsNear({0, 0.5, 0}, EndOf(result)));
            EXPECT_TRUE(IsNear({1, 0.5, 0}, BeginOf(result)));
        }
    }
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, PassesAConcaveCornerWhereItCanGoStraightOn)
{
    // Without the cells to the right of and above the middle.
    TestMesh mesh = Sheet(2);
    mesh.triangles.resize(6);
    const auto sheet = mesh.Make();
    const Result past = ShootBoth(*sheet, sheet->Project({0.25, 0.75, 0}), {1, -1, 0});
    EXPECT_TRUE(IsNear({1, 0, 0}, EndOf(past)));
    const Result into = ShootBoth(*sheet, sheet->Project({0.25, 0.25, 0}), {1, 1, 0});
    EXPECT_TRUE(IsNear({0.5, 0.5, 0}, EndOf(into)));
    EXPECT_EQ(Result::Border, into.GetEndReason());
    const Result along = ShootBoth(*sheet, sheet->Project({1, 0.5, 0}), {-1, 0, 0});
    EXPECT_TRUE(IsNear({0, 0.5, 0}, EndOf(along)));
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, UnboundedCurvesStopWhereTheyClose)
{
    const auto cube = Cube().Make();
    for (const ZORMathPoint& start :
         {ZORMathPoint(0.5, 0.5, 1), ZORMathPoint(0.3, 0.7, 1), ZORMathPoint(1, 0.2, 0.6)}) {
        const Result result = ShootBoth(*cube, cube->Project(start), {0, 1, 0});
        EXPECT_NEAR(4, result.GetEndLength(), 1e-12);
        EXPECT_EQ(Result::Closed, result.GetEndReason());
        EXPECT_EQ(Result::Closed, result.GetStartReason());
        EXPECT_EQ(0, result.GetStartLength());
        EXPECT_EQ(BeginOf(result), EndOf(result));
    }
    const auto prism = Prism(64, 50, 100, 4).Make();
    // Along the edges between the rows as well.
    for (const double z : {30.0, 50.0}) {
        const Result ring = ShootBoth(*prism, prism->Project({50, 0, z}), {0, 1, 0});
        EXPECT_EQ(Result::Closed, ring.GetEndReason());
        EXPECT_NEAR(6400 * std::sin(kPi / 64), ring.GetEndLength(), 1e-9);
        EXPECT_EQ(BeginOf(ring), EndOf(ring));
    }
    // A given length goes on over the start.
    const Result twice = Shoot(*cube, cube->Project({0.5, 0.5, 1}), 6, {1, 0, 0});
    EXPECT_EQ(Result::Length, twice.GetEndReason());
    EXPECT_TRUE(IsNear({0.5, 0.5, 0}, EndOf(twice)));
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, EndsAtTheCapWithAWarning)
{
    const auto cube = Cube().Make();
    QStringList messages;
    static QStringList* received = nullptr;
    received = &messages;
    const auto handler =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            if (type == QtWarningMsg && QLatin1String(context.category) == QLatin1String("zor.geometry"))
                received->append(text);
        });
    const Result result =
        Processor(cube.get(), 1, kNan)
            .ComputeGeodesic(cube->Project({0.3, 0.4, 1}), {1, std::numbers::phi - 1, 0}, 0);
    qInstallMessageHandler(handler);
    EXPECT_EQ(Result::Cap, result.GetEndReason());
    EXPECT_EQ(Result::Length, result.GetStartReason());
    EXPECT_EQ(10000 + 2 * 12 + 1, result.GetLocations().size() - result.GetStartIndex() - 1);
    ASSERT_EQ(1, messages.size());
    EXPECT_TRUE(
        messages.constFirst().startsWith(QLatin1String("curve over a surface ends after 10024 triangles")))
        << messages.constFirst().toStdString();
    ExpectConsistent(*cube, result);
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, NonManifoldEdgesAreBorders)
{
    TestMesh mesh = Sheet(2);
    // A fin on the edge from (0.5, 0) to (0.5, 0.5).
    mesh.vertices.append({0.5, 0.2, 1});
    mesh.triangles.append({1, 4, 9});
    const auto sheet = mesh.Make();
    const Result result = ShootBoth(*sheet, sheet->Project({0.25, 0.1, 0}), {1, 0, 0});
    EXPECT_TRUE(IsNear({0.5, 0.1, 0}, EndOf(result)));
    EXPECT_EQ(Result::Border, result.GetEndReason());
    EXPECT_TRUE(IsNear({0, 0.1, 0}, BeginOf(result)));
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, StaysInItsPiece)
{
    TestMesh mesh = Sheet(4);
    const TestMesh other = Sheet(4);
    const int shift = int(mesh.vertices.size());
    for (const ZORMathPoint& vertex : other.vertices)
        mesh.vertices.append(vertex + ZORMathVector(1, 0, 0));
    for (const auto& [a, b, c] : other.triangles)
        mesh.triangles.append({a + shift, b + shift, c + shift});
    const auto sheets = mesh.Make();
    const Result result = ShootBoth(*sheets, sheets->Project({0.3, 0.6, 0}), {1, 0, 0});
    EXPECT_TRUE(IsNear({1, 0.6, 0}, EndOf(result)));
    EXPECT_EQ(Result::Border, result.GetEndReason());
}

TEST(ZORGeoCurveOnSurfaceProcessorTest, FlippedNeighboursChangeNothing)
{
    const TestMesh regular = Torus(40, 20, 100, 30);
    TestMesh mixed = WithRandomWindings(regular, 8);
    const auto torus = regular.Make();
    std::mt19937 random(2);
    std::uniform_int_distribution<int> triangles(1, torus->GetNumTriangles());
    for (int i = 0; i < 100; ++i) {
        // The start triangle tells the sense of rotation.
        const int t = triangles(random);
        TestMesh turned = mixed;
        turned.triangles[t - 1] = regular.triangles[t - 1];
        const auto flipped = turned.Make();
        const TestTriangle corners = CornersOf(*torus, t);
        const ZORMathPoint point =
            corners[0] + 0.3 * (corners[1] - corners[0]) + 0.4 * (corners[2] - corners[0]);
        const Result a =
            Processor(torus.get(), 200, 300).ComputeGeodesic({torus.get(), t, 0.3, 0.4, point}, {1, 2, 3}, i);
        const Result b = Processor(flipped.get(), 200, 300)
                             .ComputeGeodesic({flipped.get(), t, 0.3, 0.4, point}, {1, 2, 3}, i);
        ASSERT_EQ(a.GetLocations().size(), b.GetLocations().size());
        for (qsizetype k = 0; k < a.GetLocations().size(); ++k)
            ASSERT_LE(a.GetLocations().at(k).point.DistanceTo(b.GetLocations().at(k).point), 1e-9);
        ExpectConsistent(*flipped, b);
    }
}

} // namespace
