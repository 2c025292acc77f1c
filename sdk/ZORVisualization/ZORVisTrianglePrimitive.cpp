#include "ZORVisTrianglePrimitive.h"

#include "scene/ZORVisMeshData_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORVisTrianglePrimitive::ZORVisTrianglePrimitive(const ZORMathSetOfPoints& points)
    : ZORVisPrimitive(std::make_shared<ZORVisMeshData>(points))
{
    ZOR_TRACE_CALL(points);
}

int ZORVisTrianglePrimitive::GetNumTriangles() const
{
    return int(static_cast<const ZORVisMeshData&>(*GetData()).corners.size());
}
