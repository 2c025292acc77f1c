#include "ZORSysStackMonitor.h"

#include <QHash>
#include <QMutex>

class ZORSysStackMonitor::Private
{
public:
    mutable QMutex mutex;
    QList<QString> labels; // in the order of their first trace
    QHash<QString, QList<ZORSysStackTrace>> traces;
};

ZORSysStackMonitor::ZORSysStackMonitor()
    : d(std::make_unique<Private>())
{
}

ZORSysStackMonitor::~ZORSysStackMonitor() = default;

ZORSysStackMonitor* ZORSysStackMonitor::GetStackMonitor()
{
    static ZORSysStackMonitor monitor;
    return &monitor;
}

QList<QString> ZORSysStackMonitor::GetLabels() const
{
    const QMutexLocker lock(&d->mutex);
    return d->labels;
}

QList<ZORSysStackTrace> ZORSysStackMonitor::GetStackTraces(const QString& label) const
{
    const QMutexLocker lock(&d->mutex);
    return d->traces.value(label);
}

void ZORSysStackMonitor::Record(const QString& label, int maximumLength)
{
    const ZORSysStackTrace trace = ZORSysStackTrace::Capture(maximumLength);
    const QMutexLocker lock(&d->mutex);
    if (!d->traces.contains(label))
        d->labels.append(label);
    d->traces[label].append(trace);
}

void ZORSysStackMonitor::ClearTraces(const QString& label)
{
    const QMutexLocker lock(&d->mutex);
    d->labels.removeAll(label);
    d->traces.remove(label);
}

void ZORSysStackMonitor::ClearAllTraces()
{
    const QMutexLocker lock(&d->mutex);
    d->labels.clear();
    d->traces.clear();
}
