// The objects of a container file.

#pragma once

#include "ZORGeoStoredObject_p.h"
#include "path/ZORGeoProgressReporter_p.h"

#include <ZORGeometry/ZORGeoContainerFile.h>

#include <QSharedData>
#include <QString>

class ZORGeoContainerFileData : public QSharedData
{
public:
    /// \throws zor::geo::Canceled; ZORSysFileException as ZORGeoContainerFile::Read()
    void Read(QIODevice& device, zor::geo::ProgressReporter& progress);
    /// \throws zor::geo::Canceled; ZORSysFileException as ZORGeoContainerFile::Write()
    void Write(QIODevice& device, zor::geo::ProgressReporter& progress) const;
    /// Returns what messages call the file of a device.
    static QString GetName(const QIODevice& device);
    /// Returns the number of bytes that the file, its document and the objects take together, as measured with surfaces;
    /// 0 if the device cannot say, or holds something else.
    static qint64 EstimateMemory(QIODevice& device);

    ZORGeoStoredDocument content;
};
