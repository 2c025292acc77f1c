#include "ZORCompMaterialLibrary.h"

#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <memory>

ZOR_GEO_REGISTER_TYPE(ZORCompMaterialLibrary)

ZORCompMaterialLibrary::ZORCompMaterialLibrary(ZORCompRoot* root)
    : ZORFeatFolder(root)
{
    ZOR_TRACE_CALL(root);
}

ZORCompMaterialLibrary::~ZORCompMaterialLibrary() = default;

void ZORCompMaterialLibrary::Initialize()
{
    ZOR_TRACE_CALL();
    if (IsInitialized())
        return;
    if (Find(qobject_cast<const ZORCompRoot*>(GetParentFeature())))
        throw ZORSysException(tr("the composites root already has a material library"));
    ZORFeatFolder::Initialize();
}

ZORCompMaterialLibrary* ZORCompMaterialLibrary::Of(ZORCompRoot* root)
{
    ZOR_TRACE_CALL(root);
    ZORCompMaterialLibrary* const present = Find(root);
    if (present || !root)
        return present;
    auto library = std::make_unique<ZORCompMaterialLibrary>(root);
    library->SetLabel(tr("Materials"));
    library->Initialize();
    return library.release();
}

ZORCompMaterialLibrary* ZORCompMaterialLibrary::Find(const ZORCompRoot* root)
{
    if (!root)
        return nullptr;
    for (ZORFeatObject* child : root->GetChildren()) {
        if (auto* library = qobject_cast<ZORCompMaterialLibrary*>(child))
            return library;
    }
    return nullptr;
}

QList<ZORCompMaterial*> ZORCompMaterialLibrary::GetMaterials() const
{
    QList<ZORCompMaterial*> materials;
    for (ZORFeatObject* child : GetChildren()) {
        if (auto* material = qobject_cast<ZORCompMaterial*>(child))
            materials.append(material);
    }
    return materials;
}

ZORCompMaterial* ZORCompMaterialLibrary::FindMaterial(const QString& name) const
{
    for (ZORCompMaterial* material : GetMaterials()) {
        if (material->GetLabel() == name)
            return material;
    }
    return nullptr;
}

QString ZORCompMaterialLibrary::GetUniqueMaterialName(const QString& wanted) const
{
    QString name = wanted;
    for (int number = 2; FindMaterial(name); ++number)
        name = QStringLiteral("%1.%2").arg(wanted, QString::number(number));
    return name;
}

struct ZORCompMaterialLibraryStorage
{
    static void Write(const ZORCompMaterialLibrary&, ZORGeoObjectWriter&) {}
    // The library of the file joins the one that the root has already.
    static ZORCompMaterialLibrary* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        auto* const root = reader.GetReference<ZORCompRoot>("parent");
        ZORCompMaterialLibrary* const present = ZORCompMaterialLibrary::Find(root);
        return present ? present : new ZORCompMaterialLibrary(root);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompMaterialLibrary)
