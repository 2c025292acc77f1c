// Container files in memory.

#pragma once

#include <ZORGeometry/ZORGeoContainer.h>

#include <QBuffer>
#include <QByteArray>

inline QByteArray SaveContainer(const ZORGeoContainer& container)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    container.Save(buffer);
    return buffer.data();
}

/// \throws ZORSysFileException as ZORGeoContainer::Load()
inline void LoadContainer(ZORGeoContainer& container, const QByteArray& file)
{
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    container.Load(buffer);
}
