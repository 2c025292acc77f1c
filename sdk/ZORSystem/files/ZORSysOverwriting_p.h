// Writing over a file that cannot be replaced.

#pragma once

#include <QByteArray>
#include <QString>

namespace zor::sys {

/// Makes a file that exists in memory only.
/// \return its descriptor; -1 with errno set when that is not possible
int MakeMemoryFile();

/// Waits until the content of a file is on the disk.
/// \return false with errno set when the disk refuses it; true where the file system knows no waiting
bool Sync(int file);

/// Overwrites the present regular file \a path with all of the open file \a content. The old content is kept in memory
/// meanwhile and restored after an error.
/// \return the reason of the failure; empty when all is written
QString Overwrite(const QByteArray& path, int content);

} // namespace zor::sys
