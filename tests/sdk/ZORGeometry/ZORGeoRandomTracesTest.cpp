// Random curves over surfaces of all kinds against what holds for every straightest curve.

#include "TestMeshes.h"
#include "TraceChecks.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORMathematics/ZORMathBoundingBox.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <random>

namespace {

using Processor = ZORGeoCurveOnSurfaceProcessor;
using Result = ZORGeoCurveOnSurfaceResult;

constexpr double kPi = std::numbers::pi;

double DiagonalOf(const ZORGeoSurface& surface)
{
    const ZORMathBoundingBox box = surface.GetBoundingBox();
    return box.GetDiagonal();
}

class Shooter
{
public:
    Shooter(const ZORGeoSurface& surface, unsigned seed)
        : m_surface(surface)
        , m_size(DiagonalOf(surface))
        , m_random(seed)
    {
    }

    // Starts in triangles, on sides and in corners.
    ZORGeoLocationOnSurface Start()
    {
        const int triangle = 1 + int(m_random() % unsigned(m_surface.GetNumTriangles()));
        double weights[3] = {Unit(), Unit(), Unit()};
        const unsigned kind = m_random() % 10;
        if (kind < 2)
            weights[m_random() % 3] = 0;
        if (kind == 0)
            weights[m_random() % 3] = 0;
        double sum = weights[0] + weights[1] + weights[2];
        if (sum == 0)
            weights[0] = sum = 1;
        const TestTriangle t = CornersOf(m_surface, triangle);
        const double b = weights[1] / sum;
        const double c = weights[2] / sum;
        return {&m_surface, triangle, b, c, t[0] + b * (t[1] - t[0]) + c * (t[2] - t[0])};
    }

    void Shoot()
    {
        const auto start = Start();
        const ZORMathVector direction(2 * Unit() - 1, 2 * Unit() - 1, 2 * Unit() - 1);
        const double lengths[2] = {m_size * Unit(), m_size * Unit()};
        const double angle = 2 * kPi * Unit();
        const Result result =
            Processor(&m_surface, lengths[0], lengths[1]).ComputeGeodesic(start, direction, angle);
        ExpectConsistent(m_surface, result);
        ExpectStraight(m_surface, result.GetLocations());
        EXPECT_LE(start.point.DistanceTo(result.GetLocations().at(result.GetStartIndex()).point),
                  1e-9 * m_size);
        Count(lengths[0], result.GetStartLength(), result.GetStartReason());
        Count(lengths[1], result.GetEndLength(), result.GetEndReason());
        // Rounding makes curves pass beside a vertex on the way back.
        if (std::max({start.weightB, start.weightC, 1 - start.weightB - start.weightC}) < 1)
            GoBack(result);
        const Result constant =
            Processor(&m_surface, lengths[0], lengths[1]).ComputeConstantAngle(start, direction, angle);
        ExpectConsistent(m_surface, constant);
    }

    int GetCount(Result::StopReason reason) { return m_counts[reason]; }
    int GetReturned() const { return m_returned; }
    int GetLost() const { return m_lost; }

private:
    double Unit() { return std::uniform_real_distribution<double>(0, 1)(m_random); }

    void Count(double requested, double length, Result::StopReason reason)
    {
        ++m_counts[reason];
        if (reason == Result::Length) {
            EXPECT_EQ(requested, length);
        } else {
            EXPECT_LE(length, requested);
        }
        EXPECT_NE(Result::Limit, reason);
        EXPECT_NE(Result::Closed, reason);
    }

    // From the end inside a triangle back over the whole curve.
    void GoBack(const Result& result)
    {
        const auto locations = result.GetLocations();
        const double length = result.GetStartLength() + result.GetEndLength();
        if (result.GetEndReason() != Result::Length || locations.size() < 2)
            return;
        const auto& end = locations.constLast();
        const ZORMathVector back = locations[locations.size() - 2].point - end.point;
        if (std::min({end.weightB, end.weightC, 1 - end.weightB - end.weightC}) < 1e-3
            || back.GetLength() < 1e-3 * SizeOf(CornersOf(m_surface, end.triangle)))
            return;
        const Result returned = Processor(&m_surface, 0, length).ComputeGeodesic(end, back, 0);
        const double distance =
            returned.GetLocations().constLast().point.DistanceTo(locations.constFirst().point);
        ++(distance <= 1e-6 * m_size ? m_returned : m_lost);
    }

    const ZORGeoSurface& m_surface;
    const double m_size;
    std::mt19937 m_random;
    std::map<Result::StopReason, int> m_counts;
    int m_returned = 0;
    int m_lost = 0;
};

void ShootMany(const ZORGeoSurface& surface, int count, unsigned seed)
{
    Shooter shooter(surface, seed);
    for (int i = 0; i < count; ++i) {
        shooter.Shoot();
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "curve " << i;
            return;
        }
    }
    // Curves that pass a vertex very near may pass it on the other side on the way back.
    EXPECT_LE(shooter.GetLost(), 1 + shooter.GetReturned() / 100);
    EXPECT_GT(shooter.GetReturned(), count / 50);
    EXPECT_GT(shooter.GetCount(Result::Length) + shooter.GetCount(Result::Border), count);
}

TEST(ZORGeoRandomTracesTest, HoldOnMadeMeshes)
{
    const QList<TestMesh> meshes = {Cube(),
                                    Sheet(12),
                                    JitteredSheet(20, 1),
                                    DoubledSheet(8),
                                    SliverSheet(8),
                                    Prism(64, 50, 400, 3),
                                    Sphere(100, 24),
                                    Torus(40, 20, 100, 30),
                                    WithRandomWindings(Sphere(100, 12), 1),
                                    WithRandomWindings(Torus(20, 10, 100, 30), 2)};
    for (qsizetype i = 0; i < meshes.size(); ++i) {
        SCOPED_TRACE(i);
        ShootMany(*meshes[i].Make(), 500, unsigned(i));
    }
}

// No two triangles have vertices in common: whatever their shape, curves stay in the first one.
TEST(ZORGeoRandomTracesTest, StayInTheTrianglesOfASoup)
{
    const auto soup = Soup(500, 3).Make();
    Shooter shooter(*soup, 1);
    for (int i = 0; i < 1000; ++i)
        shooter.Shoot();
    EXPECT_EQ(0, shooter.GetCount(Result::Cap));
    EXPECT_GT(shooter.GetCount(Result::Degenerate), 100);
    EXPECT_GT(shooter.GetCount(Result::Border), 500);
}

// Random triangles over few vertices: every kind of bad connection.
TEST(ZORGeoRandomTracesTest, SurviveTangles)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_int_distribution<int> coordinate(0, 3);
        TestMesh mesh;
        for (int i = 0; i < 9; ++i) {
            const int x = coordinate(random);
            const int y = coordinate(random);
            mesh.vertices.append(ZORMathPoint(x, y, seed % 2 == 0 ? coordinate(random) : 0));
        }
        for (int i = 0; i < 24; ++i) {
            const int a = int(random() % 9);
            const int b = int(random() % 9);
            mesh.triangles.append({a, b, int(random() % 9)});
        }
        const auto tangle = mesh.Make();
        if (DiagonalOf(*tangle) == 0)
            continue;
        Shooter shooter(*tangle, seed);
        for (int i = 0; i < 20; ++i)
            shooter.Shoot();
        if (HasFailure())
            return;
    }
}

TEST(ZORGeoRandomTracesTest, HoldOnRealMeshes)
{
    ZOR_REQUIRE_TEST_DATA(folder, "meshes/meshes");
    const QDir meshes(folder);
    const QStringList files = meshes.entryList({QStringLiteral("*.stl")}, QDir::Files, QDir::Name);
    ASSERT_FALSE(files.isEmpty());
    for (const QString& name : files) {
        SCOPED_TRACE(name.toStdString());
        QFile file(meshes.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ZORGeoContainer container;
        const auto surfaces = ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Millimeter);
        for (const ZORGeoSurface* surface : surfaces)
            ShootMany(*surface, 4500 / int(files.size() * surfaces.size()), 7);
    }
}

} // namespace
