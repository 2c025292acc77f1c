// The dock that shows the calls into the SDK.

#pragma once

#include "docks/ZORHostLineDock.h"
#include "docks/ZORHostLineQueue.h"

class QCheckBox;
class QWidget;

/// Lists the outermost SDK calls with their arguments and wall time while "Record" is checked. Without lines and while
/// it is not, a hint offers to record.
class ZORHostApiDock : public ZORHostLineDock
{
    Q_OBJECT

public:
    static constexpr int kCapacity = 20'000;

    explicit ZORHostApiDock(QWidget* parent);
    ~ZORHostApiDock() override;

    /// Shows at once the calls that are waiting for the next batch.
    void Flush();

    /// "870 ns", "12.3 \u00b5s", "4.56 ms", "1.23 s": three digits.
    static QString FormatDuration(qint64 nanoseconds);

private:
    void OnRecordToggled(bool on);
    QWidget* MakeHint();
    void UpdateHint();

    QCheckBox* m_recordChk;
    QWidget* m_hint;
    ZORHostLineQueue m_queue;
};
