// Looks at windows as a person would: is every text whole, and can it be read?

#pragma once

#include <QStringList>

class QColor;
class QWidget;

/// The faults of the visible parts of \a window, a sentence each; empty when there is none.
///
/// Checks labels, buttons, check boxes, radio buttons, group boxes, combo boxes, tabs, table and tree headers, menu
/// bars, dock titles and place holders: the text, in its font, has to fit into the room it is drawn in, and the
/// colours drawn there have to contrast by at least 4.5 : 1 (disabled ones are left out of the latter). What takes the
/// keyboard has to have a name for assistive tools.
QStringList InspectWindow(QWidget* window);

/// Contrast of two colours: 1 (the same) to 21 (black and white).
double GetContrast(const QColor& a, const QColor& b);
