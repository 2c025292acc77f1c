#include "base/ZORHostApplication.h"

#include "base/ZORHostErrorReporter.h"

#include <ZORSystem/ZORSysException.h>

#include <QEvent>
#include <QIcon>
#include <QScopedValueRollback>

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
}

ZORHostApplication::~ZORHostApplication() = default;

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
