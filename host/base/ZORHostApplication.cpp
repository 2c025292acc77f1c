#include "base/ZORHostApplication.h"

#include "base/ZORHostErrorReporter.h"

#include <ZORSystem/ZORSysException.h>

#include <QEvent>
#include <QIcon>
#include <QScopedValueRollback>
#include <QWindow>

#include <new>

ZORHostApplication::ZORHostApplication(int& argc, char** argv)
    : QApplication(argc, argv)
    , m_errors(new ZORHostErrorReporter(this))
{
    setOrganizationName("Zorvane");
    setApplicationName("zorhost");
    setApplicationDisplayName("Zorvane Host");
    setApplicationVersion(ZOR_HOST_VERSION);
    setDesktopFileName("org.zorvane.zorhost");
    setWindowIcon(QIcon(":/host/icons/zorhost.svg"));
    // Qt's own way of ending is called off by any window that opens between the closing of the last one and
    // the next event, even by a menu or a tool tip, and the program would then go on without windows.
    setQuitOnLastWindowClosed(false);
    connect(this, &QGuiApplication::lastWindowClosed, this, &ZORHostApplication::EndWithoutWindows,
            Qt::QueuedConnection);
}

ZORHostApplication::~ZORHostApplication() = default;

void ZORHostApplication::EndWithoutWindows()
{
    const QWindowList windows = topLevelWindows();
    for (const QWindow* window : windows) {
        if (window->isVisible() && window->type() != Qt::Popup && window->type() != Qt::ToolTip) {
            connect(window, &QWindow::visibleChanged, this, &ZORHostApplication::EndWithoutWindows,
                    Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
            return;
        }
    }
    exit();
}

bool ZORHostApplication::event(QEvent* event)
{
    const QScopedValueRollback guard(m_isQuitting, m_isQuitting || event->type() == QEvent::Quit);
    return QApplication::event(event);
}

bool ZORHostApplication::notify(QObject* receiver, QEvent* event)
{
    const QEvent::Type type = event->type(); // the event may be gone once a handler has thrown
    try {
        return QApplication::notify(receiver, event);
    } catch (const ZORSysException& exception) {
        m_errors->Report(exception.GetMessage(), type);
    } catch (const std::bad_alloc&) {
        m_errors->ReportOutOfMemory(type);
    } catch (const std::exception& exception) {
        m_errors->Report(QString::fromLocal8Bit(exception.what()), type);
    } catch (...) {
        m_errors->Report(tr("An operation failed with an exception of unknown type."), type);
    }
    return true;
}
