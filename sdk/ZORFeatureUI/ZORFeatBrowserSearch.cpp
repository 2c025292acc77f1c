#include "ZORFeatBrowserFilter_p.h"
#include "ZORFeatBrowserSearch_p.h"

#include <QKeyEvent>
#include <QTreeView>

#include <utility>

ZORFeatBrowserSearch::ZORFeatBrowserSearch(ZORFeatBrowserFilter* filter, QTreeView* view, QWidget* parent)
    : QLineEdit(parent)
    , m_filter(filter)
    , m_view(view)
{
    setObjectName(QStringLiteral("_SearchEdit"));
    setAccessibleName(tr("Search"));
    setPlaceholderText(tr("Search"));
    setToolTip(tr("Shows only the objects whose names contain this text"));
    setClearButtonEnabled(true);
    connect(this, &QLineEdit::textChanged, this, &ZORFeatBrowserSearch::OnTextChanged);
}

bool ZORFeatBrowserSearch::event(QEvent* event)
{
    // Escape clears the field, whatever else the key is for in the window.
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        event->accept();
    return QLineEdit::event(event);
}

void ZORFeatBrowserSearch::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        if (text().isEmpty())
            m_view->setFocus(Qt::OtherFocusReason);
        clear();
        break;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        FocusFirstMatch();
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void ZORFeatBrowserSearch::OnTextChanged(const QString& text)
{
    const bool wasSearching = std::exchange(m_isSearching, !text.isEmpty());
    if (m_isSearching && !wasSearching)
        KeepExpansion();
    emit FilterAboutToChange();
    m_filter->SetText(text);
    if (m_isSearching)
        m_view->expandAll();
    else
        RestoreExpansion();
    emit FilterChanged(m_isSearching);
}

void ZORFeatBrowserSearch::FocusFirstMatch()
{
    m_view->setFocus(Qt::OtherFocusReason);
    QModelIndex index = m_filter->index(0, 0);
    while (index.isValid() && m_isSearching && !m_filter->Matches(index))
        index = m_view->indexBelow(index);
    if (index.isValid())
        m_view->setCurrentIndex(index);
}

void ZORFeatBrowserSearch::KeepExpansion()
{
    m_expanded.clear();
    QModelIndexList open{QModelIndex()};
    while (!open.isEmpty()) {
        const QModelIndex parent = open.takeLast();
        for (int row = 0; row < m_filter->rowCount(parent); ++row) {
            const QModelIndex index = m_filter->index(row, 0, parent);
            if (!m_view->isExpanded(index))
                continue;
            m_expanded.append(m_filter->mapToSource(index));
            open.append(index);
        }
    }
}

void ZORFeatBrowserSearch::RestoreExpansion()
{
    m_view->collapseAll();
    for (const QPersistentModelIndex& index : std::as_const(m_expanded)) {
        if (index.isValid())
            m_view->expand(m_filter->mapFromSource(index));
    }
    m_expanded.clear();
}
