#include "ZORVisTrianglePrimitive.h"

#include "ZORVisDrawing_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

namespace {

QList<ZORVisMeshData::Corners> SuccessiveTriples(qsizetype numPoints)
{
    QList<ZORVisMeshData::Corners> corners(numPoints / 3);
    for (int i = 0; i < int(corners.size()); ++i)
        corners[i] = {3 * i, 3 * i + 1, 3 * i + 2};
    return corners;
}

} // namespace

ZORVisTrianglePrimitive::ZORVisTrianglePrimitive(const ZORMathSetOfPoints& points)
    : ZORVisPrimitive(std::make_shared<ZORVisMeshData>(points, SuccessiveTriples(points.size()), false))
{
    ZOR_TRACE_CALL(points);
}

int ZORVisTrianglePrimitive::GetNumTriangles() const
{
    return int(static_cast<const ZORVisMeshData&>(*GetData()).corners.size());
}
