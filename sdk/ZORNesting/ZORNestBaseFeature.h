// Choices that nesting jobs have in common.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

/// Names choices; has no objects.
/// Thread safety: thread-safe.
class ZORNESTING_EXPORT ZORNestBaseFeature
{
public:
    /// How the kinds of sheets of a job are used. The numbers are established.
    enum PackagingUsageRule : int {
        AsListed = 0, ///< each kind is used up before the next one
        BestMix = 1,  ///< the kinds that cost the least together
        BestSize = 2  ///< the one kind that costs the least
    };

    ZORNestBaseFeature() = delete;
};
