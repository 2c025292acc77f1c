// Several representations as one.

#pragma once

#include <ZORVisualization/ZORVisRep.h>

#include <QList>

/// Draws what the given representations draw. Shares their drawing data: they stay the caller's and may be
/// deleted at any time.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisRepSet final : public ZORVisRep
{
public:
    /// \param reps  not taken over; null entries are ignored
    explicit ZORVisRepSet(const QList<ZORVisRep*>& reps);
};
