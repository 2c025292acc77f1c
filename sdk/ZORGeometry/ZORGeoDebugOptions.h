// Debugging aids of the geometry module.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QString>

#include <atomic>
#include <memory>

/// Process-wide switches for what the module records about itself. They last as long as the process; the
/// stacks go to ZORSysStackMonitor, under one label for each kind.
///
/// Thread safety: thread-safe.
class ZORGEOMETRY_EXPORT ZORGeoDebugOptions
{
public:
    /// Labels of the stack monitor.
    static constexpr const char* ConstructionLabel = "Geometry construction";
    static constexpr const char* ReferenceLabel = "Geometry references";

    static ZORGeoDebugOptions* GetInstance();

    /// Whether the construction of every geometry is recorded; false at first.
    bool IsConstructorStackTraces() const { return s_constructions; }
    void SetConstructorStackTraces(bool on);
    /// Frames kept of each stack; 16 at first. 0 or less keeps none.
    int GetConstructorStackTraceLength() const;
    void SetConstructorStackTraceLength(int frames);

    /// Whether every change of a reference count is recorded; false at first.
    bool IsReferenceStackTraces() const { return s_references; }
    void SetReferenceStackTraces(bool on);
    /// Frames kept of each stack; 16 at first. 0 or less keeps none.
    int GetReferenceStackTraceLength() const;
    void SetReferenceStackTraceLength(int frames);

    /// Whether loading a container writes what it reads to the dump file; false at first.
    bool IsContainerLoadDumpEnabled() const;
    void SetContainerLoadDumpEnabled(bool on);
    /// Path of the dump file; empty at first, and then nothing is dumped.
    QString GetContainerLoadDumpFile() const;
    void SetContainerLoadDumpFile(const QString& fileName);

private:
    friend class ZORGeoGeometry;
    ZORGeoDebugOptions();
    ~ZORGeoDebugOptions();
    Q_DISABLE_COPY_MOVE(ZORGeoDebugOptions)

    static void RecordConstruction()
    {
        if (s_constructions.load(std::memory_order_relaxed)) [[unlikely]]
            GetInstance()->Record(ConstructionLabel, GetInstance()->GetConstructorStackTraceLength());
    }
    static void RecordReferenceChange()
    {
        if (s_references.load(std::memory_order_relaxed)) [[unlikely]]
            GetInstance()->Record(ReferenceLabel, GetInstance()->GetReferenceStackTraceLength());
    }
    void Record(const char* label, int length);

    // Every construction and change of a reference reads these, so they stay outside of the private data.
    static std::atomic<bool> s_constructions;
    static std::atomic<bool> s_references;
    class Private;
    const std::unique_ptr<Private> d;
};
