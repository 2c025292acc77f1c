// All actions a user can reach at present.

#pragma once

#include <QAction>
#include <QList>
#include <QPointer>
#include <QString>

/// One action with the way to it.
struct ZORHostActionEntry
{
    QPointer<QAction> action;
    QString text; // without mnemonic and trailing dots
    QString path; // "Window title > Menu > Submenu"
    bool IsTriggerable() const { return action && action->isEnabled() && action->isVisible(); }
};

/// The actions in the menus of \a window (a QMainWindow), in menu order; menus and separators are left out.
QList<ZORHostActionEntry> ZORHostCollectActions(const QWidget* window);
/// Those of all visible main windows, the active window first.
QList<ZORHostActionEntry> ZORHostCollectActions();

/// A menu text as people read it: "&Open..." gives "Open", "A && B" gives "A & B".
QString ZORHostPlainText(const QString& menuText);
