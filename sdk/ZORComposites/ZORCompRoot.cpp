#include "ZORCompRoot.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatRootStorage.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZOR_GEO_REGISTER_TYPE(ZORCompRoot)

ZORCompRoot::ZORCompRoot(ZORFeatContainer* container)
    : ZORFeatRoot(container)
{
    ZOR_TRACE_CALL(container);
    SetLabel(tr("Composites"));
}

ZORCompRoot::~ZORCompRoot() = default;

using ZORCompRootStorage = ZORFeatRootStorageOf<ZORCompRoot>;

ZOR_GEO_REGISTER_STORAGE(ZORCompRoot)
