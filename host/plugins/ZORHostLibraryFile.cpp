#include "plugins/ZORHostLibraryFile.h"

#include <QFile>

#include <cstring>
#include <elf.h>
#include <link.h>

bool ZORHostIsCompleteLibrary(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const auto size = quint64(file.size());
    ElfW(Ehdr) header;
    if (file.read(reinterpret_cast<char*>(&header), sizeof header) != sizeof header
        || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_type != ET_DYN
        || header.e_phentsize != sizeof(ElfW(Phdr)))
        return false;
    if (!file.seek(qint64(header.e_phoff)))
        return false;
    for (int i = 0; i < header.e_phnum; ++i) {
        ElfW(Phdr) segment;
        if (file.read(reinterpret_cast<char*>(&segment), sizeof segment) != sizeof segment)
            return false;
        if (segment.p_type == PT_LOAD
            && (segment.p_filesz > size || segment.p_offset > size - segment.p_filesz))
            return false;
    }
    return header.e_phnum > 0;
}
