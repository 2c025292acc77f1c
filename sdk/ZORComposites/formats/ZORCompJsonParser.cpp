#include "ZORCompJsonGeometry_p.h"
#include "ZORCompJsonParser_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QJsonDocument>

namespace {

// Besides the ones that every part has.
bool IsWorthReporting(const QString& name, const QJsonValue& value)
{
    if (value.isNull() || name == QLatin1String("ID") || name == QLatin1String("_serialized_type"))
        return false;
    return name != QLatin1String("active") || value != QJsonValue(true);
}

} // namespace

ZORCompJsonParser::ZORCompJsonParser(ZORCompReadReport& report)
    : m_report(report)
{
}

ZORCompDocument ZORCompJsonParser::Parse(const QByteArray& content)
{
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(content, &error);
    if (error.error != QJsonParseError::NoError)
        throw ZORSysException(tr("offset %1: %2").arg(error.offset).arg(error.errorString()));
    Fields file(json.isObject() ? QJsonValue(json.object()) : QJsonValue(json.array()), {});
    if (!file.Has(QStringLiteral("allComposite")))
        throw ZORSysException(tr("there is no list 'allComposite'"));

    m_document.layups.append(Document::Layup());
    ParseMaterials(file);
    ParseGeometry(file);
    const QJsonArray components = file.TakeArray(QStringLiteral("allComposite"));
    IndexComponents(components, QStringLiteral("allComposite"));
    Document::Layup layup;
    layup.name = file.TakeText(QStringLiteral("name"));
    layup.sequences = ParseTop(components, file);
    layup.attributes = file.GetRest();
    ReportKept(file, {});
    m_document.layups[0] = layup;
    return m_document;
}

// Tells which fields are left and become attributes.
void ZORCompJsonParser::ReportKept(const Fields& fields, const QString& type)
{
    const QJsonObject& rest = fields.GetRest();
    for (auto it = rest.begin(); it != rest.end(); ++it) {
        if (IsWorthReporting(it.key(), it.value()))
            m_report.Keep(type.isEmpty() ? it.key() : type + QLatin1Char('.') + it.key());
    }
}

void ZORCompJsonParser::ParseMaterials(Fields& file)
{
    const QString name = QStringLiteral("allMaterials");
    const QJsonArray materials = file.TakeArray(name);
    for (int i = 0; i < materials.size(); ++i) {
        Fields fields(materials.at(i), ZorCompPathOf(name, i));
        ParseMaterial(fields);
    }
}

void ZORCompJsonParser::ParseMaterial(Fields& fields)
{
    Document::Material material;
    material.name = fields.TakeText(QStringLiteral("materialName"));
    material.properties.type = fields.TakeText(QStringLiteral("type"));
    TakeProperties(fields, material.properties);
    if (m_materials.contains(material.name))
        Fields::Fail(fields.GetPath(), tr("material '%1' is there twice").arg(material.name));
    if (!material.name.isEmpty())
        m_materials.insert(material.name, int(m_document.materials.size()));
    material.attributes = fields.GetRest();
    ReportKept(fields, QStringLiteral("Material"));
    m_document.materials.append(material);
}

// Numbers that no material can have are kept as attributes, and warned of: files use 0 for unknown ones.
void ZORCompJsonParser::TakeProperties(Fields& fields, ZORCompMaterialProperties& properties)
{
    for (const ZORCompMaterialProperties::Number& number : ZORCompMaterialProperties::Numbers) {
        if (number.member == &ZORCompMaterialProperties::rollWidth)
            continue; // none of the format's
        const QString name = QLatin1String(number.name);
        const QJsonValue value = fields.Get(name);
        const std::optional<double> taken = fields.TakeNumber(name);
        if (!taken)
            continue;
        ZORCompMaterialProperties changed = properties;
        changed.*number.member = *taken;
        try {
            changed.Check();
            properties = changed;
        } catch (const ZORSysException& exception) {
            fields.Keep(name, value);
            m_report.Warn(tr("%1: %2").arg(fields.GetPath(), exception.GetMessage()));
        }
    }
}

void ZORCompJsonParser::ParseGeometry(Fields& file)
{
    const QString name = QStringLiteral("allGeometry");
    const QJsonArray geometry = file.TakeArray(name);
    QJsonArray kept;
    for (int i = 0; i < geometry.size(); ++i) {
        Fields fields(geometry.at(i), ZorCompPathOf(name, i));
        const std::optional<qint64> identifier = fields.GetIdentifier(QStringLiteral("ID"));
        if (identifier && m_geometryIdentifiers.contains(*identifier))
            Fields::Fail(fields.PathOf(QStringLiteral("ID")),
                         tr("identifier %1 is there twice").arg(*identifier));
        if (identifier)
            m_geometryIdentifiers.insert(*identifier);
        if (ParseSpline(fields) || ParseAxisSystem(fields))
            continue;
        kept.append(geometry.at(i));
        m_report.Keep(fields.GetType().isEmpty() ? name : fields.GetType());
    }
    if (!kept.isEmpty())
        file.Keep(name, kept);
}

bool ZORCompJsonParser::ParseSpline(Fields& fields)
{
    if (fields.GetType() != QLatin1String("Spline"))
        return false;
    Document::Contour contour;
    contour.layup = 0;
    contour.name = fields.TakeText(QStringLiteral("memberName"));
    contour.points = ZorCompTakePoints(fields);
    contour.attributes = fields.GetRest();
    ReportKept(fields, QStringLiteral("Spline"));
    if (const std::optional<qint64> identifier = fields.GetIdentifier(QStringLiteral("ID")))
        m_splines.insert(*identifier, int(m_document.contours.size()));
    m_document.contours.append(contour);
    return true;
}

bool ZORCompJsonParser::ParseAxisSystem(Fields& fields)
{
    if (fields.GetType() != QLatin1String("AxisSystem"))
        return false;
    Document::Rosette rosette;
    if (!ZorCompTakeAxes(fields, rosette)) {
        m_report.Warn(tr("%1: the axes are not understood").arg(fields.GetPath()));
        return false;
    }
    rosette.layup = 0;
    rosette.name = fields.TakeText(QStringLiteral("memberName"));
    rosette.attributes = fields.GetRest();
    ReportKept(fields, QStringLiteral("AxisSystem"));
    if (const std::optional<qint64> identifier = fields.GetIdentifier(QStringLiteral("ID")))
        m_axisSystems.insert(*identifier, int(m_document.rosettes.size()));
    m_document.rosettes.append(rosette);
    return true;
}
