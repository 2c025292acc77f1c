#include "WindowChecks.h"

#include <QTabWidget>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace {

double GetLuminance(const QColor& color)
{
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

void AppendVisible(QWidget* widget, QList<QWidget*>& widgets)
{
    widgets.append(widget);
    const auto children = widget->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* child : children) {
        if (child->isVisible() && !child->isWindow())
            AppendVisible(child, widgets);
    }
}

} // namespace

double GetContrast(const QColor& a, const QColor& b)
{
    const double first = GetLuminance(a) + 0.05;
    const double second = GetLuminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QList<QWidget*> GetVisibleWidgets(QWidget* window)
{
    QList<QWidget*> widgets;
    AppendVisible(window, widgets);
    return widgets;
}

QString Describe(const QWidget* widget, const QString& text)
{
    QString name = QLatin1String(widget->metaObject()->className());
    if (!widget->objectName().isEmpty())
        name += u' ' + widget->objectName();
    return text.isEmpty() ? name : name + QStringLiteral(" \"%1\"").arg(text);
}

void ForEachPage(QWidget* window, const std::function<void()>& visit)
{
    const auto tabWidgets = window->findChildren<QTabWidget*>();
    bool visited = false;
    for (QTabWidget* tabs : tabWidgets) {
        const int current = tabs->currentIndex();
        for (int page = 0; page < tabs->count(); ++page) {
            tabs->setCurrentIndex(page);
            visit();
            visited = true;
        }
        tabs->setCurrentIndex(current);
    }
    if (!visited)
        visit();
}
