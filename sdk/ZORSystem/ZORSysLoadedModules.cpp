#include "ZORSysLoadedModules_p.h"

#include <QFile>
#include <QMutex>

#include <algorithm>
#include <link.h>
#include <utility>
#include <vector>

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

int AppendModule(dl_phdr_info* info, size_t, void* modules)
{
    Module module;
    module.begin = ~quintptr(0);
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr)& segment = info->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD)
            continue;
        const quintptr begin = info->dlpi_addr + segment.p_vaddr;
        module.begin = std::min(module.begin, begin);
        module.end = std::max(module.end, begin + segment.p_memsz);
    }
    if (module.begin >= module.end)
        return 0;
    module.path = info->dlpi_name;
    if (module.path.isEmpty()) // the program itself has no name here
        module.path = QFile::symLinkTarget(QStringLiteral("/proc/self/exe")).toLocal8Bit();
    static_cast<std::vector<Module>*>(modules)->push_back(module);
    return 0;
}

bool IsSame(const Module& a, const Module& b)
{
    return a.begin == b.begin && a.end == b.end && a.path == b.path;
}

// The last module that begins at or before the address, or the end.
std::vector<Module>::const_iterator FindBegin(const std::vector<Module>& modules, quintptr address)
{
    const auto after = std::upper_bound(modules.begin(), modules.end(), address,
                                        [](quintptr a, const Module& module) { return a < module.begin; });
    return after == modules.begin() ? modules.end() : after - 1;
}

} // namespace

quint32 Update()
{
    Table& table = GetTable();
    const QMutexLocker lock(&table.mutex);
    Counters counters;
    dl_iterate_phdr(ReadCounters, &counters);
    if (table.generation > 0 && counters == table.counters)
        return table.generation;

    std::vector<Module> modules;
    dl_iterate_phdr(AppendModule, &modules);
    std::sort(modules.begin(), modules.end(),
              [](const Module& a, const Module& b) { return a.begin < b.begin; });
    ++table.generation;
    for (Module& module : modules) {
        const auto known = FindBegin(table.modules, module.begin);
        const bool stayed = known != table.modules.end() && IsSame(*known, module);
        module.generation = stayed ? known->generation : table.generation;
    }
    table.modules = std::move(modules);
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
