// Random courses on meshes of all kinds, smoothed.

#include "SmootherChecks.h"
#include "support/Printers.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORSystem/ZORSysException.h>

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace {

using Locations = ZORGeoCurveOnSurfaceSmoother::Locations;
using std::numbers::pi;

/// Random walks with bends of up to 70 degrees.
class RandomCourses
{
public:
    explicit RandomCourses(unsigned seed)
        : m_random(seed)
    {
    }
    double Next() { return std::uniform_real_distribution<double>(-1, 1)(m_random); }

    /// \param place  the point at coordinates within -200 ... 200
    template<class Place>
    Locations Make(const ZORGeoSurface& surface, const Place& place)
    {
        QList<ZORMathPoint> points;
        const int count = 3 + int(m_random() % 8);
        const double step = 10 + 40 * std::abs(Next());
        double angle = pi * Next();
        double x = 100 * Next();
        double y = 100 * Next();
        for (int i = 0; i < count; ++i) {
            points.append(place(x, y));
            angle += 1.2 * Next();
            x = std::clamp(x + step * std::cos(angle), -200.0, 200.0);
            y = std::clamp(y + step * std::sin(angle), -200.0, 200.0);
        }
        return Through(surface, points);
    }
    double Radius() { return 45 + 30 * Next(); }

private:
    std::mt19937 m_random;
};

template<class Place>
void SmoothMany(const TestMesh& mesh, int count, unsigned seed, const Place& place)
{
    const auto surface = mesh.Make();
    RandomCourses courses(seed);
    for (int i = 0; i < count; ++i) {
        SCOPED_TRACE(i);
        const Locations course = courses.Make(*surface, place);
        const double radius = courses.Radius();
        SmoothAndCheck(course, radius);
        if (testing::Test::HasFailure())
            return;
    }
}

ZORMathPoint InPlane(double x, double y)
{
    return {x, y, 0};
}

TEST(ZORGeoRandomSmoothingTest, ReachesTheRadiusOnRandomCoursesInAPlane)
{
    for (unsigned seed = 1; seed <= 4; ++seed)
        SmoothMany(Scaled(JitteredSheet(20, seed), 600, {-300, -300, 0}), 12, seed, InPlane);
}

TEST(ZORGeoRandomSmoothingTest, ReachesTheRadiusOverTrianglesWithoutAreaAndAllWindings)
{
    const ZORMathVector shift(-320, -320, 0);
    SmoothMany(Scaled(SliverSheet(16), 640, shift), 40, 11, InPlane);
    SmoothMany(Scaled(WithRandomWindings(DoubledSheet(16), 3), 640, shift), 30, 12, InPlane);
}

TEST(ZORGeoRandomSmoothingTest, ReachesTheRadiusOnRandomCoursesOnCurvedSurfaces)
{
    SmoothMany(WithRandomWindings(Sphere(100, 20), 5), 40, 21, [](double x, double y) {
        const double latitude = std::clamp(y, -140.0, 140.0) / 100;
        const double longitude = x / 60;
        return ZORMathPoint(100 * std::cos(latitude) * std::cos(longitude),
                            100 * std::cos(latitude) * std::sin(longitude), 100 * std::sin(latitude));
    });
    SmoothMany(Torus(40, 20, 150, 50, 0.3), 40, 22, [](double x, double y) {
        const double distance = 150 + 50 * std::cos(y / 50);
        return ZORMathPoint(distance * std::cos(x / 150), distance * std::sin(x / 150),
                            50 * std::sin(y / 50));
    });
}

TEST(ZORGeoRandomSmoothingTest, KeepsToTheRulesOnRealMeshes)
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
        std::mt19937 random(7);
        for (const ZORGeoSurface* surface : surfaces) {
            const auto& vertices = surface->GetVertexArray();
            const ZORMathBoundingBox box = surface->GetBoundingBox();
            const double extent = (box.GetUpperPoint() - box.GetLowerPoint()).GetLength();
            Locations places;
            for (int i = 0; i < 3 && !vertices.isEmpty(); ++i)
                places.append(surface->Project(vertices[qsizetype(random() % size_t(vertices.size()))]));
            Locations course;
            try {
                course = ZORGeoCurveOnSurfaceSmoother::Connect(places);
            } catch (const ZORSysException&) {
                continue; // on different pieces
            }
            const Locations smooth = ZORGeoCurveOnSurfaceSmoother(extent / 20).Smooth(course);
            if (smooth.isEmpty())
                continue;
            EXPECT_EQ(course.constFirst().point, smooth.constFirst().point);
            EXPECT_EQ(course.constLast().point, smooth.constLast().point);
            EXPECT_LE(LengthOf(smooth), LengthOf(course) * (1 + 1e-12));
            EXPECT_LT(DeviationFromSurface(smooth), 1e-9);
        }
    }
}

} // namespace
