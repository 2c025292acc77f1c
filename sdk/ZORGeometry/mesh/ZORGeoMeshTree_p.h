// Bounding volume hierarchy of a triangle mesh.

#pragma once

#include "ZORGeoMesh_p.h"
#include "ZORGeoTriangle_p.h"

#include <array>
#include <vector>

/// Finds the triangle nearest to a point or first on a ray.
///
/// A binary tree whose node holds the boxes of its two children. The boxes are floats in a frame of the
/// mesh (moved to its centre, scaled by a power of two) and rounded outwards, half the size of doubles and a
/// node a cache line; they only bound. Triangles are tested in double precision, so results are exact up to
/// rounding.
class ZORGeoMeshTree
{
public:
    /// Builds the tree in O(n log n) with several threads for large meshes; the result is always the same.
    /// \param mesh  not owned, outlives the tree
    explicit ZORGeoMeshTree(const ZORGeoMesh& mesh);

    struct Nearest
    {
        int triangle = -1; // from 0; -1: there is none
        ZORGeoTrianglePlace place;
    };
    /// Of several triangles at the same distance the lowest.
    /// \param guess  a triangle that is likely to be near, tried first; the result does not depend on it
    Nearest FindNearest(const ZORMathPoint& point, int guess = -1) const;

    struct FirstHit
    {
        int triangle = -1; // from 0; -1: nothing was hit
        ZORGeoRay::Hit hit;
    };
    /// Of several triangles at the same parameter the lowest.
    FirstHit FindFirst(const ZORGeoRay& ray) const;

    struct Child
    {
        quint32 first = 0; // inner: index of its node; leaf: its first triangle
        quint32 count = 0; // 0: inner; else triangles of the leaf
    };
    struct alignas(64) Node
    {
        float lower[3][2]; // [axis][child]
        float upper[3][2];
        Child child[2];
    };
    struct LeafTriangle
    {
        ZORGeoMesh::Corners corners;
        int triangle; // from 0
    };
    static constexpr int kMaximumDepth = 100;

private:
    template<class Visitor>
    void Traverse(Visitor& visitor) const;

    const ZORGeoMesh& m_mesh;
    double m_center[3] = {0, 0, 0};
    double m_scale = 1;
    std::vector<Node> m_nodes; // the root first; empty: the root is a leaf
    std::vector<LeafTriangle> m_triangles;
};
