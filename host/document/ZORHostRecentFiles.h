// Files that were opened or saved last.

#pragma once

#include <QString>
#include <QStringList>

/// The list of recent files in the settings of the host, newest first. Every call reads it again, since hosts that run at the
/// same time share it.
///
/// Thread safety: main thread only.
namespace ZORHostRecentFiles {

constexpr int kMost = 10;

/// Returns absolute paths, each once. The files may be missing meanwhile.
QStringList GetFiles();
/// Puts a file at the beginning of the list.
void Add(const QString& file);
void Remove(const QString& file);
void Clear();

} // namespace ZORHostRecentFiles
