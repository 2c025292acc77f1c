#include "ZORFeatGeometry.h"

#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORTopology/ZORTopBody.h>

ZOR_GEO_REGISTER_TYPE(ZORFeatGeometry)

ZORFeatGeometry::ZORFeatGeometry(ZORFeatObject* parent)
    : ZORFeatObject(parent)
{
}

ZORFeatGeometry::~ZORFeatGeometry() = default;

ZORTopBody* ZORFeatGeometry::GetBody() const
{
    return nullptr;
}

QList<ZORGeoGeometry*> ZORFeatGeometry::GetOwnedGeometry() const
{
    ZORTopBody* const body = GetBody();
    return body ? QList<ZORGeoGeometry*>{body} : QList<ZORGeoGeometry*>();
}

void ZORFeatGeometry::FollowBody(const ZORTopBody* body)
{
    if (body)
        connect(body, &ZORGeoGeometry::ShapeChanged, this, &ZORFeatGeometry::BodyChanged);
}
