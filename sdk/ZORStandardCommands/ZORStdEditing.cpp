#include "ZORStdEditing.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QCoreApplication>

void ZORStdFinishEditing(QAbstractItemView* view)
{
    // The Enter key commits in a queued call, which must not meet a row that is gone.
    QCoreApplication::sendPostedEvents(view->itemDelegate(), QEvent::MetaCall);
    const QPersistentModelIndex current = view->currentIndex();
    const QModelIndex beside = QModelIndex(current).siblingAtColumn(current.column() == 0 ? 1 : 0);
    // Within the row, so that nothing is notified of a change of rows.
    view->selectionModel()->setCurrentIndex(beside, QItemSelectionModel::NoUpdate);
    view->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
}
