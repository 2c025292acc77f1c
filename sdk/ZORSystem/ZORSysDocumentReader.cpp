#include "ZORSysDocumentReader.h"

#include "files/ZORSysDocumentTags_p.h"

#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QCborStreamReader>
#include <QtEndian>

class ZORSysDocumentReader::Private
{
public:
    QString kind;
    qsizetype size;
    QCborStreamReader reader;
};

ZORSysDocumentReader::ZORSysDocumentReader(const QByteArray& document, const QString& kind)
    : d(new Private{kind, document.size(), QCborStreamReader(document)})
{
}

ZORSysDocumentReader::~ZORSysDocumentReader() = default;

void ZORSysDocumentReader::FailHere() const
{
    throw ZORSysFileException(tr("%1 is damaged: unexpected content at byte %2 of the document")
                                  .arg(d->kind, QString::number(d->reader.currentOffset())));
}

// Every element takes a byte at least, so a greater length cannot be true.
qsizetype ZORSysDocumentReader::Enter(bool isWanted)
{
    Check(isWanted && d->reader.isLengthKnown() && d->reader.length() <= quint64(d->size));
    const auto count = qsizetype(d->reader.length());
    Check(d->reader.enterContainer());
    return count;
}

qsizetype ZORSysDocumentReader::EnterMap()
{
    return Enter(d->reader.isMap());
}

qsizetype ZORSysDocumentReader::EnterArray()
{
    return Enter(d->reader.isArray());
}

void ZORSysDocumentReader::Leave()
{
    Check(d->reader.leaveContainer());
}

// Length before content: what is allocated for it is there.
qsizetype ZORSysDocumentReader::GetLength(bool isWanted) const
{
    Check(isWanted && d->reader.isLengthKnown()
          && d->reader.length() <= quint64(d->size - d->reader.currentOffset()));
    return qsizetype(d->reader.length());
}

void ZORSysDocumentReader::ReadContent(char* bytes, qsizetype length)
{
    auto chunk = d->reader.readStringChunk(bytes, length);
    if (chunk.status == QCborStreamReader::Ok) {
        Check(chunk.data == length);
        char rest = 0;
        chunk = d->reader.readStringChunk(&rest, 1);
    }
    Check(chunk.status == QCborStreamReader::EndOfString);
}

QByteArray ZORSysDocumentReader::ReadString(bool isWanted)
{
    QByteArray bytes(GetLength(isWanted), Qt::Uninitialized);
    ReadContent(bytes.data(), bytes.size());
    return bytes;
}

QByteArray ZORSysDocumentReader::ReadText()
{
    return ReadString(d->reader.isString());
}

QByteArray ZORSysDocumentReader::ReadBytes()
{
    return ReadString(d->reader.isByteArray());
}

bool ZORSysDocumentReader::ReadBool()
{
    Check(d->reader.isBool());
    const bool value = d->reader.toBool();
    Check(d->reader.next());
    return value;
}

qint64 ZORSysDocumentReader::ReadInteger()
{
    Check(d->reader.isInteger());
    const bool isNegative = d->reader.isNegativeInteger();
    const qint64 value = d->reader.toInteger();
    Check((value < 0) == isNegative); // else it is out of range
    Check(d->reader.next());
    return value;
}

QCborTag ZORSysDocumentReader::ReadTag()
{
    Check(d->reader.isTag());
    const QCborTag tag = d->reader.toTag();
    Check(d->reader.next());
    return tag;
}

template<class T>
QList<T> ZORSysDocumentReader::ReadArray()
{
    const qsizetype length = GetLength(d->reader.isByteArray());
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
    if (d->reader.isDouble()) {
        const double number = d->reader.toDouble();
        Check(d->reader.next());
        return number;
    }
    if (!d->reader.isTag()) {
        QCborValue value = QCborValue::fromCbor(d->reader);
        Check(d->reader.lastError() == QCborError::NoError);
        return value;
    }
    const QCborTag tag = ReadTag();
    Check(tag == kFloat64Tag || tag == kInt32Tag);
    if (tag == kFloat64Tag)
        return ReadArray<double>();
    return ReadArray<qint32>();
}

void ZORSysDocumentReader::Finish() const
{
    Check(d->reader.currentOffset() == d->size);
}
