// Shows the actions of the command controller in menus and a tool bar.

#pragma once

#include <QHash>
#include <QObject>

class QAction;
class QMenu;
class QMenuBar;
class QToolBar;

/// A menu per category of ZORCmdController and a button per action in a tool bar. Follows the controller:
/// actions published later appear, withdrawn ones vanish, and with the last action of a category its menu. Menus and
/// actions without a mnemonic get one that is free.
class ZORHostPublishedActions : public QObject
{
    Q_OBJECT

public:
    /// \param menuBar  gets the menus, in front of \a before; not owned
    /// \param before   null: at the end
    /// \param toolBar  not owned; hidden while there is no action
    ZORHostPublishedActions(QMenuBar* menuBar, QMenu* before, QToolBar* toolBar, QObject* parent);

private:
    void Add(QAction* action);
    void Insert(QWidget* widget, const QString& category, QAction* action);
    void Remove(QAction* action);
    QMenu* GetMenu(const QString& category);

    QMenuBar* m_menuBar;            // not owned
    QMenu* m_before;                // not owned
    QToolBar* m_toolBar;            // not owned
    QHash<QString, QMenu*> m_menus; // by category; children of the menu bar
};
