// A face of a topological body.

#pragma once

#include <ZORTopology/ZORTopologyGlobal.h>

class ZORGeoSurface;
class ZORTopBodyPrivate;
class ZORTopEdge;

/// A connected piece of a surface that turns nowhere by more than the edge tolerance. A value that refers to its
/// body and does not keep it alive: use it no longer than the body.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORTOPOLOGY_EXPORT ZORTopFace
{
public:
    /// Number within the body, from 0.
    int GetIndex() const { return m_index; }
    /// Null once the surface has been destroyed. Not owned.
    const ZORGeoSurface* GetSurface() const;

    int GetNumTriangles() const;
    /// Every triangle of the surface belongs to exactly one face.
    /// \param i  0 ... GetNumTriangles() - 1 (asserted)
    /// \return a triangle of the surface, 1 ... T, ascending with \a i
    int GetTriangle(int i) const;

    /// The edges that bound the face, in the order of their numbers; one with the face on both sides counts
    /// once. None for a face that is closed.
    int GetNumEdges() const;
    /// \param i  0 ... GetNumEdges() - 1 (asserted)
    ZORTopEdge GetEdge(int i) const;

    friend bool operator==(const ZORTopFace&, const ZORTopFace&) = default;

private:
    friend class ZORTopBody;
    friend class ZORTopEdge;
    ZORTopFace(const ZORTopBodyPrivate* body, int index)
        : m_body(body)
        , m_index(index)
    {
    }

    const ZORTopBodyPrivate* m_body; // not owned
    int m_index;
};
