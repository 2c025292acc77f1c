#include "ZORNestDebugOptions.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORNestDebugOptions* ZORNestDebugOptions::GetInstance()
{
    static ZORNestDebugOptions options;
    return &options;
}

bool ZORNestDebugOptions::GetKeepTranslationWorkDirectories() const
{
    return m_keepTranslation;
}

void ZORNestDebugOptions::SetKeepTranslationWorkDirectories(bool keep)
{
    ZOR_TRACE_CALL(keep);
    m_keepTranslation = keep;
}

bool ZORNestDebugOptions::GetKeepNestingWorkDirectories() const
{
    return m_keepNesting;
}

void ZORNestDebugOptions::SetKeepNestingWorkDirectories(bool keep)
{
    ZOR_TRACE_CALL(keep);
    m_keepNesting = keep;
}
