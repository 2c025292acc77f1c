#include "ZORGeoLine.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
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

struct ZORGeoLineStorage
{
    static void Write(const ZORGeoLine& line, ZORGeoObjectWriter& writer)
    {
        writer.WritePoint("start", line.GetPoint(0));
        writer.WritePoint("end", line.GetPoint(1));
    }
    static ZORGeoLine* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        return new ZORGeoLine(container, reader.GetPoint("start"), reader.GetPoint("end"));
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORGeoLine)
