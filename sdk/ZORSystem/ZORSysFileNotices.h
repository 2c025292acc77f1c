// What was left out of files that were read.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QObject>
#include <QStringList>

#include <memory>

/// Passes on what readers of the SDK left out of files, whoever called them, so that an application can show it.
///
/// Thread safety: thread-safe.
class ZORSYSTEM_EXPORT ZORSysFileNotices : public QObject
{
    Q_OBJECT

public:
    /// The one object; lives as long as the process.
    static ZORSysFileNotices* GetInstance();

    /// Emits Reported() unless \a notices is empty.
    /// \param file     the file as people know it
    /// \param notices  what was left out, a lower-case sentence each
    void Report(const QString& file, const QStringList& notices);

signals:
    /// Emitted in the thread that has read the file; receivers of another thread get it queued.
    void Reported(const QString& file, const QStringList& notices);

private:
    ZORSysFileNotices();
    ~ZORSysFileNotices() override;
};
