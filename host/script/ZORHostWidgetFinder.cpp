#include "script/ZORHostWidgetFinder.h"

#include "actions/ZORHostActionIndex.h"
#include "base/ZORHostWindowTitle.h"
#include "script/ZORHostScriptError.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QWidget>

namespace {

/// A text as it is compared: without mnemonics, and without blanks and a colon at its end.
QString Comparable(const QString& text)
{
    QString result = ZORHostPlainText(text).trimmed();
    if (result.endsWith(u':'))
        result.chop(1);
    return result.trimmed();
}

bool IsCalled(const QWidget* widget, const QString& comparable)
{
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return Comparable(button->text()) == comparable;
    if (const auto* box = qobject_cast<const QGroupBox*>(widget))
        return Comparable(box->title()) == comparable;
    return !widget->accessibleName().isEmpty() && Comparable(widget->accessibleName()) == comparable;
}

void AppendNew(QWidgetList& list, QWidget* widget)
{
    if (widget && !list.contains(widget))
        list.append(widget);
}

QAction* FindIn(const QWidget* window, const QString& name)
{
    const QList<QAction*> actions = window->findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->objectName() == name)
            return action;
    }
    const QList<ZORHostActionEntry> entries = ZORHostCollectActions(window);
    for (const ZORHostActionEntry& entry : entries) {
        if (entry.action->objectName() == name || entry.text == ZORHostPlainText(name))
            return entry.action;
    }
    return nullptr;
}

} // namespace

QWidget* ZORHostWidgetFinder::FindWindow(const QString& name)
{
    QWidget* found = nullptr;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        const bool matches = window->objectName() == name || window->windowTitle() == name
                             || ZORHostWindowTitle::GetShown(window) == name
                             || ZORHostWindowTitle::GetKind(window) == name
                             || name == QLatin1String(window->metaObject()->className());
        if (!matches || !window->isVisible())
            continue;
        if (window->isActiveWindow())
            return window;
        // Windows of one program get ascending identifiers.
        if (!found || window->winId() > found->winId())
            found = window;
    }
    return found;
}

QWidget* ZORHostWidgetFinder::FindWidget(QWidget* window, const QString& name)
{
    const QWidgetList widgets = window->findChildren<QWidget*>();
    QWidget* named = nullptr;
    for (QWidget* widget : widgets) {
        if (widget->objectName() != name)
            continue;
        if (widget->isVisible())
            return widget;
        named = widget;
    }
    if (named)
        return named;

    const QString comparable = Comparable(name);
    QWidgetList called;
    for (QWidget* widget : widgets) {
        if (!widget->isVisible())
            continue;
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (label && label->buddy() && Comparable(label->text()) == comparable)
            AppendNew(called, label->buddy());
        else if (IsCalled(widget, comparable))
            AppendNew(called, widget);
    }
    if (called.size() > 1) {
        throw ZORHostScriptError(QStringLiteral("%1 widgets are called '%2' in '%3'")
                                     .arg(QString::number(called.size()), name, window->windowTitle()));
    }
    if (called.isEmpty())
        throw ZORHostScriptError(QStringLiteral("no widget '%1' in '%2'").arg(name, window->windowTitle()));
    return called.constFirst();
}

QAction* ZORHostWidgetFinder::FindAction(QWidget* window, const QString& name)
{
    if (window) {
        if (QAction* action = FindIn(window, name))
            return action;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* other : windows) {
        if (!other->isVisible())
            continue;
        if (QAction* action = FindIn(other, name))
            return action;
    }
    throw ZORHostScriptError(QStringLiteral("no action '%1'").arg(name));
}
