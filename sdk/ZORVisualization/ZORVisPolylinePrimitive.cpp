#include "ZORVisPolylinePrimitive.h"

#include "scene/ZORVisLineData_p.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZORVisPolylinePrimitive::ZORVisPolylinePrimitive(const ZORGeoCurve* curve, const ZORGeoRangeOfCurve& range)
    : ZORVisPrimitive(
        std::make_shared<ZORVisLineData>(curve ? curve->GetPoints(range) : ZORMathSetOfPoints(), Chain))
{
    ZOR_TRACE_CALL(curve, range);
}

ZORVisPolylinePrimitive::ZORVisPolylinePrimitive(const ZORMathSetOfPoints& points, Structure structure)
    : ZORVisPrimitive(std::make_shared<ZORVisLineData>(points, structure))
{
    ZOR_TRACE_CALL(points, structure);
}

const ZORMathSetOfPoints& ZORVisPolylinePrimitive::GetPoints() const
{
    return static_cast<const ZORVisLineData&>(*GetData()).points;
}

ZORVisPolylinePrimitive::Structure ZORVisPolylinePrimitive::GetStructure() const
{
    return static_cast<const ZORVisLineData&>(*GetData()).structure;
}
