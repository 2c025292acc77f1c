// Recorded call stacks, by label.

#pragma once

#include <ZORSystem/ZORSysStackTrace.h>

#include <QList>
#include <QString>

#include <memory>

/// Process-wide collection of stack traces for debugging: the SDK records the construction of
/// geometries and changes of their reference counts here when its debug options ask for it.
///
/// A label keeps its newest MaximumTraces traces. Where older ones had to go, the text of the oldest one
/// that is left begins with "(n older traces were dropped)". Equal traces in a row share their memory.
///
/// Thread safety: thread-safe.
class ZORSYSTEM_EXPORT ZORSysStackMonitor
{
public:
    static constexpr int MaximumTraces = 10000;

    static ZORSysStackMonitor* GetStackMonitor();

    /// The labels that have traces, in the order of their first trace.
    QList<QString> GetLabels() const;
    /// The traces of a label, oldest first; empty for an unknown label.
    QList<ZORSysStackTrace> GetStackTraces(const QString& label) const;

    /// How many traces of a label were dropped since it was cleared.
    qint64 GetDroppedCount(const QString& label) const;

    /// Records the stack under \a label: the first frame is the function that calls Record().
    /// \param maximumLength  frames to keep, as for ZORSysStackTrace::Capture()
    void Record(const QString& label, int maximumLength = 32);

    /// Forgets a label with its traces and its dropped count; unknown labels are ignored.
    void ClearTraces(const QString& label);
    void ClearAllTraces();

private:
    ZORSysStackMonitor();
    ~ZORSysStackMonitor();

    class Private;
    const std::unique_ptr<Private> d;
};
