#include "ZORVisSurfacePrimitive.h"

#include "ZORVisDrawing_p.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysApiTrace.h>

namespace {

std::shared_ptr<const ZORVisPrimitiveData> MeshOf(const ZORGeoSurface* surface)
{
    if (!surface)
        return std::make_shared<ZORVisMeshData>(QList<ZORMathPoint>(), QList<ZORVisMeshData::Corners>(),
                                                true);
    return std::make_shared<ZORVisMeshData>(surface->GetVertexArray(), surface->GetCornerArray(), true);
}

} // namespace

ZORVisSurfacePrimitive::ZORVisSurfacePrimitive(const ZORGeoSurface* surface)
    : ZORVisPrimitive(MeshOf(surface))
{
    ZOR_TRACE_CALL(surface);
}

int ZORVisSurfacePrimitive::GetNumTriangles() const
{
    return int(static_cast<const ZORVisMeshData&>(*GetData()).corners.size());
}
