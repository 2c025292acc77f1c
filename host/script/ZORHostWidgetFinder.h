// Finds windows, widgets and actions by the names people and scripts use.

#pragma once

#include <QString>

class QAction;
class QWidget;

namespace ZORHostWidgetFinder {

/// The visible top-level window of that object name, title or class name; of several the active one, else the
/// one that was made last. Null for none.
QWidget* FindWindow(const QString& name);

/// Returns the widget in \a window of that object name; else the visible one with that text (buttons, group boxes),
/// that accessible name, or with a label of that text. Mnemonics, colons and blanks at the ends of texts do
/// not count.
/// \throws ZORHostScriptError "no widget '%1' in '%2'", or when several visible widgets have the text
QWidget* FindWidget(QWidget* window, const QString& name);

/// The action of that object name, else of that menu text, in \a window, else in any visible window.
/// \throws ZORHostScriptError "no action '%1'"
QAction* FindAction(QWidget* window, const QString& name);

} // namespace ZORHostWidgetFinder
