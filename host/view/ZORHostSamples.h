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

/// Imports the surfaces of an STL file (lengths in millimetres) into the container of \a environment and adds
/// a shaded visual object for each, which goes when its surface goes. \return number of surfaces \throws
/// ZORSysFileOpenException when the file cannot be opened; ZORSysException as the loader does
int ZORHostOpenFile(const QString& fileName, ZORFeatEnvironment* environment);
