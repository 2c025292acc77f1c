#include "docks/ZORHostLineQueue.h"

#include <utility>

ZORHostLineQueue::ZORHostLineQueue(int capacity, QObject* parent)
    : QObject(parent)
    , m_capacity(capacity)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(kBatchMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &ZORHostLineQueue::Flush);
}

void ZORHostLineQueue::Add(ZORHostLine line)
{
    bool announce = false;
    {
        const QMutexLocker lock(&m_mutex);
        // In blocks: taking the first line off a full list each time would move all others.
        if (m_waiting.size() >= 2 * m_capacity)
            m_waiting.remove(0, m_waiting.size() - m_capacity);
        m_waiting.append(std::move(line));
        announce = !std::exchange(m_announced, true);
    }
    if (announce)
        QMetaObject::invokeMethod(&m_timer, qOverload<>(&QTimer::start), Qt::QueuedConnection);
}

void ZORHostLineQueue::Flush()
{
    QList<ZORHostLine> lines;
    {
        const QMutexLocker lock(&m_mutex);
        lines.swap(m_waiting);
        m_announced = false;
    }
    if (lines.size() > m_capacity)
        lines.remove(0, lines.size() - m_capacity);
    if (!lines.isEmpty())
        emit Delivered(lines);
}
