// How the selected objects look.

#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QAction;
class QActionGroup;
class QColor;
class QColorDialog;
class QMenu;
class ZORFeatStyle;
class ZORFeatStyles;
class ZORGeoGeometry;
class ZORHostSelection;

/// The actions that change the styles of the selected objects: visibility, color, opacity, display. They work on the
/// objects that are drawn for the selected ones, features below features included. Object names: "_ShowHideAction",
/// "_IsolateAction", "_ShowAllAction", "_ColorAction", "_OpacityMenu", "_DisplayMenu", "_UsualStyleAction".
///
/// Thread safety: main thread only.
class ZORHostObjectStyles : public QObject
{
    Q_OBJECT

public:
    /// \param selection  not owned, must outlive the object
    /// \param window     owns this object, parent of dialogs
    ZORHostObjectStyles(ZORHostSelection* selection, QWidget* window);

    void AddVisibilityTo(QMenu* menu) const;
    void AddStylesTo(QMenu* menu) const;
    /// Those that have shortcuts.
    QList<QAction*> GetActions() const;
    /// Enables the actions and shows the state of the selected objects. Cost: O(selected objects).
    void Update();

private:
    ZORFeatStyles* GetStyles() const;
    QList<ZORGeoGeometry*> GetDrawn() const;
    void Change(const std::function<void(ZORFeatStyle&)>& change);
    void OnShowHideTriggered();
    void OnIsolateTriggered();
    void OnShowAllTriggered();
    void OnColorTriggered();
    void CreateOpacityMenu();
    void CreateDisplayMenu();
    void ShowChoices(const QList<ZORGeoGeometry*>& drawn);

    ZORHostSelection* m_selection; // not owned
    QWidget* m_window;             // not owned
    QAction* m_showHide;
    QAction* m_isolate;
    QAction* m_showAll;
    QAction* m_color;
    QAction* m_usual;
    QMenu* m_opacity;
    QMenu* m_display;
    QActionGroup* m_opacities;
    QActionGroup* m_displays;
};
