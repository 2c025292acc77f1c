#include "core/ZORTestPlugin.h"

#include <ZORSystem/ZORSysInit.h>

#include <QMetaType>

#include <dlfcn.h>

bool _ZORTestingLoaded = false;

namespace {

/// Holds the result of the registration right after loading, then what the callback stores.
[[maybe_unused]] const bool initialisationRegistered = [] {
    _ZORTestingLoaded = ZORSysRegisterInit([] { _ZORTestingLoaded = true; });
    return _ZORTestingLoaded;
}();

/// Start of the loaded file that \a address lies in; null for none.
const void* GetFile(const void* address)
{
    Dl_info info;
    return dladdr(address, &info) ? info.dli_fbase : nullptr;
}

/// While the library is unmapped, takes the types out of Qt's registry that Qt knows by data of the library.
///
/// Qt registers a type on its first conversion or call by name and keeps a pointer to whichever copy of its
/// description came first; left there, it would be read by the next library that uses a type of that name.
class MetaTypeCleanup
{
public:
    MetaTypeCleanup() = default;
    ~MetaTypeCleanup()
    {
        const void* library = GetFile(&_ZORTestingLoaded);
        constexpr int MaxGap = 256; // ids of types that were unregistered before
        for (int id = QMetaType::User + 1, gap = 0; gap < MaxGap; ++id, ++gap) {
            if (!QMetaType::isRegistered(id))
                continue;
            gap = 0;
            const QMetaType type(id);
            if (GetFile(type.iface()) == library)
                QMetaType::unregisterMetaType(type);
        }
    }
    Q_DISABLE_COPY_MOVE(MetaTypeCleanup)
};

const MetaTypeCleanup metaTypeCleanup;

} // namespace
