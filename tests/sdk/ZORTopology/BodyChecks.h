// What holds for every body of a surface.

#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

class ZORGeoSurface;
class ZORTopBody;

/// The division of a surface by the book, in quadratic time.
///
/// Triangles in general position: those without area are not told from others.
struct PlainDivision
{
    PlainDivision(const ZORGeoSurface& surface, double tolerance);

    bool IsIdle(int triangle) const { return isIdle[std::size_t(triangle)]; }

    std::vector<bool> isIdle;     // triangles with equal corners, and repetitions; from 0
    std::vector<int> firstOfFace; // the first triangle of the face of each triangle; itself for idle ones
    std::map<std::pair<int, int>, std::vector<int>> sides; // triangles at the sides on edges, by vertices
    std::vector<int> vertices;                             // of the mesh, where edges end
};

/// Adds failures for what does not fit together in the body of a surface.
void CheckBody(const ZORTopBody& body, const ZORGeoSurface& surface);

/// Adds failures where the body is not the plain division.
void CompareBody(const ZORTopBody& body, const ZORGeoSurface& surface, double tolerance);
