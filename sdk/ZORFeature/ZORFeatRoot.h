// Root of a feature tree.

#pragma once

#include <ZORFeature/ZORFeatFolder.h>

class ZORFeatContainer;

/// The folder at the top of a feature tree; a container holds at most one of each class.
///
/// A derived class that ZORFeatContainer::GetFeatureRoot() is to create has a constructor
/// Q_INVOKABLE explicit X(ZORFeatContainer*) and is registered with ZOR_GEO_REGISTER_TYPE.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORFEATURE_EXPORT ZORFeatRoot : public ZORFeatFolder
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORFeatRoot(ZORFeatContainer* container);
    ~ZORFeatRoot() override;

    /// Registers the root with its container.
    /// \throws ZORSysException "the container already has a root of class %1"
    void Initialize() override;
};
