#include "ZORWFRawSurface.h"

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
