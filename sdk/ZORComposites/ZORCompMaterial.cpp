#include "ZORCompMaterial.h"

#include "features/ZORCompStoredAttributes_p.h"

#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <memory>

ZOR_GEO_REGISTER_TYPE(ZORCompMaterial)

ZORCompMaterial::ZORCompMaterial(ZORCompMaterialLibrary* library)
    : ZORFeatObject(library)
{
    ZOR_TRACE_CALL(library);
}

ZORCompMaterial::~ZORCompMaterial() = default;

void ZORCompMaterial::SetProperties(const ZORCompMaterialProperties& properties)
{
    ZOR_TRACE_CALL(properties);
    if (properties == m_properties)
        return;
    properties.Check();
    m_properties = properties;
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
