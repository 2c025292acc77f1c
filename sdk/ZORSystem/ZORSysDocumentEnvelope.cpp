#include "ZORSysDocumentEnvelope.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QtEndian>

#include <cstring>
#include <zstd.h>

namespace {

constexpr char signature[8] = {'\x89', 'Z', 'O', 'R', '\r', '\n', '\x1a', '\n'};
constexpr qsizetype checkedHeader = 32;
constexpr int compressionLevel =
    1; // higher ones save little of what coordinates need, at a multiple of the time

enum Compression : quint32 { Plain = 0, Zstd = 1 };

QString Translate(const char* text)
{
    return QCoreApplication::translate("ZORSysDocumentEnvelope", text);
}

QByteArray Checksum(const QByteArray& header, QByteArrayView content)
{
    QCryptographicHash hash(QCryptographicHash::Blake2b_256);
    hash.addData(QByteArrayView(header).first(checkedHeader));
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

ZORSysDocumentEnvelope::ZORSysDocumentEnvelope(const QString& kind, quint32 version, qsizetype maximumRatio)
    : m_kind(kind)
    , m_version(version)
    , m_maximumRatio(maximumRatio)
{
    ZOR_TRACE_CALL(kind, version, maximumRatio);
}

bool ZORSysDocumentEnvelope::HasSignature(QByteArrayView bytes)
{
    return bytes.startsWith(QByteArrayView(signature, sizeof signature));
}

qint64 ZORSysDocumentEnvelope::GetDocumentSize(QByteArrayView start, qint64 fileSize) const
{
    if (start.size() < HeaderSize || fileSize < HeaderSize || !HasSignature(start))
        return 0;
    const auto size = qFromLittleEndian<quint64>(start.data() + 16);
    return size / quint64(m_maximumRatio) > quint64(fileSize - HeaderSize) ? 0 : qint64(size);
}

void ZORSysDocumentEnvelope::FailDamaged(const QString& reason) const
{
    throw ZORSysFileException(Translate("%1 is damaged: %2").arg(m_kind, reason));
}

QByteArray ZORSysDocumentEnvelope::Compress(const QByteArray& document) const
{
    QByteArray compressed(qsizetype(ZSTD_compressBound(size_t(document.size()))), Qt::Uninitialized);
    const size_t size = ZSTD_compress(compressed.data(), size_t(compressed.size()), document.constData(),
                                      size_t(document.size()), compressionLevel);
    if (ZSTD_isError(size)) {
        throw ZORSysFileException(
            Translate("cannot compress the %1: %2").arg(m_kind, QLatin1String(ZSTD_getErrorName(size))));
    }
    compressed.truncate(qsizetype(size));
    return compressed;
}

QByteArray ZORSysDocumentEnvelope::Decompress(QByteArrayView content, quint64 size) const
{
    if (size / quint64(m_maximumRatio) > quint64(content.size()))
        FailDamaged(Translate("%1 bytes cannot hold a document of %2").arg(content.size()).arg(size));
    QByteArray document(qsizetype(size), Qt::Uninitialized);
    const size_t result =
        ZSTD_decompress(document.data(), size_t(size), content.data(), size_t(content.size()));
    if (ZSTD_isError(result))
        FailDamaged(QString::fromLatin1(ZSTD_getErrorName(result)));
    if (result != size)
        FailDamaged(Translate("the document has another length than announced"));
    return document;
}

QByteArray ZORSysDocumentEnvelope::Wrap(const QByteArray& document) const
{
    ZOR_TRACE_CALL(document);
    QByteArray content = Compress(document);
    quint32 compression = Zstd;
    if (document.size() / m_maximumRatio > content.size()) {
        content = document;
        compression = Plain;
    }
    QByteArray file;
    file.reserve(HeaderSize + content.size());
    file.append(signature, sizeof signature);
    Put<quint32>(file, m_version);
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
    const qsizetype compared = std::min(file.size(), qsizetype(sizeof signature));
    if (file.isEmpty() || std::memcmp(file.constData(), signature, size_t(compared)) != 0)
        throw ZORSysFileException(Translate("the file is not a %1").arg(m_kind));
    if (file.size() < HeaderSize)
        FailDamaged(Translate("it ends within its header"));

    const char* const header = file.constData();
    const auto version = qFromLittleEndian<quint32>(header + 8);
    const auto compression = qFromLittleEndian<quint32>(header + 12);
    const auto documentSize = qFromLittleEndian<quint64>(header + 16);
    const auto contentSize = qFromLittleEndian<quint64>(header + 24);
    if (version == 0 || version > m_version) {
        throw ZORSysFileException(Translate("%1 is of version %2, up to version %3 can be read")
                                      .arg(m_kind, QString::number(version), QString::number(m_version)));
    }
    const QByteArrayView content = QByteArrayView(file).sliced(HeaderSize);
    if (contentSize != quint64(content.size())) {
        FailDamaged(Translate("it has %1 bytes of content, not %2")
                        .arg(QString::number(content.size()), QString::number(contentSize)));
    }
    if (Checksum(file, content) != file.sliced(checkedHeader, HeaderSize - checkedHeader))
        FailDamaged(Translate("the checksum is wrong"));

    if (compression == Zstd)
        return Decompress(content, documentSize);
    if (compression != Plain || documentSize != contentSize)
        FailDamaged(Translate("the header is wrong"));
    return content.toByteArray();
}
