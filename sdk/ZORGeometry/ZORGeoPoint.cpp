#include "ZORGeoPoint.h"

#include <ZORGeometry/ZORGeoTypeRegistration.h>

ZOR_GEO_REGISTER_TYPE(ZORGeoPoint)

ZORGeoPoint::~ZORGeoPoint() = default;
