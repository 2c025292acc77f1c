#include "ZORSysElfFile_p.h"
#include "ZORSysElfLinkage_p.h"

#include <algorithm>
#include <map>

namespace zor::sys {

namespace {

using Symbol = ElfW(Sym);
using Relocation = ElfW(Rela);

constexpr quint64 kMostEntries = 65536; // of the dynamic section, which has about thirty
constexpr quint64 kBlock = 65536;       // links of a chain that are read at once

/// The tables to which the dynamic section of a library points.
class Linkage
{
public:
    explicit Linkage(const ElfFile& file)
        : m_file(file)
    {
    }

    bool Check()
    {
        return ReadEntries() && CheckNames() && ReadSymbols() && CheckVersions()
               && CheckRelocations(DT_RELA, DT_RELASZ) && CheckRelocations(DT_JMPREL, DT_PLTRELSZ)
               && CheckFunctions() && CheckSections();
    }

private:
    bool ReadEntries();
    bool CheckNames();
    bool ReadSymbols();
    bool CountSymbols();
    bool CountHashedSymbols();
    bool CheckBuckets(quint64 chains, const std::vector<quint32>& buckets, quint32 firstSymbol);
    std::optional<quint64> FindEndOfChain(quint64 chains, quint64 index) const;
    bool CheckRelocations(ElfW(Sxword) table, ElfW(Sxword) tableSize) const;
    bool CheckVersions();
    bool ReadNeededVersions();
    bool ReadDefinedVersions();
    bool CheckFunctions() const;
    bool CheckSections() const;

    bool Has(ElfW(Sxword) tag) const { return m_values.count(tag) > 0; }
    /// The value of an entry; 0 for none.
    quint64 Get(ElfW(Sxword) tag) const
    {
        const auto found = m_values.find(tag);
        return found != m_values.end() ? found->second : 0;
    }
    bool IsName(quint64 offset) const { return offset < m_nameSize; }

    const ElfFile& m_file;
    std::map<ElfW(Sxword), quint64> m_values;
    std::vector<quint64> m_nameOffsets;
    quint64 m_nameSize = 0;
    quint64 m_numSymbols = 0;
    quint32 m_largestVersion = VER_NDX_GLOBAL;
};

bool Linkage::ReadEntries()
{
    const auto& segments = m_file.GetSegments();
    const auto dynamic = std::find_if(segments.begin(), segments.end(), [](const ElfW(Phdr) & segment) {
        return segment.p_type == PT_DYNAMIC;
    });
    if (dynamic == segments.end())
        return false;
    const quint64 count = dynamic->p_filesz / sizeof(ElfW(Dyn));
    const auto entries = m_file.Read<ElfW(Dyn)>(dynamic->p_offset, count);
    if (!entries || count > kMostEntries)
        return false;
    for (const ElfW(Dyn) & entry : *entries) {
        if (entry.d_tag == DT_NULL)
            return true;
        if (entry.d_tag == DT_NEEDED)
            m_nameOffsets.push_back(entry.d_un.d_val);
        m_values[entry.d_tag] = entry.d_un.d_val;
    }
    return false; // the linker reads on until it meets the end mark
}

bool Linkage::CheckNames()
{
    m_nameSize = Get(DT_STRSZ);
    const auto names = m_file.ReadLoaded<char>(Get(DT_STRTAB), m_nameSize);
    if (!Has(DT_STRTAB) || !names || names->empty() || names->back() != 0)
        return false;
    for (const ElfW(Sxword) tag : {DT_SONAME, DT_RPATH, DT_RUNPATH}) {
        if (!IsName(Get(tag)))
            return false;
    }
    return std::all_of(m_nameOffsets.begin(), m_nameOffsets.end(),
                       [this](quint64 offset) { return IsName(offset); });
}

bool Linkage::ReadSymbols()
{
    if (!Has(DT_SYMTAB) || !CountSymbols() || (Has(DT_SYMENT) && Get(DT_SYMENT) != sizeof(Symbol)))
        return false;
    const auto symbols = m_file.ReadLoaded<Symbol>(Get(DT_SYMTAB), m_numSymbols);
    return symbols && std::all_of(symbols->begin(), symbols->end(), [this](const Symbol& symbol) {
               const bool isLoaded = symbol.st_shndx == SHN_UNDEF || symbol.st_shndx == SHN_ABS
                                     || ELF64_ST_TYPE(symbol.st_info) == STT_TLS
                                     || m_file.IsLoaded(symbol.st_value, 0, 0);
               return IsName(symbol.st_name) && isLoaded;
           });
}

/// Nothing gives the size of the table of symbols, but both kinds of hash tables imply it.
bool Linkage::CountSymbols()
{
    if (!Has(DT_GNU_HASH) && !Has(DT_HASH))
        return false;
    if (Has(DT_HASH)) {
        const auto counts = m_file.ReadLoaded<quint32>(Get(DT_HASH), 2);
        if (!counts || (*counts)[0] == 0)
            return false;
        m_numSymbols = (*counts)[1];
        const auto links = m_file.ReadLoaded<quint32>(Get(DT_HASH) + 2 * sizeof(quint32),
                                                      quint64((*counts)[0]) + m_numSymbols);
        const auto isSymbol = [this](quint32 index) { return index < m_numSymbols; };
        if (!links || !std::all_of(links->begin(), links->end(), isSymbol))
            return false;
    }
    return !Has(DT_GNU_HASH) || CountHashedSymbols();
}

bool Linkage::CountHashedSymbols()
{
    struct Header
    {
        quint32 numBuckets, firstSymbol, numFilterWords, filterShift;
    };
    const auto header = m_file.ReadLoaded<Header>(Get(DT_GNU_HASH), 1);
    if (!header)
        return false;
    const auto [numBuckets, firstSymbol, numFilterWords, filterShift] = header->front();
    if (numBuckets == 0 || numFilterWords == 0 || (numFilterWords & (numFilterWords - 1)) != 0)
        return false; // the linker divides by one and takes the other for a mask
    const quint64 filter = Get(DT_GNU_HASH) + sizeof(Header);
    const quint64 bucketBegin = filter + quint64(numFilterWords) * sizeof(ElfW(Addr));
    const auto buckets = m_file.ReadLoaded<quint32>(bucketBegin, numBuckets);
    return m_file.ReadLoaded<ElfW(Addr)>(filter, numFilterWords) && buckets
           && CheckBuckets(bucketBegin + quint64(numBuckets) * sizeof(quint32), *buckets, firstSymbol);
}

/// The chain of the last bucket ends with the table of symbols; the end of a chain has its lowest bit set.
bool Linkage::CheckBuckets(quint64 chains, const std::vector<quint32>& buckets, quint32 firstSymbol)
{
    for (const quint32 symbol : buckets) {
        if (symbol != 0 && symbol < firstSymbol)
            return false;
    }
    const quint64 last = *std::max_element(buckets.begin(), buckets.end());
    if (last == 0) {
        // No symbol is defined, and the table leaves out those that are needed: names follow behind the symbols.
        const quint64 symbols = Get(DT_SYMTAB);
        const quint64 names = std::max<quint64>(Get(DT_STRTAB), symbols);
        m_numSymbols = std::max<quint64>(m_numSymbols, (names - symbols) / sizeof(Symbol));
        return true;
    }
    const std::optional<quint64> end = FindEndOfChain(chains, last - firstSymbol);
    if (end)
        m_numSymbols = std::max(m_numSymbols, firstSymbol + *end);
    return end.has_value();
}

/// Returns the index behind the end of the chain that has a link at \a index; none where the segment ends before.
std::optional<quint64> Linkage::FindEndOfChain(quint64 chains, quint64 index) const
{
    for (;;) {
        const quint64 address = chains + index * sizeof(quint32);
        const quint64 count = std::min(kBlock, m_file.GetLoadedSize(address) / sizeof(quint32));
        const auto links = m_file.ReadLoaded<quint32>(address, count);
        if (!links || links->empty())
            return std::nullopt;
        const auto end =
            std::find_if(links->begin(), links->end(), [](quint32 link) { return (link & 1) != 0; });
        index += quint64(end - links->begin());
        if (end != links->end())
            return index + 1;
    }
}

bool Linkage::CheckRelocations(ElfW(Sxword) table, ElfW(Sxword) tableSize) const
{
    if (Has(table) != Has(tableSize))
        return false;
    if (!Has(table))
        return true;
    const quint64 size = Get(tableSize);
    const quint64 entrySize = table == DT_RELA ? Get(DT_RELAENT) : sizeof(Relocation);
    const bool isOtherKind = table == DT_JMPREL && Get(DT_PLTREL) != DT_RELA;
    if (isOtherKind || entrySize != sizeof(Relocation) || size % sizeof(Relocation) != 0)
        return false;
    const auto relocations = m_file.ReadLoaded<Relocation>(Get(table), size / sizeof(Relocation));
    // Each one changes a word of the library to the address of a symbol.
    return relocations
           && std::all_of(relocations->begin(), relocations->end(), [this](const Relocation& relocation) {
                  return ELF64_R_SYM(relocation.r_info) < std::max<quint64>(m_numSymbols, 1)
                         && m_file.IsLoaded(relocation.r_offset, sizeof(ElfW(Addr)), PF_W);
              });
}

bool Linkage::CheckVersions()
{
    if (!ReadNeededVersions() || !ReadDefinedVersions())
        return false;
    if (!Has(DT_VERSYM))
        return true;
    constexpr quint16 kHidden = 0x8000;
    const auto versions = m_file.ReadLoaded<quint16>(Get(DT_VERSYM), m_numSymbols);
    return versions && std::all_of(versions->begin(), versions->end(), [this](quint16 version) {
               return (version & ~kHidden) <= m_largestVersion;
           });
}

bool Linkage::ReadNeededVersions()
{
    quint64 address = Get(DT_VERNEED);
    for (quint64 i = 0; address != 0; ++i) { // ends, since all reads together are bounded
        const auto need = m_file.ReadLoaded<ElfW(Verneed)>(address, 1);
        if (!need || i >= Get(DT_VERNEEDNUM) || !IsName(need->front().vn_file))
            return false;
        quint64 inner = address + need->front().vn_aux;
        for (quint64 k = 0; k < need->front().vn_cnt; ++k) {
            const auto version = m_file.ReadLoaded<ElfW(Vernaux)>(inner, 1);
            if (!version || !IsName(version->front().vna_name))
                return false;
            m_largestVersion = std::max<quint32>(m_largestVersion, version->front().vna_other & 0x7fff);
            if ((version->front().vna_next == 0) != (k + 1 == need->front().vn_cnt))
                return false;
            inner += version->front().vna_next;
        }
        address = need->front().vn_next == 0 ? 0 : address + need->front().vn_next;
    }
    return true;
}

bool Linkage::ReadDefinedVersions()
{
    quint64 address = Get(DT_VERDEF);
    for (quint64 i = 0; address != 0; ++i) {
        const auto definition = m_file.ReadLoaded<ElfW(Verdef)>(address, 1);
        if (!definition || i >= Get(DT_VERDEFNUM))
            return false;
        const auto name = m_file.ReadLoaded<ElfW(Verdaux)>(address + definition->front().vd_aux, 1);
        if (!name || !IsName(name->front().vda_name))
            return false;
        m_largestVersion = std::max<quint32>(m_largestVersion, definition->front().vd_ndx & 0x7fff);
        address = definition->front().vd_next == 0 ? 0 : address + definition->front().vd_next;
    }
    return true;
}

bool Linkage::CheckFunctions() const
{
    for (const ElfW(Sxword) tag : {DT_INIT, DT_FINI}) {
        if (Has(tag) && !m_file.IsLoaded(Get(tag), 1, PF_X))
            return false;
    }
    if (Has(DT_PLTGOT) && !m_file.IsLoaded(Get(DT_PLTGOT), sizeof(ElfW(Addr)), PF_W))
        return false;
    return (!Has(DT_INIT_ARRAY) || m_file.IsLoaded(Get(DT_INIT_ARRAY), Get(DT_INIT_ARRAYSZ), 0))
           && (!Has(DT_FINI_ARRAY) || m_file.IsLoaded(Get(DT_FINI_ARRAY), Get(DT_FINI_ARRAYSZ), 0));
}

/// The section headers describe most tables once more: damage to one of the two descriptions shows.
bool Linkage::CheckSections() const
{
    struct Description
    {
        ElfW(Word) type;
        ElfW(Sxword) address, size; // entries of the dynamic section; no size: DT_NULL
    };
    static constexpr Description kDescriptions[] = {
        {SHT_DYNSYM, DT_SYMTAB, DT_NULL},
        {SHT_HASH, DT_HASH, DT_NULL},
        {SHT_GNU_HASH, DT_GNU_HASH, DT_NULL},
        {SHT_GNU_versym, DT_VERSYM, DT_NULL},
        {SHT_GNU_verneed, DT_VERNEED, DT_NULL},
        {SHT_GNU_verdef, DT_VERDEF, DT_NULL},
        {SHT_INIT_ARRAY, DT_INIT_ARRAY, DT_INIT_ARRAYSZ},
        {SHT_FINI_ARRAY, DT_FINI_ARRAY, DT_FINI_ARRAYSZ},
    };
    quint64 relocationSize = 0;
    for (const ElfW(Shdr) & section : m_file.GetSections()) {
        if (!(section.sh_flags & SHF_ALLOC))
            continue;
        if (section.sh_type == SHT_RELA)
            relocationSize += section.sh_size;
        for (const Description& description : kDescriptions) {
            if (section.sh_type != description.type)
                continue;
            const bool isSame = Get(description.address) == section.sh_addr;
            if (!isSame || (description.size != DT_NULL && Get(description.size) != section.sh_size))
                return false;
        }
    }
    return m_file.GetSections().empty() || relocationSize == Get(DT_RELASZ) + Get(DT_PLTRELSZ);
}

} // namespace

bool IsLinkable(const ElfFile& file)
{
    return Linkage(file).Check();
}

} // namespace zor::sys
