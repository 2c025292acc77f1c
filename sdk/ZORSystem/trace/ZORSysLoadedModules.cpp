#include "ZORSysLoadedModules_p.h"
#include "ZORSysProcessMemory_p.h"

#include <QFile>
#include <QMutex>

#include <algorithm>
#include <link.h>
#include <sys/stat.h>
#include <utility>
#include <vector>

// The function of the C library: the linker gives its name to one that presents a single module to libbacktrace.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int __real_dl_iterate_phdr(int (*callback)(dl_phdr_info*, size_t, void*), void* data);

namespace ZORSysLoadedModules {

namespace {

// How often the linker loaded and unloaded.
using Counters = std::pair<unsigned long long, unsigned long long>;

struct Table
{
    QMutex mutex;
    std::vector<Module> modules; // by address
    Counters counters;
    quint32 generation = 0;
};

// Never destroyed: stacks may be recorded until the very end of the process.
Table& GetTable()
{
    static Table* const table = new Table;
    return *table;
}

int ReadCounters(dl_phdr_info* info, size_t, void* counters)
{
    *static_cast<Counters*>(counters) = {info->dlpi_adds, info->dlpi_subs};
    return 1; // they are the same for every module
}

// The headers of a library are pages of its file, which may have been cut short.
bool ReadRange(const dl_phdr_info& info, const ZorSysProcessMemory& memory, Module& module)
{
    std::vector<ElfW(Phdr)> segments(info.dlpi_phnum);
    if (!memory.Read(quintptr(info.dlpi_phdr), segments.data(), segments.size() * sizeof(ElfW(Phdr))))
        return false;
    module.begin = ~quintptr(0);
    for (const ElfW(Phdr) & segment : segments) {
        if (segment.p_type != PT_LOAD)
            continue;
        const quintptr begin = info.dlpi_addr + segment.p_vaddr;
        module.begin = std::min(module.begin, begin);
        module.end = std::max(module.end, begin + segment.p_memsz);
    }
    return module.begin < module.end;
}

FileIdentity Identify(const struct stat& status)
{
    if (!S_ISREG(status.st_mode))
        return {};
    constexpr qint64 kNanosecondsPerSecond = 1'000'000'000;
    // Not the time of the last change of the status: links to a library and its permissions may change.
    return {status.st_dev, status.st_ino, status.st_size,
            status.st_mtim.tv_sec * kNanosecondsPerSecond + status.st_mtim.tv_nsec};
}

// What the modules are compared with, and where they are collected.
struct Listing
{
    const std::vector<Module>& known;
    bool allStayed; // nothing was unloaded since the known ones were listed
    quint32 generation;
    ZorSysProcessMemory memory;
    std::vector<Module> modules;
};

int AppendModule(dl_phdr_info* info, size_t, void* data)
{
    Listing& listing = *static_cast<Listing*>(data);
    Module module;
    module.loadAddress = info->dlpi_addr;
    module.path = info->dlpi_name;
    if (module.path.isEmpty()) // the program itself has no name here
        module.path = QFile::symLinkTarget(QStringLiteral("/proc/self/exe")).toLocal8Bit();
    const auto known =
        std::find_if(listing.known.begin(), listing.known.end(), [&module](const Module& other) {
            return other.loadAddress == module.loadAddress && other.path == module.path;
        });
    const bool isKnown = known != listing.known.end();
    if (isKnown && listing.allStayed) {
        listing.modules.push_back(*known);
        return 0;
    }
    if (!ReadRange(*info, listing.memory, module))
        return 0;
    module.file = FileIdentity::Of(module.path);
    const bool stayed =
        isKnown && known->begin == module.begin && known->end == module.end && known->file == module.file;
    module.generation = stayed ? known->generation : listing.generation;
    listing.modules.push_back(module);
    return 0;
}

// The last module that begins at or before the address, or the end.
std::vector<Module>::const_iterator FindBegin(const std::vector<Module>& modules, quintptr address)
{
    const auto after = std::upper_bound(modules.begin(), modules.end(), address,
                                        [](quintptr a, const Module& module) { return a < module.begin; });
    return after == modules.begin() ? modules.end() : after - 1;
}

} // namespace

FileIdentity FileIdentity::Of(int descriptor)
{
    struct stat status = {};
    return fstat(descriptor, &status) == 0 ? Identify(status) : FileIdentity();
}

FileIdentity FileIdentity::Of(const QByteArray& path)
{
    struct stat status = {};
    return stat(path.constData(), &status) == 0 ? Identify(status) : FileIdentity();
}

quint32 Update()
{
    Table& table = GetTable();
    const QMutexLocker lock(&table.mutex);
    Counters counters;
    __real_dl_iterate_phdr(ReadCounters, &counters);
    if (table.generation > 0 && counters == table.counters)
        return table.generation;

    const bool allStayed = table.generation > 0 && counters.second == table.counters.second;
    ++table.generation;
    Listing listing = {table.modules, allStayed, table.generation, {}, {}};
    __real_dl_iterate_phdr(AppendModule, &listing);
    std::sort(listing.modules.begin(), listing.modules.end(),
              [](const Module& a, const Module& b) { return a.begin < b.begin; });
    table.modules = std::move(listing.modules);
    table.counters = counters;
    return table.generation;
}

std::optional<Module> Find(quintptr address)
{
    Table& table = GetTable();
    const QMutexLocker lock(&table.mutex);
    const auto module = FindBegin(table.modules, address);
    if (module == table.modules.end() || address >= module->end)
        return std::nullopt;
    return *module;
}

} // namespace ZORSysLoadedModules
