#include "ZORSysMetaTypeCleanup.h"

#include <QMetaType>

#include <dlfcn.h>

namespace {

/// Start of the loaded file that \a address lies in; null for none.
const void* GetFile(const void* address)
{
    Dl_info info;
    return dladdr(address, &info) ? info.dli_fbase : nullptr;
}

} // namespace

ZORSysMetaTypeCleanup::ZORSysMetaTypeCleanup(const void* address)
    : m_address(address)
{
}

ZORSysMetaTypeCleanup::~ZORSysMetaTypeCleanup()
{
    const void* const library = GetFile(m_address);
    constexpr int kMaxGap = 256; // ids of types that were unregistered before
    for (int id = QMetaType::User + 1, gap = 0; gap < kMaxGap; ++id, ++gap) {
        if (!QMetaType::isRegistered(id))
            continue;
        gap = 0;
        const QMetaType type(id);
        if (GetFile(type.iface()) == library)
            QMetaType::unregisterMetaType(type);
    }
}
