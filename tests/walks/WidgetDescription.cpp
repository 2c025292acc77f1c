#include "WidgetDescription.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QJsonArray>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabBar>
#include <QTreeView>

namespace {

constexpr int kMostRows = 300; // more do not fit onto a screen

QJsonArray GetPlace(const QWidget* widget, const QRect& area)
{
    const QPoint corner = widget->mapToGlobal(area.topLeft());
    const qreal scale = widget->devicePixelRatioF();
    return {qRound(corner.x() * scale), qRound(corner.y() * scale), qRound(area.width() * scale),
            qRound(area.height() * scale)};
}

QJsonArray GetClasses(const QObject* object)
{
    QJsonArray classes;
    for (const QMetaObject* type = object->metaObject(); type; type = type->superClass())
        classes.append(QString::fromLatin1(type->className()));
    return classes;
}

QString WithoutMnemonic(const QString& text)
{
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && ++i == text.size())
            break;
        plain += text[i];
    }
    return plain;
}

template<class Menu>
QJsonArray DescribeEntries(const Menu* menu)
{
    QJsonArray entries;
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        const QRect area = menu->actionGeometry(action);
        if (!action->isVisible() || action->isSeparator() || area.isEmpty())
            continue;
        entries.append(QJsonObject{{"text", WithoutMnemonic(action->text().section(u'\t', 0, 0))},
                                   {"label", action->text()},
                                   {"name", action->objectName()},
                                   {"tip", action->toolTip()},
                                   {"status", action->statusTip()},
                                   {"enabled", action->isEnabled()},
                                   {"checkable", action->isCheckable()},
                                   {"checked", action->isChecked()},
                                   {"menu", action->menu() != nullptr},
                                   {"place", GetPlace(menu, area)}});
    }
    return entries;
}

QJsonObject DescribeRow(const QAbstractItemView* view, const QModelIndex& first)
{
    QJsonArray texts, places;
    const QAbstractItemModel* model = view->model();
    for (int column = 0; column < model->columnCount(first.parent()); ++column) {
        const QModelIndex cell = first.siblingAtColumn(column);
        texts.append(cell.data().toString());
        places.append(GetPlace(view->viewport(), view->visualRect(cell)));
    }
    int depth = 0;
    for (QModelIndex owner = first.parent(); owner.isValid(); owner = owner.parent())
        ++depth;
    return {{"texts", texts},
            {"places", places},
            {"depth", depth},
            {"selected", view->selectionModel() && view->selectionModel()->isSelected(first)}};
}

bool IsShown(const QAbstractItemView* view, const QModelIndex& index)
{
    return view->visualRect(index).intersects(view->viewport()->rect());
}

QJsonArray DescribeRows(const QAbstractItemView* view)
{
    QJsonArray rows;
    if (const auto* tree = qobject_cast<const QTreeView*>(view)) {
        QModelIndex index = tree->indexAt(QPoint(0, 0));
        for (; index.isValid() && IsShown(view, index) && rows.size() < kMostRows;
             index = tree->indexBelow(index))
            rows.append(DescribeRow(view, index.siblingAtColumn(0)));
        return rows;
    }
    const QModelIndex root = view->rootIndex();
    for (int row = 0; row < view->model()->rowCount(root) && rows.size() < kMostRows; ++row) {
        const QModelIndex index = view->model()->index(row, 0, root);
        if (IsShown(view, index))
            rows.append(DescribeRow(view, index));
    }
    return rows;
}

QJsonArray DescribeTabs(const QTabBar* bar)
{
    QJsonArray tabs;
    for (int i = 0; i < bar->count(); ++i) {
        tabs.append(QJsonObject{{"text", WithoutMnemonic(bar->tabText(i))},
                                {"current", bar->currentIndex() == i},
                                {"place", GetPlace(bar, bar->tabRect(i))}});
    }
    return tabs;
}

void AddValues(const QWidget* widget, QJsonObject& description)
{
    for (const char* property : {"text", "plainText", "currentText", "title", "value", "checked"}) {
        const QVariant value = widget->property(property);
        if (value.isValid())
            description.insert(QLatin1String(property), QJsonValue::fromVariant(value));
    }
    if (const auto* bar = qobject_cast<const QStatusBar*>(widget))
        description.insert("text", bar->currentMessage());
    if (qobject_cast<const QAbstractButton*>(widget))
        description.insert("plain", WithoutMnemonic(widget->property("text").toString()));
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        description.insert("buddy", GetWidgetId(label->buddy()));
}

void AddParts(const QWidget* widget, QJsonObject& description)
{
    if (const auto* menu = qobject_cast<const QMenu*>(widget))
        description.insert("entries", DescribeEntries(menu));
    if (const auto* bar = qobject_cast<const QMenuBar*>(widget))
        description.insert("entries", DescribeEntries(bar));
    if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
        description.insert("tabs", DescribeTabs(tabs));
    const auto* view = qobject_cast<const QAbstractItemView*>(widget);
    if (view && view->model() && !qobject_cast<const QHeaderView*>(widget)) {
        description.insert("rows", DescribeRows(view));
        description.insert("rowCount", view->model()->rowCount(view->rootIndex()));
    }
}

QJsonObject DescribeWidget(const QWidget* widget)
{
    QJsonObject description{{"id", GetWidgetId(widget)},
                            {"parent", GetWidgetId(widget->parentWidget())},
                            {"proxy", GetWidgetId(widget->focusProxy())},
                            {"classes", GetClasses(widget)},
                            {"name", widget->objectName()},
                            {"accessible", widget->accessibleName()},
                            {"enabled", widget->isEnabled()},
                            {"seen", !widget->visibleRegion().isEmpty()},
                            {"tab", (widget->focusPolicy() & Qt::TabFocus) != 0},
                            {"place", GetPlace(widget, widget->rect())}};
    AddValues(widget, description);
    AddParts(widget, description);
    return description;
}

void AddWidgets(const QWidget* widget, QJsonArray& widgets)
{
    widgets.append(DescribeWidget(widget));
    for (const QObject* child : widget->children()) {
        const auto* inner = qobject_cast<const QWidget*>(child);
        if (inner && inner->isVisible() && !inner->isWindow())
            AddWidgets(inner, widgets);
    }
}

} // namespace

QJsonValue GetWidgetId(const QWidget* widget)
{
    return widget ? QJsonValue(QString::number(quintptr(widget), 16)) : QJsonValue();
}

QJsonObject DescribeWindow(const QWidget* window)
{
    QJsonArray widgets;
    AddWidgets(window, widgets);
    return {{"id", GetWidgetId(window)},
            {"number", qint64(window->winId())},
            {"title", window->windowTitle()},
            {"modified", window->isWindowModified()},
            {"active", window->isActiveWindow()},
            {"modal", window->isModal()},
            {"minimized", window->isMinimized()},
            {"scale", window->devicePixelRatioF()},
            {"place", GetPlace(window, window->rect())},
            {"widgets", widgets}};
}
