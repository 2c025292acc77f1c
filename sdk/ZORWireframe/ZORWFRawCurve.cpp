#include "ZORWFRawCurve.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
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
    FollowBody(m_body);
}

ZORWFRawCurve::ZORWFRawCurve(ZORFeatObject* folder, const Stored& stored)
    : ZORFeatGeometry(folder)
    , m_body(stored.body)
{
    if (m_body)
        m_body->AddReference(this);
    FollowBody(m_body);
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

struct ZORWFRawCurveStorage
{
    static void Write(const ZORWFRawCurve& feature, ZORGeoObjectWriter& writer)
    {
        writer.WriteReference("body", feature.m_body);
    }
    static ZORWFRawCurve* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORWFRawCurve(reader.GetReference<ZORFeatObject>("parent"),
                                 ZORWFRawCurve::Stored{reader.GetReference<ZORTopBody>("body")});
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORWFRawCurve)
