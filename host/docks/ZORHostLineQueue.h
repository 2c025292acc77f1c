// Hand-over of lines from any thread to the user interface.

#pragma once

#include "docks/ZORHostLineModel.h"

#include <QMutex>
#include <QObject>
#include <QTimer>

/// Collects lines from any thread and delivers them in batches to the thread of this object, at most
/// one batch every BatchMilliseconds. Holds at most \a capacity lines: the oldest leave first.
class ZORHostLineQueue : public QObject
{
    Q_OBJECT

public:
    static constexpr int kBatchMilliseconds = 50;

    explicit ZORHostLineQueue(int capacity, QObject* parent = nullptr);

    /// Thread-safe.
    void Add(ZORHostLine line);
    /// Delivers at once what is waiting. Only in the thread of this object.
    void Flush();

signals:
    void Delivered(const QList<ZORHostLine>& lines);

private:
    const qsizetype m_capacity;
    QMutex m_mutex;
    QList<ZORHostLine> m_waiting; // guarded by m_mutex
    bool m_announced = false;     // guarded by m_mutex: a delivery is on its way
    QTimer m_timer;
};
