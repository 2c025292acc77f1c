#include "ZORVisSurfacePrimitive.h"

#include "scene/ZORVisMeshData_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORVisSurfacePrimitive::ZORVisSurfacePrimitive(const ZORGeoSurface* surface)
    : ZORVisPrimitive(surface ? std::make_shared<ZORVisMeshData>(*surface)
                              : std::make_shared<ZORVisMeshData>(QList<ZORMathPoint>()))
{
    ZOR_TRACE_CALL(surface);
}

int ZORVisSurfacePrimitive::GetNumTriangles() const
{
    return int(static_cast<const ZORVisMeshData&>(*GetData()).corners.size());
}
