#include "ZORSysStackMonitor.h"

#include <QHash>
#include <QMutex>

class ZORSysStackMonitor::Private
{
public:
    struct Label
    {
        QList<ZORSysStackTrace> traces; // oldest first
        qint64 dropped = 0;
    };

    mutable QMutex mutex;
    QList<QString> labels; // in the order of their first trace
    QHash<QString, Label> byLabel;
};

ZORSysStackMonitor::ZORSysStackMonitor()
    : d(std::make_unique<Private>())
{
}

ZORSysStackMonitor::~ZORSysStackMonitor() = default;

ZORSysStackMonitor* ZORSysStackMonitor::GetStackMonitor()
{
    // Never destroyed: stacks may be recorded until the very end of the process.
    static ZORSysStackMonitor* const monitor = new ZORSysStackMonitor;
    return monitor;
}

QList<QString> ZORSysStackMonitor::GetLabels() const
{
    const QMutexLocker lock(&d->mutex);
    return d->labels;
}

QList<ZORSysStackTrace> ZORSysStackMonitor::GetStackTraces(const QString& label) const
{
    const QMutexLocker lock(&d->mutex);
    const auto found = d->byLabel.constFind(label);
    if (found == d->byLabel.constEnd())
        return {};
    QList<ZORSysStackTrace> traces = found->traces;
    if (found->dropped > 0)
        traces.first().m_dropped = found->dropped;
    return traces;
}

qint64 ZORSysStackMonitor::GetDroppedCount(const QString& label) const
{
    const QMutexLocker lock(&d->mutex);
    const auto found = d->byLabel.constFind(label);
    return found == d->byLabel.constEnd() ? 0 : found->dropped;
}

[[gnu::noinline]] void ZORSysStackMonitor::Record(const QString& label, int maximumLength)
{
    ZORSysStackTrace trace = ZORSysStackTrace::CaptureFrom(__builtin_return_address(0), maximumLength);
    const QMutexLocker lock(&d->mutex);
    auto known = d->byLabel.find(label);
    if (known == d->byLabel.end()) {
        const QString copy(label.constData(), label.size()); // a literal vanishes with its library
        d->labels.append(copy);
        known = d->byLabel.insert(copy, {});
    }
    if (!known->traces.isEmpty() && known->traces.constLast().m_frames == trace.m_frames)
        trace.m_frames = known->traces.constLast().m_frames;
    known->traces.append(trace);
    if (known->traces.size() > MaximumTraces) {
        known->traces.removeFirst();
        ++known->dropped;
    }
}

void ZORSysStackMonitor::ClearTraces(const QString& label)
{
    const QMutexLocker lock(&d->mutex);
    d->labels.removeAll(label);
    d->byLabel.remove(label);
}

void ZORSysStackMonitor::ClearAllTraces()
{
    const QMutexLocker lock(&d->mutex);
    d->labels.clear();
    d->byLabel.clear();
}
