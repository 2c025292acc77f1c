#include "ZORVisPointPrimitive.h"

#include "scene/ZORVisLineData_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORVisPointPrimitive::ZORVisPointPrimitive(const ZORMathSetOfPoints& points)
    : ZORVisPrimitive(std::make_shared<ZORVisPointData>(points))
{
    ZOR_TRACE_CALL(points);
}

const ZORMathSetOfPoints& ZORVisPointPrimitive::GetPoints() const
{
    return static_cast<const ZORVisPointData&>(*GetData()).points;
}
