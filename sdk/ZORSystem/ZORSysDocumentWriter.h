// Writes the document of a binary file.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QByteArray>
#include <QCborValue>
#include <QList>
#include <QString>

#include <memory>

/// Puts values one by one into a document of CBOR (RFC 8949) with all lengths given. Bulk numbers become the
/// typed arrays of RFC 8746: float64, tag 86, and sint32, tag 78, low byte first. Equal calls give equal bytes.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORSYSTEM_EXPORT ZORSysDocumentWriter
{
public:
    /// \param document  receives the bytes; must outlive the writer
    explicit ZORSysDocumentWriter(QByteArray* document);
    ~ZORSysDocumentWriter();

    void StartMap(qsizetype count);
    void EndMap();
    void StartArray(qsizetype count);
    void EndArray();

    /// A text, as the keys of maps are.
    void WriteText(const QByteArray& utf8);
    void WriteText(const QString& text) { WriteText(text.toUtf8()); }
    void WriteBytes(const QByteArray& bytes);
    void WriteBool(bool value);
    void WriteInteger(qint64 value);
    void WriteDouble(double value);
    void WriteValue(const QCborValue& value);
    void WriteNumbers(const QList<double>& numbers);
    void WriteNumbers(const QList<qint32>& numbers);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
