// Folder of the materials of a composites root.

#pragma once

#include <ZORComposites/ZORCompositesGlobal.h>
#include <ZORFeature/ZORFeatFolder.h>

class ZORCompMaterial;
class ZORCompRoot;

/// The materials that the plies of a container are made of. A root has at most one library.
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompMaterialLibrary : public ZORFeatFolder
{
    Q_OBJECT

public:
    /// \param root  null leaves the library without a container
    explicit ZORCompMaterialLibrary(ZORCompRoot* root);
    ~ZORCompMaterialLibrary() override;

    /// \throws ZORSysException "the composites root already has a material library", and as
    ///         ZORFeatObject::Initialize()
    void Initialize() override;

    /// The library of a root, made and registered when it has none.
    /// \return not owned; null for a null root
    /// \throws ZORSysException as ZORFeatObject::Initialize()
    static ZORCompMaterialLibrary* Of(ZORCompRoot* root);
    /// The library of a root; null when it has none.
    static ZORCompMaterialLibrary* Find(const ZORCompRoot* root);

    /// In the order of their registration.
    QList<ZORCompMaterial*> GetMaterials() const;
    /// The first material of that name (label); null when there is none.
    ZORCompMaterial* FindMaterial(const QString& name) const;
    /// A name that no material of the library has: \a wanted itself where it is free, else "wanted.2",
    /// "wanted.3" ...
    QString GetUniqueMaterialName(const QString& wanted) const;
};
