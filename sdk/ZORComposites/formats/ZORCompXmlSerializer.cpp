#include "ZORCompNumbers_p.h"
#include "ZORCompXmlFormat_p.h"
#include "ZORCompXmlSerializer_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QJsonDocument>

#include <cmath>

namespace {

bool CanHold(const QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text.at(i).unicode();
        if (QChar::isHighSurrogate(unit) && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
        else if (QChar::isSurrogate(unit) || unit >= 0xfffe
                 || (unit < 0x20 && unit != '\t' && unit != '\n' && unit != '\r'))
            return false;
    }
    return true;
}

QString FormatTriple(double x, double y, double z)
{
    return ZorCompFormatNumber(x) + QLatin1Char(' ') + ZorCompFormatNumber(y) + QLatin1Char(' ')
           + ZorCompFormatNumber(z);
}

QString Format(const ZORMathPoint& point)
{
    return FormatTriple(point.GetX(), point.GetY(), point.GetZ());
}

QString Format(const ZORMathVector& vector)
{
    return FormatTriple(vector.GetX(), vector.GetY(), vector.GetZ());
}

// Numbers from 1 in the order of the file: what lies in the root comes first, then layup after layup.
template<class Part>
QList<int> NumberByLayup(const QList<Part>& parts, qsizetype numLayups)
{
    QList<QList<int>> indices(numLayups + 1);
    for (int i = 0; i < parts.size(); ++i)
        indices[parts.at(i).layup + 1].append(i);
    QList<int> numbers(parts.size());
    int number = 0;
    for (const QList<int>& inLayup : std::as_const(indices)) {
        for (const int index : inLayup)
            numbers[index] = ++number;
    }
    return numbers;
}

} // namespace

ZORCompXmlSerializer::ZORCompXmlSerializer(const ZORCompDocument& document)
    : m_document(document)
{
    m_buffer.open(QIODevice::WriteOnly);
    m_xml.setDevice(&m_buffer);
    m_xml.setAutoFormatting(true);
    m_xml.setAutoFormattingIndent(2);
}

QByteArray ZORCompXmlSerializer::Write()
{
    m_rosetteNumbers = NumberByLayup(m_document.rosettes, m_document.layups.size());
    m_contourNumbers = NumberByLayup(m_document.contours, m_document.layups.size());
    for (int i = 0; i < m_document.materials.size(); ++i)
        m_materialNumbers.append(i + 1);

    m_xml.writeStartDocument();
    m_xml.writeStartElement(QStringLiteral("layups"));
    m_xml.writeAttribute(QStringLiteral("version"), QString::number(kCompXmlVersion));
    for (const ZORCompXmlUnit& unit : kCompXmlUnits)
        m_xml.writeAttribute(QLatin1String(unit.quantity), QLatin1String(unit.unit));
    WriteMaterials();
    WriteRosettes(-1);
    WriteContours(-1);
    for (int i = 0; i < m_document.layups.size(); ++i)
        WriteLayup(i);
    m_xml.writeEndElement();
    m_xml.writeEndDocument();
    return m_buffer.data();
}

void ZORCompXmlSerializer::WriteText(const char* name, const QString& text)
{
    if (text.isEmpty())
        return;
    if (!CanHold(text))
        throw ZORSysException(tr("the text '%1' holds a character that XML cannot hold").arg(text));
    m_xml.writeAttribute(QLatin1String(name), text);
}

void ZORCompXmlSerializer::WriteNumber(const char* name, double number)
{
    if (!std::isnan(number))
        m_xml.writeAttribute(QLatin1String(name), ZorCompFormatNumber(number));
}

void ZORCompXmlSerializer::WriteReference(const char* name, const QString& prefix, const QList<int>& numbers,
                                          int index)
{
    if (index >= 0)
        m_xml.writeAttribute(QLatin1String(name), prefix + QString::number(numbers.at(index)));
}

void ZORCompXmlSerializer::WriteAttributes(const QJsonObject& attributes)
{
    if (attributes.isEmpty())
        return;
    QString json = QString::fromUtf8(QJsonDocument(attributes).toJson(QJsonDocument::Compact));
    // Strings of JSON escape the control characters, but not these two.
    json.replace(QChar(0xfffe), QStringLiteral("\\ufffe"));
    json.replace(QChar(0xffff), QStringLiteral("\\uffff"));
    m_xml.writeTextElement(QStringLiteral("attributes"), json);
}

void ZORCompXmlSerializer::WriteMaterials()
{
    if (m_document.materials.isEmpty())
        return;
    m_xml.writeStartElement(QStringLiteral("materials"));
    for (int i = 0; i < m_document.materials.size(); ++i) {
        const Document::Material& material = m_document.materials.at(i);
        m_xml.writeStartElement(QStringLiteral("material"));
        WriteReference("id", QStringLiteral("m"), m_materialNumbers, i);
        WriteText("name", material.name);
        WriteText("type", material.properties.type);
        for (const ZORCompMaterialProperties::Number& number : ZORCompMaterialProperties::Numbers)
            WriteNumber(number.name, material.properties.*number.member);
        WriteAttributes(material.attributes);
        m_xml.writeEndElement();
    }
    m_xml.writeEndElement();
}

void ZORCompXmlSerializer::WriteRosettes(int layup)
{
    for (int i = 0; i < m_document.rosettes.size(); ++i) {
        const Document::Rosette& rosette = m_document.rosettes.at(i);
        if (rosette.layup != layup)
            continue;
        m_xml.writeStartElement(QStringLiteral("rosette"));
        WriteReference("id", QStringLiteral("r"), m_rosetteNumbers, i);
        WriteText("name", rosette.name);
        WriteText("origin", Format(rosette.origin));
        WriteText("x", Format(rosette.xAxis));
        WriteText("normal", Format(rosette.normal));
        WriteAttributes(rosette.attributes);
        m_xml.writeEndElement();
    }
}

void ZORCompXmlSerializer::WriteContours(int layup)
{
    for (int i = 0; i < m_document.contours.size(); ++i) {
        const Document::Contour& contour = m_document.contours.at(i);
        if (contour.layup != layup)
            continue;
        m_xml.writeStartElement(contour.isFeature ? QStringLiteral("contour") : QStringLiteral("curve"));
        WriteReference("id", QStringLiteral("c"), m_contourNumbers, i);
        WriteText("name", contour.name);
        QString points;
        for (const ZORMathPoint& point : contour.points)
            points += QLatin1Char('\n') + Format(point);
        m_xml.writeTextElement(QStringLiteral("points"), points);
        WriteAttributes(contour.attributes);
        m_xml.writeEndElement();
    }
}

void ZORCompXmlSerializer::WriteLayup(int index)
{
    const Document::Layup& layup = m_document.layups.at(index);
    m_xml.writeStartElement(QStringLiteral("layup"));
    WriteText("name", layup.name);
    WriteReference("rosette", QStringLiteral("r"), m_rosetteNumbers, layup.rosette);
    WriteAttributes(layup.attributes);
    WriteRosettes(index);
    WriteContours(index);
    WriteComponents(layup.sequences);
    m_xml.writeEndElement();
}

void ZORCompXmlSerializer::WriteComponents(const QList<Document::Component>& components)
{
    for (const Document::Component& component : components) {
        if (component.kind == Document::Component::Ply) {
            WritePly(component);
            continue;
        }
        m_xml.writeStartElement(QStringLiteral("sequence"));
        WriteText("name", component.name);
        if (!component.isActive)
            m_xml.writeAttribute(QStringLiteral("active"), QStringLiteral("false"));
        WriteReference("rosette", QStringLiteral("r"), m_rosetteNumbers, component.rosette);
        WriteAttributes(component.attributes);
        WriteComponents(component.components);
        m_xml.writeEndElement();
    }
}

void ZORCompXmlSerializer::WritePly(const Document::Component& ply)
{
    m_xml.writeStartElement(QStringLiteral("ply"));
    WriteText("name", ply.name);
    if (!ply.isActive)
        m_xml.writeAttribute(QStringLiteral("active"), QStringLiteral("false"));
    WriteReference("material", QStringLiteral("m"), m_materialNumbers, ply.material);
    m_xml.writeAttribute(QStringLiteral("angle"), ZorCompFormatAngle(ply.angle));
    WriteReference("rosette", QStringLiteral("r"), m_rosetteNumbers, ply.rosette);
    QStringList boundaries;
    for (const int boundary : ply.boundaries)
        boundaries.append(QStringLiteral("c%1").arg(m_contourNumbers.at(boundary)));
    WriteText("boundaries", boundaries.join(QLatin1Char(' ')));
    WriteAttributes(ply.attributes);
    m_xml.writeEndElement();
}
