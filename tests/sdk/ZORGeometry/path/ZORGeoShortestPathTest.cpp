// Tests of shortest geodesics between two places of a surface.

#include "ShortestPaths.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysException.h>

namespace {

double DistanceBetween(const ZORGeoSurface& surface, const ZORMathPoint& start, const ZORMathPoint& end)
{
    return Connect(surface.Project(start), surface.Project(end)).GetEndLength();
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

} // namespace
