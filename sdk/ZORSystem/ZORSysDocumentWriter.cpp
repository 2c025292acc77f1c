#include "ZORSysDocumentWriter.h"

#include "files/ZORSysDocumentTags_p.h"

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

ZORSysDocumentWriter::ZORSysDocumentWriter(QByteArray* document)
    : m_writer(document)
{
}

void ZORSysDocumentWriter::WriteText(const QByteArray& utf8)
{
    m_writer.appendTextString(utf8.constData(), utf8.size());
}

void ZORSysDocumentWriter::WriteNumbers(const QList<double>& numbers)
{
    WriteArray(m_writer, kFloat64Tag, numbers);
}

void ZORSysDocumentWriter::WriteNumbers(const QList<qint32>& numbers)
{
    WriteArray(m_writer, kInt32Tag, numbers);
}
