#include "ZORWFRawSurface.h"

#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <memory>

ZOR_GEO_REGISTER_TYPE(ZORWFRawSurface)

ZORWFRawSurface::ZORWFRawSurface(ZORFeatObject* folder, const ZORGeoSurface* surface)
    : ZORFeatGeometry(folder)
{
    ZOR_TRACE_CALL(folder, surface);
    auto body = std::make_unique<ZORTopBody>(GetContainer(), surface);
    body->AddReference(this);
    m_body = body.release();
}

ZORWFRawSurface::ZORWFRawSurface(ZORFeatObject* folder, const Stored& stored)
    : ZORFeatGeometry(folder)
    , m_body(stored.body)
{
    if (m_body)
        m_body->AddReference(this);
}

ZORWFRawSurface::~ZORWFRawSurface()
{
    // Its reference of the body goes with the body.
    delete m_body;
}

void ZORWFRawSurface::Initialize()
{
    ZOR_TRACE_CALL();
    if (m_body)
        m_body->Initialize();
    ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORWFRawSurface::GetBody() const
{
    return m_body;
}

struct ZORWFRawSurfaceStorage
{
    static void Write(const ZORWFRawSurface& feature, ZORGeoObjectWriter& writer)
    {
        writer.WriteReference("body", feature.m_body);
    }
    static ZORWFRawSurface* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORWFRawSurface(reader.GetReference<ZORFeatObject>("parent"),
                                   ZORWFRawSurface::Stored{reader.GetReference<ZORTopBody>("body")});
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORWFRawSurface)
