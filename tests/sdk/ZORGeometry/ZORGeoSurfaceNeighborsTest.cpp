// Tests of the neighbours of ZORGeoSurface.

#include "TestMeshes.h"
#include "support/Printers.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>

#include <QDir>
#include <QFile>
#include <QHash>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace {

using Neighbors = std::array<int, 3>;
using Edge = std::pair<int, int>;

Neighbors NeighborsOf(const ZORGeoSurface& surface, int triangle)
{
    Neighbors across;
    surface.GetNeighbors(triangle, across[0], across[1], across[2]);
    return across;
}

Edge EdgeOf(const ZORGeoSurface& surface, int triangle, int side)
{
    const ZORGeoSurface::Corners& corners = surface.GetCornerArray()[triangle - 1];
    return std::minmax(corners[size_t(side)], corners[size_t(side + 1) % 3]);
}

// The rule by its words: which triangles that take part use which edge.
std::vector<Neighbors> ExpectedNeighbors(const ZORGeoSurface& surface)
{
    std::set<ZORGeoSurface::Corners> seen;
    std::map<Edge, std::vector<int>> users;
    for (int t = 1; t <= surface.GetNumTriangles(); ++t) {
        ZORGeoSurface::Corners sorted = surface.GetCornerArray()[t - 1];
        std::sort(sorted.begin(), sorted.end());
        if (sorted[0] == sorted[1] || sorted[1] == sorted[2] || !seen.insert(sorted).second)
            continue;
        for (int side = 0; side < 3; ++side)
            users[EdgeOf(surface, t, side)].push_back(t);
    }
    std::vector<Neighbors> expected;
    for (int t = 1; t <= surface.GetNumTriangles(); ++t) {
        Neighbors across = {0, 0, 0};
        for (int side = 0; side < 3; ++side) {
            const auto edge = users.find(EdgeOf(surface, t, side));
            if (edge == users.end() || edge->second.size() != 2)
                continue;
            const auto [first, second] = std::pair(edge->second[0], edge->second[1]);
            if (t == first || t == second)
                across[size_t(side)] = t == first ? second : first;
        }
        expected.push_back(across);
    }
    return expected;
}

// N(t, e) = s > 0 implies exactly one e' with N(s, e') = t on the same vertices.
void ExpectMutualNeighbors(const ZORGeoSurface& surface)
{
    for (int t = 1; t <= surface.GetNumTriangles(); ++t) {
        for (int side = 0; side < 3; ++side) {
            const int s = NeighborsOf(surface, t)[size_t(side)];
            if (s == 0)
                continue;
            ASSERT_NE(t, s);
            int back = 0;
            for (int other = 0; other < 3; ++other) {
                const bool isBack = NeighborsOf(surface, s)[size_t(other)] == t;
                back += isBack && EdgeOf(surface, s, other) == EdgeOf(surface, t, side);
            }
            ASSERT_EQ(1, back) << t << " side " << side;
        }
    }
}

void ExpectNeighborsByTheRule(const ZORGeoSurface& surface)
{
    const std::vector<Neighbors> expected = ExpectedNeighbors(surface);
    for (int t = 1; t <= surface.GetNumTriangles(); ++t)
        ASSERT_EQ(expected[size_t(t - 1)], NeighborsOf(surface, t)) << t;
    ExpectMutualNeighbors(surface);
}

const QList<ZORMathPoint> kFivePoints = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}};

std::unique_ptr<ZORGeoSurface> Make(const QList<ZORGeoSurface::Corners>& triangles)
{
    return TestMesh{kFivePoints, triangles}.Make();
}

TEST(ZORGeoSurfaceNeighborsTest, ASingleTriangleHasNone)
{
    EXPECT_EQ(Neighbors({0, 0, 0}), NeighborsOf(*Make({{0, 1, 2}}), 1));
}

TEST(ZORGeoSurfaceNeighborsTest, TwoTrianglesMeetAcrossTheirEdgeWhateverTheirWinding)
{
    const auto consistent = Make({{0, 1, 2}, {1, 0, 3}});
    EXPECT_EQ(Neighbors({2, 0, 0}), NeighborsOf(*consistent, 1));
    EXPECT_EQ(Neighbors({1, 0, 0}), NeighborsOf(*consistent, 2));
    const auto flipped = Make({{0, 1, 2}, {3, 0, 1}});
    EXPECT_EQ(Neighbors({2, 0, 0}), NeighborsOf(*flipped, 1));
    EXPECT_EQ(Neighbors({0, 1, 0}), NeighborsOf(*flipped, 2));
}

TEST(ZORGeoSurfaceNeighborsTest, AnEdgeOfThreeTrianglesJoinsNone)
{
    const auto surface = Make({{0, 1, 2}, {1, 0, 3}, {0, 1, 4}});
    for (int t = 1; t <= 3; ++t)
        EXPECT_EQ(Neighbors({0, 0, 0}), NeighborsOf(*surface, t));
}

TEST(ZORGeoSurfaceNeighborsTest, OfDuplicatesOnlyTheFirstTakesPart)
{
    const auto surface = Make({{0, 1, 2}, {2, 1, 0}, {1, 0, 3}, {1, 2, 0}});
    EXPECT_EQ(Neighbors({3, 0, 0}), NeighborsOf(*surface, 1));
    EXPECT_EQ(Neighbors({0, 0, 0}), NeighborsOf(*surface, 2));
    EXPECT_EQ(Neighbors({1, 0, 0}), NeighborsOf(*surface, 3));
    EXPECT_EQ(Neighbors({0, 0, 0}), NeighborsOf(*surface, 4));
    EXPECT_EQ(Neighbors({0, 0, 0}), NeighborsOf(*Make({{0, 1, 2}, {0, 2, 1}}), 1));
}

TEST(ZORGeoSurfaceNeighborsTest, ATriangleWithTwoEqualCornersTakesNoPart)
{
    const auto surface = Make({{0, 1, 0}, {0, 1, 2}, {1, 0, 3}, {4, 4, 4}});
    EXPECT_EQ(Neighbors({0, 0, 0}), NeighborsOf(*surface, 1));
    EXPECT_EQ(Neighbors({3, 0, 0}), NeighborsOf(*surface, 2));
    EXPECT_EQ(Neighbors({0, 0, 0}), NeighborsOf(*surface, 4));
}

TEST(ZORGeoSurfaceNeighborsTest, RandomMeshesFollowTheRule)
{
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        const int vertices = 3 + int(random() % 12);
        TestMesh mesh;
        for (int i = 0; i < vertices; ++i)
            mesh.vertices.append(ZORMathPoint(i, 0, 0));
        const auto corner = [&] { return int(random() % unsigned(vertices)); };
        for (unsigned i = 0; i < random() % 60; ++i)
            mesh.triangles.append({corner(), corner(), corner()});
        ExpectNeighborsByTheRule(*mesh.Make());
    }
}

// Every triangle of the fan shares the first vertex, or even the first edge.
TEST(ZORGeoSurfaceNeighborsTest, AHubOfManyTrianglesIsNoBurden)
{
    constexpr int kSpokes = 200000;
    TestMesh fan;
    TestMesh book;
    for (int i = 0; i < kSpokes + 2; ++i)
        fan.vertices.append(ZORMathPoint(i, 0, 0));
    book.vertices = fan.vertices;
    for (int i = kSpokes; i > 0; --i) {
        fan.triangles.append({0, i, i + 1});
        book.triangles.append({0, 1, 2 + i % (kSpokes - 1)});
    }
    EXPECT_EQ(Neighbors({3, 0, 1}), NeighborsOf(*fan.Make(), 2));
    EXPECT_EQ(Neighbors({0, 0, 0}), NeighborsOf(*book.Make(), 2));
}

TEST(ZORGeoSurfaceNeighborsTest, RealMeshesHaveTheirBordersAndFollowTheRule)
{
    ZOR_REQUIRE_TEST_DATA(table, "meshes/expected.tsv");
    const QDir folder = QFileInfo(table).dir();
    QFile file(table);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    int meshes = 0;
    while (!file.atEnd()) {
        const QStringList fields = QString::fromUtf8(file.readLine()).trimmed().split('\t');
        QHash<QString, int> figures;
        for (const QString& field : fields)
            figures.insert(field.section('=', 0, 0), field.section('=', 1).toInt());
        QFile content(folder.filePath(fields.constFirst()));
        ASSERT_TRUE(content.open(QIODevice::ReadOnly));
        ZORGeoContainer container;
        const auto surfaces = ZORGeoStlLoader(&content).Load(&container, ZORSysValue::Millimeter);
        if (surfaces.size() != 1) // the table counts edges over all solids at once
            continue;
        SCOPED_TRACE(fields.constFirst().toStdString());
        const ZORGeoSurface& surface = *surfaces.constFirst();
        ExpectNeighborsByTheRule(surface);
        int open = 0;
        std::map<Edge, int> uses;
        for (int t = 1; t <= surface.GetNumTriangles(); ++t) {
            for (int side = 0; side < 3; ++side) {
                ++uses[EdgeOf(surface, t, side)];
                open += NeighborsOf(surface, t)[size_t(side)] == 0;
            }
        }
        const auto usedOften = [](const auto& use) { return use.second > 2; };
        EXPECT_EQ(figures.value("edges"), int(uses.size()));
        EXPECT_EQ(figures.value("nonmanifold"), std::count_if(uses.begin(), uses.end(), usedOften));
        int inFans = 0;
        for (const auto& [edge, count] : uses)
            inFans += count > 2 ? count : 0;
        EXPECT_EQ(figures.value("border") + inFans, open);
        ++meshes;
    }
    EXPECT_GE(meshes, 30);
}

} // namespace
