#include "RandomUserAddress.h"

#include <QApplication>

#include <algorithm>

namespace {

QString NameOf(const QWidget* widget)
{
    if (widget->isWindow() || widget->objectName().isEmpty())
        return QString::fromLatin1(widget->metaObject()->className());
    return widget->objectName();
}

/// "<name>#<number>" of \a widget among \a widgets.
QString AddressAmong(const QWidgetList& widgets, const QWidget* widget)
{
    const QString name = NameOf(widget);
    int number = 0;
    for (const QWidget* other : widgets) {
        if (other == widget)
            break;
        if (NameOf(other) == name)
            ++number;
    }
    return QStringLiteral("%1#%2").arg(name, QString::number(number));
}

QWidget* FindAmong(const QWidgetList& widgets, const QString& address)
{
    const QString name = address.section(u'#', 0, -2);
    int number = address.section(u'#', -1).toInt();
    for (QWidget* widget : widgets) {
        if (NameOf(widget) == name && number-- == 0)
            return widget;
    }
    return nullptr;
}

bool IsUsable(const QWidget* window)
{
    const Qt::WindowType type = window->windowType();
    return window->isVisible() && window->windowHandle() && type != Qt::ToolTip && type != Qt::SplashScreen
           && type != Qt::Desktop;
}

} // namespace

QWidgetList RandomUserAddress::GetReachableWindows()
{
    if (QWidget* popup = QApplication::activePopupWidget())
        return {popup};
    if (QWidget* modal = QApplication::activeModalWidget())
        return {modal};
    QWidgetList windows;
    const QWidgetList all = QApplication::topLevelWidgets();
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(windows), &IsUsable);
    // Windows of one program get ascending identifiers.
    std::sort(windows.begin(), windows.end(),
              [](const QWidget* a, const QWidget* b) { return a->winId() < b->winId(); });
    return windows;
}

QWidgetList RandomUserAddress::GetReachableWidgets(const QWidget* window)
{
    QWidgetList widgets;
    const QWidgetList all = window->findChildren<QWidget*>();
    for (QWidget* widget : all) {
        if (widget->isVisible() && widget->isEnabled() && widget->window() == window
            && !widget->visibleRegion().isEmpty())
            widgets.append(widget);
    }
    return widgets;
}

QString RandomUserAddress::Of(const QWidget* window)
{
    return AddressAmong(GetReachableWindows(), window);
}

QString RandomUserAddress::Of(const QWidget* window, const QWidget* widget)
{
    return AddressAmong(GetReachableWidgets(window), widget);
}

QWidget* RandomUserAddress::FindWindow(const QString& address)
{
    return FindAmong(GetReachableWindows(), address);
}

QWidget* RandomUserAddress::FindWidget(const QWidget* window, const QString& address)
{
    return FindAmong(GetReachableWidgets(window), address);
}
