// One recorded call stack.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QList>
#include <QString>

/// The return addresses of a call stack, innermost first; resolved to names only when shown.
class ZORSYSTEM_EXPORT ZORSysStackTrace
{
public:
    ZORSysStackTrace() = default;

    /// Records the stack of the calling function, about 2 us for 8 frames.
    /// \param maximumLength  frames to keep; 0 or less keeps none
    static ZORSysStackTrace Capture(int maximumLength);

    int GetNumFrames() const { return int(m_frames.size()); }

    /// The trace as text, a line a frame: number, function, and where known file and line.
    ///
    /// The spelling of the name is established.
    /// \param prefix      put in front of every line
    /// \param firstFrame  frames to leave out at the innermost end
    QString ToSTring(const QString& prefix, int firstFrame) const;

private:
    QList<void*> m_frames;
};
