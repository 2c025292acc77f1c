// Entry point of the host.

#include "app/ZORHostProgram.h"
#include "base/ZORHostApplication.h"
#include "base/ZORHostCommandLine.h"

#include <ZORSystem/ZORSysMemory.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <vector>

namespace {

/// --help and --version answer without a display.
void AllowWithoutDisplay(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        for (const char* option : {"--help", "-h", "--version", "-v", "--help-all"}) {
            if (std::strcmp(argv[i], option) == 0)
                qputenv("QT_QPA_PLATFORM", "offscreen");
        }
    }
}

/// Whether there is memory for a window. A little above what an empty one takes: below, threads cannot start and
/// libraries of others wait for them for ever.
bool HasMemory()
{
    constexpr qint64 kNeeded = qint64(128) << 20; // bytes
    const qint64 available = ZORSysMemory::GetAvailable();
    if (available >= kNeeded)
        return true;
    const auto [left, needed] = ZORSysMemory::FormatSizes(available, kNeeded);
    std::fprintf(stderr, "zorhost: not enough memory to start: %s are left, %s are needed\n",
                 qPrintable(left), qPrintable(needed));
    return false;
}

int Run(int argc, char** argv)
{
    AllowWithoutDisplay(argc, argv);
    std::vector<QByteArray> arguments;
    arguments.reserve(size_t(argc));
    for (int i = 0; i < argc; ++i)
        arguments.push_back(ZORHostCommandLine::ProtectFromQt(argv[i]));
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (QByteArray& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const ZORHostApplication application(argc, pointers.data());
    const ZORHostCommandLine commandLine = ZORHostCommandLine::Parse(QCoreApplication::arguments());
    if (commandLine.status != ZORHostCommandLine::Status::Run) {
        const bool error = commandLine.status == ZORHostCommandLine::Status::Error;
        std::fputs(qPrintable(commandLine.text), error ? stderr : stdout);
        return error ? 2 : 0;
    }
    ZORHostProgram program(commandLine.options);
    return program.Run();
}

} // namespace

int main(int argc, char** argv)
{
    // A file that grows beyond the limit of the user is an error of its writer, and no reason to end.
    std::signal(SIGXFSZ, SIG_IGN);
    constexpr int kCannotRun = 3;
    try {
        return HasMemory() ? Run(argc, argv) : kCannotRun;
    } catch (const std::bad_alloc&) {
        std::fputs("zorhost: not enough memory\n", stderr);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "zorhost: %s\n", exception.what());
    }
    return kCannotRun;
}
