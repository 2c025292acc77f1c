// Reads the headers of programs and libraries without trusting them.

#pragma once

#include <QtGlobal>

#include <cstring>
#include <link.h>
#include <optional>
#include <vector>

namespace zor::sys {

/// A program or a library in the format of this system. Every read is checked against the size of the
/// file. The file is never mapped, so that another process which cuts it short meanwhile causes a failed read only.
/// All reads together are bounded, so that tables which overlap or fill an enormous file cost no more than large
/// libraries do.
class ElfFile
{
public:
    /// \param descriptor  of a regular file open for reading; not owned
    explicit ElfFile(int descriptor);

    /// Reads and checks the header, the segments and the sections: each lies inside the file, and each reference
    /// between sections has a target. The other functions need this one to have returned true.
    bool ReadHeaders();

    bool IsSharedLibrary() const { return m_header.e_type == ET_DYN; }
    const std::vector<ElfW(Phdr)>& GetSegments() const { return m_segments; }
    /// May be empty: loading needs no sections.
    const std::vector<ElfW(Shdr)>& GetSections() const { return m_sections; }

    /// Reads a table; none where it does not lie completely inside the file, or where too much was read.
    template<typename T>
    std::optional<std::vector<T>> Read(quint64 offset, quint64 count) const
    {
        if (count > m_size / sizeof(T) || !Contains(offset, count * sizeof(T)) || !Spend(count * sizeof(T)))
            return std::nullopt;
        std::vector<T> table(count);
        if (!ReadBytes(offset, table.data(), count * sizeof(T)))
            return std::nullopt;
        return table;
    }
    /// Reads a table by its address in a loaded segment. Returns nothing if no bytes of the file back that address.
    template<typename T>
    std::optional<std::vector<T>> ReadLoaded(quint64 address, quint64 count) const
    {
        if (count > m_size / sizeof(T))
            return std::nullopt;
        const std::optional<quint64> offset = FindOffset(address, count * sizeof(T));
        return offset ? Read<T>(*offset, count) : std::nullopt;
    }

    /// Returns the number of bytes of the file from an address to the end of its loaded segment; 0 for none.
    quint64 GetLoadedSize(quint64 address) const;

    /// Returns whether a loaded segment with all of the \a flags covers a range of addresses.
    bool IsLoaded(quint64 address, quint64 size, ElfW(Word) flags) const;

private:
    bool Contains(quint64 offset, quint64 size) const { return size <= m_size && offset <= m_size - size; }
    bool ReadBytes(quint64 offset, void* bytes, quint64 size) const;
    bool Spend(quint64 size) const;
    std::optional<quint64> FindOffset(quint64 address, quint64 size) const;
    bool ReadHeader();
    bool ReadSegments();
    bool CheckSegment(const ElfW(Phdr) & segment) const;
    bool ReadSections();
    bool CheckSection(const ElfW(Shdr) & section, quint64 nameSize) const;

    int m_descriptor;
    quint64 m_size = 0;
    mutable quint64 m_spent = 0;
    ElfW(Ehdr) m_header = {};
    std::vector<ElfW(Phdr)> m_segments;
    std::vector<ElfW(Shdr)> m_sections;
};

} // namespace zor::sys
