// Search for a strip of triangles between two places.

#pragma once

#include "ZORGeoProgressReporter_p.h"
#include "mesh/ZORGeoMeshPlace_p.h"

#include <memory>
#include <vector>

/// A search with lower bounds (A*) over points on every edge, each joined to those on the other two sides of its
/// triangles. The bound is the distance in space. Every edge has three points, of meshes with fewer than 20,000
/// triangles more, at the same cost: up to 41.
///
/// P. Hart, N. Nilsson, B. Raphael: A Formal Basis for the Heuristic Determination of Minimum Cost Paths, IEEE
/// Transactions on Systems Science and Cybernetics 4(2), 1968.
class ZORGeoStripSearch
{
public:
    /// \param mesh  not owned, outlives this object
    /// \param progress  checked during the search; null or not owned, outlives this object
    ZORGeoStripSearch(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& start, const ZORGeoMeshPlace& end,
                      zor::geo::ProgressReporter* progress = nullptr);

    /// The sides to leave by, from the triangle of the start to that of the end, each as 4 * triangle + side,
    /// triangles from 0; the last one with side 3. Empty when the end cannot be reached.
    /// \throws zor::geo::Canceled
    std::vector<quint32> Run();

private:
    static constexpr size_t kPageSize = 1536;

    // A point on an edge. Edges are numbered by the lower of their sides, 3 * triangle + side.
    struct Node
    {
        double distance = 0; // from the start
        quint32 via = 0;     // 4 * (triangle + 1) + side it came in by, or 3 for the start; 0: not reached
        qint32 parent = -1;  // point of that side
    };
    struct Waiting
    {
        double bound;
        double distance;
        quint64 node;
        bool operator<(const Waiting& other) const { return bound > other.bound; }
    };

    double GetParameter(int point) const { return (2 * point + 1) / (2.0 * m_pointsPerSide); }
    ZORMathPoint GetPoint(int triangle, int side, int point) const;
    Node& GetNode(quint64 index);
    quint64 IndexOf(int triangle, int side, int point) const;
    void Enter(int triangle, int side, int point, const ZORMathPoint& from, double distance);
    std::vector<quint32> TraceBack();

    const ZORGeoMesh& m_mesh;
    zor::geo::ProgressReporter* const m_progress;
    const int m_pointsPerSide;
    const ZORGeoMeshPlace m_start;
    const ZORGeoMeshPlace m_end;
    std::vector<int> m_endTriangles;
    std::vector<std::unique_ptr<Node[]>> m_pages; // made when first needed
    std::vector<Waiting> m_waiting;               // a heap
    double m_best;                                // length of the best way to the end
    quint32 m_bestVia = 0;                        // as in a node
    qint32 m_bestParent = -1;
};
