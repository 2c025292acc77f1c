#include "ZORWFRawPoint.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <memory>

ZOR_GEO_REGISTER_TYPE(ZORWFRawPoint)

ZORWFRawPoint::ZORWFRawPoint(ZORFeatObject* folder, const ZORMathPoint& point)
    : ZORFeatGeometry(folder)
{
    ZOR_TRACE_CALL(folder, point);
    auto geometry = std::make_unique<ZORGeoCartesianPoint>(GetContainer(), point);
    auto body = std::make_unique<ZORTopBody>(GetContainer(), geometry.get());
    body->AddReference(this);
    m_body = body.release();
    m_point = geometry.release();
}

ZORWFRawPoint::~ZORWFRawPoint()
{
    // Its reference of the body goes with the body.
    delete m_body;
    delete m_point;
}

void ZORWFRawPoint::Initialize()
{
    ZOR_TRACE_CALL();
    if (m_point)
        m_point->Initialize();
    if (m_body)
        m_body->Initialize();
    ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORWFRawPoint::GetBody() const
{
    return m_body;
}
