// What users do with objects of the document, in the tree and in the view.

#pragma once

#include <QObject>
#include <QPointer>

class QAction;
class QMenu;
class QPoint;
class QWidget;
class ZORGeoGeometry;
class ZORHostObjectStyles;
class ZORHostSelection;
class ZORHostView3D;

/// One set of actions on the selected objects, for the menu bar, the context menus and the keys of tree and view. Object
/// names: those of ZORHostObjectStyles, "_EditObjectAction", "_ZoomToAction", "_RenameAction", "_DeleteAction",
/// "_ExportObjectsAction", "_PropertiesAction".
///
/// Thread safety: main thread only.
class ZORHostObjectActions : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE(<ZORGeometry / ZORGeoGeometry.h>)

public:
    /// \param selection  not owned, must outlive the object
    /// \param window     owns this object, parent of dialogs
    ZORHostObjectActions(ZORHostSelection* selection, QWidget* window);

    /// Returns the menu of all actions, owned by the window.
    QMenu* GetMenu() const { return m_menu; }
    /// Makes the keys work in a widget and its children.
    void AddKeysTo(QWidget* widget) const;
    /// Makes a right click without a drag, and the menu key, open the context menu in a view. The hovered object becomes
    /// the selection unless it is selected.
    void AddContextMenuTo(QWidget* view);
    /// Adds keys and context menu to the view, in which Zoom To shows the objects. Not owned, outlives this object.
    void AddTo(ZORHostView3D* view);
    /// Opens the context menu.
    void ShowMenu(const QPoint& globalPosition);

    /// Edits an object in the dialog of its command. Where no command edits it, shows its properties.
    void Activate(ZORGeoGeometry* object);

signals:
    /// The view is to show these objects; they have drawings.
    void ZoomRequested(const QList<ZORGeoGeometry*>& objects);
    /// The user wants to enter another name.
    void RenameRequested(ZORGeoGeometry* object);
    /// A message for the status bar.
    void Done(const QString& message);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* AddAction(const char* name, const QString& text, const QString& tip,
                       const QKeySequence& key = {});
    void CreateMenu();
    void Update();
    void OnZoomTriggered();
    void OnDeleteTriggered();
    void OnExportTriggered();
    void OnPropertiesTriggered();
    bool Edit(ZORGeoGeometry* object);

    ZORHostSelection* m_selection; // not owned
    QWidget* m_window;             // not owned
    ZORHostObjectStyles* m_styles; // child
    QMenu* m_menu;                 // child of the window
    QAction* m_edit;
    QAction* m_zoom;
    QAction* m_rename;
    QAction* m_delete;
    QAction* m_export;
    QAction* m_properties;
    QPointer<QWidget> m_pressed; // where the right button went down
    QPoint m_pressPosition;
};
