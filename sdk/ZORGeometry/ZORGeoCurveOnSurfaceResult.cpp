#include "ZORGeoCurveOnSurfaceResult.h"

ZORGeoCurveOnSurfaceResult::ZORGeoCurveOnSurfaceResult(const QList<ZORGeoLocationOnSurface>& locations,
                                                       int startIndex, const Side& start, const Side& end)
    : m_locations(locations)
    , m_startIndex(startIndex)
    , m_start(start)
    , m_end(end)
{
}
