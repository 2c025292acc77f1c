#include "actions/ZORHostPublishedActions.h"

#include "actions/ZORHostMnemonics.h"

#include <ZORCommand/ZORCmdActionPublisher.h>
#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

ZORHostPublishedActions::ZORHostPublishedActions(QMenuBar* menuBar, QMenu* before, QToolBar* toolBar,
                                                 QObject* parent)
    : QObject(parent)
    , m_menuBar(menuBar)
    , m_before(before)
    , m_toolBar(toolBar)
{
    m_toolBar->hide();
    ZORCmdController* controller = ZORCmdController::GetController();
    const QStringList categories = controller->GetCategories();
    for (const QString& category : categories) {
        const QList<QAction*> actions = controller->GetActions(category);
        for (QAction* action : actions)
            Add(action);
    }
    connect(controller, &ZORCmdController::ActionPublished, this, &ZORHostPublishedActions::Add);
    connect(controller, &ZORCmdController::ActionAboutToBeWithdrawn, this, &ZORHostPublishedActions::Remove);
}

void ZORHostPublishedActions::Add(QAction* action)
{
    const int placement = action->property("placement").toInt();
    if (placement == ZORCmdActionPublisher::Hidden)
        return;
    const QString category = action->property("category").toString();
    QMenu* const menu = GetMenu(category);
    ZORHostMnemonics::Assign(action, menu->actions());
    Insert(menu, category, action);
    if (placement == ZORCmdActionPublisher::MenuOnly)
        return;
    Insert(m_toolBar, category, action);
    m_toolBar->show();
}

void ZORHostPublishedActions::Insert(QWidget* widget, const QString& category, QAction* action)
{
    // In front of the first action that comes after it in its category and is shown already.
    const QList<QAction*> order = ZORCmdController::GetController()->GetActions(category);
    const QList<QAction*> shown = widget->actions();
    for (qsizetype i = order.indexOf(action) + 1; i < order.size(); ++i) {
        if (shown.contains(order[i])) {
            widget->insertAction(order[i], action);
            return;
        }
    }
    widget->addAction(action);
}

void ZORHostPublishedActions::Remove(QAction* action)
{
    m_toolBar->removeAction(action);
    m_toolBar->setVisible(!m_toolBar->actions().isEmpty());
    for (auto menu = m_menus.begin(); menu != m_menus.end();) {
        menu.value()->removeAction(action);
        if (menu.value()->isEmpty()) {
            delete menu.value();
            menu = m_menus.erase(menu);
        } else {
            ++menu;
        }
    }
}

QMenu* ZORHostPublishedActions::GetMenu(const QString& category)
{
    QMenu*& menu = m_menus[category];
    if (!menu) {
        menu = new QMenu(category, m_menuBar);
        menu->setObjectName(QStringLiteral("_%1Menu").arg(QString(category).remove(u' ')));
        menu->setToolTipsVisible(true);
        ZORHostMnemonics::Assign(menu->menuAction(), m_menuBar->actions());
        m_menuBar->insertMenu(m_before ? m_before->menuAction() : nullptr, menu);
    }
    return menu;
}
