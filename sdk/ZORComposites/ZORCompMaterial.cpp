#include "ZORCompMaterial.h"

#include "features/ZORCompStoredAttributes_p.h"

#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <memory>

ZOR_GEO_REGISTER_TYPE(ZORCompMaterial)

class ZORCompMaterial::Private
{
public:
    ZORCompMaterialProperties properties;
};

ZORCompMaterial::ZORCompMaterial(ZORCompMaterialLibrary* library)
    : ZORFeatObject(library)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(library);
}

ZORCompMaterial::~ZORCompMaterial() = default;

const ZORCompMaterialProperties& ZORCompMaterial::GetProperties() const
{
    return d->properties;
}

void ZORCompMaterial::SetProperties(const ZORCompMaterialProperties& properties)
{
    ZOR_TRACE_CALL(properties);
    if (properties == d->properties)
        return;
    properties.Check();
    d->properties = properties;
    ReportChange();
    emit PropertiesChanged();
}

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
