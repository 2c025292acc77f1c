// Names of windows and widgets that hold from one run to the next.

#pragma once

#include <QString>
#include <QWidget>

/// Windows and widgets by class or object name, and by their number among those of the same name.
namespace RandomUserAddress {

/// The windows that a person can use now: the open popup alone, else the active modal dialog alone, else
/// every visible window. Ordered by the time they were made. Tool tips and the like are left out.
QWidgetList GetReachableWindows();
/// The visible and enabled widgets of \a window that mouse and keyboard reach, itself left out.
QWidgetList GetReachableWidgets(const QWidget* window);

/// "<class>#<number>" of one of the reachable windows.
QString Of(const QWidget* window);
/// "<object name or class>#<number>" of one of the reachable widgets of \a window.
QString Of(const QWidget* window, const QWidget* widget);

/// Null where it is not reachable now.
QWidget* FindWindow(const QString& address);
/// Null where it is not reachable now.
QWidget* FindWidget(const QWidget* window, const QString& address);

} // namespace RandomUserAddress
