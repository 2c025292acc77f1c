#include "ZORSysElfFile_p.h"
#include "ZORSysModuleCopy_p.h"
#include "ZORSysProcessMemory_p.h"

#include <ZORSystem/ZORSysDescriptor.h>

#include <array>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <unistd.h>

namespace {

using ZORSysLoadedModules::FileIdentity;
using ZORSysLoadedModules::Module;

/// Debug information of larger files is not worth its memory.
constexpr qint64 kLargestCopy = qint64(1) << 30;
/// Enough for the headers and for the build number that linkers write behind them.
constexpr size_t kHeadSize = 1024;
using Head = std::array<char, kHeadSize>;

bool CopyContents(int from, int to, qint64 size)
{
    for (qint64 copied = 0; copied < size;) {
        const ssize_t count = sendfile(to, from, nullptr, size_t(size - copied));
        if (count <= 0)
            return false; // the file became shorter, or memory is scarce
        copied += count;
    }
    return true;
}

/// Returns whether the file begins with the bytes that are loaded.
bool HasLoadedHead(int file, const Module& module)
{
    Head loaded = {};
    Head stored = {};
    return ZorSysProcessMemory().Read(module.begin, loaded.data(), loaded.size())
           && pread(file, stored.data(), stored.size(), 0) == ssize_t(stored.size()) && loaded == stored;
}

} // namespace

int ZorSysCopyModule(const Module& module)
{
    const ZORSysDescriptor file(open(module.path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.IsOpen() || module.file == FileIdentity() || module.file.size > kLargestCopy)
        return -1;
    ZORSysDescriptor copy(memfd_create("zor-symbols", MFD_CLOEXEC));
    if (!copy.IsOpen() || FileIdentity::Of(file.Get()) != module.file
        || !CopyContents(file.Get(), copy.Get(), module.file.size) || !HasLoadedHead(copy.Get(), module)
        || !zor::sys::ElfFile(copy.Get()).ReadHeaders())
        return -1;
    return copy.Release();
}
