// Exception of the leak check for parts of tests.

#pragma once

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

/// What is allocated in this thread while it lives may leak. For exceptions that pass through Qt's event
/// delivery: its frames unwind without cleaning up, and the parts of the event on its stack are lost.
class UncheckedLeaks
{
public:
#if defined(__SANITIZE_ADDRESS__)
    UncheckedLeaks()
    {
        __lsan_disable();
    }
    ~UncheckedLeaks()
    {
        __lsan_enable();
    }
#else
    // NOLINTBEGIN(modernize-use-equals-default): objects of a trivial class would be unused variables
    UncheckedLeaks() {}
    ~UncheckedLeaks() {}
    // NOLINTEND(modernize-use-equals-default)
#endif
    UncheckedLeaks(const UncheckedLeaks&) = delete;
    UncheckedLeaks& operator=(const UncheckedLeaks&) = delete;
};
