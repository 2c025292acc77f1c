// The bytes of an STL device.

#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <algorithm>

class QIODevice;

namespace zor::geo {
class ProgressReporter;
}

/// A window that moves over everything from a device's position to its end.
///
/// Devices with random access are read piece by piece. They are not mapped into memory: another program may shorten
/// the file, and touching what is gone would end the process.
class ZORGeoStlContent
{
public:
    /// Reads a sequential device at once, waiting for its data.
    /// \throws ZORSysFileException "device is not open for reading", "cannot read the STL content: %1"
    /// \param progress  updated with the part of the content that has been read, whatever a pass over it is for
    ZORGeoStlContent(QIODevice* device, zor::geo::ProgressReporter& progress);
    ~ZORGeoStlContent();
    Q_DISABLE_COPY_MOVE(ZORGeoStlContent)

    /// Number of bytes when the reading began.
    qint64 GetSize() const { return m_size; }
    /// Returns the bytes at the present position, at least \a minimum of them unless the content ends before. Valid
    /// until the next call.
    /// \throws ZORSysFileException "cannot read the STL content: %1"; zor::geo::Canceled
    QByteArrayView Fetch(qsizetype minimum);
    /// Moves on by bytes that were fetched; to the end where fewer are left.
    void Skip(qsizetype bytes) { m_position += std::min(bytes, m_buffer.size() - m_position); }
    /// Whether nothing follows what was fetched.
    bool IsAtEnd() const { return m_isAtEnd; }
    /// Moves back to the start.
    void Rewind();

private:
    void ReadSequential();
    void ThrowOnError() const;

    QIODevice* const m_device; // not owned
    zor::geo::ProgressReporter& m_progress;
    const bool m_isText; // of the device as it was given
    qint64 m_start = 0;  // position in the device
    qint64 m_size = 0;
    qint64 m_left = 0; // bytes of the device that were not read yet
    bool m_isAtEnd = false;
    QByteArray m_buffer;
    bool m_hasStart = true;   // the buffer still begins with the content
    qsizetype m_position = 0; // in the buffer
};
