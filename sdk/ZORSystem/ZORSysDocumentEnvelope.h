// The outer form of the SDK's binary files: signature, version, checksum and compression.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QCoreApplication>
#include <QString>

#include <memory>

class QIODevice;

/// Packs the document of a file and unpacks it.
///
/// Header of 64 bytes, numbers with the low byte first:
/// | at | bytes | content                                                             |
/// |----|-------|---------------------------------------------------------------------|
/// | 0  | 8      | signature 89 'Z' 'O' 'R' 0D 0A 1A 0A                               |
/// | 8  | 4      | version of the format                                              |
/// | 12 | 4      | 0: content as it is; 1: compressed with zstd                       |
/// | 16 | 8      | length of the document                                             |
/// | 24 | 8      | length of what follows the header                                  |
/// | 32 | 32     | BLAKE2b-256 of the header's first 32 bytes and of what follows it  |
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORSYSTEM_EXPORT ZORSysDocumentEnvelope
{
    Q_DECLARE_TR_FUNCTIONS(ZORSysDocumentEnvelope)

public:
    static constexpr qsizetype HeaderSize = 64;

    /// \param kind          what messages call the file: "container file"
    /// \param version       version of the format, from 1; lower ones can be read too
    /// \param maximumRatio  a compressed document is at most that many times as long as its file: Wrap()
    ///                      compresses no better, Unwrap() takes no more memory
    ZORSysDocumentEnvelope(const QString& kind, quint32 version, qsizetype maximumRatio);
    ~ZORSysDocumentEnvelope();

    /// Whether bytes begin as every such file does.
    static bool HasSignature(QByteArrayView bytes);
    /// Returns the beginning of the document whose file begins with \a start: as much of it as can be read from these
    /// bytes, up to \a maximum bytes. Empty for any other file and where nothing can be read. Checks nothing else.
    static QByteArray GetDocumentStart(QByteArrayView start, qsizetype maximum);
    /// Returns the length of the document that the first bytes of a file announce; 0 where they cannot be the header of
    /// a file of that length that is whole.
    /// \param start     the first HeaderSize bytes of the file
    /// \param fileSize  length of the file in bytes
    qint64 GetDocumentSize(QByteArrayView start, qint64 fileSize) const;
    /// The bytes of a file; equal documents give equal bytes.
    /// \throws ZORSysFileException "cannot compress the %1: %2" (kind, reason)
    QByteArray Wrap(const QByteArray& document) const;
    /// The document of a file.
    /// \throws ZORSysFileException "the file is not a %1", "%1 is damaged: %2", "%1 is of version %2, up to
    /// version %3 can be read"
    QByteArray Unwrap(const QByteArray& file) const;
    /// Returns the document of the file that \a device holds from its position to its end. Reads only the header of
    /// what is something else or has another length than its header announces, whatever its size.
    /// \throws ZORSysFileException as for bytes, and "cannot read the %1: %2" (kind, reason)
    QByteArray Unwrap(QIODevice& device) const;

private:
    struct Header;

    [[noreturn]] void FailDamaged(const QString& reason) const;
    Header ParseHeader(QByteArrayView bytes) const;
    void CheckSize(const Header& header, qint64 contentSize) const;
    QByteArray Unpack(const Header& header, QByteArrayView content) const;
    QByteArray Compress(const QByteArray& document) const;
    QByteArray Decompress(QByteArrayView content, quint64 size) const;

    class Private;
    const std::unique_ptr<Private> d;
};
