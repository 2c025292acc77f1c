#include "ZORCompMaterial.h"

#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZOR_GEO_REGISTER_TYPE(ZORCompMaterial)

ZORCompMaterial::ZORCompMaterial(ZORCompMaterialLibrary* library)
    : ZORFeatObject(library)
{
    ZOR_TRACE_CALL(library);
}

ZORCompMaterial::~ZORCompMaterial() = default;

void ZORCompMaterial::SetProperties(const ZORCompMaterialProperties& properties)
{
    ZOR_TRACE_CALL(properties);
    if (properties == m_properties)
        return;
    properties.Check();
    m_properties = properties;
    ReportChange();
    emit PropertiesChanged();
}
