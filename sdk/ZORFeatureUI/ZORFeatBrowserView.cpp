#include "ZORFeatBrowserView_p.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QSet>
#include <QStyle>
#include <QStyledItemDelegate>

#include <algorithm>
#include <limits>
#include <utility>

namespace {

using Option = ZORFeatBrowserWidget::Option;

/// Opens editors that take names of any length.
class NameDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        auto* const editor = new QLineEdit(parent);
        editor->setObjectName(QStringLiteral("_NameEdit"));
        editor->setAccessibleName(ZORFeatBrowserWidget::tr("Name"));
        editor->setMaxLength(std::numeric_limits<int>::max());
        editor->setFrame(false);
        editor->setAutoFillBackground(true);
        return editor;
    }
};

} // namespace

ZORFeatBrowserView::ZORFeatBrowserView(QWidget* parent)
    : QTreeView(parent)
{
    setObjectName(QStringLiteral("_Tree"));
    setAccessibleName(ZORFeatBrowserWidget::tr("Feature browser"));
    setUniformRowHeights(true);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setEditTriggers(NoEditTriggers);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setSectionsClickable(false);
}

void ZORFeatBrowserView::SetOptions(ZORFeatBrowserWidget::Options options)
{
    m_options = options;
    if (options.testFlag(Option::NarrowNames)) {
        setTextElideMode(Qt::ElideRight);
        header()->setSectionResizeMode(0, QHeaderView::Stretch);
        header()->setMinimumSectionSize(-1);
    }
    if (options.testFlag(Option::EyeColumn)) {
        header()->setSectionResizeMode(1, QHeaderView::Fixed);
        header()->resizeSection(1, style()->pixelMetric(QStyle::PM_SmallIconSize) + 12);
    }
    if (options.testFlag(Option::Renaming))
        setItemDelegateForColumn(0, new NameDelegate(this));
    viewport()->setMouseTracking(options.testFlag(Option::Hovering));
}

void ZORFeatBrowserView::SetEmptyText(const QString& text)
{
    m_emptyText = text;
    viewport()->update();
}

bool ZORFeatBrowserView::SelectExactly(const QModelIndexList& indexes)
{
    QItemSelection wanted;
    for (const QModelIndex& index : indexes) {
        const bool isNext = !wanted.isEmpty() && wanted.last().parent() == index.parent()
                            && wanted.last().bottom() + 1 == index.row();
        if (isNext) // ranges instead of items keep the selection model fast
            wanted.last() = QItemSelectionRange(wanted.last().topLeft(), index);
        else
            wanted.append(QItemSelectionRange(index, index));
    }
    const QModelIndexList now = selectionModel()->selectedRows();
    const QSet<QModelIndex> before(now.begin(), now.end());
    const QSet<QModelIndex> after(indexes.begin(), indexes.end());
    if (before == after)
        return false;
    selectionModel()->select(wanted, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    return true;
}

bool ZORFeatBrowserView::viewportEvent(QEvent* event)
{
    const bool isMove = event->type() == QEvent::MouseMove;
    if (m_options.testFlag(Option::Hovering) && (isMove || event->type() == QEvent::Leave)) {
        const QModelIndex index =
            isMove ? indexAt(static_cast<QMouseEvent*>(event)->position().toPoint()) : QModelIndex();
        if (index.isValid() != m_isHovering || index != m_hovered) {
            m_isHovering = index.isValid();
            m_hovered = index;
            emit Hovered(index);
        }
    }
    return QTreeView::viewportEvent(event);
}

// Eyes leave selection and current item alone.
bool ZORFeatBrowserView::ClickEye(const QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid() || index.column() != 1)
        return false;
    m_isEyePressed = true;
    emit EyeClicked(index);
    return true;
}

void ZORFeatBrowserView::mousePressEvent(QMouseEvent* event)
{
    if (!ClickEye(event))
        QTreeView::mousePressEvent(event);
}

void ZORFeatBrowserView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (!ClickEye(event))
        QTreeView::mouseDoubleClickEvent(event);
}

void ZORFeatBrowserView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!std::exchange(m_isEyePressed, false))
        QTreeView::mouseReleaseEvent(event);
}

void ZORFeatBrowserView::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    if (!m_options.testFlag(Option::NarrowNames))
        header()->setMinimumSectionSize(viewport()->width());
}

void ZORFeatBrowserView::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (model() && model()->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignHCenter | Qt::TextWordWrap,
                     m_emptyText);
}
