// Warnings of the log.

#pragma once

#include <QMutex>
#include <QStringList>

/// Collects the warnings that are logged while it lives, of all threads, one object at a time. What the offscreen
/// platform itself remarks is left out.
class WarningCatcher
{
public:
    WarningCatcher()
        : m_former(qInstallMessageHandler(&Collect))
    {
        const QMutexLocker lock(&s_mutex);
        s_lines.clear();
    }
    ~WarningCatcher() { qInstallMessageHandler(m_former); }
    Q_DISABLE_COPY_MOVE(WarningCatcher)

    /// "category: text" of each warning so far.
    static QStringList GetLines()
    {
        const QMutexLocker lock(&s_mutex);
        return s_lines;
    }

private:
    static void Collect(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        if (type == QtDebugMsg || type == QtInfoMsg || text.contains(QLatin1String("propagateSizeHints")))
            return;
        const QMutexLocker lock(&s_mutex);
        s_lines.append(QLatin1String(context.category) + QLatin1String(": ") + text);
    }

    static inline QMutex s_mutex;
    static inline QStringList s_lines;
    const QtMessageHandler m_former;
};
