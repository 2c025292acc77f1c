// Tests of ZORSysLibraryFile.

#include "SystemCallFaults.h"

#include <ZORSystem/ZORSysLibraryFile.h>

#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>
#include <dlfcn.h>
#include <elf.h>
#include <random>
#include <sys/stat.h>

namespace {

class ZORSysLibraryFileTest : public testing::Test
{
protected:
    ZORSysLibraryFileTest()
    {
        QFile library(QStringLiteral(SYSTEM_TEST_LIBRARY));
        EXPECT_TRUE(library.open(QIODevice::ReadOnly));
        whole = library.readAll();
        std::memcpy(&header, whole.constData(), sizeof header);
    }

    bool IsWhole(const QByteArray& contents)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        EXPECT_EQ(contents.size(), file.write(contents));
        file.close();
        return ZORSysLibraryFile::IsWhole(path);
    }
    /// The library with the value \a number at \a offset.
    template<typename T>
    QByteArray Patched(qsizetype offset, T number) const
    {
        QByteArray contents = whole;
        std::memcpy(contents.data() + offset, &number, sizeof number);
        return contents;
    }
    /// Offset of the header of the first section of a type.
    qsizetype FindSection(Elf64_Word type) const
    {
        for (int i = 0; i < header.e_shnum; ++i) {
            const qsizetype offset = qsizetype(header.e_shoff) + i * qsizetype(sizeof(Elf64_Shdr));
            Elf64_Shdr section;
            std::memcpy(&section, whole.constData() + offset, sizeof section);
            if (section.sh_type == type)
                return offset;
        }
        ADD_FAILURE() << "no section of type " << type;
        return 0;
    }
    template<typename T>
    T ReadAt(qsizetype offset) const
    {
        T value;
        std::memcpy(&value, whole.constData() + offset, sizeof value);
        return value;
    }

    /// The library with another last segment, which reaches from its beginning to \a size bytes of the file.
    void ExtendLastSegment(qsizetype size)
    {
        for (int i = 0; i < header.e_phnum; ++i) {
            const qsizetype at = qsizetype(header.e_phoff) + i * qsizetype(sizeof(Elf64_Phdr));
            auto segment = ReadAt<Elf64_Phdr>(at);
            if (segment.p_type != PT_LOAD || !(segment.p_flags & PF_W))
                continue;
            segment.p_filesz = segment.p_memsz = quint64(size) - segment.p_offset;
            whole = Patched(at, segment);
            distance = segment.p_vaddr - segment.p_offset;
        }
    }
    /// Lets an entry of the dynamic section have a value.
    void SetEntry(Elf64_Sxword tag, quint64 value)
    {
        const auto dynamic = ReadAt<Elf64_Shdr>(FindSection(SHT_DYNAMIC));
        for (quint64 at = dynamic.sh_offset; at < dynamic.sh_offset + dynamic.sh_size;
             at += sizeof(Elf64_Dyn)) {
            if (ReadAt<Elf64_Dyn>(qsizetype(at)).d_tag == tag)
                whole = Patched(qsizetype(at + offsetof(Elf64_Dyn, d_un)), value);
        }
    }
    /// Lets a table begin behind the library, in the extended last segment.
    void MoveBehind(Elf64_Word section, Elf64_Sxword tag)
    {
        whole.append((16 - whole.size() % 16) % 16, char(0));
        const qsizetype at = FindSection(section);
        auto changed = ReadAt<Elf64_Shdr>(at);
        changed.sh_offset = quint64(whole.size());
        changed.sh_addr = changed.sh_offset + distance;
        whole = Patched(at, changed);
        SetEntry(tag, changed.sh_addr);
    }
    template<typename T>
    void Append(const T& value)
    {
        whole.append(reinterpret_cast<const char*>(&value), sizeof value);
    }

    quint64 distance = 0; // from offsets to addresses of the extended segment

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("library.so"));
    QByteArray whole;
    Elf64_Ehdr header = {};
};

TEST_F(ZORSysLibraryFileTest, WholeLibrariesPass)
{
    EXPECT_TRUE(ZORSysLibraryFile::IsWhole(QStringLiteral(SYSTEM_TEST_LIBRARY)));
    for (const void* function :
         {reinterpret_cast<const void*>(&qVersion), reinterpret_cast<const void*>(&std::memcpy)}) {
        Dl_info info;
        ASSERT_NE(0, dladdr(function, &info));
        EXPECT_TRUE(ZORSysLibraryFile::IsWhole(QFile::decodeName(info.dli_fname))) << info.dli_fname;
    }
}

TEST_F(ZORSysLibraryFileTest, ThreadLocalVariablesThatStartAsZeroMayHaveAnyOffset)
{
    // A note of the library gives its place in the table of segments to them.
    for (int i = 0; i < header.e_phnum; ++i) {
        const qsizetype at = qsizetype(header.e_phoff) + i * qsizetype(sizeof(Elf64_Phdr));
        if (ReadAt<Elf64_Phdr>(at).p_type != PT_NOTE)
            continue;
        auto segment = ReadAt<Elf64_Phdr>(at);
        segment.p_type = PT_TLS;
        segment.p_filesz = 0;
        segment.p_memsz = 8;
        for (const quint64 offset : {quint64(0), quint64(1), quint64(whole.size()), ~quint64(0)}) {
            segment.p_offset = offset;
            EXPECT_TRUE(IsWhole(Patched(at, segment))) << offset;
        }
        segment.p_filesz = 8;
        EXPECT_FALSE(IsWhole(Patched(at, segment)));
        return;
    }
    FAIL() << "no note";
}

TEST_F(ZORSysLibraryFileTest, OtherFilesFail)
{
    EXPECT_FALSE(ZORSysLibraryFile::IsWhole(folder.filePath("nothing.so")));
    EXPECT_FALSE(ZORSysLibraryFile::IsWhole(folder.path()));
    EXPECT_FALSE(IsWhole({}));
    EXPECT_FALSE(IsWhole(QByteArray("just a text\n").repeated(1000)));
    EXPECT_FALSE(IsWhole(QByteArray(100'000, 0)));
    EXPECT_FALSE(ZORSysLibraryFile::IsWhole(QStringLiteral("/dev/zero")));
}

TEST_F(ZORSysLibraryFileTest, APipeFailsWithoutWaiting)
{
    ASSERT_EQ(0, mkfifo(QFile::encodeName(path).constData(), 0600));
    EXPECT_FALSE(ZORSysLibraryFile::IsWhole(path));
}

// The section headers are at the end: no byte of the file can be missing.
TEST_F(ZORSysLibraryFileTest, EveryTruncatedLibraryFails)
{
    ASSERT_TRUE(IsWhole(whole));
    constexpr qsizetype kStepInside = 211;
    constexpr qsizetype kNumDense = 600; // at either end of the file every length is tried
    for (qsizetype size = whole.size() - 1; size >= 0;
         size -= size < kNumDense || size > whole.size() - kNumDense ? 1 : kStepInside) {
        ASSERT_TRUE(QFile::resize(path, size));
        ASSERT_FALSE(ZORSysLibraryFile::IsWhole(path)) << size;
    }
}

TEST_F(ZORSysLibraryFileTest, PartsOutsideOfTheFileFail)
{
    const auto size = quint64(whole.size());
    EXPECT_FALSE(IsWhole(Patched(offsetof(Elf64_Ehdr, e_phoff), size)));
    EXPECT_FALSE(IsWhole(Patched(offsetof(Elf64_Ehdr, e_phoff), ~quint64(0) - 16)));
    EXPECT_FALSE(IsWhole(Patched(offsetof(Elf64_Ehdr, e_shoff), size - 1)));
    EXPECT_FALSE(IsWhole(Patched(offsetof(Elf64_Ehdr, e_shnum), quint16(0xfff0))));
    EXPECT_FALSE(IsWhole(Patched(offsetof(Elf64_Ehdr, e_shstrndx), quint16(header.e_shnum))));
    for (int i = 1; i < header.e_shnum; ++i) {
        const qsizetype at = qsizetype(header.e_shoff) + i * qsizetype(sizeof(Elf64_Shdr));
        const auto section = ReadAt<Elf64_Shdr>(at);
        if (section.sh_type == SHT_NOBITS)
            continue;
        const quint64 tooLarge = size - section.sh_offset + 1;
        EXPECT_FALSE(IsWhole(Patched(at + qsizetype(offsetof(Elf64_Shdr, sh_size)), tooLarge))) << i;
        EXPECT_FALSE(IsWhole(Patched(at + qsizetype(offsetof(Elf64_Shdr, sh_size)), ~quint64(0)))) << i;
        EXPECT_FALSE(IsWhole(Patched(at + qsizetype(offsetof(Elf64_Shdr, sh_offset)), size + 1))) << i;
        EXPECT_FALSE(IsWhole(Patched(at + qsizetype(offsetof(Elf64_Shdr, sh_link)), quint32(header.e_shnum))))
            << i;
    }
    for (int i = 0; i < header.e_phnum; ++i) {
        const qsizetype at = qsizetype(header.e_phoff) + i * qsizetype(sizeof(Elf64_Phdr));
        EXPECT_FALSE(IsWhole(Patched(at + qsizetype(offsetof(Elf64_Phdr, p_filesz)), size + 1))) << i;
    }
}

// The linker follows these tables without any check.
TEST_F(ZORSysLibraryFileTest, TablesOfTheLinkerThatLeadAstrayFail)
{
    const auto dynamic = ReadAt<Elf64_Shdr>(FindSection(SHT_DYNAMIC));
    int numAddresses = 0;
    for (quint64 at = dynamic.sh_offset; at < dynamic.sh_offset + dynamic.sh_size; at += sizeof(Elf64_Dyn)) {
        const auto entry = ReadAt<Elf64_Dyn>(qsizetype(at));
        if (entry.d_tag == DT_NULL)
            break;
        const bool isAddress = entry.d_tag == DT_STRTAB || entry.d_tag == DT_SYMTAB || entry.d_tag == DT_RELA
                               || entry.d_tag == DT_JMPREL || entry.d_tag == DT_GNU_HASH
                               || entry.d_tag == DT_INIT_ARRAY || entry.d_tag == DT_INIT
                               || entry.d_tag == DT_VERSYM || entry.d_tag == DT_VERNEED;
        const bool isName = entry.d_tag == DT_NEEDED || entry.d_tag == DT_RUNPATH;
        if (!isAddress && !isName)
            continue;
        numAddresses += isAddress;
        for (const quint64 astray : {quint64(whole.size()) + 0x100000, ~quint64(0) - 7})
            EXPECT_FALSE(IsWhole(Patched(qsizetype(at + offsetof(Elf64_Dyn, d_un)), astray))) << entry.d_tag;
    }
    EXPECT_GE(numAddresses, 7);

    const auto hash = ReadAt<Elf64_Shdr>(FindSection(SHT_GNU_HASH));
    EXPECT_FALSE(IsWhole(Patched(qsizetype(hash.sh_offset), quint32(0))))
        << "division by the number of buckets";
    EXPECT_FALSE(IsWhole(Patched(qsizetype(hash.sh_offset), ~quint32(0))));
    const auto relocations = ReadAt<Elf64_Shdr>(FindSection(SHT_RELA));
    EXPECT_FALSE(IsWhole(Patched(qsizetype(relocations.sh_offset), quint64(0x1000)))) << "writes to code";
    const auto symbols = ReadAt<Elf64_Shdr>(FindSection(SHT_DYNSYM));
    const auto nameOfFirst = qsizetype(symbols.sh_offset + sizeof(Elf64_Sym));
    EXPECT_FALSE(IsWhole(Patched(nameOfFirst, ~quint32(0))));
}

// The file has holes: it takes no room on the disk.
TEST_F(ZORSysLibraryFileTest, AChainWithoutEndInAnEnormousFileIsReadInFewSteps)
{
    constexpr qsizetype kEnormous = qsizetype(1) << 30;
    ExtendLastSegment(kEnormous);
    MoveBehind(SHT_GNU_HASH, DT_GNU_HASH);
    for (const quint32 number : {1, 1, 1, 0, 0, 0, 1}) // one bucket and the empty filter; all links are zeros
        Append(number);
    ASSERT_FALSE(IsWhole(whole));
    ASSERT_TRUE(QFile::resize(path, kEnormous));
    const SystemCallFaults calls;
    SystemCallFaults::reads = 0;
    EXPECT_FALSE(ZORSysLibraryFile::IsWhole(path));
    EXPECT_LT(0, SystemCallFaults::reads);
    EXPECT_GT(10'000, SystemCallFaults::reads);
}

TEST_F(ZORSysLibraryFileTest, VersionsThatShareTheirListsAreReadInFewSteps)
{
    constexpr quint16 kNumVersions = 65535, numLists = 500;
    const qsizetype size = whole.size() + 16 + (kNumVersions + numLists) * qsizetype(sizeof(Elf64_Vernaux));
    ExtendLastSegment(size);
    MoveBehind(SHT_GNU_verneed, DT_VERNEED);
    SetEntry(DT_VERNEEDNUM, numLists);
    for (quint32 left = numLists; left > 0; --left) {
        const auto distanceOfNext = quint32(sizeof(Elf64_Verneed));
        Append(Elf64_Verneed{1, kNumVersions, 0, left * distanceOfNext, left > 1 ? distanceOfNext : 0});
    }
    for (quint32 left = kNumVersions; left > 0; --left)
        Append(Elf64_Vernaux{0, 0, 0x7fff, 0, left > 1 ? quint32(sizeof(Elf64_Vernaux)) : 0});
    whole.append(size - whole.size(), char(0));
    const SystemCallFaults calls;
    SystemCallFaults::reads = 0;
    EXPECT_FALSE(IsWhole(whole));
    EXPECT_LT(0, SystemCallFaults::reads);
    EXPECT_GT(100'000, SystemCallFaults::reads);
}

TEST_F(ZORSysLibraryFileTest, HundredsOfSegmentsFail)
{
    const QByteArray segments = whole.mid(qsizetype(header.e_phoff), header.e_phnum * header.e_phentsize);
    for (const int count : {64, 65, 400}) {
        QByteArray contents = whole + segments;
        contents.append((count - header.e_phnum) * header.e_phentsize, char(0)); // unused ones
        const quint64 offset = quint64(whole.size());
        const quint16 number = quint16(count);
        std::memcpy(contents.data() + offsetof(Elf64_Ehdr, e_phoff), &offset, sizeof offset);
        std::memcpy(contents.data() + offsetof(Elf64_Ehdr, e_phnum), &number, sizeof number);
        EXPECT_EQ(count <= 64, IsWhole(contents)) << count;
    }
}

TEST_F(ZORSysLibraryFileTest, RandomDamageIsSurvived)
{
    std::mt19937 random(20260);
    int numRefused = 0;
    constexpr int kNumFiles = 500;
    for (int i = 0; i < kNumFiles; ++i) {
        QByteArray contents = whole;
        const int numBytes = 1 + int(random() % 4);
        for (int k = 0; k < numBytes; ++k) {
            // Half of the damage hits the headers at either end.
            const quint32 place = random();
            const qsizetype offset = place % 4 == 0   ? qsizetype(random() % 1024)
                                     : place % 4 == 1 ? contents.size() - 1 - qsizetype(random() % 1024)
                                                      : qsizetype(random() % quint32(contents.size()));
            contents[offset] = char(random());
        }
        numRefused += !IsWhole(contents);
    }
    EXPECT_GT(numRefused, kNumFiles / 10);
    EXPECT_LT(numRefused, kNumFiles);
}

} // namespace
