// The menu of all windows.

#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

class QMainWindow;
class QMenu;

/// Fills the menu "Window" when it opens: the main window and every other window of the program that the user sees,
/// such as consoles, dialogs and results, by their titles. An entry brings its window to the front, also a minimized
/// one; the one that was active is checked. "Close All Others" closes all but the main window; one that
/// refuses stays.
///
/// Object names: "_WindowMenu", "_CloseWindowsAction", and "_Window_1" ... of the entries.
class ZORHostWindowMenu : public QObject
{
    Q_OBJECT

public:
    /// \param window  gets the menu at the end of its menu bar and owns this object
    explicit ZORHostWindowMenu(QMainWindow* window);

    /// The other windows of the program that stand for themselves, by title, then in the order in which they were
    /// opened: no menus, tool tips and floating docks.
    QWidgetList FindOthers() const;

public slots:
    void OnCloseOthersTriggered();

private:
    void Fill();
    void AddEntry(QWidget* window, const QString& title);

    QMainWindow* m_window; // not owned
    QMenu* m_menu;
};
