#include "ZORSysElfFile_p.h"

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

namespace zor::sys {

namespace {

bool IsInside(quint64 begin, quint64 size, quint64 outerBegin, quint64 outerSize)
{
    return begin >= outerBegin && size <= outerSize && begin - outerBegin <= outerSize - size;
}

// Libraries have about ten segments. Every address is looked up in all of them.
constexpr int kMostSegments = 64;
// The tables of the largest libraries take some tens of megabytes, and their small tables some hundred reads.
constexpr quint64 kMostBytes = quint64(256) << 20;
constexpr quint64 kLeastBytes = 4096; // what the call for a read costs at least

constexpr unsigned char kNativeClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
constexpr unsigned char kNativeData = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? ELFDATA2LSB : ELFDATA2MSB;

/// Returns whether the dynamic linker or the unwinder reads such a segment at its address.
bool IsReadWhenLoaded(ElfW(Word) type)
{
    return type == PT_DYNAMIC || type == PT_TLS || type == PT_GNU_EH_FRAME || type == PT_GNU_PROPERTY
           || type == PT_NOTE || type == PT_PHDR;
}

} // namespace

ElfFile::ElfFile(int descriptor)
    : m_descriptor(descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        m_size = quint64(status.st_size);
}

bool ElfFile::ReadHeaders()
{
    return ReadHeader() && ReadSegments() && ReadSections();
}

bool ElfFile::ReadBytes(quint64 offset, void* bytes, quint64 size) const
{
    auto* to = static_cast<char*>(bytes);
    while (size > 0) {
        const ssize_t count = pread(m_descriptor, to, size, off_t(offset));
        if (count <= 0)
            return false; // the file became shorter, or cannot be read
        to += count;
        offset += quint64(count);
        size -= quint64(count);
    }
    return true;
}

/// Counts a read. Returns whether it may be done.
bool ElfFile::Spend(quint64 size) const
{
    m_spent += std::max(std::min(size, kMostBytes + 1), kLeastBytes);
    return m_spent <= kMostBytes;
}

bool ElfFile::ReadHeader()
{
    if (!Contains(0, sizeof m_header) || !ReadBytes(0, &m_header, sizeof m_header))
        return false;
    const unsigned char* const ident = m_header.e_ident;
    return std::memcmp(ident, ELFMAG, SELFMAG) == 0 && ident[EI_CLASS] == kNativeClass
           && ident[EI_DATA] == kNativeData && ident[EI_VERSION] == EV_CURRENT
           && (m_header.e_type == ET_DYN || m_header.e_type == ET_EXEC);
}

bool ElfFile::ReadSegments()
{
    if (m_header.e_phentsize != sizeof(ElfW(Phdr)) || m_header.e_phnum == 0
        || m_header.e_phnum > kMostSegments)
        return false;
    auto segments = Read<ElfW(Phdr)>(m_header.e_phoff, m_header.e_phnum);
    if (!segments)
        return false;
    m_segments = std::move(*segments);

    quint64 end = 0;
    bool hasLoaded = false;
    int numDynamic = 0;
    for (const ElfW(Phdr) & segment : m_segments) {
        if (segment.p_type == PT_LOAD) {
            // The linker takes the first and the last one for the ends of the library.
            if (hasLoaded && segment.p_vaddr < end)
                return false;
            end = segment.p_vaddr + segment.p_memsz;
            hasLoaded = true;
            if (end < segment.p_vaddr)
                return false;
        }
        numDynamic += segment.p_type == PT_DYNAMIC;
    }
    return hasLoaded && numDynamic <= 1
           && std::all_of(m_segments.begin(), m_segments.end(),
                          [this](const ElfW(Phdr) & segment) { return CheckSegment(segment); });
}

bool ElfFile::CheckSegment(const ElfW(Phdr) & segment) const
{
    if (segment.p_type == PT_NULL)
        return true;
    // Thread-local variables that start as zero are not in the file, and linkers leave any offset there.
    if (segment.p_type == PT_TLS && segment.p_filesz == 0)
        return true;
    if (!Contains(segment.p_offset, segment.p_filesz))
        return false;
    if (segment.p_type == PT_LOAD)
        return segment.p_filesz <= segment.p_memsz && (segment.p_flags & PF_R);
    if (IsReadWhenLoaded(segment.p_type))
        return FindOffset(segment.p_vaddr, segment.p_filesz) == segment.p_offset;
    // Linkers round the end of what becomes read-only up to a page, beyond the segment that holds it.
    const quint64 rounding = std::min<quint64>(segment.p_memsz, quint64(getpagesize()) - 1);
    return segment.p_type != PT_GNU_RELRO || IsLoaded(segment.p_vaddr, segment.p_memsz - rounding, 0);
}

bool ElfFile::ReadSections()
{
    if (m_header.e_shoff == 0)
        return true; // all sections were removed: nothing that is loaded depends on them
    if (m_header.e_shentsize != sizeof(ElfW(Shdr)))
        return false;
    const auto first = Read<ElfW(Shdr)>(m_header.e_shoff, 1);
    if (!first)
        return false;
    // Numbers that do not fit into the header are in the first section, which is otherwise empty.
    const quint64 count = m_header.e_shnum != 0 ? m_header.e_shnum : first->front().sh_size;
    const quint64 nameIndex =
        m_header.e_shstrndx != SHN_XINDEX ? m_header.e_shstrndx : first->front().sh_link;
    auto sections = Read<ElfW(Shdr)>(m_header.e_shoff, count);
    if (!sections || nameIndex >= count)
        return false;
    m_sections = std::move(*sections);
    const quint64 nameSize = m_sections[nameIndex].sh_size;
    return std::all_of(m_sections.begin() + 1, m_sections.end(),
                       [=, this](const ElfW(Shdr) & section) { return CheckSection(section, nameSize); });
}

bool ElfFile::CheckSection(const ElfW(Shdr) & section, quint64 nameSize) const
{
    if (section.sh_type == SHT_NULL)
        return true;
    if (section.sh_link >= m_sections.size() || section.sh_name >= nameSize)
        return false;
    if (section.sh_type == SHT_NOBITS)
        return true;
    const bool isLoaded = (section.sh_flags & SHF_ALLOC) && section.sh_size > 0;
    return isLoaded ? FindOffset(section.sh_addr, section.sh_size) == section.sh_offset
                    : Contains(section.sh_offset, section.sh_size);
}

std::optional<quint64> ElfFile::FindOffset(quint64 address, quint64 size) const
{
    for (const ElfW(Phdr) & segment : m_segments) {
        if (segment.p_type == PT_LOAD && IsInside(address, size, segment.p_vaddr, segment.p_filesz))
            return segment.p_offset + (address - segment.p_vaddr);
    }
    return std::nullopt;
}

quint64 ElfFile::GetLoadedSize(quint64 address) const
{
    for (const ElfW(Phdr) & segment : m_segments) {
        if (segment.p_type == PT_LOAD && IsInside(address, 0, segment.p_vaddr, segment.p_filesz))
            return segment.p_filesz - (address - segment.p_vaddr);
    }
    return 0;
}

bool ElfFile::IsLoaded(quint64 address, quint64 size, ElfW(Word) flags) const
{
    return std::any_of(m_segments.begin(), m_segments.end(), [=](const ElfW(Phdr) & segment) {
        return segment.p_type == PT_LOAD && (segment.p_flags & flags) == flags
               && IsInside(address, size, segment.p_vaddr, segment.p_memsz);
    });
}

} // namespace zor::sys
