#include "ZORSysProcessMemory_p.h"

#include <cstring>
#include <fcntl.h>
#include <unistd.h>

ZorSysProcessMemory::ZorSysProcessMemory()
    : m_descriptor(open("/proc/self/mem", O_RDONLY | O_CLOEXEC))
{
}

ZorSysProcessMemory::~ZorSysProcessMemory()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

bool ZorSysProcessMemory::Read(quintptr address, void* bytes, size_t size) const
{
    if (m_descriptor >= 0)
        return pread(m_descriptor, bytes, size, off_t(address)) == ssize_t(size);
    const void* source = nullptr;
    std::memcpy(&source, &address, sizeof source);
    std::memcpy(bytes, source, size);
    return true;
}
