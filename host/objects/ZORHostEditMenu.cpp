#include "objects/ZORHostEditMenu.h"

#include "objects/ZORHostObjectActions.h"
#include "objects/ZORHostObjectTree.h"

#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>

ZORHostEditMenu::ZORHostEditMenu(QMainWindow* window, ZORHostSelection* selection, ZORHostView3D* view,
                                 ZORFeatBrowserWidget* browser)
    : QObject(window)
{
    auto* const actions = new ZORHostObjectActions(selection, window);
    actions->AddTo(view);
    new ZORHostObjectTree(browser, selection, actions);
    window->menuBar()->addMenu(actions->GetMenu());
    connect(actions, &ZORHostObjectActions::Done, window,
            [window](const QString& message) { window->statusBar()->showMessage(message); });
}
