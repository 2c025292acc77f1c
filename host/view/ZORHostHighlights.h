// Highlights of the selection in the 3D view.

#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class ZORGeoGeometry;
class ZORHostSelection;
class ZORHostView3D;
class ZORVisScene;

/// Highlights in a view what is selected, and what is hovered and not selected. Highlights of several objects that come at
/// once take one frame. Where frames are slow, the pointer has to rest before a hovered object is highlighted.
///
/// Thread safety: main thread only.
class ZORHostHighlights : public QObject
{
    Q_OBJECT

public:
    /// The objects by whose drawings people see objects.
    using DrawnOf = std::function<QList<ZORGeoGeometry*>(const QList<ZORGeoGeometry*>& objects)>;

    /// \param view       not owned; may die first
    /// \param selection  not owned; may die first
    ZORHostHighlights(ZORHostView3D* view, ZORHostSelection* selection, const DrawnOf& drawnOf,
                      QObject* parent);
    ~ZORHostHighlights() override;

private:
    QList<QPointer<QObject>> FindSeen(const QList<ZORGeoGeometry*>& objects) const;
    void OnSceneChanged();
    void OnHoveredChanged();
    void Apply();

    QPointer<ZORHostView3D> m_view;         // not owned
    QPointer<ZORHostSelection> m_selection; // not owned
    const DrawnOf m_drawnOf;
    QPointer<ZORVisScene> m_scene;          // which has the highlights
    QList<QPointer<QObject>> m_highlighted; // not owned
    QTimer m_hoverTimer;
    bool m_showsHovered = true;
};
