#include "BodyChecks.h"

#include "support/Printers.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORTopology/ZORTopBody.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>

namespace {

using Side = std::pair<int, int>; // vertices of the mesh, the lower one first

Side SideOf(const ZORGeoSurface& surface, int triangle, int side)
{
    const auto& corners = surface.GetCornerArray()[triangle];
    return std::minmax({corners[size_t(side)], corners[size_t(side + 1) % 3]});
}

std::set<int> CornersOf(const ZORGeoSurface& surface, int triangle)
{
    const auto& corners = surface.GetCornerArray()[triangle];
    return {corners.begin(), corners.end()};
}

ZORMathVector NormalOf(const ZORGeoSurface& surface, int triangle)
{
    ZORMathPoint a, b, c;
    surface.GetVertices(triangle + 1, a, b, c);
    return Cross(b - a, c - a).GetNormalized();
}

// Whether two triangles run through a side in the same direction.
bool IsFlipped(const ZORGeoSurface& surface, const Side& side, int a, int b)
{
    const auto runsUp = [&](int triangle) {
        const auto& corners = surface.GetCornerArray()[triangle];
        for (size_t i = 0; i < 3; ++i) {
            if (corners[i] == side.first && corners[(i + 1) % 3] == side.second)
                return true;
        }
        return false;
    };
    return runsUp(a) == runsUp(b);
}

double TurnOf(const ZORGeoSurface& surface, const Side& side, int a, int b)
{
    const ZORMathVector first = NormalOf(surface, a);
    const ZORMathVector second = (IsFlipped(surface, side, a, b) ? -1.0 : 1.0) * NormalOf(surface, b);
    return std::atan2(Cross(first, second).GetLength(), Dot(first, second));
}

} // namespace

PlainDivision::PlainDivision(const ZORGeoSurface& surface, double tolerance)
    : isIdle(size_t(surface.GetNumTriangles()))
    , firstOfFace(size_t(surface.GetNumTriangles()))
{
    const int numTriangles = surface.GetNumTriangles();
    std::iota(firstOfFace.begin(), firstOfFace.end(), 0);
    const auto join = [&](int a, int b) {
        const auto [first, second] = std::minmax({firstOfFace[size_t(a)], firstOfFace[size_t(b)]});
        std::replace(firstOfFace.begin(), firstOfFace.end(), second, first);
    };
    std::map<std::set<int>, int> firstWith;
    for (int triangle = 0; triangle < numTriangles; ++triangle) {
        const std::set<int> corners = CornersOf(surface, triangle);
        const auto [known, isFirst] = firstWith.try_emplace(corners, triangle);
        isIdle[size_t(triangle)] = corners.size() < 3 || !isFirst;
        if (corners.size() == 3 && !isFirst)
            join(known->second, triangle);
        for (int side = 0; side < 3 && !IsIdle(triangle); ++side)
            sides[SideOf(surface, triangle, side)].push_back(triangle);
    }
    for (auto side = sides.begin(); side != sides.end();) {
        const std::vector<int>& triangles = side->second;
        const bool isSmooth =
            triangles.size() == 2 && TurnOf(surface, side->first, triangles[0], triangles[1]) <= tolerance;
        if (isSmooth)
            join(triangles[0], triangles[1]);
        side = isSmooth ? sides.erase(side) : std::next(side);
    }
    std::map<int, std::vector<std::vector<int>>> facesAt; // of each side at the vertex
    for (const auto& [vertexPair, triangles] : sides) {
        std::vector<int> faces;
        for (const int triangle : triangles)
            faces.push_back(firstOfFace[size_t(triangle)]);
        std::sort(faces.begin(), faces.end());
        facesAt[vertexPair.first].push_back(faces);
        facesAt[vertexPair.second].push_back(faces);
    }
    for (const auto& [vertex, faces] : facesAt) {
        if (faces.size() != 2 || faces[0] != faces[1])
            vertices.push_back(vertex);
    }
}

namespace {

void CheckFaces(const ZORTopBody& body, const ZORGeoSurface& surface)
{
    std::vector<int> uses(size_t(surface.GetNumTriangles()) + 1);
    int previousFirst = 0;
    for (int i = 0; i < body.GetNumFaces(); ++i) {
        const ZORTopFace face = body.GetFace(i);
        EXPECT_EQ(i, face.GetIndex());
        EXPECT_EQ(&surface, face.GetSurface());
        ASSERT_GT(face.GetNumTriangles(), 0);
        EXPECT_GT(face.GetTriangle(0), previousFirst) << "faces are numbered by their first triangle";
        previousFirst = face.GetTriangle(0);
        for (int j = 0; j < face.GetNumTriangles(); ++j) {
            ++uses.at(size_t(face.GetTriangle(j)));
            if (j > 0) {
                EXPECT_GT(face.GetTriangle(j), face.GetTriangle(j - 1));
            }
        }
        for (int j = 0; j < face.GetNumEdges(); ++j) {
            const ZORTopEdge edge = face.GetEdge(j);
            bool isKnown = false;
            for (int k = 0; k < edge.GetNumFaces(); ++k)
                isKnown |= edge.GetFace(k) == face;
            EXPECT_TRUE(isKnown) << "an edge of a face that does not know it";
        }
    }
    EXPECT_EQ(surface.GetNumTriangles(), std::count(uses.begin() + 1, uses.end(), 1))
        << "every triangle in exactly one face";
}

void CheckEdge(const ZORTopEdge& edge, const ZORGeoSurface& surface)
{
    const ZORMathSetOfPoints points = edge.GetPoints();
    const auto sides = edge.GetSides();
    ASSERT_EQ(sides.size() + 1, points.size());
    EXPECT_EQ(nullptr, edge.GetCurve());
    EXPECT_EQ(edge.IsClosed(), edge.GetNumVertices() < 2);
    if (edge.IsClosed()) {
        EXPECT_EQ(points.constFirst(), points.constLast());
    }
    if (edge.GetNumVertices() > 0) {
        EXPECT_EQ(edge.GetVertex(0).GetPoint(), points.constFirst());
        EXPECT_EQ(edge.GetVertex(edge.GetNumVertices() - 1).GetPoint(), points.constLast());
    }
    EXPECT_EQ(points, ZORGeoTriangleEdgeCurve(&surface, sides).GetPoints()) << "a chain without gaps";
    for (int i = 0; i < edge.GetNumVertices(); ++i) {
        const ZORTopVertex vertex = edge.GetVertex(i);
        bool isKnown = false;
        for (int j = 0; j < vertex.GetNumEdges(); ++j)
            isKnown |= vertex.GetEdge(j) == edge;
        EXPECT_TRUE(isKnown) << "a vertex of an edge that does not know it";
    }
    for (int i = 0; i < edge.GetNumFaces(); ++i) {
        const ZORTopFace face = edge.GetFace(i);
        int entries = 0;
        for (int j = 0; j < face.GetNumEdges(); ++j)
            entries += face.GetEdge(j) == edge;
        EXPECT_EQ(1, entries);
    }
}

} // namespace

void CheckBody(const ZORTopBody& body, const ZORGeoSurface& surface)
{
    EXPECT_EQ(2, body.GetDimension());
    CheckFaces(body, surface);
    std::set<Side> sides;
    qsizetype numSides = 0;
    for (int i = 0; i < body.GetNumEdges(); ++i) {
        const ZORTopEdge edge = body.GetEdge(i);
        EXPECT_EQ(i, edge.GetIndex());
        CheckEdge(edge, surface);
        const auto edgeSides = edge.GetSides();
        numSides += edgeSides.size();
        for (const auto& [triangle, side, isReversed] : edgeSides)
            sides.insert(SideOf(surface, triangle - 1, side));
    }
    EXPECT_EQ(numSides, qsizetype(sides.size())) << "every side on one edge, once";
    for (int i = 0; i < body.GetNumVertices(); ++i) {
        const ZORTopVertex vertex = body.GetVertex(i);
        EXPECT_EQ(i, vertex.GetIndex());
        EXPECT_GT(vertex.GetNumEdges(), 0);
        EXPECT_EQ(nullptr, vertex.GetGeometry());
    }
}

void CompareBody(const ZORTopBody& body, const ZORGeoSurface& surface, double tolerance)
{
    const PlainDivision plain(surface, tolerance);
    std::vector<int> faceOf(size_t(surface.GetNumTriangles()));
    for (int i = 0; i < body.GetNumFaces(); ++i) {
        const ZORTopFace face = body.GetFace(i);
        for (int j = 0; j < face.GetNumTriangles(); ++j)
            faceOf[size_t(face.GetTriangle(j)) - 1] = i;
    }
    std::map<int, int> faceOfFirst;
    std::set<int> faces;
    for (size_t triangle = 0; triangle < faceOf.size(); ++triangle) {
        const bool isCollapsed = CornersOf(surface, int(triangle)).size() < 3;
        if (isCollapsed)
            continue;
        const auto [known, isNew] = faceOfFirst.try_emplace(plain.firstOfFace[triangle], faceOf[triangle]);
        EXPECT_EQ(known->second, faceOf[triangle]) << "a face in two";
        faces.insert(faceOf[triangle]);
    }
    EXPECT_EQ(faceOfFirst.size(), faces.size()) << "two faces in one";

    size_t numSides = 0;
    for (int i = 0; i < body.GetNumEdges(); ++i) {
        const ZORTopEdge edge = body.GetEdge(i);
        std::multiset<int> facesOfEdge;
        for (int j = 0; j < edge.GetNumFaces(); ++j)
            facesOfEdge.insert(edge.GetFace(j).GetIndex());
        for (const auto& [triangle, side, isReversed] : edge.GetSides()) {
            ++numSides;
            const auto known = plain.sides.find(SideOf(surface, triangle - 1, side));
            ASSERT_NE(plain.sides.end(), known) << "a side that belongs on no edge";
            std::multiset<int> facesOfSide;
            for (const int other : known->second)
                facesOfSide.insert(faceOf[size_t(other)]);
            EXPECT_EQ(facesOfSide, facesOfEdge);
        }
    }
    EXPECT_EQ(plain.sides.size(), numSides);

    std::vector<ZORMathPoint> vertices;
    for (int i = 0; i < body.GetNumVertices(); ++i)
        vertices.push_back(body.GetVertex(i).GetPoint());
    std::vector<ZORMathPoint> expected;
    for (const int vertex : plain.vertices)
        expected.push_back(surface.GetVertexArray()[vertex]);
    EXPECT_EQ(expected, vertices);
}
