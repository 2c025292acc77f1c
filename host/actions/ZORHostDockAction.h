// Shows a dock where the user sees it.

#pragma once

#include <QAction>

class QDockWidget;

/// Checked while the user sees its dock. Triggering it shows the dock and brings it in front of the docks it shares
/// its place with; a dock that is in front already is hidden.
///
/// The action that Qt gives a dock is checked for one behind others, too, and would hide that.
class ZORHostDockAction : public QAction
{
    Q_OBJECT

public:
    /// Object name: that of the dock and "Action".
    /// \param dock  parent
    /// \param tip   tool tip and text on the status bar
    ZORHostDockAction(QDockWidget* dock, const QString& text, const QString& tip);

private:
    void Toggle();

    QDockWidget* m_dock; // parent
    bool m_isInFront = false;
};
