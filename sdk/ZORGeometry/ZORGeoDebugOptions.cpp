#include "ZORGeoDebugOptions.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysStackMonitor.h>

#include <QMutex>

std::atomic<bool> ZORGeoDebugOptions::s_constructions = false;
std::atomic<bool> ZORGeoDebugOptions::s_references = false;

class ZORGeoDebugOptions::Private
{
public:
    std::atomic<int> constructionLength = 16;
    std::atomic<int> referenceLength = 16;
    std::atomic<bool> dumpsLoads = false;
    QMutex fileMutex; // of the name that follows
    QString dumpFile;
};

ZORGeoDebugOptions::ZORGeoDebugOptions()
    : d(std::make_unique<Private>())
{
}

ZORGeoDebugOptions::~ZORGeoDebugOptions() = default;

ZORGeoDebugOptions* ZORGeoDebugOptions::GetInstance()
{
    // Never destroyed: geometries that live until the program ends ask it.
    static auto* const options = new ZORGeoDebugOptions;
    return options;
}

void ZORGeoDebugOptions::SetConstructorStackTraces(bool on)
{
    ZOR_TRACE_CALL(on);
    s_constructions = on;
}

int ZORGeoDebugOptions::GetConstructorStackTraceLength() const
{
    return d->constructionLength;
}

void ZORGeoDebugOptions::SetConstructorStackTraceLength(int frames)
{
    ZOR_TRACE_CALL(frames);
    d->constructionLength = frames;
}

void ZORGeoDebugOptions::SetReferenceStackTraces(bool on)
{
    ZOR_TRACE_CALL(on);
    s_references = on;
}

int ZORGeoDebugOptions::GetReferenceStackTraceLength() const
{
    return d->referenceLength;
}

void ZORGeoDebugOptions::SetReferenceStackTraceLength(int frames)
{
    ZOR_TRACE_CALL(frames);
    d->referenceLength = frames;
}

bool ZORGeoDebugOptions::IsContainerLoadDumpEnabled() const
{
    return d->dumpsLoads;
}

void ZORGeoDebugOptions::SetContainerLoadDumpEnabled(bool on)
{
    ZOR_TRACE_CALL(on);
    d->dumpsLoads = on;
}

QString ZORGeoDebugOptions::GetContainerLoadDumpFile() const
{
    const QMutexLocker lock(&d->fileMutex);
    return d->dumpFile;
}

void ZORGeoDebugOptions::SetContainerLoadDumpFile(const QString& fileName)
{
    ZOR_TRACE_CALL(fileName);
    const QMutexLocker lock(&d->fileMutex);
    d->dumpFile = fileName;
}

void ZORGeoDebugOptions::Record(const char* label, int length)
{
    ZORSysStackMonitor::GetStackMonitor()->Record(QLatin1String(label), length);
}
