#include "ZORNestJobKinds_p.h"
#include "ZORNestNestingRun_p.h"
#include "ZORNestTranslationRun_p.h"

#include <ZORWorker/ZORWorkJobKind.h>

namespace {

/// Keeps the kinds registered from the loading of the library to its unloading.
class Registration
{
public:
    Registration()
    {
        ZORWorkJobKind::Register(ZORNestJobKinds::kNesting, ZORNestRunNesting, ZORNestCompleteNesting);
        ZORWorkJobKind::Register(ZORNestJobKinds::kTranslation, ZORNestRunTranslation);
    }
    ~Registration()
    {
        ZORWorkJobKind::Unregister(ZORNestJobKinds::kTranslation);
        ZORWorkJobKind::Unregister(ZORNestJobKinds::kNesting);
    }
    Q_DISABLE_COPY_MOVE(Registration)
};

const Registration kRegistration;

} // namespace
