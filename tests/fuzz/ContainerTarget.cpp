// Container files load whole or not at all, and what was loaded can be saved and loaded again.
//
// An input with the signature of a file is a file; any other one is the document of a file, which is given the
// header and the checksum that the engine would never find.

#include "FuzzTarget.h"
#include "support/ContainerBytes.h"

#include <ZORComposites/ZORCompRoot.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysDocumentEnvelope.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORToolPath/ZORTPCourse.h>
#include <ZORWireframe/ZORWFProjection.h>

namespace {

// The classes of a library can be loaded while it is linked, and linkers drop libraries that nobody uses.
const QMetaObject* const kClasses[] = {&ZORCompRoot::staticMetaObject, &ZORTPCourse::staticMetaObject,
                                       &ZORWFProjection::staticMetaObject};

bool CanLoad(ZORGeoContainer& container, const QByteArray& file)
{
    try {
        LoadContainer(container, file);
        return true;
    } catch (const ZORSysFileException&) {
        Require(container.GetNumGeometry() == 0, "a refused file adds nothing");
        return false;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QByteArray file = ToBytes(data, size);
    if (!ZORSysDocumentEnvelope::HasSignature(file))
        file = ZORSysDocumentEnvelope(QStringLiteral("container file"), 1, 1000).Wrap(file);
    ZORFeatContainer container;
    Require(kClasses[0] != nullptr, "libraries of features are linked");
    if (!CanLoad(container, file))
        return 0;
    const QByteArray saved = SaveContainer(container);
    ZORFeatContainer again;
    LoadContainer(again, saved);
    Require(again.GetNumGeometry() == container.GetNumGeometry(), "every object is read again");
    Require(SaveContainer(again) == saved, "another save gives the same bytes");
    while (container.GetNumGeometry() > 0)
        delete container.GetGeometryByIndex(0);
    return 0;
}
