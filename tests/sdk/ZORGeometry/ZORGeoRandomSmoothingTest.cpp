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
void SmoothMany(const TestMesh& mesh, int count, unsigned seed, const Place& place, bool isPlane = false)
{
    const auto surface = mesh.Make();
    RandomCourses courses(seed);
    for (int i = 0; i < count; ++i) {
        SCOPED_TRACE(i);
        const Locations course = courses.Make(*surface, place);
        const double radius = courses.Radius();
        const Locations smooth = SmoothAndCheck(course, radius);
        if (isPlane) {
            EXPECT_GE(SmallestPlaneRadius(smooth, radius) * kAllowed, radius);
        }
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
        SmoothMany(Scaled(JitteredSheet(20, seed), 600, {-300, -300, 0}), 6, seed, InPlane, true);
}

TEST(ZORGeoRandomSmoothingTest, ReachesTheRadiusOverTrianglesWithoutAreaAndAllWindings)
{
    const ZORMathVector shift(-320, -320, 0);
    SmoothMany(Scaled(SliverSheet(16), 640, shift), 15, 11, InPlane, true);
    SmoothMany(Scaled(WithRandomWindings(DoubledSheet(16), 3), 640, shift), 34, 12, InPlane, true);
}

TEST(ZORGeoRandomSmoothingTest, ReachesTheRadiusOnRandomCoursesOnCurvedSurfaces)
{
    SmoothMany(WithRandomWindings(Sphere(100, 20), 5), 15, 21, [](double x, double y) {
        const double latitude = std::clamp(y, -140.0, 140.0) / 100;
        const double longitude = x / 60;
        return ZORMathPoint(100 * std::cos(latitude) * std::cos(longitude),
                            100 * std::cos(latitude) * std::sin(longitude), 100 * std::sin(latitude));
    });
    SmoothMany(Torus(40, 20, 150, 50, 0.3), 20, 22, [](double x, double y) {
        const double distance = 150 + 50 * std::cos(y / 50);
        return ZORMathPoint(distance * std::cos(x / 150), distance * std::sin(x / 150),
                            50 * std::sin(y / 50));
    });
}

// A walk over a surface: every place is near to a point at a random distance of the former one.
Locations MakeRandomWalk(const ZORGeoSurface& surface, double step, std::mt19937& random)
{
    const auto& vertices = surface.GetVertexArray();
    std::uniform_real_distribution<double> shift(-step, step);
    Locations places = {surface.Project(vertices[qsizetype(random() % size_t(vertices.size()))])};
    for (int i = 0; i < 5; ++i) {
        const double x = shift(random);
        const double y = shift(random);
        const double z = shift(random);
        places.append(surface.Project(places.constLast().point + ZORMathVector(x, y, z)));
    }
    return ZORGeoCurveOnSurfaceSmoother::Connect(places);
}

TEST(ZORGeoRandomSmoothingTest, RealMeshesAreSmoothedByTheRulesOrNotAtAll)
{
    ZOR_REQUIRE_TEST_DATA(folder, "meshes/meshes");
    int smoothed = 0;
    for (const char* name : {"stanford-bunny.stl", "fandisk.stl", "blade.stl", "wing_5degrees.stl"}) {
        QFile file(QDir(folder).filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        ZORGeoContainer container;
        const ZORGeoSurface* surface =
            ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Millimeter).constFirst();
        const ZORMathBoundingBox box = surface->GetBoundingBox();
        const double extent = (box.GetUpperPoint() - box.GetLowerPoint()).GetLength();
        std::mt19937 random(7);
        for (int i = 0; i < 4; ++i) {
            SCOPED_TRACE(name);
            try {
                SmoothAndCheck(MakeRandomWalk(*surface, extent / 20, random), extent / 100);
                ++smoothed;
            } catch (const ZORSysException& exception) {
                const QString message = exception.GetMessage();
                EXPECT_TRUE(message.startsWith(QLatin1String("the surface has no room for the radius"))
                            || message.startsWith(QLatin1String("no way over the surface leads to")))
                    << message.toStdString();
            }
        }
    }
    EXPECT_GE(smoothed, 8);
}

} // namespace
