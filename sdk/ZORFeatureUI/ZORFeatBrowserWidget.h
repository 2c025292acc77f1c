// Tree of the features and geometries of a document.

#pragma once

#include <ZORFeatureUI/ZORFeatureUIGlobal.h>

#include <QList>
#include <QWidget>

#include <memory>

class ZORFeatEnvironment;
class ZORGeoGeometry;

/// Shows what the container of an environment holds and follows it.
///
/// Layout.    First the feature trees, each with its root on top, then a group each for the points, curves,
///            surfaces, bodies and other geometries that are no features. Everything stands in the order of
///            its registration. Features nested more than 200 deep are shown beside their parents.
/// Following. Changes of one turn of the event loop are taken over together when control returns to it, in
///            time linear in the changed branches; expansion, selection, current item and scroll position
///            stay. A geometry that is destroyed is unknown to the widget from that moment on.
/// Pointers.  The geometries that signals and functions hand out belong to their container.
///
/// Thread safety: main thread only.
class ZORFEATUREUI_EXPORT ZORFeatBrowserWidget : public QWidget
{
    Q_OBJECT
    Q_MOC_INCLUDE(<ZORGeometry / ZORGeoGeometry.h>)

public:
    explicit ZORFeatBrowserWidget(QWidget* parent = nullptr);
    ~ZORFeatBrowserWidget() override;

    /// \param environment  not taken over; null empties the browser, as does its destruction
    void SetEnvironment(ZORFeatEnvironment* environment);
    /// Null when there is none or it has been destroyed.
    ZORFeatEnvironment* GetEnvironment() const;

    /// The geometry of the current item; null for none and for a group.
    ZORGeoGeometry* GetCurrentGeometry() const;
    /// The geometries of the selected items, from top to bottom.
    QList<ZORGeoGeometry*> GetSelectedGeometries() const;
    /// Makes \a geometry the current and only selected item and scrolls to it. Null clears the selection.
    /// \return false when it is not in the container of the environment
    bool SelectGeometry(ZORGeoGeometry* geometry);

signals:
    /// A double click or the Enter key on the item of a geometry.
    void GeometryActivated(ZORGeoGeometry* geometry);
    /// The selection has changed, by the user or because selected geometries are gone.
    /// \param geometries  as GetSelectedGeometries()
    void SelectionChanged(const QList<ZORGeoGeometry*>& geometries);
    /// A right click, or the menu key.
    /// \param geometry  of the item under the pointer; null elsewhere
    void ContextMenuRequested(ZORGeoGeometry* geometry, const QPoint& globalPosition);

protected:
    void changeEvent(QEvent* event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
