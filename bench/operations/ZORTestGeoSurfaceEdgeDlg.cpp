#include "operations/ZORTestGeoSurfaceEdgeDlg.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

ZOR_TEST_REGISTER(ZORTestGeoSurfaceEdgeDlg)

ZORTestGeoSurfaceEdgeDlg::ZORTestGeoSurfaceEdgeDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    m_surfaceSel = form.AddSelector("_SurfaceSel", tr("Surface: "), "ZORGeoSurface");
    form.AddButtonBox();
}

bool ZORTestGeoSurfaceEdgeDlg::Apply()
{
    auto* surface = Require<ZORGeoSurface>(m_surfaceSel, tr("Surface selection invalid"));
    if (!surface)
        return false;

    ZORMathSetOfPoints borderSides;
    const int numTriangles = surface->GetNumTriangles();
    for (int triangle = 1; triangle <= numTriangles; ++triangle) {
        int acrossAB = 0, acrossBC = 0, acrossCA = 0;
        surface->GetNeighbors(triangle, acrossAB, acrossBC, acrossCA);
        ZORMathPoint a, b, c;
        surface->GetVertices(triangle, a, b, c);
        if (acrossAB == 0)
            borderSides << a << b;
        if (acrossBC == 0)
            borderSides << b << c;
        if (acrossCA == 0)
            borderSides << c << a;
    }
    ZORDebugVizContainer::AddPolyline(borderSides, 255, 255, 0, 0, QString(), 1);

    return !surface->CreateEdges().isEmpty();
}
