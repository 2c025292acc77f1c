#include "window/ZORHostDockLayout.h"

#include "window/ZORHostPlacement.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QToolBar>

namespace {

constexpr int kBrowserWidth = 260;
constexpr int kLogHeight = 180;

} // namespace

ZORHostDockLayout::ZORHostDockLayout(QMainWindow* window, const Docks& docks)
    : QObject(window)
    , m_window(window)
    , m_docks(docks)
{
    window->setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    PlaceDocks();
    m_sizes = new ZORHostDockSizes(window);
    m_sizes->SetSizes({{docks.browser->objectName(), QSize(kBrowserWidth, kBrowserWidth)},
                       {docks.log->objectName(), QSize(kLogHeight, kLogHeight)},
                       {docks.api->objectName(), QSize(kLogHeight, kLogHeight)}});
}

void ZORHostDockLayout::PlaceDocks()
{
    m_window->addDockWidget(Qt::LeftDockWidgetArea, m_docks.browser);
    m_window->addDockWidget(Qt::BottomDockWidgetArea, m_docks.log);
    m_window->addDockWidget(Qt::BottomDockWidgetArea, m_docks.api);
    m_window->tabifyDockWidget(m_docks.log, m_docks.api);
    m_docks.log->raise();
    m_window->resizeDocks({m_docks.browser}, {kBrowserWidth}, Qt::Horizontal);
    m_window->resizeDocks({m_docks.log}, {kLogHeight}, Qt::Vertical);
}

// QMainWindow::restoreState() of Qt 6.4 crashes while a tool bar shows the buttons for which it has no room.
void ZORHostDockLayout::Reset()
{
    for (QDockWidget* dock : {m_docks.browser, m_docks.log, m_docks.api}) {
        dock->setFloating(false);
        dock->show();
    }
    PlaceDocks();
    const auto toolBars = m_window->findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly);
    for (QToolBar* toolBar : toolBars) {
        m_window->addToolBar(Qt::TopToolBarArea, toolBar);
        toolBar->show();
    }
}
