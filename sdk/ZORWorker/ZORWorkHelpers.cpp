#include "ZORWorkHelpers.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <cstdio>
#include <mutex>
#include <unistd.h>

namespace {

struct Settings
{
    std::mutex mutex; // of all that follows
    QString program;
    qint64 memoryLimit = 0; // bytes; 0: the default
};

// Never destroyed: jobs may run until the end of the process.
Settings& GetSettings()
{
    static Settings* const settings = new Settings;
    return *settings;
}

qint64 GetHalfOfMemory()
{
    const qint64 pages = sysconf(_SC_PHYS_PAGES);
    return pages * sysconf(_SC_PAGESIZE) / 2;
}

} // namespace

QString ZORWorkHelpers::GetProgram()
{
    Settings& settings = GetSettings();
    const std::lock_guard lock(settings.mutex);
    return settings.program;
}

void ZORWorkHelpers::SetProgram(const QString& path)
{
    ZOR_TRACE_CALL(path);
    Settings& settings = GetSettings();
    const std::lock_guard lock(settings.mutex);
    settings.program = path;
}

qint64 ZORWorkHelpers::GetMemoryLimit()
{
    Settings& settings = GetSettings();
    const std::lock_guard lock(settings.mutex);
    return settings.memoryLimit > 0 ? settings.memoryLimit : GetHalfOfMemory();
}

void ZORWorkHelpers::SetMemoryLimit(qint64 bytes)
{
    ZOR_TRACE_CALL(bytes);
    Settings& settings = GetSettings();
    const std::lock_guard lock(settings.mutex);
    settings.memoryLimit = bytes;
}

int ZORWorkHelpers::Serve(int, char** argv)
{
    std::fprintf(stderr, "%s: started by hand; programs of the SDK start it for their jobs\n", argv[0]);
    return 2;
}
