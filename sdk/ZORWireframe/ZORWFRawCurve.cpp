#include "ZORWFRawCurve.h"

#include "ZORWFOwned_p.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZOR_GEO_REGISTER_TYPE(ZORWFRawCurve)

class ZORWFRawCurve::Private
{
public:
    ZORWFOwnedBody body;
};

ZORWFRawCurve::ZORWFRawCurve(ZORFeatObject* folder, const ZORGeoCurve* curve)
    : ZORFeatGeometry(folder)
{
    ZOR_TRACE_CALL(folder, curve);
    d.reset(new Private{{*this, std::make_unique<ZORTopBody>(GetContainer(), curve)}});
    FollowBody(d->body.Get());
}

ZORWFRawCurve::ZORWFRawCurve(ZORFeatObject* folder, const Stored& stored)
    : ZORFeatGeometry(folder)
    , d(new Private{{*this, std::unique_ptr<ZORTopBody>(stored.body)}})
{
    FollowBody(d->body.Get());
}

ZORWFRawCurve::~ZORWFRawCurve() = default;

void ZORWFRawCurve::Initialize()
{
    ZOR_TRACE_CALL();
    d->body.Initialize();
    ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORWFRawCurve::GetBody() const
{
    return d->body.Get();
}

struct ZORWFRawCurveStorage
{
    static void Write(const ZORWFRawCurve& feature, ZORGeoObjectWriter& writer)
    {
        writer.WriteReference("body", feature.GetBody());
    }
    static ZORWFRawCurve* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORWFRawCurve(reader.GetReference<ZORFeatObject>("parent"),
                                 ZORWFRawCurve::Stored{reader.GetReference<ZORTopBody>("body")});
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORWFRawCurve)
