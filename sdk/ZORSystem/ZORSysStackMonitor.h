// Recorded call stacks, by label.

#pragma once

#include <ZORSystem/ZORSysStackTrace.h>

#include <QList>
#include <QString>

#include <memory>

/// Process-wide collection of stack traces for debugging: the SDK records the construction of
/// geometries and changes of their reference counts here when its debug options ask for it.
class ZORSYSTEM_EXPORT ZORSysStackMonitor
{
public:
    static ZORSysStackMonitor* GetStackMonitor();

    /// The labels that have traces, in the order of their first trace.
    QList<QString> GetLabels() const;
    /// The traces of a label, oldest first; empty for an unknown label.
    QList<ZORSysStackTrace> GetStackTraces(const QString& label) const;

    /// Records the caller's stack under \a label.
    /// \param maximumLength  frames to keep
    void Record(const QString& label, int maximumLength = 32);

    void ClearTraces(const QString& label);
    void ClearAllTraces();

private:
    ZORSysStackMonitor();
    ~ZORSysStackMonitor();

    class Private;
    const std::unique_ptr<Private> d;
};
