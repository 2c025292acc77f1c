// What a person sees of a window and of its widgets, as JSON.

#pragma once

#include <QJsonObject>

class QWidget;

/// Returns a name of the widget that is unique while the widget lives; null for none.
QJsonValue GetWidgetId(const QWidget* widget);
/// Returns the class, title, state and position of a visible window, and its visible widgets, outer ones first.
QJsonObject DescribeWindow(const QWidget* window);
