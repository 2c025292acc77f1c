#include "ZORCompStoredAttributes_p.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompSequence.h>
#include <ZORFeature/ZORFeatRootStorage.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <memory>

// Of the features that can be made with their public functions alone.

using ZORCompRootStorage = ZORFeatRootStorageOf<ZORCompRoot>;

ZOR_GEO_REGISTER_STORAGE(ZORCompRoot)

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

struct ZORCompMaterialStorage
{
    static void Write(const ZORCompMaterial& material, ZORGeoObjectWriter& writer)
    {
        writer.WriteString("type", material.GetProperties().type);
        for (const ZORCompMaterialProperties::Number& number : ZORCompMaterialProperties::Numbers)
            writer.WriteDouble(number.name, material.GetProperties().*number.member);
        ZorCompWriteAttributes(material, writer);
    }
    static ZORCompMaterial* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        auto material =
            std::make_unique<ZORCompMaterial>(reader.GetReference<ZORCompMaterialLibrary>("parent"));
        ZORCompMaterialProperties properties;
        properties.type = reader.GetString("type");
        for (const ZORCompMaterialProperties::Number& number : ZORCompMaterialProperties::Numbers)
            properties.*number.member = reader.GetDouble(number.name);
        material->SetProperties(properties);
        return material.release();
    }
    static void Complete(ZORCompMaterial& material, const ZORGeoObjectReader& reader)
    {
        ZorCompReadAttributes(material, reader);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompMaterial)

struct ZORCompLayupStorage
{
    static void Write(const ZORCompLayup& layup, ZORGeoObjectWriter& writer)
    {
        writer.WriteLink("surface", layup.GetSurface());
        writer.WriteLink("rosette", layup.GetRosette());
        writer.WriteString("source", layup.GetSource());
        ZorCompWriteAttributes(layup, writer);
    }
    static ZORCompLayup* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORCompLayup(reader.GetReference<ZORFeatObject>("parent"));
    }
    static void Complete(ZORCompLayup& layup, const ZORGeoObjectReader& reader)
    {
        layup.SetSurface(reader.GetLink<ZORGeoSurface>("surface"));
        layup.SetRosette(reader.GetLink<ZORCompRosette>("rosette"));
        layup.SetSource(reader.GetString("source"));
        ZorCompReadAttributes(layup, reader);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompLayup)

struct ZORCompSequenceStorage
{
    static void Write(const ZORCompSequence& sequence, ZORGeoObjectWriter& writer)
    {
        writer.WriteLink("rosette", sequence.GetRosette());
        writer.WriteBool("isActive", sequence.IsActive());
        ZorCompWriteAttributes(sequence, writer);
    }
    static ZORCompSequence* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORCompSequence(reader.GetReference<ZORFeatObject>("parent"));
    }
    static void Complete(ZORCompSequence& sequence, const ZORGeoObjectReader& reader)
    {
        sequence.SetRosette(reader.GetLink<ZORCompRosette>("rosette"));
        sequence.SetActive(reader.GetBool("isActive"));
        ZorCompReadAttributes(sequence, reader);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompSequence)
