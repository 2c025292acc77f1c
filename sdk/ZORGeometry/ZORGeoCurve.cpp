#include "ZORGeoCurve.h"

#include "mesh/ZORGeoChain_p.h"

#include <ZORGeometry/ZORGeoRange.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <cmath>

ZOR_GEO_REGISTER_TYPE(ZORGeoCurve)

namespace {

void Check(const ZORMathSetOfPoints& points)
{
    for (qsizetype i = 0; i < points.size(); ++i) {
        if (!ZORGeoRange::Contains(points[i]))
            throw ZORSysException(
                ZORGeoCurve::tr("point %1 of the curve is not finite or too far away").arg(i));
    }
}

} // namespace

class ZORGeoCurve::Private
{
public:
    std::unique_ptr<const ZORGeoChain> chain;
};

ZORGeoCurve::ZORGeoCurve(ZORGeoContainer* container, const ZORMathSetOfPoints& points)
    : ZORGeoGeometry(container)
    , d(new Private{std::make_unique<const ZORGeoChain>(points)})
{
}

ZORGeoCurve::~ZORGeoCurve() = default;

void ZORGeoCurve::CheckPoints() const
{
    Check(d->chain->GetPoints());
}

void ZORGeoCurve::ReplacePoints(const ZORMathSetOfPoints& points)
{
    Check(points);
    d->chain = std::make_unique<const ZORGeoChain>(points);
}

int ZORGeoCurve::GetNumPoints() const
{
    return int(d->chain->GetPoints().size());
}

ZORMathPoint ZORGeoCurve::GetPoint(int index) const
{
    Q_ASSERT(index >= 0 && index < GetNumPoints());
    return d->chain->GetPoints().at(index);
}

double ZORGeoCurve::GetLength() const
{
    return d->chain->GetLength();
}

ZORMathBoundingBox ZORGeoCurve::GetBoundingBox() const
{
    ZORMathBoundingBox box;
    for (const ZORMathPoint& point : d->chain->GetPoints())
        box.Add(point);
    return box;
}

ZORMathSetOfPoints ZORGeoCurve::GetPoints(const ZORGeoRangeOfCurve& range) const
{
    ZOR_TRACE_CALL(range);
    return d->chain->Cut(range.GetStart(), range.GetEnd());
}

ZORGeoLocationOnCurve ZORGeoCurve::GetLocation(double distance, const ZORGeoLocationOnCurve* start) const
{
    ZOR_TRACE_CALL(distance, start);
    if (start && start->curve != this)
        throw ZORSysException(tr("start location lies on another curve"));
    const double total = start ? start->distance + distance : distance;
    if (d->chain->GetPoints().isEmpty() || !(std::abs(total) <= ZORGeoRange::kLargestCoordinate))
        return {};
    const ZORGeoChain::Place place = d->chain->Locate(total);
    return {this, place.distance, place.point};
}

bool ZORGeoCurve::Project(const ZORMathPoint& point, ZORGeoLocationOnCurve& location) const
{
    ZOR_TRACE_CALL(point);
    if (d->chain->GetPoints().isEmpty() || !ZORGeoRange::Contains(point))
        return false;
    const ZORGeoChain::Place place = d->chain->Project(point);
    location = {this, place.distance, place.point};
    return true;
}
