// Reads and sets widgets as text.

#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// Values as text: a combo box by its current text, check boxes, radio buttons and other checkable ones as
/// "on" and "off", numbers in plain decimals, line edits, labels and text edits by their text, a tab widget
/// by the text of its current tab, item views by rows and columns.
namespace ZORHostWidgetAccess {

/// \throws ZORHostScriptError for a widget without value
QString GetValue(const QWidget* widget);
/// Sets a value as the user would: the widget has to be visible and enabled, a combo box has to have the
/// choice, a number has to be within the range.
/// \throws ZORHostScriptError otherwise
void SetValue(QWidget* widget, const QString& value);

/// Returns the number of rows at the top level of an item view.
/// \throws ZORHostScriptError for any other widget
int GetNumRows(const QWidget* widget);
/// \param row     from 0, negative from the end, or the text in the first column
/// \param column  from 0, or the text of the header
/// \throws ZORHostScriptError when there is no such cell
QString GetCell(const QWidget* widget, const QString& row, const QString& column);
/// Gives a cell another value, of the kind that it holds: flags are true or false. The view has to be visible
/// and enabled, and the cell one that the user can edit.
/// \throws ZORHostScriptError otherwise
void SetCell(QWidget* widget, const QString& row, const QString& column, const QString& value);
/// Makes the first of \a rows current and selects all of them.
/// \throws ZORHostScriptError as GetCell()
void SelectRows(QWidget* widget, const QStringList& rows);

} // namespace ZORHostWidgetAccess
