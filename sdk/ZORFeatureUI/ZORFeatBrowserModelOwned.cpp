// Geometry of features below them.

#include "ZORFeatBrowserModel_p.h"
#include "ZORFeatBrowserNode_p.h"

#include <ZORFeature/ZORFeatGeometry.h>

#include <utility>

void ZORFeatBrowserModel::FollowOwner(Node* node)
{
    if (!m_options.testFlag(ZORFeatBrowserWidget::Option::OwnedGeometry))
        return;
    auto* const feature = qobject_cast<ZORFeatGeometry*>(node->geometry);
    if (!feature)
        return;
    node->isWatchedOwner = true;
    connect(feature, &ZORFeatGeometry::BodyChanged, this, [this, feature] { MarkOwner(feature); });
    MarkOwner(feature);
}

// Features make their geometry at any time: it is looked for once the container has come to rest.
void ZORFeatBrowserModel::MarkOwner(ZORFeatGeometry* feature)
{
    m_dirtyOwners.insert(feature, feature);
    PostFlush();
}

void ZORFeatBrowserModel::UpdateOwners()
{
    const auto owners = std::exchange(m_dirtyOwners, {});
    for (ZORFeatGeometry* feature : owners) {
        Node* const owner = NodeOf(feature);
        for (ZORGeoGeometry* geometry : feature->GetOwnedGeometry())
            MoveBelow(owner, geometry);
    }
}

void ZORFeatBrowserModel::MoveBelow(Node* owner, ZORGeoGeometry* geometry)
{
    Node* const old = NodeOf(geometry);
    Node* const parent = ParentBelow(owner->geometry);
    if (!old || old->parent == parent)
        return;
    auto* const node = new Node;
    node->parent = parent;
    node->geometry = std::exchange(old->geometry, nullptr);
    node->depth = parent->depth + 1;
    node->kind = old->kind;
    node->isWatched = std::exchange(old->isWatched, false);
    node->isOwned = true;
    old->isDead = true;
    MarkDirty(old->parent);
    m_nodes[geometry] = node;
    (parent->isKnown ? parent->pending : parent->children).push_back(node);
    MarkDirty(parent);
}
