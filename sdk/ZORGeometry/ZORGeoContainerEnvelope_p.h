// The outer form of a container file: signature, version, checksum and compression.

#pragma once

#include <QByteArray>

/// Header of 64 bytes, numbers with the low byte first:
/// | at | bytes | content                                                             |
/// |----|-------|---------------------------------------------------------------------|
/// | 0  | 8      | signature 89 'Z' 'O' 'R' 0D 0A 1A 0A                               |
/// | 8  | 4      | version of the format                                              |
/// | 12 | 4      | 0: content as it is; 1: compressed with zstd                       |
/// | 16 | 8      | length of the document                                             |
/// | 24 | 8      | length of what follows the header                                  |
/// | 32 | 32     | BLAKE2b-256 of the header's first 32 bytes and of what follows it  |
class ZORGeoContainerEnvelope
{
public:
    static constexpr quint32 Version = 1;
    static constexpr qsizetype HeaderSize = 64;
    /// A compressed document is at most that many times as long as its file; Wrap() compresses no better.
    static constexpr qsizetype MaximumRatio = 1000;

    static QByteArray Wrap(const QByteArray& document);
    /// \throws ZORSysFileException that names what is wrong
    static QByteArray Unwrap(const QByteArray& file);
};
