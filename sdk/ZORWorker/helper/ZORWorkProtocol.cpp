#include "ZORWorkProtocol_p.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkContext.h>

#include <QCoreApplication>
#include <QtEndian>

#include <array>
#include <bit>
#include <limits>

namespace ZORWorkProtocol {

namespace {

constexpr qsizetype kHeaderSize = 5; // length and type
constexpr qsizetype kMaximumHello = qsizetype(1) << 16;
constexpr qsizetype kTextRoom = kMaximumText + 512; // a text with what goes along with it
// The longest content of each type.
constexpr std::array<qsizetype, std::variant_size_v<Message>> kMaximumContents{
    kMaximumHello,
    kMaximumContent, // Job
    0,               // Stop
    0,               // Cancel
    8,               // Progress
    ZORWorkContext::kMaximumInterimSize + 4,
    kMaximumContent, // Result
    kTextRoom,       // Failure
    0,               // Canceled
    kTextRoom,       // Log
};

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORWorkProtocol)
};

[[noreturn]] void ThrowTooLong(qsizetype size)
{
    throw ZORSysException(Texts::tr("message of %1 bytes is too long").arg(size));
}

quint32 CheckStrings(qsizetype count)
{
    if (count > qsizetype(kMaximumStrings))
        throw ZORSysException(Texts::tr("message of %1 strings is too long").arg(count));
    return quint32(count);
}

class Writer
{
public:
    template<class Number>
    void Add(Number value)
    {
        const Number little = qToLittleEndian(value);
        bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
    }
    void Add(double value) { Add(std::bit_cast<quint64>(value)); }
    void Add(bool value) { Add(quint8(value)); }
    void Add(const QByteArray& value)
    {
        if (value.size() > kMaximumContent)
            ThrowTooLong(value.size());
        Add(quint32(value.size()));
        bytes.append(value);
    }
    void Add(const QString& value) { Add(value.toUtf8()); }
    template<class Value>
    void Add(const QList<Value>& values)
    {
        Add(CheckStrings(values.size()));
        for (const Value& value : values)
            Add(value);
    }
    // May cut a character in two, which then is read as an unknown one.
    void AddText(const QString& value) { Add(value.toUtf8().left(kMaximumText)); }

    QByteArray bytes;
};

class Reader
{
public:
    explicit Reader(QByteArrayView bytes)
        : m_rest(bytes)
    {
    }

    template<class Number>
    Number Get()
    {
        return qFromLittleEndian<Number>(Take(sizeof(Number)).data());
    }
    double GetDouble() { return std::bit_cast<double>(Get<quint64>()); }
    bool GetBool() { return Get<quint8>() != 0; }
    QByteArray GetBytes() { return Take(Get<quint32>()).toByteArray(); }
    QString GetString() { return QString::fromUtf8(GetBytes()); }
    QList<QByteArray> GetByteLists()
    {
        QList<QByteArray> values;
        // Nothing is reserved: the number may be a lie.
        for (quint32 left = CheckStrings(Get<quint32>()); left > 0; --left)
            values.append(GetBytes());
        return values;
    }
    QStringList GetStrings()
    {
        QStringList values;
        for (quint32 left = CheckStrings(Get<quint32>()); left > 0; --left)
            values.append(GetString());
        return values;
    }
    void Skip() { m_rest = {}; }
    void Finish() const
    {
        if (!m_rest.isEmpty())
            throw ZORSysException(Texts::tr("message has bytes that do not belong to it"));
    }

private:
    QByteArrayView Take(qsizetype size)
    {
        if (size > m_rest.size())
            throw ZORSysException(Texts::tr("message is cut off"));
        const QByteArrayView taken = m_rest.first(size);
        m_rest = m_rest.sliced(size);
        return taken;
    }

    QByteArrayView m_rest;
};

void Write(Writer& writer, const Hello& hello)
{
    writer.Add(hello.protocol);
    writer.Add(hello.sdkVersion);
    writer.Add(hello.kinds);
}

void Write(Writer& writer, const Job& job)
{
    writer.Add(job.kind);
    writer.Add(job.directory);
    writer.Add(job.memoryLimit);
    writer.Add(job.isStopped);
    writer.Add(job.hasInterim);
    writer.Add(job.interim);
    writer.Add(job.input);
}

void Write(Writer&, const Stop&) {}
void Write(Writer&, const Cancel&) {}
void Write(Writer&, const Canceled&) {}

void Write(Writer& writer, const Progress& progress)
{
    writer.Add(progress.value);
}

void Write(Writer& writer, const Interim& interim)
{
    writer.Add(interim.result);
}

void Write(Writer& writer, const Result& result)
{
    writer.Add(result.files);
    writer.Add(result.data);
}

void Write(Writer& writer, const Failure& failure)
{
    writer.AddText(failure.reason);
    writer.Add(failure.endsHelper);
}

void Write(Writer& writer, const Log& log)
{
    writer.Add(log.severity);
    writer.Add(log.category.left(100));
    writer.AddText(log.text);
}

Hello ReadHello(Reader& reader)
{
    Hello hello;
    hello.protocol = reader.Get<quint32>();
    if (hello.protocol != kVersion) {
        reader.Skip();
        return hello;
    }
    hello.sdkVersion = reader.GetBytes();
    hello.kinds = reader.GetByteLists();
    return hello;
}

Job ReadJob(Reader& reader)
{
    Job job;
    job.kind = reader.GetBytes();
    job.directory = reader.GetString();
    job.memoryLimit = reader.Get<qint64>();
    job.isStopped = reader.GetBool();
    job.hasInterim = reader.GetBool();
    job.interim = reader.GetBytes();
    job.input = reader.GetBytes();
    return job;
}

Result ReadResult(Reader& reader)
{
    Result result;
    result.files = reader.GetStrings();
    result.data = reader.GetBytes();
    return result;
}

Failure ReadFailure(Reader& reader)
{
    Failure failure;
    failure.reason = reader.GetString();
    failure.endsHelper = reader.GetBool();
    return failure;
}

Log ReadLog(Reader& reader)
{
    Log log;
    log.severity = reader.Get<quint8>();
    log.category = reader.GetBytes();
    log.text = reader.GetString();
    return log;
}

// The order is that of Message.
Message ReadContent(size_t type, Reader& reader)
{
    switch (type) {
    case 0:
        return ReadHello(reader);
    case 1:
        return ReadJob(reader);
    case 2:
        return Stop();
    case 3:
        return Cancel();
    case 4:
        return Progress{reader.GetDouble()};
    case 5:
        return Interim{reader.GetBytes()};
    case 6:
        return ReadResult(reader);
    case 7:
        return ReadFailure(reader);
    case 8:
        return Canceled();
    default:
        return ReadLog(reader);
    }
}

} // namespace

QByteArray Encode(const Message& message)
{
    Writer writer;
    writer.bytes.resize(kHeaderSize);
    std::visit([&writer](const auto& content) { Write(writer, content); }, message);
    const qsizetype size = writer.bytes.size() - kHeaderSize;
    if (size > kMaximumContents[message.index()])
        ThrowTooLong(size);
    qToLittleEndian(quint32(size), writer.bytes.data());
    writer.bytes[kHeaderSize - 1] = char(message.index());
    return writer.bytes;
}

void Decoder::Append(QByteArrayView bytes)
{
    // Moves the rest to the front when that is little work compared with what was taken.
    if (m_begin > m_bytes.size() / 2) {
        m_bytes.remove(0, m_begin);
        m_begin = 0;
    }
    m_bytes.append(bytes);
}

std::optional<Message> Decoder::Take()
{
    const QByteArrayView rest = QByteArrayView(m_bytes).sliced(m_begin);
    if (rest.size() < kHeaderSize)
        return {};
    const auto size = qsizetype(qFromLittleEndian<quint32>(rest.data()));
    const auto type = size_t(quint8(rest[kHeaderSize - 1]));
    if (type >= kMaximumContents.size())
        throw ZORSysException(Texts::tr("message of unknown type %1").arg(type));
    if (size > kMaximumContents[type])
        ThrowTooLong(size);
    if (rest.size() - kHeaderSize < size)
        return {};
    Reader reader(rest.sliced(kHeaderSize, size));
    Message message = ReadContent(type, reader);
    reader.Finish();
    m_begin += kHeaderSize + size;
    if (m_begin == m_bytes.size()) {
        m_bytes.clear(); // a long message does not hold its memory
        m_begin = 0;
    }
    return message;
}

QList<Message> DecodeAll(QByteArrayView bytes)
{
    Decoder decoder;
    decoder.Append(bytes);
    QList<Message> messages;
    while (std::optional<Message> message = decoder.Take())
        messages.append(*std::move(message));
    return messages;
}

} // namespace ZORWorkProtocol
