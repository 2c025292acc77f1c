#include "ZORGeoLine.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZOR_GEO_REGISTER_TYPE(ZORGeoLine)

ZORGeoLine::ZORGeoLine(ZORGeoContainer* container, const ZORMathPoint& start, const ZORMathPoint& end)
    : ZORGeoCurve(container, ZORMathSetOfPoints({start, end}))
{
    ZOR_TRACE_CALL(container, start, end);
    CheckPoints();
}

ZORGeoLine::~ZORGeoLine() = default;
