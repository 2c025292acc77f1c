#include "ZORFeatFolder.h"

#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZOR_GEO_REGISTER_TYPE(ZORFeatFolder)

ZORFeatFolder::ZORFeatFolder(ZORFeatObject* parent)
    : ZORFeatObject(parent)
{
    ZOR_TRACE_CALL(parent);
}

ZORFeatFolder::ZORFeatFolder(ZORGeoContainer* container)
    : ZORFeatObject(container)
{
}

ZORFeatFolder::~ZORFeatFolder() = default;
