// Root of the composites features.

#pragma once

#include <ZORComposites/ZORCompositesGlobal.h>
#include <ZORFeature/ZORFeatRoot.h>

/// Holds the material library, the layups and the draping strategies of a container; created by
/// ZORFeatContainer::GetFeatureRoot("ZORCompRoot").
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompRoot : public ZORFeatRoot
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORCompRoot(ZORFeatContainer* container);
    ~ZORCompRoot() override;
};
