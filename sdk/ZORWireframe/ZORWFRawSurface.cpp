#include "ZORWFRawSurface.h"

#include "ZORWFOwned_p.h"

#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZOR_GEO_REGISTER_TYPE(ZORWFRawSurface)

class ZORWFRawSurface::Private
{
public:
    ZORWFOwnedBody body;
};

ZORWFRawSurface::ZORWFRawSurface(ZORFeatObject* folder, const ZORGeoSurface* surface)
    : ZORFeatGeometry(folder)
{
    ZOR_TRACE_CALL(folder, surface);
    d.reset(new Private{{*this, std::make_unique<ZORTopBody>(GetContainer(), surface)}});
}

ZORWFRawSurface::ZORWFRawSurface(ZORFeatObject* folder, const Stored& stored)
    : ZORFeatGeometry(folder)
    , d(new Private{{*this, std::unique_ptr<ZORTopBody>(stored.body)}})
{
}

ZORWFRawSurface::~ZORWFRawSurface() = default;

void ZORWFRawSurface::Initialize()
{
    ZOR_TRACE_CALL();
    d->body.Initialize();
    ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORWFRawSurface::GetBody() const
{
    return d->body.Get();
}

struct ZORWFRawSurfaceStorage
{
    static void Write(const ZORWFRawSurface& feature, ZORGeoObjectWriter& writer)
    {
        writer.WriteReference("body", feature.GetBody());
    }
    static ZORWFRawSurface* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORWFRawSurface(reader.GetReference<ZORFeatObject>("parent"),
                                   ZORWFRawSurface::Stored{reader.GetReference<ZORTopBody>("body")});
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORWFRawSurface)
