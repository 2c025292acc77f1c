#include "ZORFeatBrowserModel_p.h"
#include "ZORFeatBrowserNode_p.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatObject.h>
#include <ZORFeature/ZORFeatStyles.h>

#include <algorithm>

namespace {

/// Deeper features are shown beside their parents. Views lay out nested items by recursion.
constexpr int kMaximumDepth = 200;

/// Above this number of separate runs of removed rows, sorting them together first is cheaper.
constexpr int kMaximumRuns = 16;

} // namespace

ZORFeatBrowserModel::ZORFeatBrowserModel(QObject* parent)
    : QAbstractItemModel(parent)
    , m_root(new Node)
{
    m_root->isKnown = true;
    SetPalette(QPalette());
}

ZORFeatBrowserModel::~ZORFeatBrowserModel()
{
    Destroy({m_root});
}

void ZORFeatBrowserModel::SetContainer(ZORFeatContainer* container)
{
    if (container == m_container && container)
        return;
    beginResetModel();
    if (m_container)
        UnfollowContainer();
    Clear();
    m_container = container;
    if (container) {
        connect(container, &ZORGeoContainer::GeometryAdded, this, &ZORFeatBrowserModel::OnAdded);
        connect(container, &ZORGeoContainer::GeometryAboutToBeRemoved, this,
                &ZORFeatBrowserModel::OnAboutToBeRemoved);
        connect(container, &ZORFeatContainer::FeatureLabelChanged, this, &ZORFeatBrowserModel::OnTextChanged);
        connect(container, &QObject::destroyed, this, [this] { SetContainer(nullptr); });
        FollowStyles();
        for (int i = 0; i < container->GetNumGeometry(); ++i) {
            if (ZORGeoGeometry* geometry = container->GetGeometryByIndex(i))
                OnAdded(geometry);
        }
    }
    endResetModel();
    Flush();
}

void ZORFeatBrowserModel::SetPalette(const QPalette& palette)
{
    for (int kind = 0; kind <= int(ZORFeatBrowserKind::Other); ++kind) {
        m_icons[ZORFeatBrowserKind(kind)] = ZORFeatBrowserIcon(ZORFeatBrowserKind(kind), palette);
    }
    using Eye = ZORFeatBrowserEye;
    for (const Eye eye : {Eye::None, Eye::Open, Eye::Closed, Eye::Mixed})
        m_eyeIcons[eye] = ZORFeatBrowserEyeIcon(eye, palette);
}

void ZORFeatBrowserModel::UnfollowContainer()
{
    m_container->disconnect(this);
    m_container->GetStyles()->disconnect(this);
}

ZORGeoGeometry* ZORFeatBrowserModel::GetGeometry(const QModelIndex& index) const
{
    return index.isValid() ? ToNode(index)->geometry : nullptr;
}

QModelIndex ZORFeatBrowserModel::GetIndex(const ZORGeoGeometry* geometry) const
{
    const Node* const node = NodeOf(geometry);
    return node && node->isKnown ? ToIndex(node) : QModelIndex();
}

bool ZORFeatBrowserModel::IsInitiallyExpanded(const QModelIndex& index) const
{
    const Node* const node = ToNode(index);
    return node->isGroup || node->kind == ZORFeatBrowserKind::Root;
}

void ZORFeatBrowserModel::OnAdded(ZORGeoGeometry* geometry)
{
    if (NodeOf(geometry))
        return;
    Node* const parent = ParentFor(geometry);
    auto* const node = new Node;
    node->parent = parent;
    node->geometry = geometry;
    node->depth = parent->depth + 1;
    node->kind = Node::KindOf(geometry);
    m_nodes.insert(geometry, node);
    FollowOwner(node);
    // Below a parent that the views do not know either, nobody has to be told.
    (parent->isKnown ? parent->pending : parent->children).push_back(node);
    MarkDirty(parent);
}

void ZORFeatBrowserModel::OnAboutToBeRemoved(ZORGeoGeometry* geometry)
{
    Node* const node = m_nodes.take(geometry);
    if (!node)
        return;
    m_dirtyOwners.remove(geometry);
    Unwatch(node);
    node->geometry = nullptr;
    node->isDead = true;
    MarkDirty(node->parent);
}

void ZORFeatBrowserModel::OnTextChanged(const ZORGeoGeometry* geometry)
{
    const Node* const node = NodeOf(geometry);
    if (!node || !node->isKnown)
        return;
    const QModelIndex index = ToIndex(node);
    emit dataChanged(index, index, {Qt::DisplayRole, Qt::ToolTipRole});
}

ZORFeatBrowserNode* ZORFeatBrowserModel::ParentFor(const ZORGeoGeometry* geometry)
{
    switch (Node::KindOf(geometry)) {
    case ZORFeatBrowserKind::Point:
        return GroupNode(Group::Points);
    case ZORFeatBrowserKind::Curve:
        return GroupNode(Group::Curves);
    case ZORFeatBrowserKind::Surface:
        return GroupNode(Group::Surfaces);
    case ZORFeatBrowserKind::Body:
        return GroupNode(Group::Bodies);
    case ZORFeatBrowserKind::Other:
        return GroupNode(Group::Others);
    default:
        break;
    }
    return ParentBelow(static_cast<const ZORFeatObject*>(geometry)->GetParentFeature());
}

ZORFeatBrowserNode* ZORFeatBrowserModel::ParentBelow(const ZORGeoGeometry* feature)
{
    Node* const parent = NodeOf(feature);
    if (!parent)
        return m_root;
    return parent->depth < kMaximumDepth ? parent : parent->parent;
}

ZORFeatBrowserNode* ZORFeatBrowserModel::GroupNode(Group group)
{
    Node*& node = m_groups[group];
    if (!node) {
        static constexpr ZORFeatBrowserKind kKinds[] = {ZORFeatBrowserKind::Point, ZORFeatBrowserKind::Curve,
                                                        ZORFeatBrowserKind::Surface, ZORFeatBrowserKind::Body,
                                                        ZORFeatBrowserKind::Other};
        node = new Node;
        node->parent = m_root;
        node->isGroup = true;
        node->kind = kKinds[int(group)];
        m_root->pending.push_back(node);
        MarkDirty(m_root);
    }
    return node;
}

void ZORFeatBrowserModel::MarkDirty(Node* node)
{
    if (node->isDirty)
        return;
    node->isDirty = true;
    MarkEyes();
    m_dirty.push_back(node);
    PostFlush();
}

void ZORFeatBrowserModel::PostFlush()
{
    if (m_flushPosted)
        return;
    m_flushPosted = true;
    QMetaObject::invokeMethod(this, &ZORFeatBrowserModel::Flush, Qt::QueuedConnection);
}

void ZORFeatBrowserModel::Flush()
{
    m_flushPosted = false;
    if (m_isFlushing)
        return;
    UpdateOwners();
    FlushEyes();
    if (m_dirty.empty())
        return;
    m_isFlushing = true;
    emit FlushStarted();
    // Receivers of the signals below may change the container: whatever they mark is taken in as well.
    while (!m_dirty.empty()) {
        Node* const node = m_dirty.back();
        m_dirty.pop_back();
        node->isDirty = false;
        if (node->isKnown && !node->isDead)
            FlushNode(node);
    }
    m_isFlushing = false;
    emit FlushFinished();
}

void ZORFeatBrowserModel::FlushNode(Node* node)
{
    RemoveDeadChildren(node);
    InsertPendingChildren(node);
    if (!node->isGroup)
        return;
    if (node->children.empty() && node->pending.empty()) {
        std::erase_if(m_groups, [node](const auto& group) { return group.second == node; });
        node->isDead = true;
        MarkDirty(m_root);
        return;
    }
    const QModelIndex index = ToIndex(node); // its text shows the number of children
    emit dataChanged(index, index, {Qt::DisplayRole});
}

void ZORFeatBrowserModel::RemoveDeadChildren(Node* node)
{
    const auto isDead = [](const Node* child) { return child->isDead; };
    if (node->CountDeadRuns() > kMaximumRuns)
        MoveDeadChildrenToEnd(node);

    std::vector<Node*>& children = node->children;
    for (auto last = children.size(); last > 0;) {
        auto end = last;
        while (end > 0 && !isDead(children[end - 1]))
            --end;
        auto begin = end;
        while (begin > 0 && isDead(children[begin - 1]))
            --begin;
        if (begin == end)
            break;
        beginRemoveRows(ToIndex(node), int(begin), int(end) - 1);
        std::vector<Node*> removed(children.begin() + std::ptrdiff_t(begin),
                                   children.begin() + std::ptrdiff_t(end));
        children.erase(children.begin() + std::ptrdiff_t(begin), children.begin() + std::ptrdiff_t(end));
        node->Renumber(int(begin));
        endRemoveRows();
        Destroy(std::move(removed));
        last = std::min(begin, children.size());
    }
}

void ZORFeatBrowserModel::MoveDeadChildrenToEnd(Node* node)
{
    const QList<QPersistentModelIndex> parents{ToIndex(node)};
    emit layoutAboutToBeChanged(parents);
    const QModelIndexList from = persistentIndexList();
    std::stable_partition(node->children.begin(), node->children.end(),
                          [](const Node* child) { return !child->isDead; });
    node->Renumber(0);
    QModelIndexList to;
    to.reserve(from.size());
    for (const QModelIndex& index : from)
        to.append(ToIndex(ToNode(index)));
    changePersistentIndexList(from, to);
    emit layoutChanged(parents);
}

void ZORFeatBrowserModel::InsertPendingChildren(Node* node)
{
    std::vector<Node*> pending = std::exchange(node->pending, {});
    Destroy(Node::TakeDead(pending));

    if (node != m_root) {
        InsertChildren(node, int(node->children.size()), std::move(pending));
        return;
    }
    // At the top the features come first and the groups stand in a fixed order below them.
    const auto groups = std::stable_partition(pending.begin(), pending.end(),
                                              [](const Node* child) { return !child->isGroup; });
    const auto order = [](const Node* a, const Node* b) { return a->kind < b->kind; };
    std::vector<Node*> newGroups(groups, pending.end());
    std::sort(newGroups.begin(), newGroups.end(), order);
    pending.erase(groups, pending.end());
    const auto firstGroup = [this] {
        return std::find_if(m_root->children.begin(), m_root->children.end(),
                            [](const Node* child) { return child->isGroup; });
    };
    InsertChildren(node, int(firstGroup() - m_root->children.begin()), std::move(pending));
    for (Node* group : newGroups) {
        MarkDirty(group); // it may have become empty before anybody saw it
        const auto place = std::lower_bound(firstGroup(), m_root->children.end(), group, order);
        InsertChildren(node, int(place - m_root->children.begin()), {group});
    }
}

void ZORFeatBrowserModel::InsertChildren(Node* node, int row, std::vector<Node*>&& children)
{
    if (children.empty())
        return;
    // What has gathered below the new nodes becomes known with them.
    std::vector<Node*> open = children;
    std::vector<Node*> dead;
    while (!open.empty()) {
        Node* const current = open.back();
        open.pop_back();
        current->isKnown = true;
        const std::vector<Node*> deadChildren = Node::TakeDead(current->children);
        dead.insert(dead.end(), deadChildren.begin(), deadChildren.end());
        current->Renumber(0);
        open.insert(open.end(), current->children.begin(), current->children.end());
    }
    Destroy(std::move(dead));
    beginInsertRows(ToIndex(node), row, row + int(children.size()) - 1);
    node->children.insert(node->children.begin() + row, children.begin(), children.end());
    node->Renumber(row);
    endInsertRows();
}

void ZORFeatBrowserModel::Clear()
{
    for (auto it = m_nodes.cbegin(); m_container && it != m_nodes.cend(); ++it)
        Unwatch(it.value());
    m_nodes.clear();
    m_dirtyOwners.clear();
    m_groups.clear();
    m_dirty.clear();
    Destroy({m_root});
    m_root = new Node;
    m_root->isKnown = true;
}

void ZORFeatBrowserModel::Destroy(std::vector<Node*> nodes)
{
    bool anyDirty = false;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        Node* const node = nodes[i];
        node->isDestroyed = true;
        anyDirty = anyDirty || node->isDirty;
        nodes.insert(nodes.end(), node->children.begin(), node->children.end());
        nodes.insert(nodes.end(), node->pending.begin(), node->pending.end());
    }
    if (anyDirty)
        std::erase_if(m_dirty, [](const Node* node) { return node->isDestroyed; });
    for (const Node* node : nodes)
        delete node;
}

ZORFeatBrowserNode* ZORFeatBrowserModel::ToNode(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : m_root;
}

QModelIndex ZORFeatBrowserModel::ToIndex(const Node* node) const
{
    return node == m_root ? QModelIndex() : createIndex(node->row, 0, node);
}

QModelIndex ZORFeatBrowserModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, ToNode(parent)->children[std::size_t(row)]);
}

QModelIndex ZORFeatBrowserModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? ToIndex(ToNode(child)->parent) : QModelIndex();
}

int ZORFeatBrowserModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : int(ToNode(parent)->children.size());
}

bool ZORFeatBrowserModel::hasChildren(const QModelIndex& parent) const
{
    return rowCount(parent) > 0;
}
