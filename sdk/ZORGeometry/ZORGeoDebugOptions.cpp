#include "ZORGeoDebugOptions.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysStackMonitor.h>

std::atomic<bool> ZORGeoDebugOptions::s_constructions = false;
std::atomic<bool> ZORGeoDebugOptions::s_references = false;

ZORGeoDebugOptions* ZORGeoDebugOptions::GetInstance()
{
    static ZORGeoDebugOptions options;
    return &options;
}

void ZORGeoDebugOptions::SetConstructorStackTraces(bool on)
{
    ZOR_TRACE_CALL(on);
    s_constructions = on;
}

void ZORGeoDebugOptions::SetConstructorStackTraceLength(int frames)
{
    ZOR_TRACE_CALL(frames);
    m_constructionLength = frames;
}

void ZORGeoDebugOptions::SetReferenceStackTraces(bool on)
{
    ZOR_TRACE_CALL(on);
    s_references = on;
}

void ZORGeoDebugOptions::SetReferenceStackTraceLength(int frames)
{
    ZOR_TRACE_CALL(frames);
    m_referenceLength = frames;
}

void ZORGeoDebugOptions::SetContainerLoadDumpEnabled(bool on)
{
    ZOR_TRACE_CALL(on);
    m_loadDump = on;
}

QString ZORGeoDebugOptions::GetContainerLoadDumpFile() const
{
    const QMutexLocker lock(&m_fileMutex);
    return m_loadDumpFile;
}

void ZORGeoDebugOptions::SetContainerLoadDumpFile(const QString& fileName)
{
    ZOR_TRACE_CALL(fileName);
    const QMutexLocker lock(&m_fileMutex);
    m_loadDumpFile = fileName;
}

void ZORGeoDebugOptions::Record(const char* label, int length)
{
    ZORSysStackMonitor::GetStackMonitor()->Record(QLatin1String(label), length);
}
