#include "actions/ZORHostActionIndex.h"

#include "base/ZORHostWindowTitle.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace {

const QLatin1String kArrow(" > ");

void Collect(const QList<QAction*>& actions, const QString& path, QList<ZORHostActionEntry>& result)
{
    for (QAction* action : actions) {
        if (action->isSeparator())
            continue;
        const QString text = ZORHostPlainText(action->text());
        if (const QMenu* menu = action->menu())
            Collect(menu->actions(), path + kArrow + text, result);
        else
            result.append({action, text, path});
    }
}

} // namespace

QString ZORHostPlainText(const QString& menuText)
{
    QString text;
    for (qsizetype i = 0; i < menuText.size(); ++i) {
        if (menuText[i] == u'&' && i + 1 < menuText.size())
            ++i;
        text += menuText[i];
    }
    while (text.endsWith(u'.') || text.endsWith(QChar(0x2026)) || text.endsWith(u' '))
        text.chop(1);
    return text;
}

QList<ZORHostActionEntry> ZORHostCollectActions(const QWidget* window)
{
    QList<ZORHostActionEntry> result;
    // menuBar() of a main window without one would create it.
    const auto* bar = window->findChild<QMenuBar*>(QString(), Qt::FindDirectChildrenOnly);
    if (bar)
        Collect(bar->actions(), ZORHostWindowTitle::GetKind(window), result);
    return result;
}

QList<ZORHostActionEntry> ZORHostCollectActions()
{
    QWidgetList windows = QApplication::topLevelWidgets();
    windows.removeIf([](const QWidget* window) {
        return !window->isVisible() || !qobject_cast<const QMainWindow*>(window);
    });
    // The list of Qt has no order of its own.
    std::sort(windows.begin(), windows.end(), [](const QWidget* a, const QWidget* b) {
        if (a->isActiveWindow() != b->isActiveWindow())
            return a->isActiveWindow();
        return a->windowTitle() < b->windowTitle();
    });
    QList<ZORHostActionEntry> result;
    for (const QWidget* window : std::as_const(windows))
        result += ZORHostCollectActions(window);
    return result;
}
