// Shows errors that nobody else handled, one box at a time.

#pragma once

#include <ZORSystem/ZORSysMemory.h>

#include <QElapsedTimer>
#include <QEvent>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QQueue>

class QMessageBox;

/// Shows critical boxes titled "Error". A message that comes again while its box is open or waiting is
/// counted, not shown again; one that comes from painting, layout or a timer is shown once in
/// RepeatMilliseconds, so that a broken paint handler cannot bury the user under boxes. Every message
/// is logged.
class ZORHostErrorReporter : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 kRepeatMilliseconds = 10'000;

    explicit ZORHostErrorReporter(QObject* parent);
    ~ZORHostErrorReporter() override;

    /// Returns at once; the box is modal for the application but runs in the event loop of the caller.
    /// May be called while another box is open: the boxes come one after the other.
    /// \param cause  type of the event whose handler failed
    void Report(const QString& message, QEvent::Type cause);
    /// The same for std::bad_alloc. A reserve of memory is released for the box and held again after it.
    void ReportOutOfMemory(QEvent::Type cause);

private:
    void ShowNext();
    bool IsUnattended(QEvent::Type cause) const;

    QQueue<QString> m_waiting;
    QHash<QString, QElapsedTimer> m_lastShown;
    ZORSysMemory::Reserve m_reserve;
    QPointer<QMessageBox> m_box; // deletes itself on close
    QString m_shownMessage;
    int m_repetitions = 0;
};
