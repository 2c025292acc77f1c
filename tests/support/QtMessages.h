// Collects what Qt and the product log during a test.

#pragma once

#include <QMutex>
#include <QStringList>
#include <QtGlobal>

/// Collects warnings and worse as long as it lives, and passes all messages on. Only one at a time.
class QtMessages
{
public:
    QtMessages()
    {
        s_current = this;
        s_former = qInstallMessageHandler(&Collect);
    }
    ~QtMessages()
    {
        qInstallMessageHandler(s_former);
        s_current = nullptr;
    }
    Q_DISABLE_COPY_MOVE(QtMessages)

    /// The texts since the last call.
    QStringList TakeWarnings()
    {
        const QMutexLocker lock(&m_mutex);
        return std::exchange(m_warnings, {});
    }

private:
    static void Collect(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        if (type != QtDebugMsg && type != QtInfoMsg) {
            const QMutexLocker lock(&s_current->m_mutex);
            s_current->m_warnings.append(text);
        }
        if (s_former)
            s_former(type, context, text);
    }

    static inline QtMessages* s_current = nullptr;
    static inline QtMessageHandler s_former = nullptr;
    QMutex m_mutex;
    QStringList m_warnings;
};
