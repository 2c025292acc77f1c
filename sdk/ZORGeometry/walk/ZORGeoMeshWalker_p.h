// A straight walk over the triangles of a mesh, one triangle at a time.

#pragma once

#include "mesh/ZORGeoMesh_p.h"

#include <cmath>

/// Where a walk enters a triangle: at P + u (Q - P) of its side PQ. The third corner R lies left of PQ as the
/// walk sees the surface, which need not be the side of the triangle's own normal.
struct ZORGeoMeshEntry
{
    int triangle = 0; // counted from 0
    int p = 0;        // corners, 0 for A, 1 for B, 2 for C
    int q = 1;
    int r = 2;
    double u = 0; // 0 ... 1
};

/// A direction in the plane of an entered triangle: along * PQ + across * N, N the side PQ turned to the left
/// by a right angle. A walk has a unit vector, so that the numbers are in 1/mm.
struct ZORGeoMeshHeading
{
    double along = 0;
    double across = 0;
};

/// Position, and how it goes on, of a point that runs straight over a mesh. Crossing an edge takes two
/// divisions and a root more than a crossing in a plane, and no trigonometry: the part of the direction along
/// the edge is kept, the part across it goes on in the next triangle. All numbers are relative to the entered
/// side; thin triangles, even without area, lose no accuracy and are walked through as the folds they are.
class ZORGeoMeshWalker
{
public:
    explicit ZORGeoMeshWalker(const ZORGeoMesh& mesh)
        : m_mesh(&mesh)
        , m_vertices(mesh.vertices.constData())
        , m_triangles(mesh.triangles.constData())
    {
    }

    /// Places nearer to a corner than this part of the side are the corner.
    static constexpr double kSnap = 1e-12;

    void Enter(const ZORGeoMeshEntry& entry);
    void SetHeading(const ZORGeoMeshHeading& heading) { m_heading = heading; }

    const ZORGeoMeshEntry& GetEntry() const { return m_entry; }
    const ZORGeoMeshHeading& GetHeading() const { return m_heading; }
    /// |PQ|^2, not 0 for an edge that can be crossed.
    double GetSquaredLength() const { return m_squaredLength; }
    /// The third corner in the frame of the entered side: R = P + GetApexAlong() * PQ + GetApexAcross() * N.
    double GetApexAlong() const { return m_apexAlong; }
    double GetApexAcross() const { return m_apexAcross; }
    const ZORMathPoint& GetP() const { return m_p; }
    const ZORMathPoint& GetQ() const { return m_q; }
    const ZORMathPoint& GetR() const { return m_r; }

    /// Where the walk leaves the triangle.
    struct Exit
    {
        bool isOverQ = false;      // leaves over the side QR, else over PR
        double s = 0;              // place on that side, from Q or P to R
        double length = 0;         // from the entry, millimetres
        ZORGeoMeshHeading heading; // behind the edge, if it is crossed
        bool isFinite = true;      // false where sizes differ too much for computation
    };
    Exit FindExit() const;
    static bool IsCorner(const Exit& exit) { return !(exit.s > kSnap && exit.s < 1 - kSnap); }
    /// The corner, 0 ... 2, of an exit that IsCorner().
    int GetCorner(const Exit& exit) const
    {
        return exit.s > 0.5 ? m_entry.r : exit.isOverQ ? m_entry.q : m_entry.p;
    }
    ZORMathPoint GetPoint(const Exit& exit) const
    {
        const ZORMathPoint& from = exit.isOverQ ? m_q : m_p;
        return from + exit.s * (m_r - from);
    }
    /// Barycentric weights of the corners A, B, C.
    void GetEntryWeights(double (&weights)[3]) const;
    void GetExitWeights(const Exit& exit, double (&weights)[3]) const;

    /// Enters the triangle behind the exit, with the heading of the exit.
    /// \return false when there is none
    bool Continue(const Exit& exit);

private:
    void Measure();

    const ZORGeoMesh* m_mesh;               // not owned
    const ZORMathPoint* m_vertices;         // not owned
    const ZORGeoMesh::Corners* m_triangles; // not owned
    ZORGeoMeshEntry m_entry;
    ZORGeoMeshHeading m_heading;
    int m_vertexP = 0;
    int m_vertexQ = 0;
    int m_vertexR = 0;
    ZORMathPoint m_p;
    ZORMathPoint m_q;
    ZORMathPoint m_r;
    double m_squaredLength = 0;
    double m_apexAlong = 0;
    double m_apexAcross = 0;
};

inline void ZORGeoMeshWalker::Measure()
{
    const ZORMathVector side = m_q - m_p;
    const ZORMathVector apex = m_r - m_p;
    const ZORMathVector normal = Cross(side, apex);
    m_squaredLength = Dot(side, side);
    const double inverse = 1 / m_squaredLength;
    m_apexAlong = Dot(side, apex) * inverse;
    m_apexAcross = std::sqrt(Dot(normal, normal)) * inverse;
}

inline void ZORGeoMeshWalker::Enter(const ZORGeoMeshEntry& entry)
{
    m_entry = entry;
    const ZORGeoMesh::Corners& corners = m_triangles[entry.triangle];
    m_vertexP = corners[size_t(entry.p)];
    m_vertexQ = corners[size_t(entry.q)];
    m_vertexR = corners[size_t(entry.r)];
    m_p = m_vertices[m_vertexP];
    m_q = m_vertices[m_vertexQ];
    m_r = m_vertices[m_vertexR];
    Measure();
}

inline ZORGeoMeshWalker::Exit ZORGeoMeshWalker::FindExit() const
{
    const double along = m_heading.along;
    const double across = m_heading.across;
    const double u = m_entry.u;
    // Above 0 when R is to the left of the way.
    const double side = along * m_apexAcross - across * (m_apexAlong - u);
    Exit exit;
    exit.isOverQ = side > 0 || (side == 0 && along > 0);
    // All terms of the denominator have the same sign.
    const double fromCorner = across * (exit.isOverQ ? 1 - u : u);
    const double denominator = fromCorner + std::abs(side);
    exit.s = denominator > 0 ? fromCorner / denominator : 0;
    const double x = exit.isOverQ ? m_apexAlong - 1 : m_apexAlong; // to R from the corner
    const double squared = x * x + m_apexAcross * m_apexAcross;
    const double forward = along * x + across * m_apexAcross;
    const double inverse = 1 / squared;
    exit.heading.along = (exit.isOverQ ? -forward : forward) * inverse;
    exit.heading.across = denominator * inverse;
    const double dx = (exit.isOverQ ? 1 : 0) + exit.s * x - u;
    exit.length = m_squaredLength * (dx * along + exit.s * m_apexAcross * across);
    exit.isFinite = std::abs(exit.length) <= 1e200 && std::abs(exit.heading.along) <= 1e200
                    && exit.heading.across <= 1e200;
    return exit;
}

inline void ZORGeoMeshWalker::GetEntryWeights(double (&weights)[3]) const
{
    weights[m_entry.p] = 1 - m_entry.u;
    weights[m_entry.q] = m_entry.u;
    weights[m_entry.r] = 0;
}

inline void ZORGeoMeshWalker::GetExitWeights(const Exit& exit, double (&weights)[3]) const
{
    weights[m_entry.p] = exit.isOverQ ? 0 : 1 - exit.s;
    weights[m_entry.q] = exit.isOverQ ? 1 - exit.s : 0;
    weights[m_entry.r] = exit.s;
}

inline bool ZORGeoMeshWalker::Continue(const Exit& exit)
{
    // A side of a triangle has the number of its first corner; it is the one opposite to the corner before.
    const int opposite = exit.isOverQ ? m_entry.p : m_entry.q;
    const quint32 neighbor = m_mesh->GetNeighbor(m_entry.triangle, opposite == 2 ? 0 : opposite + 1);
    if (neighbor == 0)
        return false;
    m_entry.triangle = int(neighbor / 4) - 1;
    const int first = int(neighbor % 4);
    const int second = first == 2 ? 0 : first + 1;
    if (exit.isOverQ) {
        m_p = m_r;
        m_vertexP = m_vertexR;
        m_entry.u = 1 - exit.s;
    } else {
        m_q = m_r;
        m_vertexQ = m_vertexR;
        m_entry.u = exit.s;
    }
    const ZORGeoMesh::Corners& corners = m_triangles[m_entry.triangle];
    const bool isFirst = corners[size_t(first)] == m_vertexP;
    m_entry.p = isFirst ? first : second;
    m_entry.q = isFirst ? second : first;
    m_entry.r = 3 - first - second;
    m_vertexR = corners[size_t(m_entry.r)];
    m_r = m_vertices[m_vertexR];
    m_heading = exit.heading;
    // One of the two triangles behind comes next; loading its corners takes as long as crossing this one.
    for (const int before : {m_entry.p, m_entry.q}) {
        const quint32 next = m_mesh->GetNeighbor(m_entry.triangle, before == 2 ? 0 : before + 1);
        if (next != 0)
            __builtin_prefetch(m_triangles + (next / 4 - 1));
    }
    Measure();
    return true;
}
