// Questions to the user about files.

#pragma once

#include <QMessageBox>
#include <QString>

namespace ZORHostFileDialogs {

/// Asks a question whose text may contain names of files, and waits for the answer.
/// \param parent  not owned; may be null
QMessageBox::StandardButton Ask(QWidget* parent, const QString& title, const QString& text,
                                QMessageBox::StandardButtons buttons,
                                QMessageBox::StandardButton defaultButton);

/// Returns the file that the user wants to write; empty when the user cancels. Files that exist are returned only after a
/// question.
/// \param parent  not owned; may be null
/// \param start   file that is proposed
/// \param suffix  without the dot; added to names that do not end with it
QString ChooseFileToWrite(QWidget* parent, const QString& title, const QString& start, const QString& filter,
                          const QString& suffix);

} // namespace ZORHostFileDialogs
