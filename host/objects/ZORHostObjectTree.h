// The feature browser as the tree of the main window.

#pragma once

#include <QObject>

class QAction;
class ZORFeatBrowserWidget;
class ZORGeoGeometry;
class ZORHostObjectActions;
class ZORHostSelection;

/// Switches on what the host offers in its tree and ties it to the selection and the actions of the window: both show the
/// same objects as selected, the item under the pointer is the hovered object, and keys, context menu and double click
/// run the actions. What a search hides stays selected.
///
/// Thread safety: main thread only.
class ZORHostObjectTree : public QObject
{
    Q_OBJECT

public:
    /// \param browser    not owned, owns this object
    /// \param selection  not owned, must outlive the browser, as do the actions
    ZORHostObjectTree(ZORFeatBrowserWidget* browser, ZORHostSelection* selection,
                      ZORHostObjectActions* actions);

private:
    void AddSearchTo(ZORHostObjectActions* actions);
    void ShowSelection();
    void Rename(ZORGeoGeometry* object);
    /// Shows the dock that the tree is in.
    void Raise();

    ZORFeatBrowserWidget* m_browser; // not owned
    ZORHostSelection* m_selection;   // not owned
    bool m_isShowing = false;
};
