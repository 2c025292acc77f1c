// Edits cells of tables as a user does.

#pragma once

#include <QAbstractItemView>
#include <QApplication>
#include <QTest>

/// Opens the editor of a cell, unless it is open.
/// \return the editor, null when the table refuses to edit
inline QWidget* EditCell(QAbstractItemView* view, int row, int column)
{
    const QModelIndex index = view->model()->index(row, column);
    view->setCurrentIndex(index);
    if (!view->indexWidget(index))
        view->edit(index);
    return view->indexWidget(index);
}

/// Runs the event loop once, with everything that waits to be deleted.
inline void SettleEvents()
{
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}
