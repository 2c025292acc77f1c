// Checks shared libraries before they are loaded.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

class QString;

namespace ZORSysLibraryFile {

/// Checks that a file is a shared library of this system whose parts all lie inside the file.
///
/// The dynamic linker and the readers of debug information map a library and trust it: a file that was cut short
/// ends the program with a signal, also long after it was loaded. So this function compares everything that the
/// file's own headers promise with what the file has: segments, sections, and the tables that the linker follows,
/// with the indexes, names and addresses in them. Nothing of the file is mapped or run. A damage that only changes
/// code, data or debug information remains unseen, since libraries have no checksums.
///
/// Costs one pass over the headers and the tables of symbols and relocations: about 1 ms per 10,000 relocations.
/// Files that would cost more than any real library, with above 64 segments or 256 MiB of tables, are refused.
/// \return false also for files that cannot be opened without waiting, such as named pipes
ZORSYSTEM_EXPORT bool IsWhole(const QString& fileName);

} // namespace ZORSysLibraryFile
