#include "ZORSysDocumentReader.h"

#include "files/ZORSysDocumentTags_p.h"

#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QtEndian>

ZORSysDocumentReader::ZORSysDocumentReader(const QByteArray& document, const QString& kind)
    : m_kind(kind)
    , m_size(document.size())
    , m_reader(document)
{
}

void ZORSysDocumentReader::FailHere() const
{
    throw ZORSysFileException(tr("%1 is damaged: unexpected content at byte %2 of the document")
                                  .arg(m_kind, QString::number(m_reader.currentOffset())));
}

// Every element takes a byte at least, so a greater length cannot be true.
qsizetype ZORSysDocumentReader::Enter(bool isWanted)
{
    Check(isWanted && m_reader.isLengthKnown() && m_reader.length() <= quint64(m_size));
    const auto count = qsizetype(m_reader.length());
    Check(m_reader.enterContainer());
    return count;
}

void ZORSysDocumentReader::Leave()
{
    Check(m_reader.leaveContainer());
}

// Length before content: what is allocated for it is there.
qsizetype ZORSysDocumentReader::GetLength(bool isWanted) const
{
    Check(isWanted && m_reader.isLengthKnown()
          && m_reader.length() <= quint64(m_size - m_reader.currentOffset()));
    return qsizetype(m_reader.length());
}

void ZORSysDocumentReader::ReadContent(char* bytes, qsizetype length)
{
    auto chunk = m_reader.readStringChunk(bytes, length);
    if (chunk.status == QCborStreamReader::Ok) {
        Check(chunk.data == length);
        char rest = 0;
        chunk = m_reader.readStringChunk(&rest, 1);
    }
    Check(chunk.status == QCborStreamReader::EndOfString);
}

QByteArray ZORSysDocumentReader::ReadString(bool isWanted)
{
    QByteArray bytes(GetLength(isWanted), Qt::Uninitialized);
    ReadContent(bytes.data(), bytes.size());
    return bytes;
}

bool ZORSysDocumentReader::ReadBool()
{
    Check(m_reader.isBool());
    const bool value = m_reader.toBool();
    Check(m_reader.next());
    return value;
}

qint64 ZORSysDocumentReader::ReadInteger()
{
    Check(m_reader.isInteger());
    const bool isNegative = m_reader.isNegativeInteger();
    const qint64 value = m_reader.toInteger();
    Check((value < 0) == isNegative); // else it is out of range
    Check(m_reader.next());
    return value;
}

QCborTag ZORSysDocumentReader::ReadTag()
{
    Check(m_reader.isTag());
    const QCborTag tag = m_reader.toTag();
    Check(m_reader.next());
    return tag;
}

template<class T>
QList<T> ZORSysDocumentReader::ReadArray()
{
    const qsizetype length = GetLength(m_reader.isByteArray());
    Check(length % qsizetype(sizeof(T)) == 0);
    auto values = ZORSysMemory::MakeList<T>(length / qsizetype(sizeof(T)));
    ReadContent(reinterpret_cast<char*>(values.data()), length);
    if constexpr (Q_BYTE_ORDER != Q_LITTLE_ENDIAN)
        qFromLittleEndian<T>(values.constData(), values.size(), values.data());
    return values;
}

QList<double> ZORSysDocumentReader::ReadDoubles()
{
    Check(ReadTag() == kFloat64Tag);
    return ReadArray<double>();
}

QList<qint32> ZORSysDocumentReader::ReadIntegers()
{
    Check(ReadTag() == kInt32Tag);
    return ReadArray<qint32>();
}

ZORSysDocumentReader::Value ZORSysDocumentReader::ReadValue()
{
    if (m_reader.isDouble()) {
        const double number = m_reader.toDouble();
        Check(m_reader.next());
        return number;
    }
    if (!m_reader.isTag()) {
        QCborValue value = QCborValue::fromCbor(m_reader);
        Check(m_reader.lastError() == QCborError::NoError);
        return value;
    }
    const QCborTag tag = ReadTag();
    Check(tag == kFloat64Tag || tag == kInt32Tag);
    if (tag == kFloat64Tag)
        return ReadArray<double>();
    return ReadArray<qint32>();
}
