// Texts of documents in widgets that would take them for HTML.

#pragma once

#include <ZORCommonUI/ZORCommonUIGlobal.h>

#include <QMessageBox>

/// Shows texts literally. Tool tips, labels and message boxes take any text with something like a tag for HTML and open
/// the files that it names as pictures: a name that a stranger put into a document could make the application read any
/// file, and wait for a named pipe. So names and messages that contain names are shown through these functions.
namespace ZORCmnPlainText {

/// Returns the text to give to setToolTip() or for Qt::ToolTipRole: \a text itself, unless Qt would take it for HTML.
ZORCOMMONUI_EXPORT QString ToToolTip(const QString& text);

/// Opens a message box and waits for its answer.
/// \param parent  not owned; may be null
/// \return the button that was pressed
ZORCOMMONUI_EXPORT QMessageBox::StandardButton
ShowBox(QMessageBox::Icon icon, QWidget* parent, const QString& title, const QString& text,
        QMessageBox::StandardButtons buttons = QMessageBox::Ok);

} // namespace ZORCmnPlainText
