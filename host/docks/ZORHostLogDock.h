// The dock that shows the log.

#pragma once

#include "docks/ZORHostLineDock.h"

class QComboBox;
class ZORHostLineQueue;
struct ZORHostLine;

/// Lists log messages with time, level, category and text; filters by least level, category and text.
class ZORHostLogDock : public ZORHostLineDock
{
    Q_OBJECT

public:
    /// \param queue  source of the lines, see ZORHostLog; not owned, may die first
    ZORHostLogDock(ZORHostLineQueue* queue, QWidget* parent);

private:
    void OnDelivered(const QList<ZORHostLine>& lines);

    QComboBox* m_levelCombo;
    QComboBox* m_categoryCombo;
};
