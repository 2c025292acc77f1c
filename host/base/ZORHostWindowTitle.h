// Titles of windows that show a document.

#pragma once

#include <QString>

class QWidget;

namespace ZORHostWindowTitle {

/// Returns the title of a window with a document: its name, the place of the mark "[*]", and the name of the application.
/// The name may be any text; "[*]" in it is shown as it is.
QString Make(const QString& documentName);

/// Returns the title as the user sees it: with an asterisk while the window is modified.
QString GetShown(const QWidget* window);

/// Returns what the title says about the window without its document: the name of the application for titles of Make(), and the
/// title itself otherwise.
QString GetKind(const QWidget* window);

} // namespace ZORHostWindowTitle
