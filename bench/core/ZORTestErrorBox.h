// The box for errors.

#pragma once

class QString;
class QWidget;

/// Opens a critical message box "Error" and waits until it is closed.
///
/// Shows the message literally: Qt's own functions take a text with something like a tag for HTML and open the files that
/// it names, and messages contain names from files of strangers.
/// \param parent  not owned; may be null
void ZORTestShowErrorBox(QWidget* parent, const QString& message);
