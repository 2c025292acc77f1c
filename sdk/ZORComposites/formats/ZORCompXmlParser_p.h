// Reads documents from XML.

#pragma once

#include <ZORComposites/ZORCompDocument.h>

#include <QCoreApplication>
#include <QHash>
#include <QXmlStreamReader>

#include <array>

/// Reads the format that docs/layup-xml.md describes, and nothing else: whatever it does not know is an error, so
/// that nothing gets lost.
class ZORCompXmlParser
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompXmlFormat)

public:
    explicit ZORCompXmlParser(const QByteArray& content);

    /// \throws ZORSysException "line %1, column %2: %3"
    ZORCompDocument Parse();

private:
    using Document = ZORCompDocument;
    class Attributes;

    enum Kind { MaterialKind, RosetteKind, ContourKind, NumKinds };
    struct Reference
    {
        QString id;
        qint64 line;
        qint64 column;
    };

    [[noreturn]] void Fail(const QString& reason) const;
    [[noreturn]] void FailElement() const;
    bool NextChild();
    QString ReadText();

    void ParseRoot();
    void ParseMaterials();
    void ParseMaterial();
    void ParseRosette(int layup);
    enum class Form { Feature, Curve };
    void ParseContour(int layup, Form form);
    bool ParseShared(int layup);
    void ParseLayup();
    Document::Component ParseSequence(int depth);
    Document::Component ParsePly();
    void ParseAttributes(QJsonObject& target);
    ZORMathSetOfPoints ParsePoints();

    void Define(Kind kind, const QString& id, qsizetype index);
    int Refer(Kind kind, const QString& id);
    int Resolve(Kind kind, int reference) const;
    void ResolveAll(QList<Document::Component>& components) const;

    QXmlStreamReader m_xml;
    Document m_document;
    std::array<QHash<QString, int>, NumKinds> m_defined; // indices by identifier
    std::array<QList<Reference>, NumKinds> m_references; // stand in for indices until all is read
};
