// A vertex of a topological body.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>
#include <ZORTopology/ZORTopologyGlobal.h>

class ZORGeoPoint;
class ZORTopBodyPrivate;
class ZORTopEdge;

/// A place where edges end or meet, or a point by itself. A value that refers to its body and does not keep it
/// alive: use it no longer than the body.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORTOPOLOGY_EXPORT ZORTopVertex
{
public:
    /// Number within the body, from 0.
    int GetIndex() const { return m_index; }
    /// Millimetres. Also after the geometry of the body is gone.
    ZORMathPoint GetPoint() const;
    /// The point that the vertex was made of; null for a vertex of a curve or surface. Not owned.
    const ZORGeoPoint* GetGeometry() const;

    /// The edges that start or end here, in the order of their numbers; one that does both counts once.
    int GetNumEdges() const;
    /// \param i  0 ... GetNumEdges() - 1 (asserted)
    ZORTopEdge GetEdge(int i) const;

    friend bool operator==(const ZORTopVertex&, const ZORTopVertex&) = default;

private:
    friend class ZORTopBody;
    friend class ZORTopEdge;
    ZORTopVertex(const ZORTopBodyPrivate* body, int index)
        : m_body(body)
        , m_index(index)
    {
    }

    const ZORTopBodyPrivate* m_body; // not owned
    int m_index;
};
