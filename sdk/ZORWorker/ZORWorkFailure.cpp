#include "ZORWorkFailure_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QCoreApplication>
#include <QLocale>

#include <csignal>
#include <exception>
#include <new>
#include <sys/wait.h>

namespace {

QString Tr(const char* text)
{
    return QCoreApplication::translate("ZORWorkTeam", text);
}

QString GetReasonOfSignal(int number)
{
    switch (number) {
    case SIGSEGV:
        return Tr("the job crashed (segmentation fault)");
    case SIGABRT:
        return Tr("the job crashed (aborted)");
    case SIGBUS:
        return Tr("the job crashed (bus error)");
    case SIGFPE:
        return Tr("the job crashed (arithmetic fault)");
    case SIGILL:
        return Tr("the job crashed (illegal instruction)");
    case SIGKILL:
        return Tr("the process of the job was killed");
    default:
        return Tr("the process of the job was ended by signal %1").arg(number);
    }
}

} // namespace

QString ZORWorkFailure::GetCanceledReason()
{
    return Tr("canceled");
}

QString ZORWorkFailure::GetReasonOfCurrentException()
{
    try {
        throw;
    } catch (const ZORSysException& exception) {
        return exception.GetMessage();
    } catch (const std::bad_alloc&) {
        return Tr("out of memory");
    } catch (const std::exception& exception) {
        return QString::fromUtf8(exception.what());
    } catch (...) {
        return Tr("unknown exception");
    }
}

QString ZORWorkFailure::GetMemoryReason(qint64 limit)
{
    if (limit <= 0)
        return Tr("not enough memory");
    return Tr("not enough memory (a job may use %1)")
        .arg(QLocale::c().formattedDataSize(limit, 1, QLocale::DataSizeTraditionalFormat));
}

QString ZORWorkFailure::GetReasonOfEnd(int status, qint64 limit)
{
    if (status == -1)
        return Tr("the process of the job has ended");
    if (WIFSIGNALED(status))
        return GetReasonOfSignal(WTERMSIG(status));
    if (WEXITSTATUS(status) == kMemoryExitCode)
        return GetMemoryReason(limit);
    return Tr("the job ended its process with exit code %1").arg(WEXITSTATUS(status));
}
