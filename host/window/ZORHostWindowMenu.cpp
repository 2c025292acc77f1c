#include "window/ZORHostWindowMenu.h"

#include "base/ZORHostWindowTitle.h"

#include <QApplication>
#include <QDialog>
#include <QHash>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

namespace {

bool StandsForItself(const QWidget* window)
{
    const Qt::WindowType type = window->windowType();
    return window->isVisible() && (type == Qt::Window || type == Qt::Dialog || type == Qt::Sheet)
           && !window->windowTitle().isEmpty();
}

/// The title without a place for the mark of changes.
QString GetTitle(const QWidget* window)
{
    const QString shown = ZORHostWindowTitle::GetShown(window);
    return window->windowTitle() == shown ? QString(shown).remove(QLatin1String("[*]")) : shown;
}

/// The digits from 1 to 9 lead to the first entries.
QString MakeText(int number, const QString& title)
{
    const QString text = QString(title).replace(u'&', QLatin1String("&&"));
    return number <= 9 ? QStringLiteral("&%1 %2").arg(QString::number(number), text) : text;
}

} // namespace

ZORHostWindowMenu::ZORHostWindowMenu(QMainWindow* window)
    : QObject(window)
    , m_window(window)
    , m_menu(window->menuBar()->addMenu(tr("&Window")))
{
    m_menu->setObjectName("_WindowMenu");
    connect(m_menu, &QMenu::aboutToShow, this, &ZORHostWindowMenu::Fill);
    Fill();
}

QWidgetList ZORHostWindowMenu::FindOthers() const
{
    QWidgetList windows = QApplication::topLevelWidgets();
    windows.removeIf(
        [this](const QWidget* window) { return window == m_window || !StandsForItself(window); });
    std::sort(windows.begin(), windows.end(), [](const QWidget* a, const QWidget* b) {
        const int order = GetTitle(a).localeAwareCompare(GetTitle(b));
        return order != 0 ? order < 0
                          : a->winId() < b->winId(); // windows of one program get ascending identifiers
    });
    return windows;
}

void ZORHostWindowMenu::Fill()
{
    m_menu->clear();
    const QWidgetList others = FindOthers();
    QAction* const close = m_menu->addAction(tr("&Close All Others"));
    close->setObjectName("_CloseWindowsAction");
    close->setToolTip(tr("Closes all windows but the main window"));
    close->setStatusTip(close->toolTip());
    close->setEnabled(!others.isEmpty());
    connect(close, &QAction::triggered, this, &ZORHostWindowMenu::OnCloseOthersTriggered);
    m_menu->addSeparator();
    AddEntry(m_window, GetTitle(m_window));
    QHash<QString, int> counts;
    for (QWidget* other : others) {
        const QString title = GetTitle(other);
        const int count = ++counts[title];
        AddEntry(other, count == 1 ? title : tr("%1 (%2)").arg(title, QString::number(count)));
    }
}

void ZORHostWindowMenu::AddEntry(QWidget* window, const QString& title)
{
    const int number = int(m_menu->actions().size()) - 1; // after the first action and the line
    QAction* const entry = m_menu->addAction(MakeText(number, title));
    entry->setObjectName(QStringLiteral("_Window_%1").arg(number));
    entry->setToolTip(tr("Brings this window to the front"));
    entry->setStatusTip(entry->toolTip());
    entry->setCheckable(true);
    entry->setChecked(window->isActiveWindow());
    connect(entry, &QAction::triggered, this, [window = QPointer<QWidget>(window)] {
        if (!window)
            return;
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        window->show();
        window->raise();
        window->activateWindow();
    });
}

void ZORHostWindowMenu::OnCloseOthersTriggered()
{
    const QWidgetList found = FindOthers();
    const QList<QPointer<QWidget>> others(found.cbegin(), found.cend());
    for (const QPointer<QWidget>& other : others) {
        if (other && other->isVisible()) // one may close others with it
            other->close();
    }
}
