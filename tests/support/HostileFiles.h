// Files that readers must refuse or survive.

#pragma once

#include <QString>
#include <QStringList>

/// Makes files in a folder; each function returns the path.
namespace HostileFiles {

/// A named pipe without another end.
QString MakePipe(const QString& folder, const QString& name = QStringLiteral("pipe"));
QString MakeSocket(const QString& folder, const QString& name = QStringLiteral("socket"));
/// A file of zeros that takes no room on the disk.
QString MakeZeros(const QString& folder, qint64 size, const QString& name = QStringLiteral("zeros"));
/// A pipe, a link to it, a socket and devices: whatever is neither a regular file nor a folder.
QStringList MakeIrregular(const QString& folder);

} // namespace HostileFiles
