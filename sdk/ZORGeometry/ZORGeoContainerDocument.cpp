#include "ZORGeoContainerDocument_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QCborStreamReader>
#include <QCborStreamWriter>
#include <QtEndian>

#include <cstring>

namespace {

constexpr QCborTag int32Tag{78};
constexpr QCborTag float64Tag{86};
constexpr char formatName[] = "ZORCont";

using Object = ZORGeoStoredObject;

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

void WriteText(QCborStreamWriter& writer, const QByteArray& utf8)
{
    writer.appendTextString(utf8.constData(), utf8.size());
}

void WriteNumbers(QCborStreamWriter& writer, const Object::Table<Object::Numbers>& table)
{
    writer.startMap(table.size());
    for (const auto& [key, numbers] : table) {
        WriteText(writer, key);
        WriteArray(writer, int32Tag, numbers);
    }
    writer.endMap();
}

void WriteValues(QCborStreamWriter& writer, const Object::Table<Object::Value>& table)
{
    writer.startMap(table.size());
    for (const auto& [key, value] : table) {
        WriteText(writer, key);
        if (const auto* plain = std::get_if<QCborValue>(&value))
            plain->toCbor(writer);
        else if (const auto* number = std::get_if<double>(&value))
            writer.append(*number);
        else if (const auto* doubles = std::get_if<QList<double>>(&value))
            WriteArray(writer, float64Tag, *doubles);
        else
            WriteArray(writer, int32Tag, std::get<QList<qint32>>(value));
    }
    writer.endMap();
}

/// Reads what it is asked for and fails on anything else.
class DocumentReader
{
public:
    explicit DocumentReader(const QByteArray& document)
        : m_size(document.size())
        , m_reader(document)
    {
    }

    std::vector<Object> Read();

private:
    [[noreturn]] void Fail(const QString& reason) const
    {
        throw ZORSysFileException(ZORGeoContainer::tr("container file is damaged: %1").arg(reason));
    }
    [[noreturn]] void FailAt() const
    {
        Fail(ZORGeoContainer::tr("unexpected content at byte %1 of the document")
                 .arg(m_reader.currentOffset()));
    }
    void Check(bool expected) const
    {
        if (!expected)
            FailAt();
    }

    qsizetype Enter(bool isWanted);
    void Leave();
    QByteArray ReadBytes(bool isWanted);
    QByteArray ReadKey() { return ReadBytes(m_reader.isString()); }
    template<class T>
    QList<T> ReadArray();
    QCborTag ReadTag();
    Object ReadObject(qsizetype count);
    void ReadNumbers(Object::Table<Object::Numbers>& table, qsizetype count);
    void ReadValues(Object::Table<Object::Value>& table);
    template<class T>
    void CheckKey(const Object::Table<T>& table, const QByteArray& key) const;

    const qsizetype m_size;
    QCborStreamReader m_reader;
};

// Every element takes a byte at least, so a greater length cannot be true.
qsizetype DocumentReader::Enter(bool isWanted)
{
    Check(isWanted && m_reader.isLengthKnown() && m_reader.length() <= quint64(m_size));
    const auto count = qsizetype(m_reader.length());
    Check(m_reader.enterContainer());
    return count;
}

void DocumentReader::Leave()
{
    Check(m_reader.leaveContainer());
}

// Length before content: what is allocated is there.
QByteArray DocumentReader::ReadBytes(bool isWanted)
{
    Check(isWanted && m_reader.isLengthKnown()
          && m_reader.length() <= quint64(m_size - m_reader.currentOffset()));
    QByteArray bytes(qsizetype(m_reader.length()), Qt::Uninitialized);
    auto chunk = m_reader.readStringChunk(bytes.data(), bytes.size());
    if (chunk.status == QCborStreamReader::Ok) {
        Check(chunk.data == bytes.size());
        char rest = 0;
        chunk = m_reader.readStringChunk(&rest, 1);
    }
    Check(chunk.status == QCborStreamReader::EndOfString);
    return bytes;
}

QCborTag DocumentReader::ReadTag()
{
    Check(m_reader.isTag());
    const QCborTag tag = m_reader.toTag();
    Check(m_reader.next());
    return tag;
}

template<class T>
QList<T> DocumentReader::ReadArray()
{
    const QByteArray bytes = ReadBytes(m_reader.isByteArray());
    Check(bytes.size() % qsizetype(sizeof(T)) == 0);
    QList<T> values(bytes.size() / qsizetype(sizeof(T)));
    qFromLittleEndian<T>(bytes.constData(), values.size(), values.data());
    return values;
}

template<class T>
void DocumentReader::CheckKey(const Object::Table<T>& table, const QByteArray& key) const
{
    Check(!Object::Find(table, key.constData()));
}

void DocumentReader::ReadNumbers(Object::Table<Object::Numbers>& table, qsizetype count)
{
    for (qsizetype left = Enter(m_reader.isMap()); left > 0; --left) {
        const QByteArray key = ReadKey();
        CheckKey(table, key);
        Check(ReadTag() == int32Tag);
        Object::Numbers numbers = ReadArray<qint32>();
        for (const qint32 number : numbers)
            Check(number >= -1 && number < count);
        table.emplace_back(key, std::move(numbers));
    }
    Leave();
}

void DocumentReader::ReadValues(Object::Table<Object::Value>& table)
{
    for (qsizetype left = Enter(m_reader.isMap()); left > 0; --left) {
        const QByteArray key = ReadKey();
        CheckKey(table, key);
        if (m_reader.isDouble()) {
            table.emplace_back(key, m_reader.toDouble());
            Check(m_reader.next());
            continue;
        }
        if (!m_reader.isTag()) {
            table.emplace_back(key, QCborValue::fromCbor(m_reader));
            Check(m_reader.lastError() == QCborError::NoError);
            continue;
        }
        const QCborTag tag = ReadTag();
        Check(tag == float64Tag || tag == int32Tag);
        if (tag == float64Tag)
            table.emplace_back(key, ReadArray<double>());
        else
            table.emplace_back(key, ReadArray<qint32>());
    }
    Leave();
}

Object DocumentReader::ReadObject(qsizetype count)
{
    Object object;
    Check(Enter(m_reader.isArray()) == 5);
    object.className = ReadBytes(m_reader.isString());
    object.name = QString::fromUtf8(ReadBytes(m_reader.isString()));
    ReadNumbers(object.references, count);
    ReadNumbers(object.links, count);
    ReadValues(object.values);
    Leave();
    return object;
}

std::vector<Object> DocumentReader::Read()
{
    Check(Enter(m_reader.isMap()) == 2);
    Check(ReadKey() == "format" && ReadKey() == formatName && ReadKey() == "objects");
    const qsizetype count = Enter(m_reader.isArray());
    std::vector<Object> objects;
    for (qsizetype i = 0; i < count; ++i)
        objects.push_back(ReadObject(count));
    Leave();
    Leave();
    Check(m_reader.currentOffset() == m_size);
    return objects;
}

} // namespace

QByteArray ZORGeoContainerDocument::Write(const std::vector<ZORGeoStoredObject>& objects)
{
    QByteArray document;
    QCborStreamWriter writer(&document);
    writer.startMap(2);
    WriteText(writer, "format");
    WriteText(writer, formatName);
    WriteText(writer, "objects");
    writer.startArray(objects.size());
    for (const ZORGeoStoredObject& object : objects) {
        writer.startArray(5);
        WriteText(writer, object.className);
        WriteText(writer, object.name.toUtf8());
        WriteNumbers(writer, object.references);
        WriteNumbers(writer, object.links);
        WriteValues(writer, object.values);
        writer.endArray();
    }
    writer.endArray();
    writer.endMap();
    return document;
}

std::vector<ZORGeoStoredObject> ZORGeoContainerDocument::Read(const QByteArray& document)
{
    return DocumentReader(document).Read();
}
