#include "ZORSysDocumentWriter.h"

#include "files/ZORSysDocumentTags_p.h"

#include <QCborStreamWriter>
#include <QtEndian>

namespace {

template<class T>
void WriteArray(QCborStreamWriter& writer, QCborTag tag, const QList<T>& values)
{
    writer.append(tag);
    if constexpr (Q_BYTE_ORDER == Q_LITTLE_ENDIAN) {
        writer.appendByteString(reinterpret_cast<const char*>(values.constData()),
                                values.size() * qsizetype(sizeof(T)));
    } else {
        QByteArray bytes(values.size() * qsizetype(sizeof(T)), Qt::Uninitialized);
        qToLittleEndian<T>(values.constData(), values.size(), bytes.data());
        writer.append(bytes);
    }
}

} // namespace

class ZORSysDocumentWriter::Private
{
public:
    explicit Private(QByteArray* document)
        : writer(document)
    {
    }

    QCborStreamWriter writer;
};

ZORSysDocumentWriter::ZORSysDocumentWriter(QByteArray* document)
    : d(std::make_unique<Private>(document))
{
}

ZORSysDocumentWriter::~ZORSysDocumentWriter() = default;

void ZORSysDocumentWriter::StartMap(qsizetype count)
{
    d->writer.startMap(quint64(count));
}

void ZORSysDocumentWriter::EndMap()
{
    d->writer.endMap();
}

void ZORSysDocumentWriter::StartArray(qsizetype count)
{
    d->writer.startArray(quint64(count));
}

void ZORSysDocumentWriter::EndArray()
{
    d->writer.endArray();
}

void ZORSysDocumentWriter::WriteBytes(const QByteArray& bytes)
{
    d->writer.append(bytes);
}

void ZORSysDocumentWriter::WriteBool(bool value)
{
    d->writer.append(value);
}

void ZORSysDocumentWriter::WriteInteger(qint64 value)
{
    d->writer.append(value);
}

void ZORSysDocumentWriter::WriteDouble(double value)
{
    d->writer.append(value);
}

void ZORSysDocumentWriter::WriteValue(const QCborValue& value)
{
    value.toCbor(d->writer);
}

void ZORSysDocumentWriter::WriteText(const QByteArray& utf8)
{
    d->writer.appendTextString(utf8.constData(), utf8.size());
}

void ZORSysDocumentWriter::WriteNumbers(const QList<double>& numbers)
{
    WriteArray(d->writer, kFloat64Tag, numbers);
}

void ZORSysDocumentWriter::WriteNumbers(const QList<qint32>& numbers)
{
    WriteArray(d->writer, kInt32Tag, numbers);
}
