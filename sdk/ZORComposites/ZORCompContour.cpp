#include "ZORCompContour.h"

#include "ZORCompShape_p.h"

#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZOR_GEO_REGISTER_TYPE(ZORCompContour)

ZORCompContour::ZORCompContour(ZORFeatObject* parent, const ZORMathSetOfPoints& points)
    : ZORFeatGeometry(parent)
    , m_shape(std::make_unique<ZORCompShape>(this))
{
    ZOR_TRACE_CALL(parent, points);
    auto curve = std::make_unique<ZORGeoPolyline>(GetContainer(), points, true);
    m_shape->Replace(curve.release(), true);
}

ZORCompContour::~ZORCompContour() = default;

void ZORCompContour::Initialize()
{
    ZOR_TRACE_CALL();
    if (m_shape->Register())
        ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORCompContour::GetBody() const
{
    return m_shape->GetBody();
}

ZORGeoCurve* ZORCompContour::GetCurve() const
{
    return m_shape->GetOwnedCurve();
}
