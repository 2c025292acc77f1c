// Selecting and picking in the 3D view of the main window.

#pragma once

#include <QObject>

#include <memory>

class QStatusBar;
class QToolBar;
class ZORGeoGeometry;
class ZORHostPickTool;
class ZORHostSelection;
class ZORHostView3D;

/// Ties the view of the main window to its selection, and lets it answer the pick requests of commands. What was clicked
/// is named in the status bar; a box in the tool bar chooses what can be selected.
///
/// Thread safety: main thread only.
class ZORHostViewTools : public QObject
{
    Q_OBJECT

public:
    /// Nothing is owned; everything must outlive the events of the view.
    ZORHostViewTools(ZORHostView3D* view, ZORHostSelection* selection, QToolBar* toolBar,
                     QStatusBar* statusBar, QObject* parent);
    ~ZORHostViewTools() override;

signals:
    /// The user has clicked at an object twice.
    void Activated(ZORGeoGeometry* object);

private:
    std::unique_ptr<ZORHostPickTool> m_pickTool;
};
