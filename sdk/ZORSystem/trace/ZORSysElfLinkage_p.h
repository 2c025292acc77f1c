// Checks the tables through which libraries are linked.

#pragma once

namespace zor::sys {

class ElfFile;

/// Checks what the dynamic linker reads of a library: names, symbols, relocations, hash tables and versions.
bool IsLinkable(const ElfFile& file);

} // namespace zor::sys
