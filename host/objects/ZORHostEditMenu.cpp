#include "objects/ZORHostEditMenu.h"

#include "objects/ZORHostObjectActions.h"
#include "objects/ZORHostObjectTree.h"

#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>

ZORHostEditMenu::ZORHostEditMenu(QMainWindow* window, ZORHostSelection* selection, ZORHostView3D* view,
                                 ZORFeatBrowserWidget* browser)
    : QObject(window)
    , m_actions(new ZORHostObjectActions(selection, window))
{
    m_actions->AddTo(view);
    new ZORHostObjectTree(browser, selection, m_actions);
    window->menuBar()->addMenu(m_actions->GetMenu());
    connect(m_actions, &ZORHostObjectActions::Done, window,
            [window](const QString& message) { window->statusBar()->showMessage(message); });
}
