// The geometries displayed from the console.

#pragma once

#include <QHash>
#include <QMetaObject>
#include <QPointer>

class QListWidget;
class ZORFeatEnvironment;
class ZORGeoGeometry;
class ZORTestEnvironment;
class ZORVisVirtualObject;

/// Keeps one visual object per displayed geometry, adds it to the SDK's environment and lists it by the
/// name of its geometry, in no particular order.
///
/// The visual objects are deleted when they are removed, replaced or this object goes. Only when a
/// geometry dies does its visual object stay in the SDK's environment: it merely leaves the list at the
/// next Refresh().
class ZORTestVisualizationList
{
public:
    enum class Result { Shown, NoVisualizer, NotCreated };

    /// Neither argument is owned.
    ZORTestVisualizationList(ZORTestEnvironment* environment, QListWidget* list);
    ~ZORTestVisualizationList();
    Q_DISABLE_COPY_MOVE(ZORTestVisualizationList)

    /// Displays \a geometry, in place of what was displayed of it before.
    /// \throws ZORSysException from its visualizer
    Result Show(ZORGeoGeometry* geometry);
    /// Rebuilds the rows. Does nothing within RemoveAll(), which keeps them up to date itself.
    void Refresh();

    /// The geometry of the current row; null without a current row or when it is no longer displayed.
    ZORGeoGeometry* GetCurrentGeometry() const;
    /// Ends the display of \a geometry, if it is displayed.
    void Remove(ZORGeoGeometry* geometry);
    /// Takes the rows out one by one: rebuilding them for each object would take quadratic time.
    void RemoveAll();

private:
    struct Visualization
    {
        QPointer<ZORVisVirtualObject> object; // ours to delete, unless the environment did
        QMetaObject::Connection destroyed;    // to the end of the geometry
    };

    ZORTestEnvironment* m_environment; // not owned
    QListWidget* m_list;               // not owned
    QHash<ZORGeoGeometry*, Visualization> m_visualizations;
    bool m_isRemovingAll = false;
};
