#include "ZORWorkHelpers.h"

#include "helper/ZORWorkCrash_p.h"
#include "helper/ZORWorkServer_p.h"
#include "helper/ZORWorkSpawn_p.h"
#include "job/ZORWorkFailure_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <exception>
#include <fcntl.h>
#include <mutex>
#include <new>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int kFailureExitCode = 1;
constexpr int kUsageExitCode = 2;

// Beside the library, whose folder only the linker knows.
QString FindProgram()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void*>(&FindProgram), &info) || !info.dli_fname)
        return {};
    const QDir folder = QFileInfo(QFile::decodeName(info.dli_fname)).absoluteDir();
    const QString installed =
        QDir::cleanPath(folder.absoluteFilePath(QStringLiteral(ZOR_WORK_INSTALLED_PROGRAM)));
    const QString built = QDir::cleanPath(folder.absoluteFilePath(QStringLiteral(ZOR_WORK_BUILT_PROGRAM)));
    return !QFile::exists(installed) && QFile::exists(built) ? built : installed;
}

struct Settings
{
    std::mutex mutex; // of all that follows
    QString program = FindProgram();
    qint64 memoryLimit = 0; // bytes; 0: the default
};

// Never destroyed: jobs may run until the end of the process.
Settings& GetSettings()
{
    static Settings* const settings = new Settings;
    return *settings;
}

qint64 GetHalfOfMemory()
{
    const qint64 pages = sysconf(_SC_PHYS_PAGES);
    return pages * sysconf(_SC_PAGESIZE) / 2;
}

// A machine without memory ends the helper before its caller.
void OfferToMemoryKiller()
{
    QFile file(QStringLiteral("/proc/self/oom_score_adj"));
    if (file.open(QIODevice::WriteOnly))
        file.write("500");
}

} // namespace

QString ZORWorkHelpers::GetProgram()
{
    Settings& settings = GetSettings();
    const std::lock_guard lock(settings.mutex);
    return settings.program;
}

void ZORWorkHelpers::SetProgram(const QString& path)
{
    ZOR_TRACE_CALL(path);
    Settings& settings = GetSettings();
    const std::lock_guard lock(settings.mutex);
    settings.program = path;
}

qint64 ZORWorkHelpers::GetMemoryLimit()
{
    Settings& settings = GetSettings();
    const std::lock_guard lock(settings.mutex);
    return settings.memoryLimit > 0 ? settings.memoryLimit : GetHalfOfMemory();
}

void ZORWorkHelpers::SetMemoryLimit(qint64 bytes)
{
    ZOR_TRACE_CALL(bytes);
    Settings& settings = GetSettings();
    const std::lock_guard lock(settings.mutex);
    settings.memoryLimit = bytes;
}

int ZORWorkHelpers::Serve(int argc, char** argv)
{
    int type = 0;
    socklen_t size = sizeof type;
    const bool isStarted = argc == 3 && std::strcmp(argv[1], "--serve") == 0
                           && getsockopt(ZORWorkSpawn::kSocket, SOL_SOCKET, SO_TYPE, &type, &size) == 0
                           && type == SOCK_STREAM;
    if (!isStarted) {
        std::fprintf(stderr, "%s runs jobs of programs of the SDK, which start it themselves\n",
                     argc > 0 ? argv[0] : "this program");
        return kUsageExitCode;
    }
    fcntl(ZORWorkSpawn::kSocket, F_SETFD, FD_CLOEXEC); // programs that a job starts must not hold it open
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (QByteArray(argv[2]).toLongLong() != getppid())
        return 0;                  // the caller has gone meanwhile
    std::signal(SIGXFSZ, SIG_IGN); // a file beyond the user's limit is an error of its writer
    OfferToMemoryKiller();
    ZORWorkCrash::Install(ZORWorkSpawn::kSocket);
    static ZORWorkServer server(ZORWorkSpawn::kSocket);
    qInstallMessageHandler([](QtMsgType severity, const QMessageLogContext& context, const QString& text) {
        server.Send(ZORWorkProtocol::Log{quint8(severity), context.category, text});
        if (severity == QtFatalMsg)
            std::abort();
    });
    try {
        server.Run();
    } catch (const std::bad_alloc&) {
        ZORWorkCrash::End(ZORWorkFailure::kMemoryExitCode);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        ZORWorkCrash::End(kFailureExitCode);
    }
}
