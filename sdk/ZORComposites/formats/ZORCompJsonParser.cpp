#include "ZORCompJsonGeometry_p.h"
#include "ZORCompJsonParser_p.h"
#include "ZORCompNumbers_p.h"

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
        throw ZORSysException(tr("offset %1: %2").arg(QString::number(error.offset), error.errorString()));
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

using Component = ZORCompDocument::Component;

namespace {

const auto kSubComponents = QLatin1String("subComponents");

} // namespace

// Components stand where they belong, or stand at the top and are referred to by their identifiers.
void ZORCompJsonParser::IndexComponents(const QJsonArray& components, const QString& path)
{
    for (int i = 0; i < components.size(); ++i) {
        const Fields fields(components.at(i), ZorCompPathOf(path, i));
        const std::optional<qint64> identifier = fields.GetIdentifier(QStringLiteral("ID"));
        if (!identifier)
            continue;
        if (m_components.contains(*identifier))
            Fields::Fail(fields.PathOf(QStringLiteral("ID")),
                         tr("identifier %1 is there twice").arg(*identifier));
        m_components.insert(*identifier, components.at(i));
    }
    CollectReferences(components);
}

void ZORCompJsonParser::CollectReferences(const QJsonArray& components)
{
    QList<QJsonArray> pending{components};
    while (!pending.isEmpty()) {
        const QJsonArray values = pending.takeLast();
        for (const QJsonValueConstRef value : values) {
            const std::optional<qint64> identifier = Fields::ToIdentifier(value);
            if (identifier && m_components.contains(*identifier))
                m_references.insert(*identifier);
            if (value[kSubComponents].isArray())
                pending.append(value[kSubComponents].toArray());
        }
    }
}

QList<Component> ZORCompJsonParser::ParseTop(const QJsonArray& values, Fields& file)
{
    QList<Component> sequences;
    bool isImplied = false;
    for (Component& component : ParseList(QStringLiteral("allComposite"), values, file, 0)) {
        if (component.kind == Component::Sequence) {
            isImplied = false;
            sequences.append(component);
            continue;
        }
        if (!isImplied)
            sequences.append(Component());
        isImplied = true;
        sequences.last().components.append(component);
        m_report.Warn(tr("a ply outside any sequence gets one of its own"));
    }
    for (const qint64 identifier : std::as_const(m_references)) {
        if (!m_componentIdentifiers.contains(identifier))
            throw ZORSysException(tr("component %1 is part of itself").arg(identifier));
    }
    return sequences;
}

QList<Component> ZORCompJsonParser::ParseList(const QString& name, const QJsonArray& values, Fields& owner,
                                              int depth)
{
    QList<Component> components;
    QJsonArray kept;
    for (int i = 0; i < values.size(); ++i) {
        const bool isTop = depth == 0;
        const std::optional<qint64> identifier =
            isTop ? Fields::ToIdentifier(values.at(i)[QLatin1String("ID")]) : std::nullopt;
        if (identifier && m_references.contains(*identifier))
            continue; // comes where it is referred to
        if (ParseComponent(values.at(i), ZorCompPathOf(owner.PathOf(name), i), depth, components))
            continue;
        kept.append(
            QJsonObject{{QStringLiteral("position"), i}, {QStringLiteral("component"), values.at(i)}});
    }
    if (!kept.isEmpty())
        owner.Keep(name, kept);
    return components;
}

bool ZORCompJsonParser::ParseComponent(const QJsonValue& value, const QString& path, int depth,
                                       QList<Component>& components)
{
    if (value.isDouble()) {
        const std::optional<qint64> reference = Fields::ToIdentifier(value);
        if (reference && m_components.contains(*reference))
            return ParseComponent(m_components.value(*reference), path, depth, components);
        m_report.Warn(tr("%1: there is no component %2").arg(path, QString::number(value.toDouble())));
        return false;
    }
    Fields fields(value, path);
    const QString type = fields.GetType();
    const bool isPly = type == QLatin1String("Ply");
    const bool hasList = fields.Get(kSubComponents).isArray();
    if (!isPly && !hasList && type != QLatin1String("Sequence")) {
        m_report.Keep(type.isEmpty() ? QStringLiteral("component") : type);
        return false;
    }
    if (const std::optional<qint64> identifier = fields.GetIdentifier(QStringLiteral("ID"))) {
        if (m_componentIdentifiers.contains(*identifier))
            Fields::Fail(path, tr("component %1 is there twice or part of itself").arg(*identifier));
        m_componentIdentifiers.insert(*identifier);
    }
    Component component;
    component.kind = isPly ? Component::Ply : Component::Sequence;
    component.name = fields.TakeText(QStringLiteral("memberName"));
    component.isActive = fields.TakeBool(QStringLiteral("active"), true);
    component.rosette = TakeRosette(fields);
    if (isPly)
        ParsePly(fields, component);
    else
        ParseSequence(fields, depth + 1, component);
    component.attributes = fields.GetRest();
    ReportKept(fields, type.isEmpty() ? QStringLiteral("component") : type);
    components.append(component);
    return true;
}

void ZORCompJsonParser::ParseSequence(Fields& fields, int depth, Component& component)
{
    if (depth > Document::MaximumDepth)
        Fields::Fail(fields.GetPath(), Document::DescribeTooDeep());
    if (fields.GetType() != QLatin1String("Sequence"))
        m_report.Warn(tr("%1: '%2' is read as a sequence").arg(fields.GetPath(), fields.GetType()));
    const QJsonArray components = fields.TakeArray(kSubComponents);
    component.components = ParseList(kSubComponents, components, fields, depth);
}

void ZORCompJsonParser::ParsePly(Fields& fields, Component& component)
{
    const QString materialField = QStringLiteral("material");
    const QJsonValue materialValue = fields.Get(materialField);
    const QString material = fields.TakeText(materialField);
    component.material = m_materials.value(material, -1);
    if (component.material < 0 && !material.isEmpty()) {
        fields.Keep(materialField, materialValue);
        m_report.Warn(tr("%1: there is no material '%2'").arg(fields.PathOf(materialField), material));
    }
    if (const std::optional<double> degrees = fields.TakeNumber(QStringLiteral("orientation")))
        component.angle = ZorCompToRadians(*degrees);
    TakeBoundaries(fields, component.boundaries);
}

// One identifier of a spline or a list of them; what is no spline stays as it is.
void ZORCompJsonParser::TakeBoundaries(Fields& fields, QList<int>& boundaries)
{
    const QString name = QStringLiteral("splineRelimitationRef");
    if (!fields.Has(name))
        return;
    const QJsonValue value = fields.Get(name);
    const QJsonArray references = value.isArray() ? value.toArray() : QJsonArray{value};
    QList<int> found;
    for (const QJsonValueConstRef reference : references) {
        const std::optional<qint64> identifier = Fields::ToIdentifier(reference);
        if (!identifier)
            Fields::Fail(fields.PathOf(name), tr("this is no identifier"));
        if (!m_splines.contains(*identifier)) {
            m_report.Warn(
                tr("%1: there is no spline %2").arg(fields.PathOf(name), QString::number(*identifier)));
            return;
        }
        found.append(m_splines.value(*identifier));
    }
    fields.Take(name);
    boundaries = found;
}

int ZORCompJsonParser::TakeRosette(Fields& fields)
{
    const QString name = QStringLiteral("axisSystemID");
    if (!fields.Has(name))
        return -1;
    const std::optional<qint64> identifier = fields.GetIdentifier(name);
    if (!identifier)
        Fields::Fail(fields.PathOf(name), tr("this is no identifier"));
    if (!m_axisSystems.contains(*identifier)) {
        m_report.Warn(
            tr("%1: there is no axis system %2").arg(fields.PathOf(name), QString::number(*identifier)));
        return -1;
    }
    fields.Take(name);
    return m_axisSystems.value(*identifier);
}
