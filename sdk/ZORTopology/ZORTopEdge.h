// An edge of a topological body.

#pragma once

#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>
#include <ZORTopology/ZORTopologyGlobal.h>

#include <QList>

class ZORGeoCurve;
class ZORMathSetOfPoints;
class ZORTopBodyPrivate;
class ZORTopFace;
class ZORTopVertex;

/// A piece of a curve, or a chain of triangle sides on a surface. A value that refers to its body and does not
/// keep it alive: use it no longer than the body.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORTOPOLOGY_EXPORT ZORTopEdge
{
public:
    /// Number within the body, from 0.
    int GetIndex() const { return m_index; }
    /// Whether the edge ends where it starts.
    bool IsClosed() const { return GetNumVertices() < 2; }

    /// 2: the edge runs from the first one to the second; 1: it starts and ends there; 0: it is closed
    /// without a corner.
    int GetNumVertices() const;
    /// \param i  0 ... GetNumVertices() - 1 (asserted)
    ZORTopVertex GetVertex(int i) const;

    /// How often faces meet along the edge: 0 on a curve, 1 on a border, 2 where a surface turns, more where
    /// it is not manifold. A face on both sides of the edge counts twice.
    int GetNumFaces() const;
    /// \param i  0 ... GetNumFaces() - 1 (asserted); in the order of the faces' numbers
    ZORTopFace GetFace(int i) const;

    /// The points that the edge goes through, both ends included: those of a closed edge are equal. Empty once
    /// the geometry has been destroyed. Millimetres.
    ZORMathSetOfPoints GetPoints() const;
    /// The curve of which the edge is a piece; null for an edge of a surface. Not owned.
    const ZORGeoCurve* GetCurve() const;
    /// The triangle sides along the edge, in its direction; none for an edge of a curve. A
    /// ZORGeoTriangleEdgeCurve can be made of them.
    QList<ZORGeoTriangleEdgeCurve::Edge> GetSides() const;

    friend bool operator==(const ZORTopEdge&, const ZORTopEdge&) = default;

private:
    friend class ZORTopBody;
    friend class ZORTopFace;
    friend class ZORTopVertex;
    ZORTopEdge(const ZORTopBodyPrivate* body, int index)
        : m_body(body)
        , m_index(index)
    {
    }

    const ZORTopBodyPrivate* m_body; // not owned
    int m_index;
};
