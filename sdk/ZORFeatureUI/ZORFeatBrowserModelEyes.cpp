// What the items of the browser say about visibility.

#include "ZORFeatBrowserModel_p.h"
#include "ZORFeatBrowserNode_p.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatDrawnOf.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QSet>

namespace {

using Eye = ZORFeatBrowserEye;

Eye Join(Eye a, Eye b)
{
    if (a == Eye::None || a == b)
        return b;
    return b == Eye::None ? a : Eye::Mixed;
}

} // namespace

void ZORFeatBrowserModel::FollowStyles()
{
    if (m_options.testFlag(ZORFeatBrowserWidget::Option::EyeColumn))
        connect(m_container->GetStyles(), &ZORFeatStyles::Changed, this, &ZORFeatBrowserModel::MarkEyes);
}

// Thousands of objects may be hidden at once: the views follow when control returns to the event loop.
void ZORFeatBrowserModel::MarkEyes()
{
    ++m_eyeVersion;
    m_eyesDirty = true;
    PostFlush();
}

void ZORFeatBrowserModel::FlushEyes()
{
    if (!m_eyesDirty)
        return;
    m_eyesDirty = false;
    if (m_options.testFlag(ZORFeatBrowserWidget::Option::EyeColumn) && !m_root->children.empty()) {
        emit dataChanged(index(0, 1, {}), index(int(m_root->children.size()) - 1, 1, {}),
                         {Qt::DecorationRole, Qt::ToolTipRole});
        emit EyesChanged();
    }
}

QVariant ZORFeatBrowserModel::GetEyeData(Node* node, int role) const
{
    const Eye eye = EyeOf(node);
    if (role == Qt::DecorationRole)
        return eye == Eye::None ? QVariant() : m_eyeIcons.at(eye);
    if (role != Qt::ToolTipRole && role != Qt::AccessibleTextRole)
        return {};
    switch (eye) {
    case Eye::None:
        return {};
    case Eye::Open:
        return tr("Visible");
    case Eye::Closed:
        return tr("Hidden");
    case Eye::Mixed:
        break;
    }
    return tr("Partly visible");
}

ZORGeoGeometry* ZORFeatBrowserModel::GetDrawn(const Node* node) const
{
    return node->geometry && !node->isOwned ? ZORFeatDrawnOf(node->geometry) : nullptr;
}

ZORFeatBrowserEye ZORFeatBrowserModel::EyeOf(Node* node) const
{
    if (node->eyeVersion == m_eyeVersion || !m_container)
        return node->eye;
    Eye eye = Eye::None;
    std::vector<const Node*> open{node};
    while (!open.empty() && eye != Eye::Mixed) {
        const Node* const current = open.back();
        open.pop_back();
        if (const ZORGeoGeometry* drawn = GetDrawn(current))
            eye = Join(eye, m_container->GetStyles()->Get(drawn).IsVisible() ? Eye::Open : Eye::Closed);
        open.insert(open.end(), current->children.begin(), current->children.end());
    }
    node->eye = eye;
    node->eyeVersion = m_eyeVersion;
    return eye;
}

void ZORFeatBrowserModel::ToggleEyes(const QModelIndexList& indexes, const QModelIndex& reference)
{
    if (!m_container)
        return;
    QSet<ZORGeoGeometry*> known;
    QList<ZORGeoGeometry*> drawn;
    std::vector<const Node*> open;
    for (const QModelIndex& index : indexes)
        open.push_back(ToNode(index));
    while (!open.empty()) {
        const Node* const current = open.back();
        open.pop_back();
        open.insert(open.end(), current->children.begin(), current->children.end());
        ZORGeoGeometry* const object = GetDrawn(current);
        if (!object || known.contains(object))
            continue;
        known.insert(object);
        drawn.append(object);
    }
    m_container->GetStyles()->SetVisible(drawn, EyeOf(ToNode(reference)) != Eye::Open);
}
