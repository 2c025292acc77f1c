// Notices when files are opened.

#pragma once

#include <QString>
#include <QtGlobal>

#include <gtest/gtest.h>

#include <sys/inotify.h>
#include <unistd.h>

/// Notices when a file, or a file in a folder, is opened.
class OpenWatch
{
public:
    explicit OpenWatch(const QString& path)
        : m_notify(inotify_init1(IN_NONBLOCK))
    {
        EXPECT_GE(inotify_add_watch(m_notify, path.toLocal8Bit().constData(), IN_OPEN), 0);
    }
    ~OpenWatch() { close(m_notify); }
    Q_DISABLE_COPY_MOVE(OpenWatch)

    /// Whether the file was opened since the last call.
    bool WasOpened() const
    {
        char events[4096];
        return read(m_notify, events, sizeof events) > 0;
    }

private:
    const int m_notify;
};
