// Projection of points and edges onto a surface.

#pragma once

#include "ZORTopStructure_p.h"

#include <ZORGeometry/ZORGeoLocationOnSurface.h>

#include <QList>
#include <QPointer>

class ZORGeoCurveOnSurface;
class ZORGeoGeometry;
class ZORTopBody;
class ZORTopEdge;

/// Creates the geometry of a projected body and its structure. Destroys the geometry again, unless Release() is
/// called.
class ZORTopProjection
{
public:
    /// \param support  must outlive the projection
    explicit ZORTopProjection(const ZORGeoSurface& support);
    ~ZORTopProjection();
    Q_DISABLE_COPY_MOVE(ZORTopProjection)

    /// \param projected  of dimension 0 or 1
    /// \return false when nothing can be projected
    bool Run(const ZORTopBody& projected);

    const ZORTopStructure& GetStructure() const { return m_structure; }
    QList<const ZORGeoGeometry*> GetParts() const { return {m_created.begin(), m_created.end()}; }
    /// Leaves the geometry to its container.
    void Release() { m_created.clear(); }

private:
    struct End // of a projected edge
    {
        ZORGeoLocationOnSurface location;
        int source = -1; // vertex of the projected body, if it has one there
        int first = 0;   // the first one of those that share a vertex, or nearer to it
        bool isOfCurve = false;
        int vertex = -1;
    };

    bool AddPoints(const ZORTopBody& projected);
    bool AddCurve(const ZORTopEdge& edge);
    void AddPartOfEdge(ZORGeoCurveOnSurface& curve);
    void AddEnds(const ZORTopEdge& edge, const ZORGeoCurveOnSurface& curve);
    enum class EndKind { OfPoint, OfCurve };
    int AddEnd(const ZORGeoLocationOnSurface& location, int source, EndKind kind);
    int FindFirst(int end) const;
    void Share(int a, int b);
    void ShareVertices(int numSources);
    void AddVertices();
    void AddVerticesOfEdges();
    int AddPoint(const ZORGeoLocationOnSurface& location);

    const ZORGeoSurface& m_support;
    const double m_tiny;                       // millimetres: what is nearer is the same place
    QList<QPointer<ZORGeoGeometry>> m_created; // owned by the container of the surface
    std::vector<End> m_ends;
    ZORTopIndexLists m_endsOfCurve; // two, or none for a closed one
    ZORTopStructure m_structure;
};
