// What a person needs of every window: texts that fit, contrast, the keyboard.

#pragma once

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

// Each check looks at a shown window as it is now and returns one line per problem, none when all is well.

/// Texts that are cut off or elided: labels, buttons, check boxes, group titles, tabs, all entries of combo
/// boxes, headers, menu bars with all their menus, dock titles, place holders, and spin boxes too narrow for
/// their greatest value.
QStringList FindCutTexts(QWidget* window);

/// Texts, in enabled widgets, with a contrast to their background below 4.5 : 1, selected and placeholder
/// texts and tool tips included. The background is what is painted. A button that shows a colour is left out.
QStringList FindFaintTexts(QWidget* window);

/// Visible, enabled widgets that take the focus but are not reached by pressing Tab, or that assistive
/// technology finds without a name. Radio buttons that the arrow keys reach, and texts that can be marked, are
/// left out.
QStringList FindUnreachableWidgets(QWidget* window);

/// Visible, enabled fields (line edits, spin boxes, combo boxes, check boxes and radio buttons) in which Return
/// does not press the enabled OK of the window's button box. Windows without such a button have no problem. Presses
/// nothing: the button is shielded meanwhile.
QStringList FindSwallowedReturns(QWidget* window);

/// Runs \a visit for every combination of pages: with each tab of each tab widget of \a window in front once.
void ForEachPage(QWidget* window, const std::function<void()>& visit);

/// The visible widgets of \a window, itself included, parents before children; windows of their own
/// (menus, dialogs) are left out.
QList<QWidget*> GetVisibleWidgets(QWidget* window);

/// Class, object name and text of a widget, for messages.
QString Describe(const QWidget* widget, const QString& text = {});

/// Contrast ratio of two opaque colours after WCAG 2.1, 1 ... 21.
double GetContrast(const QColor& a, const QColor& b);
