// Sample files that come with the host.

#pragma once

#include <QString>
#include <QStringList>

namespace ZORHostSamples {

/// The folder of the samples: environment variable ZOR_SAMPLES, else "samples" beside the program's folder
/// (build tree), else "share/zorsdk/samples" of the installation. Empty where there is none.
QString FindFolder();

/// File names (absolute) of the samples that can be opened, by name; empty where there is no folder.
QStringList GetFiles();

} // namespace ZORHostSamples
