#include "window/ZORHostPlacement.h"

#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>
#include <QScreen>
#include <QTabBar>

#include <algorithm>

namespace {

// Of usual window managers. The frame of a window is known only once it is shown.
constexpr QMargins kFrame(6, 34, 6, 6);
// A dock takes no more than this part of the window: the view comes first.
constexpr double kLargestShare = 0.5;

QRect GetRoom(const QWidget* window)
{
    return window->screen()->availableGeometry().marginsRemoved(kFrame);
}

/// The extent of a dock that the user can change: its width at the sides, its height above and below.
Qt::Orientation GetOrientation(const QMainWindow* window, QDockWidget* dock)
{
    const Qt::DockWidgetArea area = window->dockWidgetArea(dock);
    return area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea ? Qt::Horizontal : Qt::Vertical;
}

/// Whether no other dock hides it. Those behind keep the size they had in front.
bool IsInFront(const QDockWidget* dock)
{
    return dock->isVisible() && !dock->visibleRegion().isEmpty();
}

/// The size that a dock takes in the window, with the tabs below those that share a place.
QSize GetSizeWithTabs(const QMainWindow* window, QDockWidget* dock)
{
    const auto bars = window->findChildren<QTabBar*>(Qt::FindDirectChildrenOnly);
    for (const QTabBar* bar : bars) {
        for (int tab = 0; bar->isVisible() && tab < bar->count(); ++tab) {
            if (bar->tabText(tab) == dock->windowTitle())
                return dock->size() + QSize(0, bar->height());
        }
    }
    return dock->size();
}

int GetExtent(const QSize& size, Qt::Orientation orientation)
{
    return orientation == Qt::Horizontal ? size.width() : size.height();
}

} // namespace

QRect ZORHostPlacement::FitInto(const QRect& wanted, const QRect& available)
{
    QRect result(wanted.topLeft(), wanted.size().boundedTo(available.size()));
    result.moveLeft(std::clamp(result.left(), available.left(), available.right() + 1 - result.width()));
    result.moveTop(std::clamp(result.top(), available.top(), available.bottom() + 1 - result.height()));
    return result;
}

void ZORHostPlacement::SetFirstSize(QWidget* window, const QSize& wanted)
{
    const QSize room = GetRoom(window).size();
    window->resize(wanted.boundedTo(room));
    if (room.width() < wanted.width() || room.height() < wanted.height())
        window->setWindowState(window->windowState() | Qt::WindowMaximized);
}

void ZORHostPlacement::KeepOnScreen(QWidget* window)
{
    if (window->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen))
        return;
    const QRect now = window->geometry();
    const QRect fitting = FitInto(now, GetRoom(window));
    if (fitting.size() != now.size())
        window->resize(fitting.size());
    if (fitting.topLeft() != now.topLeft())
        window->move(fitting.topLeft() - QPoint(kFrame.left(), kFrame.top()));
}

ZORHostDockSizes::ZORHostDockSizes(QMainWindow* window)
    : QObject(window)
    , m_window(window)
    , m_windowSize(window->size())
{
    for (QTimer* timer : {&m_restoring, &m_settling}) {
        timer->setSingleShot(true);
        timer->setInterval(0);
    }
    connect(&m_restoring, &QTimer::timeout, this, &ZORHostDockSizes::Restore);
    connect(&m_settling, &QTimer::timeout, this, [this] { m_isPending = false; });
    window->installEventFilter(this);
    const auto docks = window->findChildren<QDockWidget*>(Qt::FindDirectChildrenOnly);
    for (QDockWidget* dock : docks)
        dock->installEventFilter(this);
}

QVariantMap ZORHostDockSizes::GetSizes() const
{
    QVariantMap sizes;
    for (auto size = m_sizes.cbegin(); size != m_sizes.cend(); ++size)
        sizes.insert(size.key(), size.value());
    return sizes;
}

void ZORHostDockSizes::SetSizes(const QVariantMap& sizes)
{
    for (auto size = sizes.cbegin(); size != sizes.cend(); ++size) {
        const QSize value = size.value().toSize();
        if (m_window->findChild<QDockWidget*>(size.key(), Qt::FindDirectChildrenOnly) && !value.isEmpty())
            m_sizes[size.key()] = value;
    }
    m_isPending = true; // applied with the first size of the window
}

bool ZORHostDockSizes::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Resize)
        return QObject::eventFilter(watched, event);
    if (watched != m_window) {
        Note(static_cast<QDockWidget*>(watched));
    } else {
        // The docks have got their sizes before, by which Note() knows why.
        m_windowSize = m_window->size();
        m_isPending = true;
        m_settling.stop();
        m_restoring.start();
    }
    return QObject::eventFilter(watched, event);
}

void ZORHostDockSizes::Note(QDockWidget* dock)
{
    const bool isChosen = !m_isPending && m_window->isVisible() && m_window->size() == m_windowSize
                          && !dock->isFloating() && dock->isVisible();
    if (isChosen)
        m_sizes[dock->objectName()] = GetSizeWithTabs(m_window, dock);
}

void ZORHostDockSizes::Restore()
{
    for (auto size = m_sizes.cbegin(); size != m_sizes.cend(); ++size) {
        auto* const dock = m_window->findChild<QDockWidget*>(size.key(), Qt::FindDirectChildrenOnly);
        if (!dock || dock->isFloating() || !IsInFront(dock))
            continue;
        const Qt::Orientation orientation = GetOrientation(m_window, dock);
        const int room = int(kLargestShare * GetExtent(m_window->size(), orientation));
        const int wanted = std::min(GetExtent(size.value(), orientation), room);
        if (GetExtent(GetSizeWithTabs(m_window, dock), orientation) < wanted)
            m_window->resizeDocks({dock}, {wanted}, orientation);
    }
    m_settling.start();
}
