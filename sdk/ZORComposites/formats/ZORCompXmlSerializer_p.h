// Writes documents as XML.

#pragma once

#include <ZORComposites/ZORCompDocument.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QXmlStreamWriter>

/// One document in the format that docs/layup-xml.md describes. Identifiers are numbered in the order of the file:
/// equal documents give equal bytes.
class ZORCompXmlSerializer
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompXmlFormat)

public:
    explicit ZORCompXmlSerializer(const ZORCompDocument& document);

    /// \throws ZORSysException "the text '%1' holds a character that XML cannot hold"
    QByteArray Write();

private:
    using Document = ZORCompDocument;

    void WriteText(const char* name, const QString& text);
    void WriteNumber(const char* name, double number);
    void WriteReference(const char* name, const QString& prefix, const QList<int>& numbers, int index);
    void WriteAttributes(const QJsonObject& attributes);
    void WriteMaterials();
    void WriteRosettes(int layup);
    void WriteContours(int layup);
    void WriteLayup(int index);
    void WriteComponents(const QList<Document::Component>& components);
    void WritePly(const Document::Component& ply);

    const ZORCompDocument& m_document;
    QList<int> m_materialNumbers; // by index in the document
    QList<int> m_rosetteNumbers;
    QList<int> m_contourNumbers;
    QBuffer m_buffer;
    QXmlStreamWriter m_xml;
};
