// The connection to OpenGL.

#pragma once

#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QCoreApplication>
#include <QString>

#include <memory>

/// OpenGL without a window: one context for the process, made when it is first asked for, in the thread that
/// asks. The environment variable ZOR_NO_GRAPHICS=1 keeps it from being made, and so does a limit of the address space
/// (RLIMIT_AS) that leaves less than 1 GiB: drivers do not survive the end of the memory.
///
/// Thread safety: thread-safe.
class ZORVISUALIZATION_EXPORT ZORVisGraphicsContext
{
    Q_DECLARE_TR_FUNCTIONS(ZORVisGraphicsContext)

public:
    static ZORVisGraphicsContext* GetInstance();
    Q_DISABLE_COPY_MOVE(ZORVisGraphicsContext)

    /// Whether pictures are drawn by OpenGL. The first call takes some tenths of a second.
    bool IsAvailable() const;
    /// Why there is no context, one line per way that was tried; empty when there is one.
    QString GetFailureReason() const;
    /// Platform, renderer, version and samples per pixel, for an about box; "software drawing" without
    /// context.
    QString GetDescription() const;

    /// Makes the context current; for the module itself.
    /// \return false without context and in another thread than that of the context
    bool MakeCurrent() const;
    /// Largest width and height that can be drawn at once, pixels; 0 without context.
    int GetMaximumSize() const;
    /// Samples per pixel, 1 without antialiasing and without context.
    int GetSamples() const;
    /// Whether OpenGL is computed by the processor, without graphics hardware.
    bool IsSoftware() const;

private:
    ZORVisGraphicsContext();
    ~ZORVisGraphicsContext();

    class Private;
    const std::unique_ptr<Private> d;
};
