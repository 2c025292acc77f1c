#include "ZORWFRawPoint.h"

#include "ZORWFOwned_p.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZOR_GEO_REGISTER_TYPE(ZORWFRawPoint)

class ZORWFRawPoint::Private
{
public:
    ZORWFOwned<ZORGeoCartesianPoint> point; // outlives the body around it
    ZORWFOwnedBody body;
};

ZORWFRawPoint::ZORWFRawPoint(ZORFeatObject* folder, const ZORMathPoint& point)
    : ZORFeatGeometry(folder)
{
    ZOR_TRACE_CALL(folder, point);
    auto geometry = std::make_unique<ZORGeoCartesianPoint>(GetContainer(), point);
    auto body = std::make_unique<ZORTopBody>(GetContainer(), geometry.get());
    d.reset(new Private{ZORWFOwned(std::move(geometry)), {*this, std::move(body)}});
}

ZORWFRawPoint::ZORWFRawPoint(ZORFeatObject* folder, ZORGeoCartesianPoint* point, ZORTopBody* body)
    : ZORFeatGeometry(folder)
    , d(new Private{ZORWFOwned(std::unique_ptr<ZORGeoCartesianPoint>(point)),
                    {*this, std::unique_ptr<ZORTopBody>(body)}})
{
}

ZORWFRawPoint::~ZORWFRawPoint() = default;

void ZORWFRawPoint::Initialize()
{
    ZOR_TRACE_CALL();
    d->point.Initialize();
    d->body.Initialize();
    ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORWFRawPoint::GetBody() const
{
    return d->body.Get();
}

QList<ZORGeoGeometry*> ZORWFRawPoint::GetOwnedGeometry() const
{
    QList<ZORGeoGeometry*> owned = ZORFeatGeometry::GetOwnedGeometry();
    if (d->point.Get())
        owned.prepend(d->point.Get());
    return owned;
}

struct ZORWFRawPointStorage
{
    static void Write(const ZORWFRawPoint& feature, ZORGeoObjectWriter& writer)
    {
        writer.WriteReference("point", feature.d->point.Get());
        writer.WriteReference("body", feature.GetBody());
    }
    static ZORWFRawPoint* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORWFRawPoint(reader.GetReference<ZORFeatObject>("parent"),
                                 reader.GetReference<ZORGeoCartesianPoint>("point"),
                                 reader.GetReference<ZORTopBody>("body"));
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORWFRawPoint)
