#include "ZORWFRawPoint.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
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

ZORWFRawPoint::ZORWFRawPoint(ZORFeatObject* folder, ZORGeoCartesianPoint* point, ZORTopBody* body)
    : ZORFeatGeometry(folder)
    , m_point(point)
    , m_body(body)
{
    if (body)
        body->AddReference(this);
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

struct ZORWFRawPointStorage
{
    static void Write(const ZORWFRawPoint& feature, ZORGeoObjectWriter& writer)
    {
        writer.WriteReference("point", feature.m_point);
        writer.WriteReference("body", feature.m_body);
    }
    static ZORWFRawPoint* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORWFRawPoint(reader.GetReference<ZORFeatObject>("parent"),
                                 reader.GetReference<ZORGeoCartesianPoint>("point"),
                                 reader.GetReference<ZORTopBody>("body"));
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORWFRawPoint)
