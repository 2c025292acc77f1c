#include "ZORFeatGeometry.h"

#include <ZORGeometry/ZORGeoTypeRegistration.h>

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
