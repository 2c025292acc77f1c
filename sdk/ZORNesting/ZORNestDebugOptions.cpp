#include "ZORNestDebugOptions.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <atomic>

class ZORNestDebugOptions::Private
{
public:
    std::atomic<bool> keepsTranslation = false;
    std::atomic<bool> keepsNesting = false;
};

ZORNestDebugOptions::ZORNestDebugOptions()
    : d(std::make_unique<Private>())
{
}

ZORNestDebugOptions::~ZORNestDebugOptions() = default;

ZORNestDebugOptions* ZORNestDebugOptions::GetInstance()
{
    static ZORNestDebugOptions options;
    return &options;
}

bool ZORNestDebugOptions::GetKeepTranslationWorkDirectories() const
{
    return d->keepsTranslation;
}

void ZORNestDebugOptions::SetKeepTranslationWorkDirectories(bool keep)
{
    ZOR_TRACE_CALL(keep);
    d->keepsTranslation = keep;
}

bool ZORNestDebugOptions::GetKeepNestingWorkDirectories() const
{
    return d->keepsNesting;
}

void ZORNestDebugOptions::SetKeepNestingWorkDirectories(bool keep)
{
    ZOR_TRACE_CALL(keep);
    d->keepsNesting = keep;
}
