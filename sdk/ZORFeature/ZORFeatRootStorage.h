// How the roots of feature trees are saved.

#pragma once

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>

/// Storage of a root class without content of its own. A module that adds such a class writes
/// using XStorage = ZORFeatRootStorageOf<X>; and registers it.
///
/// Thread safety: thread of the container; objects may be shared read-only.
template<class Root>
struct ZORFeatRootStorageOf
{
    static void Write(const Root&, ZORGeoObjectWriter&) {}
    /// The root of the file joins the one that the container has already.
    static Root* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        auto* const features = qobject_cast<ZORFeatContainer*>(container);
        if (!features)
            reader.Fail(ZORFeatRoot::tr("only a feature container can hold roots"));
        for (ZORFeatRoot* root : features->GetFeatureRoots()) {
            if (root->metaObject() == &Root::staticMetaObject)
                return static_cast<Root*>(root);
        }
        return new Root(features);
    }
};
