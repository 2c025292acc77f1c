// Check of a library file before it is mapped.

#pragma once

#include <QString>

/// Whether \a fileName is an ELF file of this machine that holds every byte its program headers promise.
/// Mapping a file that is cut short works, and reading the missing part then ends the process.
bool ZORHostIsCompleteLibrary(const QString& fileName);
