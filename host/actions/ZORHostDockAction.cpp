#include "actions/ZORHostDockAction.h"

#include <QDockWidget>

ZORHostDockAction::ZORHostDockAction(QDockWidget* dock, const QString& text, const QString& tip)
    : QAction(text, dock)
    , m_dock(dock)
{
    setObjectName(dock->objectName() + QLatin1String("Action"));
    setCheckable(true);
    setToolTip(tip);
    setStatusTip(tip);
    connect(dock, &QDockWidget::visibilityChanged, this, [this](bool isInFront) {
        m_isInFront = isInFront;
        setChecked(isInFront);
    });
    connect(this, &QAction::triggered, this, &ZORHostDockAction::Toggle);
}

void ZORHostDockAction::Toggle()
{
    if (m_isInFront) {
        m_dock->close();
        return;
    }
    m_dock->show();
    m_dock->raise();
    if (m_dock->isFloating())
        m_dock->activateWindow();
    setChecked(m_isInFront); // the trigger has changed it, whatever the dock did
}
