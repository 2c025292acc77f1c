// One recorded call stack.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QCoreApplication>
#include <QList>
#include <QString>

/// The return addresses of a call stack, innermost first; resolved to names only when shown.
///
/// A value of 8 bytes a frame; copies share their frames.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORSYSTEM_EXPORT ZORSysStackTrace
{
    Q_DECLARE_TR_FUNCTIONS(ZORSysStackTrace)

public:
    /// A longer stack is cut off at its outer end.
    static constexpr int MaximumFrames = 120;

    ZORSysStackTrace() = default;

    /// Records the stack: the first frame is the function that calls Capture(). About 2 us for 8 frames.
    /// \param maximumLength  frames to keep, at most MaximumFrames; 0 or less keeps none
    static ZORSysStackTrace Capture(int maximumLength);

    int GetNumFrames() const { return int(m_frames.size()); }

    /// The trace as text, a line a frame: number, function, and where known file and line; a frame with
    /// inlined functions has one line more for each, marked "(inlined)". Frames of a library that was
    /// unloaded since show their address alone.
    ///
    /// The first frame of a library copies its file into memory and reads the debug information, which takes some 10 ms
    /// for 5 MB; later ones take about 1 us for a known frame. Files that changed, were cut short or vanished after
    /// they were loaded are harmless: their frames show the address and the name of the library. The spelling of the
    /// name is established.
    /// \param prefix      put in front of every line
    /// \param firstFrame  frames to leave out at the innermost end
    QString ToSTring(const QString& prefix, int firstFrame) const;

private:
    friend class ZORSysStackMonitor;
    static ZORSysStackTrace CaptureFrom(const void* caller, int maximumLength);

    QList<quintptr> m_frames;
    quint32 m_generation = 0; // of the loaded libraries, when recorded
    qint64 m_dropped = 0;     // older traces that the monitor no longer has
};
