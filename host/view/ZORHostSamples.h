// Sample files that come with the host, and opening files.

#pragma once

#include <QString>
#include <QStringList>

class ZORFeatEnvironment;

namespace ZORHostSamples {

/// The folder of the samples: environment variable ZOR_SAMPLES, else "samples" beside the program's folder
/// (build tree), else "share/zorsdk/samples" of the installation. Empty where there is none.
QString FindFolder();

/// File names (absolute) of the samples that can be opened, by name; empty where there is no folder.
QStringList GetFiles();

} // namespace ZORHostSamples

/// Whether the suffix is that of container files (.ZORCont).
bool ZORHostIsContainerFile(const QString& fileName);

/// Adds the contents of a file to the container of \a environment: of a container file, else of an STL file
/// (lengths in millimeters). They are visible.
/// \return number of geometries added
/// \throws ZORSysFileOpenException when the file cannot be opened; ZORSysException as the loaders do
int ZORHostOpenFile(const QString& fileName, ZORFeatEnvironment* environment);
