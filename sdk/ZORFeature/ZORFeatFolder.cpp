#include "ZORFeatFolder.h"

#include <ZORGeometry/ZORGeoObjectStorage.h>
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

struct ZORFeatFolderStorage
{
    static void Write(const ZORFeatFolder&, ZORGeoObjectWriter&) {}
    static ZORFeatFolder* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        if (auto* parent = reader.GetReference<ZORFeatObject>("parent"))
            return new ZORFeatFolder(parent);
        return new ZORFeatFolder(container);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORFeatFolder)
