#include "ZORGeoContainerEnvelope_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORSystem/ZORSysFileException.h>

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

QByteArray Compress(const QByteArray& document)
{
    QByteArray compressed(qsizetype(ZSTD_compressBound(size_t(document.size()))), Qt::Uninitialized);
    const size_t size = ZSTD_compress(compressed.data(), size_t(compressed.size()), document.constData(),
                                      size_t(document.size()), compressionLevel);
    if (ZSTD_isError(size))
        throw ZORSysFileException(ZORGeoContainer::tr("cannot compress the container: %1")
                                      .arg(QLatin1String(ZSTD_getErrorName(size))));
    compressed.truncate(qsizetype(size));
    return compressed;
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

[[noreturn]] void FailDamaged(const QString& reason)
{
    throw ZORSysFileException(ZORGeoContainer::tr("container file is damaged: %1").arg(reason));
}

QByteArray Decompress(QByteArrayView content, quint64 size)
{
    if (size / ZORGeoContainerEnvelope::MaximumRatio > quint64(content.size()))
        FailDamaged(
            ZORGeoContainer::tr("%1 bytes cannot hold a document of %2").arg(content.size()).arg(size));
    QByteArray document(qsizetype(size), Qt::Uninitialized);
    const size_t result =
        ZSTD_decompress(document.data(), size_t(size), content.data(), size_t(content.size()));
    if (ZSTD_isError(result))
        FailDamaged(QString::fromLatin1(ZSTD_getErrorName(result)));
    if (result != size)
        FailDamaged(ZORGeoContainer::tr("the document has another length than announced"));
    return document;
}

} // namespace

QByteArray ZORGeoContainerEnvelope::Wrap(const QByteArray& document)
{
    QByteArray content = Compress(document);
    quint32 compression = Zstd;
    if (document.size() / MaximumRatio > content.size()) {
        content = document;
        compression = Plain;
    }
    QByteArray file;
    file.reserve(HeaderSize + content.size());
    file.append(signature, sizeof signature);
    Put<quint32>(file, Version);
    Put<quint32>(file, compression);
    Put<quint64>(file, quint64(document.size()));
    Put<quint64>(file, quint64(content.size()));
    file.append(Checksum(file, content));
    file.append(content);
    return file;
}

QByteArray ZORGeoContainerEnvelope::Unwrap(const QByteArray& file)
{
    const qsizetype compared = std::min(file.size(), qsizetype(sizeof signature));
    if (file.isEmpty() || std::memcmp(file.constData(), signature, size_t(compared)) != 0)
        throw ZORSysFileException(ZORGeoContainer::tr("the file is not a container file"));
    if (file.size() < HeaderSize)
        FailDamaged(ZORGeoContainer::tr("it ends within its header"));

    const char* const header = file.constData();
    const auto version = qFromLittleEndian<quint32>(header + 8);
    const auto compression = qFromLittleEndian<quint32>(header + 12);
    const auto documentSize = qFromLittleEndian<quint64>(header + 16);
    const auto contentSize = qFromLittleEndian<quint64>(header + 24);
    if (version == 0 || version > Version) {
        throw ZORSysFileException(
            ZORGeoContainer::tr("container file is of version %1, up to version %2 can be read")
                .arg(version)
                .arg(Version));
    }
    const QByteArrayView content = QByteArrayView(file).sliced(HeaderSize);
    if (contentSize != quint64(content.size())) {
        FailDamaged(ZORGeoContainer::tr("it has %1 bytes of content, not %2")
                        .arg(QString::number(content.size()), QString::number(contentSize)));
    }
    if (Checksum(file, content) != file.sliced(checkedHeader, HeaderSize - checkedHeader))
        FailDamaged(ZORGeoContainer::tr("the checksum is wrong"));

    if (compression == Zstd)
        return Decompress(content, documentSize);
    if (compression != Plain || documentSize != contentSize)
        FailDamaged(ZORGeoContainer::tr("the header is wrong"));
    return content.toByteArray();
}
