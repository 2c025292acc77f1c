// Item model of the feature browser.

#pragma once

#include "ZORFeatBrowserIcons_p.h"

#include <ZORFeatureUI/ZORFeatBrowserWidget.h>

#include <QAbstractItemModel>
#include <QHash>
#include <QPalette>
#include <QPointer>

#include <map>
#include <vector>

class ZORFeatContainer;
class ZORFeatGeometry;
class ZORFeatObject;
class ZORGeoGeometry;
struct ZORFeatBrowserNode;

/// The container of an environment as a tree of one column: feature trees first, then one group per kind
/// of geometry.
///
/// The container's signals only mark what has changed, at O(1) each; Flush() tells the views in as few
/// steps as possible, at the latest when control returns to the event loop. In between, an item whose
/// geometry is gone still counts as a row, without data.
class ZORFeatBrowserModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit ZORFeatBrowserModel(QObject* parent);
    ~ZORFeatBrowserModel() override;

    /// \pre the model has no container
    void SetOptions(ZORFeatBrowserWidget::Options options);
    /// \param container  not taken over; null empties the model
    void SetContainer(ZORFeatContainer* container);
    void SetPalette(const QPalette& palette);

    /// Null for groups, for geometries that are gone and for the invalid index.
    ZORGeoGeometry* GetGeometry(const QModelIndex& index) const;
    /// Invalid when the geometry is not in the model; call Flush() before.
    QModelIndex GetIndex(const ZORGeoGeometry* geometry) const;
    /// Whether a view should show the children of a new item at once.
    bool IsInitiallyExpanded(const QModelIndex& index) const;

    /// Makes items and all below them visible, or hides them when \a reference is open.
    /// \param reference  an item of this list or another one
    void ToggleEyes(const QModelIndexList& indexes, const QModelIndex& reference);

    void Flush();

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    bool hasChildren(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void FlushStarted();
    void FlushFinished();
    /// Eyes show something else.
    void EyesChanged();

private:
    using Node = ZORFeatBrowserNode;
    enum class Group { Points, Curves, Surfaces, Bodies, Others };

    void OnAdded(ZORGeoGeometry* geometry);
    void OnAboutToBeRemoved(ZORGeoGeometry* geometry);
    void OnTextChanged(const ZORGeoGeometry* geometry);
    void FollowOwner(Node* node);
    void MarkOwner(ZORFeatGeometry* feature);
    void UpdateOwners();
    void MoveBelow(Node* owner, ZORGeoGeometry* geometry);
    void PostFlush();
    void Watch(Node* node) const;
    void Unwatch(const Node* node);
    QString GetShownText(const Node* node) const;
    bool Rename(ZORGeoGeometry* geometry, const QString& name) const;
    ZORFeatBrowserKind IconKindOf(const Node* node) const;
    QVariant GetEyeData(Node* node, int role) const;
    ZORFeatBrowserEye EyeOf(Node* node) const;
    ZORGeoGeometry* GetDrawn(const Node* node) const;
    void UnfollowContainer();
    void FollowStyles();
    void MarkEyes();
    void FlushEyes();

    Node* ToNode(const QModelIndex& index) const;
    QModelIndex ToIndex(const Node* node) const;
    Node* NodeOf(const ZORGeoGeometry* geometry) const { return m_nodes.value(geometry); }
    Node* ParentFor(const ZORGeoGeometry* geometry);
    Node* ParentBelow(const ZORGeoGeometry* feature);
    Node* GroupNode(Group group);
    void MarkDirty(Node* node);
    void FlushNode(Node* node);
    void RemoveDeadChildren(Node* node);
    void InsertPendingChildren(Node* node);
    void InsertChildren(Node* node, int row, std::vector<Node*>&& children);
    void MoveDeadChildrenToEnd(Node* node);
    void Clear();
    /// Deletes the nodes with all below them.
    void Destroy(std::vector<Node*> nodes);

    QPointer<ZORFeatContainer> m_container; // not owned
    Node* m_root;                           // owned; invisible
    QHash<const ZORGeoGeometry*, Node*> m_nodes;
    std::map<Group, Node*> m_groups; // owned by the root node
    std::vector<Node*> m_dirty;
    QHash<const ZORGeoGeometry*, ZORFeatGeometry*> m_dirtyOwners; // may own other geometry than before
    ZORFeatBrowserWidget::Options m_options;
    bool m_flushPosted = false;
    bool m_isFlushing = false;
    std::map<ZORFeatBrowserKind, QIcon> m_icons;
    std::map<ZORFeatBrowserEye, QIcon> m_eyeIcons;
    quint64 m_eyeVersion = 1; // raised when eyes may have changed
    bool m_eyesDirty = false;
};
