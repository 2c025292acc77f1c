// Progress of long computations, followed and canceled by who waits for them.

#pragma once

#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSystemGlobal.h>

#include <QCoreApplication>

#include <functional>
#include <memory>

/// A computation was canceled by the function of a ZORSysProgress. Message: "canceled".
/// Thread safety: reentrant; objects may be shared read-only.
class ZORSYSTEM_EXPORT ZORSysCanceledException : public ZORSysException
{
    Q_DECLARE_TR_FUNCTIONS(ZORSysCanceledException)

public:
    ZORSysCanceledException();
    ~ZORSysCanceledException() override;
};

/// Follows the computations of its thread while it lives, however deep below the caller they are.
///
///     const ZORSysProgress progress([&](double part) { return ShowProgress(part); });
///     layer->SetSurface(surface); // may throw ZORSysCanceledException
///
/// Only some long computations report: draping and the projection of curves. What is canceled leaves everything as any
/// exception of the function would. The latest of several that live counts.
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORSYSTEM_EXPORT ZORSysProgress
{
public:
    /// \param report  called in this thread about every 20 ms with the part that is done, 0 to 1, never less than before;
    ///                returns false to cancel. It may run the event loop; computations that are started there are not followed
    explicit ZORSysProgress(std::function<bool(double)> report);
    ~ZORSysProgress();
    Q_DISABLE_COPY_MOVE(ZORSysProgress)

    /// For computations: reports the part that is done, 0 to 1. Costs a few nanoseconds when nobody follows, else the
    /// reading of a clock.
    /// \throws ZORSysCanceledException
    static void Check(double part);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
