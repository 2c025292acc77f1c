#include "ZORFeatRoot.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatRootStorage.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORFeatRoot)

ZORFeatRoot::ZORFeatRoot(ZORFeatContainer* container)
    : ZORFeatFolder(container)
{
    ZOR_TRACE_CALL(container);
}

ZORFeatRoot::~ZORFeatRoot() = default;

void ZORFeatRoot::Initialize()
{
    ZOR_TRACE_CALL();
    auto* const container = static_cast<ZORFeatContainer*>(GetContainer());
    if (container) {
        const char* const className = metaObject()->className();
        const ZORFeatRoot* const present = container->FindRoot(className);
        if (present == this)
            return;
        if (present) {
            throw ZORSysException(
                tr("the container already has a root of class %1").arg(QLatin1String(className)));
        }
    }
    ZORFeatFolder::Initialize();
    container->AddRoot(this);
}

using ZORFeatRootStorage = ZORFeatRootStorageOf<ZORFeatRoot>;

ZOR_GEO_REGISTER_STORAGE(ZORFeatRoot)
