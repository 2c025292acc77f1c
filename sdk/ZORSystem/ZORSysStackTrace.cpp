#include "ZORSysStackTrace.h"

#include <algorithm>
#include <array>
#include <execinfo.h>

ZORSysStackTrace ZORSysStackTrace::Capture(int maximumLength)
{
    constexpr int ownFrames = 1;
    std::array<void*, 128> frames = {};
    const int wanted = std::clamp(maximumLength, 0, int(frames.size()) - ownFrames);
    const int count = wanted > 0 ? backtrace(frames.data(), wanted + ownFrames) : 0;
    ZORSysStackTrace trace;
    for (int i = ownFrames; i < count; ++i)
        trace.m_frames.append(frames[size_t(i)]);
    return trace;
}

QString ZORSysStackTrace::ToSTring(const QString& prefix, int firstFrame) const
{
    QString text;
    for (qsizetype i = std::max(firstFrame, 0); i < m_frames.size(); ++i)
        text += prefix + QString::asprintf("#%d  %p\n", int(i), m_frames[i]);
    return text;
}
