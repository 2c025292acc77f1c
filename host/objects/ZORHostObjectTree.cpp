#include "objects/ZORHostObjectTree.h"

#include "objects/ZORHostObjectActions.h"
#include "view/ZORHostSelection.h"

#include <ZORFeatureUI/ZORFeatBrowserWidget.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>

ZORHostObjectTree::ZORHostObjectTree(ZORFeatBrowserWidget* browser, ZORHostSelection* selection,
                                     ZORHostObjectActions* actions)
    : QObject(browser)
    , m_browser(browser)
    , m_selection(selection)
{
    using Option = ZORFeatBrowserWidget::Option;
    browser->SetOptions(Option::EyeColumn | Option::SearchField | Option::OwnedGeometry | Option::Renaming
                        | Option::NarrowNames | Option::Hovering);
    connect(browser, &ZORFeatBrowserWidget::SelectionChanged, this,
            [this](const QList<ZORGeoGeometry*>& objects) {
                if (!m_isShowing)
                    m_selection->Set(objects);
            });
    connect(browser, &ZORFeatBrowserWidget::SearchChanged, this, &ZORHostObjectTree::ShowSelection);
    connect(selection, &ZORHostSelection::Changed, this, &ZORHostObjectTree::ShowSelection);
    connect(browser, &ZORFeatBrowserWidget::GeometryHovered, selection, &ZORHostSelection::SetHovered);
    connect(browser, &ZORFeatBrowserWidget::GeometryActivated, actions, &ZORHostObjectActions::Activate);
    connect(browser, &ZORFeatBrowserWidget::ContextMenuRequested, actions,
            [actions](ZORGeoGeometry*, const QPoint& position) { actions->ShowMenu(position); });
    connect(actions, &ZORHostObjectActions::RenameRequested, this, &ZORHostObjectTree::Rename);
    actions->AddKeysTo(browser);
    AddSearchTo(actions);
}

void ZORHostObjectTree::AddSearchTo(ZORHostObjectActions* actions)
{
    QMenu* const menu = actions->GetMenu();
    menu->addSeparator();
    QAction* const search = menu->addAction(tr("&Find Object"));
    search->setObjectName("_FindObjectAction");
    search->setStatusTip(tr("Leaves only the objects in the tree whose names contain a text"));
    search->setToolTip(search->statusTip());
    search->setShortcut(QKeySequence::Find);
    connect(search, &QAction::triggered, this, [this] {
        Raise();
        m_browser->GetSearchField()->setFocus(Qt::ShortcutFocusReason);
        m_browser->GetSearchField()->selectAll();
    });
}

void ZORHostObjectTree::ShowSelection()
{
    m_isShowing = true;
    m_browser->SelectGeometries(m_selection->GetObjects());
    m_isShowing = false;
}

void ZORHostObjectTree::Rename(ZORGeoGeometry* object)
{
    Raise();
    if (m_browser->RenameGeometry(object))
        return;
    m_browser->GetSearchField()->clear(); // it may hide the object
    m_browser->RenameGeometry(object);
}

void ZORHostObjectTree::Raise()
{
    for (QWidget* widget = m_browser->parentWidget(); widget; widget = widget->parentWidget()) {
        if (auto* const dock = qobject_cast<QDockWidget*>(widget)) {
            dock->show();
            dock->raise();
            return;
        }
    }
}
