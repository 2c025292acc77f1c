#include "ZORWFRawCurve.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <memory>

ZOR_GEO_REGISTER_TYPE(ZORWFRawCurve)

ZORWFRawCurve::ZORWFRawCurve(ZORFeatObject* folder, const ZORGeoCurve* curve)
    : ZORFeatGeometry(folder)
{
    ZOR_TRACE_CALL(folder, curve);
    auto body = std::make_unique<ZORTopBody>(GetContainer(), curve);
    body->AddReference(this);
    m_body = body.release();
}

ZORWFRawCurve::~ZORWFRawCurve()
{
    // Its reference of the body goes with the body.
    delete m_body;
}

void ZORWFRawCurve::Initialize()
{
    ZOR_TRACE_CALL();
    if (m_body)
        m_body->Initialize();
    ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORWFRawCurve::GetBody() const
{
    return m_body;
}
