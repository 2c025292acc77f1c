#include "ZORSysDocumentEnvelope.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QCryptographicHash>
#include <QFileDevice>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <memory>
#include <zstd.h>

namespace {

constexpr char kSignature[8] = {'\x89', 'Z', 'O', 'R', '\r', '\n', '\x1a', '\n'};
constexpr qsizetype kCheckedHeader = 32;
constexpr int kCompressionLevel =
    1; // higher ones save little of what coordinates need, at a multiple of the time

enum Compression : quint32 { Plain = 0, Zstd = 1 };

QByteArray Checksum(QByteArrayView header, QByteArrayView content)
{
    QCryptographicHash hash(QCryptographicHash::Blake2b_256);
    hash.addData(header.first(kCheckedHeader));
    hash.addData(content);
    return hash.result();
}

template<class T>
void Put(QByteArray& header, T value)
{
    const T little = qToLittleEndian(value);
    header.append(reinterpret_cast<const char*>(&little), sizeof(T));
}

} // namespace

struct ZORSysDocumentEnvelope::Header
{
    char bytes[HeaderSize] = {};
    quint32 compression = 0;
    quint64 documentSize = 0;
    quint64 contentSize = 0; // of what follows the header
};

class ZORSysDocumentEnvelope::Private
{
public:
    QString kind;
    quint32 version;
    qsizetype maximumRatio;
};

ZORSysDocumentEnvelope::ZORSysDocumentEnvelope(const QString& kind, quint32 version, qsizetype maximumRatio)
    : d(new Private{kind, version, maximumRatio})
{
    ZOR_TRACE_CALL(kind, version, maximumRatio);
}

ZORSysDocumentEnvelope::~ZORSysDocumentEnvelope() = default;

bool ZORSysDocumentEnvelope::HasSignature(QByteArrayView bytes)
{
    return bytes.startsWith(QByteArrayView(kSignature, sizeof kSignature));
}

QByteArray ZORSysDocumentEnvelope::GetDocumentStart(QByteArrayView start, qsizetype maximum)
{
    if (start.size() <= HeaderSize || !HasSignature(start))
        return {};
    const QByteArrayView content = start.sliced(HeaderSize);
    if (qFromLittleEndian<quint32>(start.data() + 12) != Zstd)
        return content.first(std::min(content.size(), maximum)).toByteArray();
    const std::unique_ptr<ZSTD_DStream, size_t (*)(ZSTD_DStream*)> stream(ZSTD_createDStream(),
                                                                          ZSTD_freeDStream);
    QByteArray document(maximum, Qt::Uninitialized);
    ZSTD_inBuffer in{content.data(), size_t(content.size()), 0};
    ZSTD_outBuffer out{document.data(), size_t(maximum), 0};
    size_t result = stream ? 1 : 0; // 0: nothing is left of the frame
    while (result != 0 && !ZSTD_isError(result) && in.pos < in.size && out.pos < out.size)
        result = ZSTD_decompressStream(stream.get(), &out, &in);
    document.truncate(qsizetype(out.pos));
    return document;
}

qint64 ZORSysDocumentEnvelope::GetDocumentSize(QByteArrayView start, qint64 fileSize) const
{
    if (start.size() < HeaderSize || fileSize < HeaderSize || !HasSignature(start))
        return 0;
    const auto size = qFromLittleEndian<quint64>(start.data() + 16);
    return size / quint64(d->maximumRatio) > quint64(fileSize - HeaderSize) ? 0 : qint64(size);
}

void ZORSysDocumentEnvelope::FailDamaged(const QString& reason) const
{
    throw ZORSysFileException(tr("%1 is damaged: %2").arg(d->kind, reason));
}

QByteArray ZORSysDocumentEnvelope::Compress(const QByteArray& document) const
{
    QByteArray compressed(qsizetype(ZSTD_compressBound(size_t(document.size()))), Qt::Uninitialized);
    const size_t size = ZSTD_compress(compressed.data(), size_t(compressed.size()), document.constData(),
                                      size_t(document.size()), kCompressionLevel);
    if (ZSTD_isError(size)) {
        throw ZORSysFileException(
            tr("cannot compress the %1: %2").arg(d->kind, QLatin1String(ZSTD_getErrorName(size))));
    }
    compressed.truncate(qsizetype(size));
    return compressed;
}

QByteArray ZORSysDocumentEnvelope::Decompress(QByteArrayView content, quint64 size) const
{
    if (size / quint64(d->maximumRatio) > quint64(content.size()))
        FailDamaged(tr("%1 bytes cannot hold a document of %2")
                        .arg(QString::number(content.size()), QString::number(size)));
    QByteArray document(qsizetype(size), Qt::Uninitialized);
    const size_t result =
        ZSTD_decompress(document.data(), size_t(size), content.data(), size_t(content.size()));
    if (ZSTD_isError(result))
        FailDamaged(QString::fromLatin1(ZSTD_getErrorName(result)));
    if (result != size)
        FailDamaged(tr("the document has another length than announced"));
    return document;
}

QByteArray ZORSysDocumentEnvelope::Wrap(const QByteArray& document) const
{
    ZOR_TRACE_CALL(document);
    QByteArray content = Compress(document);
    quint32 compression = Zstd;
    if (document.size() / d->maximumRatio > content.size()) {
        content = document;
        compression = Plain;
    }
    QByteArray file;
    file.reserve(HeaderSize + content.size());
    file.append(kSignature, sizeof kSignature);
    Put<quint32>(file, d->version);
    Put<quint32>(file, compression);
    Put<quint64>(file, quint64(document.size()));
    Put<quint64>(file, quint64(content.size()));
    file.append(Checksum(file, content));
    file.append(content);
    return file;
}

QByteArray ZORSysDocumentEnvelope::Unwrap(const QByteArray& file) const
{
    ZOR_TRACE_CALL(file);
    const Header header = ParseHeader(file);
    const QByteArrayView content = QByteArrayView(file).sliced(HeaderSize);
    CheckSize(header, content.size());
    return Unpack(header, content);
}

QByteArray ZORSysDocumentEnvelope::Unwrap(QIODevice& device) const
{
    ZOR_TRACE_CALL(&device);
    const auto check = [this, &device] {
        const auto* const file = qobject_cast<const QFileDevice*>(&device);
        if (file && file->error() != QFileDevice::NoError)
            throw ZORSysFileException(tr("cannot read the %1: %2").arg(d->kind, file->errorString()));
    };
    const QByteArray start = device.read(HeaderSize);
    check();
    const Header header = ParseHeader(start);
    if (!device.isSequential())
        CheckSize(header, device.size() - device.pos());
    const QByteArray content = device.readAll();
    check();
    CheckSize(header, content.size());
    return Unpack(header, content);
}

ZORSysDocumentEnvelope::Header ZORSysDocumentEnvelope::ParseHeader(QByteArrayView bytes) const
{
    const qsizetype compared = std::min(bytes.size(), qsizetype(sizeof kSignature));
    if (bytes.isEmpty() || std::memcmp(bytes.data(), kSignature, size_t(compared)) != 0)
        throw ZORSysFileException(tr("the file is not a %1").arg(d->kind));
    if (bytes.size() < HeaderSize)
        FailDamaged(tr("it ends within its header"));
    Header header;
    std::memcpy(header.bytes, bytes.data(), HeaderSize);
    header.compression = qFromLittleEndian<quint32>(header.bytes + 12);
    header.documentSize = qFromLittleEndian<quint64>(header.bytes + 16);
    header.contentSize = qFromLittleEndian<quint64>(header.bytes + 24);
    const auto version = qFromLittleEndian<quint32>(header.bytes + 8);
    if (version == 0 || version > d->version) {
        throw ZORSysFileException(tr("%1 is of version %2, up to version %3 can be read")
                                      .arg(d->kind, QString::number(version), QString::number(d->version)));
    }
    return header;
}

void ZORSysDocumentEnvelope::CheckSize(const Header& header, qint64 contentSize) const
{
    if (header.contentSize != quint64(contentSize)) {
        FailDamaged(tr("it has %1 bytes of content, not %2")
                        .arg(QString::number(contentSize), QString::number(header.contentSize)));
    }
}

QByteArray ZORSysDocumentEnvelope::Unpack(const Header& header, QByteArrayView content) const
{
    const QByteArrayView bytes(header.bytes, HeaderSize);
    if (Checksum(bytes, content) != bytes.sliced(kCheckedHeader))
        FailDamaged(tr("the checksum is wrong"));
    if (header.compression == Zstd)
        return Decompress(content, header.documentSize);
    if (header.compression != Plain || header.documentSize != header.contentSize)
        FailDamaged(tr("the header is wrong"));
    return content.toByteArray();
}
