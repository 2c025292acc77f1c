// Tree of the features and geometries of a document.

#pragma once

#include <ZORFeatureUI/ZORFeatureUIGlobal.h>

#include <QList>
#include <QWidget>

#include <memory>

class QLineEdit;
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
/// Options.   Without options the browser shows everything in its plain form and changes nothing. An application
///            switches on what it offers to its users.
/// Pointers.  The geometries that signals and functions hand out belong to their container.
///
/// Thread safety: main thread only.
class ZORFEATUREUI_EXPORT ZORFeatBrowserWidget : public QWidget
{
    Q_OBJECT
    Q_MOC_INCLUDE(<ZORGeometry / ZORGeoGeometry.h>)

public:
    enum class Option : unsigned {
        EyeColumn = 0x01, ///< a second column shows what is visible (ZORFeatStyles); a click changes it
        SearchField =
            0x02, ///< a field above the tree leaves only items that contain its text, and their ancestors
        OwnedGeometry = 0x04, ///< what belongs to a feature is below it instead of in the groups
        Renaming = 0x08,      ///< RenameGeometry() opens an editor in the tree
        NarrowNames =
            0x10, ///< the tree is as wide as the view and elides names; names in tool tips are shortened
        Hovering = 0x20, ///< GeometryHovered() is emitted
    };
    Q_DECLARE_FLAGS(Options, Option)

    explicit ZORFeatBrowserWidget(QWidget* parent = nullptr);
    ~ZORFeatBrowserWidget() override;

    /// Switches the options on. To be called once, before the first SetEnvironment().
    void SetOptions(Options options);

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
    /// Selects exactly those of \a geometries that the tree shows, and scrolls to the last one of them unless it was
    /// selected before. Nothing is emitted when the selection is the same already.
    void SelectGeometries(const QList<ZORGeoGeometry*>& geometries);
    /// Opens an editor for the name. The user's input becomes the label of a feature, where an empty one restores the
    /// default, or the object name of a geometry, which is made unique and cannot be empty.
    /// \return false without the option Renaming, and when \a geometry is not in the tree
    bool RenameGeometry(ZORGeoGeometry* geometry);

    /// Returns the field of the option SearchField; null without the option. Owned by this widget.
    QLineEdit* GetSearchField() const;

signals:
    /// A double click or the Enter key on the item of a geometry.
    void GeometryActivated(ZORGeoGeometry* geometry);
    /// The selection has changed, by the user or because selected geometries are gone.
    /// \param geometries  as GetSelectedGeometries()
    void SelectionChanged(const QList<ZORGeoGeometry*>& geometries);
    /// A right click, or the menu key.
    /// \param geometry  of the item under the pointer; null elsewhere
    void ContextMenuRequested(ZORGeoGeometry* geometry, const QPoint& globalPosition);
    /// The pointer has moved onto another item.
    /// \param geometry  of the item; null for a group, and when the pointer has left the items
    void GeometryHovered(ZORGeoGeometry* geometry);
    /// The text of the search field has changed, and with it which items are shown. The selection loses items that
    /// are not shown, without SelectionChanged().
    void SearchChanged();

protected:
    void changeEvent(QEvent* event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ZORFeatBrowserWidget::Options)
