#include "ZORVisSurfacePrimitive.h"

#include "scene/ZORVisMeshData_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <utility>

ZORVisSurfacePrimitive::ZORVisSurfacePrimitive(const ZORGeoSurface* surface)
    : ZORVisPrimitive(surface ? std::make_shared<ZORVisMeshData>(*surface)
                              : std::make_shared<ZORVisMeshData>(QList<ZORMathPoint>()))
{
    ZOR_TRACE_CALL(surface);
}

ZORVisSurfacePrimitive::ZORVisSurfacePrimitive(std::shared_ptr<const ZORVisPrimitiveData> data)
    : ZORVisPrimitive(std::move(data))
{
}

std::function<std::unique_ptr<ZORVisSurfacePrimitive>()>
ZORVisSurfacePrimitive::PrepareFor(const ZORGeoSurface* surface)
{
    const ZORVisMeshData::Shared shared =
        surface ? ZORVisMeshData::Shared(*surface) : ZORVisMeshData::Shared();
    return [shared] {
        return std::unique_ptr<ZORVisSurfacePrimitive>(
            new ZORVisSurfacePrimitive(std::make_shared<const ZORVisMeshData>(shared)));
    };
}

int ZORVisSurfacePrimitive::GetNumTriangles() const
{
    return int(static_cast<const ZORVisMeshData&>(*GetData()).corners.size());
}
