// Names of files that are made of texts of any length.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QString>

namespace ZORSysFileName {

/// Most bytes of UTF-8 that file systems take for one name.
constexpr qsizetype kMostBytes = 255;

/// Returns the longest beginning of \a stem that is a file name of at most kMostBytes together with what follows it.
///
/// Cuts between characters only, never within the bytes of one, and leaves no blank at the end of what it cut. A stem
/// that is short enough is returned as it is.
/// \param reserved  bytes of UTF-8 of what follows, such as a number and a suffix
ZORSYSTEM_EXPORT QString Cut(const QString& stem, qsizetype reserved);

} // namespace ZORSysFileName
