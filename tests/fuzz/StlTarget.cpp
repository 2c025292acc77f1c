// STL content gives surfaces that are sound, or a reason.

#include "FuzzTarget.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QBuffer>

namespace {

void CheckSurface(const ZORGeoSurface& surface)
{
    Require(surface.GetNumTriangles() > 0, "a surface has triangles");
    for (const ZORMathPoint& vertex : surface.GetVertexArray())
        Require(vertex.IsFinite(), "vertices are finite");
    Require(surface.Project({1, 2, 3}).point.IsFinite(), "projections are finite");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QByteArray content = ToBytes(data, size);
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    ZORGeoContainer container;
    ZORGeoStlLoader loader(&buffer);
    try {
        qint64 triangles = 0;
        for (const ZORGeoSurface* surface : loader.Load(&container, ZORSysValue::Inch)) {
            CheckSurface(*surface);
            triangles += surface->GetNumTriangles();
        }
        Require(triangles == loader.GetReport().GetNumUsed(), "the report counts the triangles");
    } catch (const ZORSysFileException&) {
        Require(container.GetNumGeometry() == 0, "a refused file adds nothing");
    }
    return 0;
}
