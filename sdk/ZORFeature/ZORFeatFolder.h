// Feature that groups other features.

#pragma once

#include <ZORFeature/ZORFeatObject.h>

/// Groups features below it; its name is its label.
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORFEATURE_EXPORT ZORFeatFolder : public ZORFeatObject
{
    Q_OBJECT

public:
    /// \param parent  the feature the folder lies in, usually another folder or a root
    explicit ZORFeatFolder(ZORFeatObject* parent);
    ~ZORFeatFolder() override;

protected:
    /// A folder at the top of a tree.
    explicit ZORFeatFolder(ZORGeoContainer* container);

private:
    friend struct ZORFeatFolderStorage;
};
