#include "ZORWorkFailure_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QCoreApplication>
#include <QLocale>

#include <csignal>
#include <exception>
#include <new>
#include <sys/wait.h>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORWorkFailure)
};

QString GetReasonOfSignal(int number)
{
    switch (number) {
    case SIGSEGV:
        return Texts::tr("the job crashed (segmentation fault)");
    case SIGABRT:
        return Texts::tr("the job crashed (aborted)");
    case SIGBUS:
        return Texts::tr("the job crashed (bus error)");
    case SIGFPE:
        return Texts::tr("the job crashed (arithmetic fault)");
    case SIGILL:
        return Texts::tr("the job crashed (illegal instruction)");
    case SIGKILL:
        return Texts::tr("the process of the job was killed");
    default:
        return Texts::tr("the process of the job was ended by signal %1").arg(number);
    }
}

} // namespace

QString ZORWorkFailure::GetCanceledReason()
{
    return Texts::tr("canceled");
}

QString ZORWorkFailure::GetReasonOfCurrentException()
{
    try {
        throw;
    } catch (const ZORSysException& exception) {
        return exception.GetMessage();
    } catch (const std::bad_alloc&) {
        return Texts::tr("out of memory");
    } catch (const std::exception& exception) {
        return QString::fromUtf8(exception.what());
    } catch (...) {
        return Texts::tr("unknown exception");
    }
}

QString ZORWorkFailure::GetMemoryReason(qint64 limit)
{
    if (limit <= 0)
        return Texts::tr("not enough memory");
    return Texts::tr("not enough memory (a job may use %1)")
        .arg(QLocale::c().formattedDataSize(limit, 1, QLocale::DataSizeTraditionalFormat));
}

QString ZORWorkFailure::GetReasonOfEnd(int status, qint64 limit)
{
    if (status == -1)
        return Texts::tr("the process of the job has ended");
    if (WIFSIGNALED(status))
        return GetReasonOfSignal(WTERMSIG(status));
    if (WEXITSTATUS(status) == kMemoryExitCode)
        return GetMemoryReason(limit);
    return Texts::tr("the job ended its process with exit code %1").arg(WEXITSTATUS(status));
}
