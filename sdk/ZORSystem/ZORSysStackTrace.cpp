#include "ZORSysStackTrace.h"

#include "trace/ZORSysLoadedModules_p.h"
#include "trace/ZORSysSymbolizer_p.h"

#include <algorithm>
#include <array>
#include <execinfo.h>

[[gnu::noinline]] ZORSysStackTrace ZORSysStackTrace::Capture(int maximumLength)
{
    return CaptureFrom(__builtin_return_address(0), maximumLength);
}

// caller: return address into the function whose frame is to be the first one
[[gnu::noinline]] ZORSysStackTrace ZORSysStackTrace::CaptureFrom(const void* caller, int maximumLength)
{
    constexpr int kOwnFrames = 4; // this function, its caller, and what a sanitizer puts between
    std::array<void*, MaximumFrames + kOwnFrames> buffer = {};
    ZORSysStackTrace trace;
    const int wanted = std::min(maximumLength, MaximumFrames);
    if (wanted <= 0)
        return trace;

    void** const end = buffer.data() + backtrace(buffer.data(), wanted + kOwnFrames);
    void** begin = std::find(buffer.data(), std::min(end, buffer.data() + kOwnFrames + 1), caller);
    if (begin == end || *begin != caller)
        begin = buffer.data(); // the unwinder did not get through: show what there is
    trace.m_frames.reserve(std::min<qsizetype>(wanted, end - begin));
    for (void** frame = begin; frame != end && trace.m_frames.size() < wanted; ++frame)
        trace.m_frames.append(reinterpret_cast<quintptr>(*frame));
    trace.m_generation = ZORSysLoadedModules::Update();
    return trace;
}

QString ZORSysStackTrace::ToSTring(const QString& prefix, int firstFrame) const
{
    QString text;
    if (m_dropped > 0)
        text += prefix + tr("(%1 older traces were dropped)").arg(m_dropped) + u'\n';
    for (qsizetype i = std::max(firstFrame, 0); i < m_frames.size(); ++i) {
        const QStringList lines = ZorSysDescribeFrame(m_frames[i], m_generation);
        for (const QString& line : lines)
            text += prefix + u'#' + QString::number(i) + QLatin1String("  ") + line + u'\n';
    }
    return text;
}
