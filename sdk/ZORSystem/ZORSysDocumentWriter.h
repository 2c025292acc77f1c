// Writes the document of a binary file.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QByteArray>
#include <QCborStreamWriter>
#include <QCborValue>
#include <QList>
#include <QString>

/// Puts values one by one into a document of CBOR (RFC 8949) with all lengths given. Bulk numbers become the
/// typed arrays of RFC 8746: float64, tag 86, and sint32, tag 78, low byte first. Equal calls give equal bytes.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORSYSTEM_EXPORT ZORSysDocumentWriter
{
public:
    /// \param document  receives the bytes; must outlive the writer
    explicit ZORSysDocumentWriter(QByteArray* document);

    void StartMap(qsizetype count) { m_writer.startMap(quint64(count)); }
    void EndMap() { m_writer.endMap(); }
    void StartArray(qsizetype count) { m_writer.startArray(quint64(count)); }
    void EndArray() { m_writer.endArray(); }

    /// A text, as the keys of maps are.
    void WriteText(const QByteArray& utf8);
    void WriteText(const QString& text) { WriteText(text.toUtf8()); }
    void WriteBytes(const QByteArray& bytes) { m_writer.append(bytes); }
    void WriteBool(bool value) { m_writer.append(value); }
    void WriteInteger(qint64 value) { m_writer.append(value); }
    void WriteDouble(double value) { m_writer.append(value); }
    void WriteValue(const QCborValue& value) { value.toCbor(m_writer); }
    void WriteNumbers(const QList<double>& numbers);
    void WriteNumbers(const QList<qint32>& numbers);

private:
    QCborStreamWriter m_writer;
};
