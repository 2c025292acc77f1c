#include "ZORCompNumbers_p.h"
#include "ZORCompXmlFormat_p.h"
#include "ZORCompXmlParser_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QJsonDocument>

namespace {

constexpr int kMaximumShown = 40; // characters of the file in a message

} // namespace

// The attributes of the current element, each of which must be asked for.
class ZORCompXmlParser::Attributes
{
public:
    explicit Attributes(ZORCompXmlParser& parser)
        : m_parser(parser)
        , m_attributes(parser.m_xml.attributes())
    {
    }

    bool Has(const char* name) const { return m_attributes.hasAttribute(QLatin1String(name)); }
    /// Empty when there is none.
    QString Text(const char* name)
    {
        m_known.append(QLatin1String(name));
        return m_attributes.value(QLatin1String(name)).toString();
    }
    QString RequiredText(const char* name)
    {
        if (!Has(name))
            m_parser.Fail(tr("attribute '%1' is missing").arg(QLatin1String(name)));
        return Text(name);
    }
    double Number(const char* name) { return Require(ZorCompParseNumber(RequiredText(name)), name); }
    double Angle(const char* name) { return Require(ZorCompParseAngle(RequiredText(name)), name); }
    bool IsActive()
    {
        const QString text = Has("active") ? Text("active") : QStringLiteral("true");
        if (text != QLatin1String("true") && text != QLatin1String("false"))
            m_parser.Fail(tr("attribute '%1' is neither 'true' nor 'false'").arg(QLatin1String("active")));
        return text == QLatin1String("true");
    }
    ZORMathVector Triple(const char* name)
    {
        const QString text = RequiredText(name).simplified();
        const QList<QStringView> parts = QStringView(text).split(QLatin1Char(' '));
        if (parts.size() != 3)
            m_parser.Fail(tr("attribute '%1' does not hold three numbers").arg(QLatin1String(name)));
        return {Require(ZorCompParseNumber(parts[0]), name), Require(ZorCompParseNumber(parts[1]), name),
                Require(ZorCompParseNumber(parts[2]), name)};
    }
    int Reference(Kind kind, const char* name) { return Has(name) ? m_parser.Refer(kind, Text(name)) : -1; }

    /// Everything that was not asked for is an error.
    void Finish() const
    {
        for (const QXmlStreamAttribute& attribute : m_attributes) {
            if (!m_known.contains(attribute.qualifiedName()))
                m_parser.Fail(tr("attribute '%1' is unknown").arg(attribute.qualifiedName()));
        }
    }

private:
    double Require(std::optional<double> number, const char* name) const
    {
        if (!number)
            m_parser.Fail(tr("attribute '%1' does not hold a number").arg(QLatin1String(name)));
        return *number;
    }

    ZORCompXmlParser& m_parser;
    const QXmlStreamAttributes m_attributes;
    QList<QString> m_known;
};

ZORCompXmlParser::ZORCompXmlParser(const QByteArray& content)
    : m_xml(content)
{
    m_xml.setNamespaceProcessing(false);
}

ZORCompDocument ZORCompXmlParser::Parse()
{
    if (!NextChild())
        Fail(tr("there is no element"));
    if (m_xml.qualifiedName() != QLatin1String("layups"))
        FailElement();
    ParseRoot();
    NextChild(); // finds what must not come behind the root element

    for (Document::Layup& layup : m_document.layups) {
        layup.rosette = Resolve(RosetteKind, layup.rosette);
        ResolveAll(layup.sequences);
    }
    return m_document;
}

void ZORCompXmlParser::Fail(const QString& reason) const
{
    throw ZORSysException(
        tr("line %1, column %2: %3")
            .arg(QString::number(m_xml.lineNumber()), QString::number(m_xml.columnNumber()), reason));
}

void ZORCompXmlParser::FailElement() const
{
    Fail(tr("element '%1' is not allowed here").arg(m_xml.qualifiedName()));
}

// Goes on to the start of the next element within the current one; false at the end of that.
bool ZORCompXmlParser::NextChild()
{
    while (true) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            return true;
        case QXmlStreamReader::EndElement:
        case QXmlStreamReader::EndDocument:
            return false;
        case QXmlStreamReader::Characters:
            if (!m_xml.isWhitespace())
                Fail(tr("text is not allowed here"));
            break;
        case QXmlStreamReader::DTD:
            Fail(tr("a document type declaration is not allowed"));
        case QXmlStreamReader::EntityReference:
            Fail(tr("entity '%1' is unknown").arg(m_xml.name()));
        case QXmlStreamReader::Invalid:
            Fail(m_xml.errorString());
        default: // comments and processing instructions
            break;
        }
    }
}

// The text of an element without elements in it.
QString ZORCompXmlParser::ReadText()
{
    const QString text = m_xml.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
    if (m_xml.hasError())
        Fail(m_xml.errorString());
    return text;
}

void ZORCompXmlParser::ParseRoot()
{
    Attributes attributes(*this);
    const QString version = attributes.RequiredText("version");
    if (version != QString::number(kCompXmlVersion))
        Fail(tr("version '%1' of the format is unknown").arg(version));
    for (const ZORCompXmlUnit& unit : kCompXmlUnits) {
        const QString given = attributes.RequiredText(unit.quantity);
        if (given != QLatin1String(unit.unit))
            Fail(tr("unit '%1' of '%2' is unknown").arg(given, QLatin1String(unit.quantity)));
    }
    attributes.Finish();
    while (NextChild()) {
        if (m_xml.qualifiedName() == QLatin1String("materials"))
            ParseMaterials();
        else if (m_xml.qualifiedName() == QLatin1String("layup"))
            ParseLayup();
        else if (!ParseShared(-1))
            FailElement();
    }
}

void ZORCompXmlParser::ParseMaterials()
{
    Attributes(*this).Finish();
    while (NextChild()) {
        if (m_xml.qualifiedName() != QLatin1String("material"))
            FailElement();
        ParseMaterial();
    }
}

void ZORCompXmlParser::ParseMaterial()
{
    Attributes attributes(*this);
    Document::Material material;
    Define(MaterialKind, attributes.RequiredText("id"), m_document.materials.size());
    material.name = attributes.Text("name");
    material.properties.type = attributes.Text("type");
    for (const ZORCompMaterialProperties::Number& number : ZORCompMaterialProperties::Numbers) {
        if (attributes.Has(number.name))
            material.properties.*number.member = attributes.Number(number.name);
    }
    attributes.Finish();
    try {
        material.properties.Check();
    } catch (const ZORSysException& exception) {
        Fail(exception.GetMessage());
    }
    while (NextChild())
        ParseAttributes(material.attributes);
    m_document.materials.append(material);
}

// Rosettes and contours, in a layup or outside.
bool ZORCompXmlParser::ParseShared(int layup)
{
    if (m_xml.qualifiedName() == QLatin1String("rosette"))
        ParseRosette(layup);
    else if (m_xml.qualifiedName() == QLatin1String("contour"))
        ParseContour(layup, Form::Feature);
    else if (m_xml.qualifiedName() == QLatin1String("curve"))
        ParseContour(layup, Form::Curve);
    else
        return false;
    return true;
}

void ZORCompXmlParser::ParseRosette(int layup)
{
    Attributes attributes(*this);
    Document::Rosette rosette;
    rosette.layup = layup;
    Define(RosetteKind, attributes.RequiredText("id"), m_document.rosettes.size());
    rosette.name = attributes.Text("name");
    const ZORMathVector origin = attributes.Triple("origin");
    rosette.origin = {origin.GetX(), origin.GetY(), origin.GetZ()};
    rosette.xAxis = attributes.Triple("x");
    rosette.normal = attributes.Triple("normal");
    attributes.Finish();
    while (NextChild())
        ParseAttributes(rosette.attributes);
    m_document.rosettes.append(rosette);
}

void ZORCompXmlParser::ParseContour(int layup, Form form)
{
    Attributes attributes(*this);
    Document::Contour contour;
    contour.layup = layup;
    contour.isFeature = form == Form::Feature;
    Define(ContourKind, attributes.RequiredText("id"), m_document.contours.size());
    contour.name = attributes.Text("name");
    attributes.Finish();
    bool hasPoints = false;
    while (NextChild()) {
        if (m_xml.qualifiedName() != QLatin1String("points")) {
            ParseAttributes(contour.attributes);
        } else if (hasPoints) {
            Fail(tr("element '%1' is there twice").arg(m_xml.qualifiedName()));
        } else {
            contour.points = ParsePoints();
            hasPoints = true;
        }
    }
    if (!hasPoints)
        Fail(tr("element '%1' is missing").arg(QLatin1String("points")));
    m_document.contours.append(contour);
}

ZORMathSetOfPoints ZORCompXmlParser::ParsePoints()
{
    Attributes(*this).Finish();
    const QString text = ReadText().simplified();
    ZORMathSetOfPoints points;
    std::array<double, 3> coordinates{};
    size_t count = 0;
    for (const QStringView word : QStringView(text).tokenize(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const std::optional<double> number = ZorCompParseNumber(word);
        if (!number)
            Fail(tr("'%1' is no coordinate").arg(word.left(kMaximumShown)));
        coordinates[count] = *number;
        count = (count + 1) % 3;
        if (count == 0)
            points.append({coordinates[0], coordinates[1], coordinates[2]});
    }
    if (count != 0)
        Fail(tr("the last point has no three coordinates"));
    return points;
}

void ZORCompXmlParser::ParseLayup()
{
    const int index = int(m_document.layups.size());
    m_document.layups.append(Document::Layup());
    Attributes attributes(*this);
    Document::Layup layup;
    layup.name = attributes.Text("name");
    layup.rosette = attributes.Reference(RosetteKind, "rosette");
    attributes.Finish();
    while (NextChild()) {
        if (m_xml.qualifiedName() == QLatin1String("sequence"))
            layup.sequences.append(ParseSequence(1));
        else if (!ParseShared(index))
            ParseAttributes(layup.attributes);
    }
    m_document.layups[index] = layup;
}

ZORCompDocument::Component ZORCompXmlParser::ParseSequence(int depth)
{
    if (depth > Document::MaximumDepth)
        Fail(Document::DescribeTooDeep());
    Attributes attributes(*this);
    Document::Component sequence;
    sequence.name = attributes.Text("name");
    sequence.isActive = attributes.IsActive();
    sequence.rosette = attributes.Reference(RosetteKind, "rosette");
    attributes.Finish();
    while (NextChild()) {
        if (m_xml.qualifiedName() == QLatin1String("sequence"))
            sequence.components.append(ParseSequence(depth + 1));
        else if (m_xml.qualifiedName() == QLatin1String("ply"))
            sequence.components.append(ParsePly());
        else
            ParseAttributes(sequence.attributes);
    }
    return sequence;
}

ZORCompDocument::Component ZORCompXmlParser::ParsePly()
{
    Attributes attributes(*this);
    Document::Component ply;
    ply.kind = Document::Component::Ply;
    ply.name = attributes.Text("name");
    ply.isActive = attributes.IsActive();
    ply.material = attributes.Reference(MaterialKind, "material");
    ply.angle = attributes.Angle("angle");
    ply.rosette = attributes.Reference(RosetteKind, "rosette");
    const QString boundaries = attributes.Text("boundaries").simplified();
    for (const QString& id : boundaries.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        ply.boundaries.append(Refer(ContourKind, id));
    attributes.Finish();
    while (NextChild())
        ParseAttributes(ply.attributes);
    return ply;
}

void ZORCompXmlParser::ParseAttributes(QJsonObject& target)
{
    if (m_xml.qualifiedName() != QLatin1String("attributes"))
        FailElement();
    if (!target.isEmpty())
        Fail(tr("element '%1' is there twice").arg(m_xml.qualifiedName()));
    Attributes(*this).Finish();
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(ReadText().toUtf8(), &error);
    if (error.error != QJsonParseError::NoError)
        Fail(tr("the attributes are no JSON: %1").arg(error.errorString()));
    if (!json.isObject())
        Fail(tr("the attributes are no JSON object"));
    target = json.object();
}

void ZORCompXmlParser::Define(Kind kind, const QString& id, qsizetype index)
{
    if (m_defined[kind].contains(id))
        Fail(tr("identifier '%1' is there twice").arg(id));
    m_defined[kind].insert(id, int(index));
}

int ZORCompXmlParser::Refer(Kind kind, const QString& id)
{
    m_references[kind].append({id, m_xml.lineNumber(), m_xml.columnNumber()});
    return int(m_references[kind].size()) - 1;
}

int ZORCompXmlParser::Resolve(Kind kind, int reference) const
{
    if (reference < 0)
        return -1;
    const Reference& to = m_references[kind].at(reference);
    const auto defined = m_defined[kind].constFind(to.id);
    if (defined == m_defined[kind].cend())
        throw ZORSysException(tr("line %1, column %2: %3")
                                  .arg(QString::number(to.line), QString::number(to.column),
                                       tr("identifier '%1' is unknown").arg(to.id)));
    return *defined;
}

void ZORCompXmlParser::ResolveAll(QList<Document::Component>& components) const
{
    for (Document::Component& component : components) {
        component.rosette = Resolve(RosetteKind, component.rosette);
        component.material = Resolve(MaterialKind, component.material);
        for (int& boundary : component.boundaries)
            boundary = Resolve(ContourKind, boundary);
        ResolveAll(component.components);
    }
}
