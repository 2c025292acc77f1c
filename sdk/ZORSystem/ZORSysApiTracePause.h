// Keeps what the SDK calls in a thread of its own out of the trace.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QtGlobal>

/// While it lives, calls of this thread count as nested in one that was traced: they leave no line of their own.
/// For jobs of the SDK, whose caller has made one call only.
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORSYSTEM_EXPORT ZORSysApiTracePause
{
public:
    ZORSysApiTracePause();
    ~ZORSysApiTracePause();
    Q_DISABLE_COPY_MOVE(ZORSysApiTracePause)
};
