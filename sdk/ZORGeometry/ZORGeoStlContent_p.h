// The bytes of an STL device.

#pragma once

#include <QByteArray>
#include <QByteArrayView>

class QFile;
class QIODevice;

/// Everything from a device's position to its end: a mapped file, or what was read.
class ZORGeoStlContent
{
public:
    /// \throws ZORSysFileException "device is not open for reading", "cannot read the STL content: %1"
    explicit ZORGeoStlContent(QIODevice* device);
    ~ZORGeoStlContent();
    Q_DISABLE_COPY_MOVE(ZORGeoStlContent)

    QByteArrayView GetBytes() const { return m_view; }
    /// The first \a bytes are not needed any more: gives memory of a mapped file back to the system, so that
    /// a large file never counts as a whole.
    void Release(qsizetype bytes);

private:
    bool Map(QFile* file);
    void Read(QIODevice* device);

    QByteArray m_read;
    QFile* m_file = nullptr; // not owned; null: not mapped
    uchar* m_mapped = nullptr;
    qsizetype m_released = 0;
    QByteArrayView m_view;
};
