#include "ZORGeoContainerDocument_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORSystem/ZORSysDocumentReader.h>
#include <ZORSystem/ZORSysDocumentWriter.h>

namespace {

constexpr char kFormatName[] = "ZORCont";
constexpr char kStylesKey[] = "styles";

using Object = ZORGeoStoredObject;

void WriteNumbers(ZORSysDocumentWriter& writer, const Object::Table<Object::Numbers>& table)
{
    writer.StartMap(qsizetype(table.size()));
    for (const auto& [key, numbers] : table) {
        writer.WriteText(key);
        writer.WriteNumbers(numbers);
    }
    writer.EndMap();
}

void WriteValues(ZORSysDocumentWriter& writer, const Object::Table<Object::Value>& table)
{
    writer.StartMap(qsizetype(table.size()));
    for (const auto& [key, value] : table) {
        writer.WriteText(key);
        if (const auto* plain = std::get_if<QCborValue>(&value))
            writer.WriteValue(*plain);
        else if (const auto* number = std::get_if<double>(&value))
            writer.WriteDouble(*number);
        else if (const auto* doubles = std::get_if<QList<double>>(&value))
            writer.WriteNumbers(*doubles);
        else
            writer.WriteNumbers(std::get<QList<qint32>>(value));
    }
    writer.EndMap();
}

/// Each key comes once.
template<class T>
void CheckKey(const ZORSysDocumentReader& reader, const Object::Table<T>& table, const QByteArray& key)
{
    reader.Check(!Object::Find(table, key.constData()));
}

void ReadNumbers(ZORSysDocumentReader& reader, Object::Table<Object::Numbers>& table, qsizetype count)
{
    for (qsizetype left = reader.EnterMap(); left > 0; --left) {
        const QByteArray key = reader.ReadText();
        CheckKey(reader, table, key);
        Object::Numbers numbers = reader.ReadIntegers();
        for (const qint32 number : numbers)
            reader.Check(number >= -1 && number < count);
        table.emplace_back(key, std::move(numbers));
    }
    reader.Leave();
}

void ReadValues(ZORSysDocumentReader& reader, Object::Table<Object::Value>& table)
{
    for (qsizetype left = reader.EnterMap(); left > 0; --left) {
        const QByteArray key = reader.ReadText();
        CheckKey(reader, table, key);
        table.emplace_back(key, reader.ReadValue());
    }
    reader.Leave();
}

Object ReadObject(ZORSysDocumentReader& reader, qsizetype count)
{
    Object object;
    reader.Check(reader.EnterArray() == 5);
    object.className = reader.ReadText();
    object.name = QString::fromUtf8(reader.ReadText());
    ReadNumbers(reader, object.references, count);
    ReadNumbers(reader, object.links, count);
    ReadValues(reader, object.values);
    reader.Leave();
    return object;
}

/// Each object has one style at most.
void ReadStyles(ZORSysDocumentReader& reader, ZORGeoStoredDocument& content)
{
    qint64 last = -1;
    for (qsizetype left = reader.EnterArray(); left > 0; --left) {
        reader.Check(reader.EnterArray() == 2);
        const qint64 number = reader.ReadInteger();
        reader.Check(number > last && number < qint64(content.objects.size()));
        const Object::Value style = reader.ReadValue();
        const auto* const values = std::get_if<QCborValue>(&style);
        reader.Check(values && values->isMap());
        content.styles.emplace_back(qint32(number), values->toMap());
        reader.Leave();
        last = number;
    }
    reader.Leave();
}

void WriteObject(ZORSysDocumentWriter& writer, const Object& object)
{
    writer.StartArray(5);
    writer.WriteText(object.className);
    writer.WriteText(object.name);
    WriteNumbers(writer, object.references);
    WriteNumbers(writer, object.links);
    WriteValues(writer, object.values);
    writer.EndArray();
}

void WriteStyles(ZORSysDocumentWriter& writer, const ZORGeoStoredDocument& content)
{
    writer.WriteText(QByteArray(kStylesKey));
    writer.StartArray(qsizetype(content.styles.size()));
    for (const auto& [number, values] : content.styles) {
        writer.StartArray(2);
        writer.WriteInteger(number);
        writer.WriteValue(values);
        writer.EndArray();
    }
    writer.EndArray();
}

} // namespace

QByteArray ZORGeoContainerDocument::Write(const ZORGeoStoredDocument& content,
                                          zor::geo::ProgressReporter& progress)
{
    QByteArray document;
    ZORSysDocumentWriter writer(&document);
    writer.StartMap(content.styles.empty() ? 2 : 3);
    writer.WriteText(QByteArray("format"));
    writer.WriteText(QByteArray(kFormatName));
    writer.WriteText(QByteArray("objects"));
    writer.StartArray(qsizetype(content.objects.size()));
    for (const Object& object : content.objects) {
        progress.Update(double(&object - content.objects.data()) / double(content.objects.size()));
        WriteObject(writer, object);
    }
    writer.EndArray();
    if (!content.styles.empty())
        WriteStyles(writer, content);
    writer.EndMap();
    return document;
}

ZORGeoStoredDocument ZORGeoContainerDocument::Read(const QByteArray& document,
                                                   zor::geo::ProgressReporter& progress)
{
    ZORSysDocumentReader reader(document, ZORGeoContainer::tr("container file"));
    const qsizetype numKeys = reader.EnterMap();
    reader.Check(numKeys == 2 || numKeys == 3);
    reader.Check(reader.ReadText() == "format" && reader.ReadText() == kFormatName
                 && reader.ReadText() == "objects");
    const qsizetype count = reader.EnterArray();
    ZORGeoStoredDocument content;
    for (qsizetype i = 0; i < count; ++i) {
        progress.Update(double(i) / double(count));
        content.objects.push_back(ReadObject(reader, count));
    }
    reader.Leave();
    if (numKeys == 3) {
        reader.Check(reader.ReadText() == kStylesKey);
        ReadStyles(reader, content);
    }
    reader.Leave();
    reader.Finish();
    return content;
}
