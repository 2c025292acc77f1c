// The faces of a surface and the triangle sides between them.

#pragma once

#include "ZORTopIndexLists_p.h"
#include "ZORTopMesh_p.h"
#include "ZORTopTurn_p.h"

/// A triangle side that lies on an edge of the body.
struct ZORTopSide
{
    int triangle = 0; // the lowest one at the side, from 0
    int side = 0;
    int start = 0; // vertices of the mesh, in the winding of that triangle
    int end = 0;
};

/// Joins triangles to faces and collects what separates them.
///
/// Triangles with two equal corners, and repetitions of a triangle with the same three corners, take no part in
/// the neighbourhood: the former go with the first triangle at one of their corners, the latter with the
/// first of their kind. Their sides are on no edge.
class ZORTopSides
{
public:
    ZORTopSides(const ZORTopMesh& mesh, const ZORTopTurn& turn);

    int GetNumFaces() const { return m_numFaces; }
    /// The face of every triangle; faces are numbered by their first triangle.
    const std::vector<int>& GetFaceOfTriangle() const { return m_faceOfTriangle; }
    /// Ordered by triangle and side.
    const std::vector<ZORTopSide>& GetSides() const { return m_sides; }
    /// The faces at each of these sides, ascending, one entry for each triangle.
    const ZORTopIndexLists& GetFacesOfSide() const { return m_facesOfSide; }

private:
    struct Loose // a side without neighbour
    {
        int upper = 0; // the vertex with the higher number
        int triangle = 0;
        int side = 0;
    };

    int FindRoot(int triangle);
    void Join(int a, int b);
    void JoinRepetitions();
    void JoinCollapsed();
    void CrossSides(const ZORTopTurn& turn);
    void AddLooseSides();
    void AddSide(int triangle, int side, const std::vector<int>& triangles);
    void NumberFaces();

    const ZORTopMesh& m_mesh;
    std::vector<bool> m_isIdle;        // takes no part
    std::vector<int> m_faceOfTriangle; // until NumberFaces(): a triangle nearer to the face's first one
    int m_numFaces = 0;
    std::vector<ZORTopSide> m_sides;
    ZORTopIndexLists m_trianglesOfSide; // in the order of discovery
    ZORTopIndexLists m_facesOfSide;
};
