#include "ZORGeoCurveOnSurfaceResult.h"

class ZORGeoCurveOnSurfaceResultData : public QSharedData
{
public:
    QList<ZORGeoLocationOnSurface> locations;
    int startIndex = 0;
    ZORGeoCurveOnSurfaceResult::Side start;
    ZORGeoCurveOnSurfaceResult::Side end;
};

ZORGeoCurveOnSurfaceResult::ZORGeoCurveOnSurfaceResult()
    : d(new ZORGeoCurveOnSurfaceResultData)
{
}

ZORGeoCurveOnSurfaceResult::ZORGeoCurveOnSurfaceResult(const ZORGeoCurveOnSurfaceResult& other) = default;
ZORGeoCurveOnSurfaceResult::ZORGeoCurveOnSurfaceResult(ZORGeoCurveOnSurfaceResult&& other) noexcept = default;
ZORGeoCurveOnSurfaceResult&
ZORGeoCurveOnSurfaceResult::operator=(const ZORGeoCurveOnSurfaceResult& other) = default;
ZORGeoCurveOnSurfaceResult&
ZORGeoCurveOnSurfaceResult::operator=(ZORGeoCurveOnSurfaceResult&& other) noexcept = default;
ZORGeoCurveOnSurfaceResult::~ZORGeoCurveOnSurfaceResult() = default;

ZORGeoCurveOnSurfaceResult::ZORGeoCurveOnSurfaceResult(const QList<ZORGeoLocationOnSurface>& locations,
                                                       int startIndex, const Side& start, const Side& end)
    : ZORGeoCurveOnSurfaceResult()
{
    d->locations = locations;
    d->startIndex = startIndex;
    d->start = start;
    d->end = end;
}

QList<ZORGeoLocationOnSurface> ZORGeoCurveOnSurfaceResult::GetLocations() const
{
    return d->locations;
}

int ZORGeoCurveOnSurfaceResult::GetStartIndex() const
{
    return d->startIndex;
}

double ZORGeoCurveOnSurfaceResult::GetStartLength() const
{
    return d->start.length;
}

double ZORGeoCurveOnSurfaceResult::GetEndLength() const
{
    return d->end.length;
}

ZORGeoCurveOnSurfaceResult::StopReason ZORGeoCurveOnSurfaceResult::GetStartReason() const
{
    return d->start.reason;
}

ZORGeoCurveOnSurfaceResult::StopReason ZORGeoCurveOnSurfaceResult::GetEndReason() const
{
    return d->end.reason;
}
