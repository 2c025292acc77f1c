// What the items of the browser show, and how users change it.

#include "ZORFeatBrowserModel_p.h"
#include "ZORFeatBrowserNode_p.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatShapeOf.h>

namespace {

using Option = ZORFeatBrowserWidget::Option;

/// More of a name is never seen, and laying it out would take long.
constexpr int kLongestName = 300;

QString Shorten(const QString& text)
{
    const QString line = text.left(2 * kLongestName).simplified();
    return line.size() > kLongestName || text.size() > 2 * kLongestName ? line.left(kLongestName) + u'…'
                                                                        : line;
}

} // namespace

void ZORFeatBrowserModel::SetOptions(ZORFeatBrowserWidget::Options options)
{
    beginResetModel();
    m_options = options;
    endResetModel();
}

int ZORFeatBrowserModel::columnCount(const QModelIndex&) const
{
    return m_options.testFlag(Option::EyeColumn) ? 2 : 1;
}

QVariant ZORFeatBrowserModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    Node* const node = ToNode(index);
    if (node->isDead)
        return {};
    if (index.column() == 1)
        return GetEyeData(node, role);
    switch (role) {
    case Qt::DisplayRole:
        Watch(node);
        return GetShownText(node);
    case Qt::EditRole:
        return node->GetText();
    case Qt::DecorationRole:
        return m_icons.at(IconKindOf(node));
    case Qt::ToolTipRole:
        return node->GetToolTip(GetShownText(node));
    case Qt::UserRole:
        return QVariant::fromValue(node->geometry);
    default:
        return {};
    }
}

QVariant ZORFeatBrowserModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (section == 0 && role == Qt::DisplayRole)
        return tr("Name");
    const bool namesEyes = section == 1 && (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole);
    return namesEyes ? tr("Visible") : QVariant();
}

Qt::ItemFlags ZORFeatBrowserModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    const bool isEditable = m_options.testFlag(Option::Renaming) && index.column() == 0 && GetGeometry(index);
    return isEditable ? flags | Qt::ItemIsEditable : flags;
}

bool ZORFeatBrowserModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    return role == Qt::EditRole && flags(index).testFlag(Qt::ItemIsEditable)
           && Rename(GetGeometry(index), value.toString());
}

bool ZORFeatBrowserModel::Rename(ZORGeoGeometry* geometry, const QString& name) const
{
    const QString trimmed = name.trimmed();
    if (auto* const feature = qobject_cast<ZORFeatObject*>(geometry)) {
        if (name != feature->GetLabel())
            feature->SetLabel(trimmed);
        return true;
    }
    if (trimmed.isEmpty())
        return false;
    if (name != geometry->objectName() && trimmed != geometry->objectName())
        geometry->setObjectName(m_container->GetUniqueName(trimmed));
    return true;
}

void ZORFeatBrowserModel::Watch(Node* node) const
{
    // A name that nobody has read needs no repaint when it changes.
    if (!node->geometry || node->isWatched)
        return;
    node->isWatched = true;
    connect(node->geometry, &QObject::objectNameChanged, this, [this, geometry = node->geometry] {
        const_cast<ZORFeatBrowserModel*>(this)->OnTextChanged(geometry);
    });
}

void ZORFeatBrowserModel::Unwatch(const Node* node)
{
    if (node->isWatched || node->isWatchedOwner)
        node->geometry->disconnect(this);
}

QString ZORFeatBrowserModel::GetShownText(const Node* node) const
{
    const QString text = node->GetText();
    return m_options.testFlag(Option::NarrowNames) ? Shorten(text) : text;
}

ZORFeatBrowserKind ZORFeatBrowserModel::IconKindOf(const Node* node) const
{
    const bool isShape = node->kind == ZORFeatBrowserKind::Shape;
    if (!isShape || !m_options.testFlag(Option::OwnedGeometry))
        return node->kind;
    const ZORGeoGeometry* const shape = ZORFeatShapeOf(node->geometry);
    return shape ? Node::KindOf(shape) : node->kind;
}
