// The menu "Edit" of the main window.

#pragma once

#include <QObject>

class QMainWindow;
class ZORFeatBrowserWidget;
class ZORHostObjectActions;
class ZORHostSelection;
class ZORHostView3D;

/// Creates the actions on objects and offers them in the menu "Edit", in the tree and in the view. What was done is shown
/// on the status bar.
///
/// Thread safety: main thread only.
class ZORHostEditMenu : public QObject
{
    Q_OBJECT

public:
    /// \param window  gets the menu at the end of its menu bar and owns this object; the others are not owned, and live
    ///                as long as the window
    ZORHostEditMenu(QMainWindow* window, ZORHostSelection* selection, ZORHostView3D* view,
                    ZORFeatBrowserWidget* browser);

    /// Owned by the window.
    ZORHostObjectActions* GetActions() const { return m_actions; }

private:
    ZORHostObjectActions* m_actions;
};
