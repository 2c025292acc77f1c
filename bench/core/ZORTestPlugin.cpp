#include "core/ZORTestPlugin.h"

#include <ZORSystem/ZORSysInit.h>
#include <ZORSystem/ZORSysMetaTypeCleanup.h>

bool _ZORTestingLoaded = false;

namespace {

/// Holds the result of the registration right after loading, then what the callback stores.
[[maybe_unused]] const bool kInitialisationRegistered = [] {
    _ZORTestingLoaded = ZORSysRegisterInit([] { _ZORTestingLoaded = true; });
    return _ZORTestingLoaded;
}();

const ZORSysMetaTypeCleanup kMetaTypeCleanup(&_ZORTestingLoaded);

} // namespace
