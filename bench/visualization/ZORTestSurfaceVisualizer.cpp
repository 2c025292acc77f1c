#include "visualization/ZORTestSurfaceVisualizer.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "visualization/ZORTestSurfaceVisOptionsDlg.h"

#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QPointer>

#include <array>
#include <utility>
#include <vector>

ZOR_TEST_REGISTER(ZORTestSurfaceVisualizer)

namespace {

// Walks from triangle to neighbouring triangle and takes every edge from the first of its triangles that
// is visited.
class EdgeWalk
{
public:
    explicit EdgeWalk(const ZORGeoSurface* surface)
        : m_surface(surface)
        , m_visited(surface->GetNumTriangles(), 0)
    {
        // A closed or large open mesh has three edges for two triangles, and an edge two points.
        m_points.reserve(3 * qsizetype(surface->GetNumTriangles()) + 3);
    }

    /// The end points of all edges, consecutive pairs.
    ZORMathSetOfPoints Run()
    {
        for (int seed = 1; seed <= m_surface->GetNumTriangles(); ++seed) {
            if (!IsVisited(seed))
                VisitPiece(seed);
        }
        return std::move(m_points);
    }

private:
    bool IsVisited(int triangle) const { return m_visited.at(triangle - 1) != 0; }

    void VisitPiece(int seed)
    {
        m_stack.push_back(seed);
        while (!m_stack.empty()) {
            const int triangle = m_stack.back();
            m_stack.pop_back();
            // Two neighbours may both have pushed it.
            if (!IsVisited(triangle))
                Visit(triangle);
        }
    }

    void Visit(int triangle)
    {
        m_visited[triangle - 1] = 1;
        std::array<ZORMathPoint, 3> corners;
        std::array<int, 3> neighbors = {};
        m_surface->GetVertices(triangle, corners[0], corners[1], corners[2]);
        m_surface->GetNeighbors(triangle, neighbors[0], neighbors[1], neighbors[2]);
        for (size_t side = 0; side < 3; ++side) {
            const int neighbor = neighbors[side];
            if (neighbor != 0 && IsVisited(neighbor))
                continue;
            m_points.append(corners[side]);
            m_points.append(corners[(side + 1) % 3]);
            if (neighbor != 0)
                m_stack.push_back(neighbor);
        }
    }

    const ZORGeoSurface* m_surface; // not owned
    QByteArray m_visited;           // a flag per triangle
    std::vector<int> m_stack;
    ZORMathSetOfPoints m_points;
};

} // namespace

ZORTestSurfaceVisualizer::ZORTestSurfaceVisualizer() = default;

ZORVisVirtualObject* ZORTestSurfaceVisualizer::Visualize(ZORTestEnvironment* environment,
                                                         ZORGeoGeometry* geometry)
{
    const QPointer<ZORGeoSurface> surface = qobject_cast<ZORGeoSurface*>(geometry);
    if (!surface)
        throw ZORSysException(tr("geometry is not a surface"));
    ZORTestSurfaceVisOptionsDlg dialog(environment);
    if (dialog.exec() != QDialog::Accepted || !surface) // it may have been deleted meanwhile
        return nullptr;

    const ZORVisPrimitive* primitive = nullptr;
    if (dialog.IsWireframe()) {
        primitive =
            new ZORVisPolylinePrimitive(EdgeWalk(surface).Run(), ZORVisPolylinePrimitive::Structure(0));
    } else {
        primitive = new ZORVisSurfacePrimitive(surface);
    }
    auto* object = new ZORVisVirtualObject(environment->GetEnvironment(), surface);
    object->SetRep(new ZORVisRepGraphics({primitive}, dialog.GetOptions()));
    return object;
}
