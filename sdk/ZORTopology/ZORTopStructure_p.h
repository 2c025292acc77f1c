// What a body consists of.

#pragma once

#include "ZORTopIndexLists_p.h"

#include <ZORMathematics/ZORMathPoint.h>

#include <vector>

/// Vertices, edges and faces by their indices, from 0. A part is a geometry that the body refers to.
struct ZORTopStructure
{
    struct Vertex
    {
        ZORMathPoint point;
        int part = -1; // the point geometry; -1: a place of another geometry
    };

    std::vector<Vertex> vertices;
    std::vector<int> partOfEdge;      // the curve or surface in which its points are numbered
    ZORTopIndexLists pointsOfEdge;    // points of the curve or vertices of the surface, in the edge's order
    ZORTopIndexLists sidesOfEdge;     // 4 * triangle + side, one fewer than points; none on a curve
    ZORTopIndexLists verticesOfEdge;  // start and end; one: it ends where it starts; none: closed
    ZORTopIndexLists facesOfEdge;     // ascending, one entry for each triangle at a side
    ZORTopIndexLists trianglesOfFace; // from 1, ascending

    ZORTopIndexLists edgesOfVertex; // these two follow from the others: Complete()
    ZORTopIndexLists edgesOfFace;

    int GetNumVertices() const { return int(vertices.size()); }
    int GetNumEdges() const { return verticesOfEdge.GetCount(); }
    int GetNumFaces() const { return trianglesOfFace.GetCount(); }

    void Complete()
    {
        edgesOfVertex = verticesOfEdge.GetInverse(GetNumVertices());
        edgesOfFace = facesOfEdge.GetInverse(GetNumFaces());
    }
};
