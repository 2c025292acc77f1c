#include "ZORGeoTypeRegistration.h"

#include <ZORGeometry/ZORGeoContainer.h>

ZORGeoTypeRegistration::ZORGeoTypeRegistration(const QMetaObject* type)
    : m_type(type)
{
    ZORGeoContainer::RegisterType(type);
}

ZORGeoTypeRegistration::~ZORGeoTypeRegistration()
{
    ZORGeoContainer::UnregisterType(m_type);
}
