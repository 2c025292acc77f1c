// Entry point of the random user: starts a child per seed, or is one.

#include "RandomUserCommandLine.h"
#include "RandomUserRuns.h"
#include "RandomUserSession.h"
#include "base/ZORHostApplication.h"

#include <algorithm>
#include <cstring>
#include <sys/resource.h>

namespace {

/// A program that wants too much fails instead of starving the machine.
void LimitMemory()
{
#ifndef __SANITIZE_ADDRESS__ // reserves all addresses; see RandomUserTrial for its own limit
    constexpr rlim_t kMost = 6ULL << 30;
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = std::min(limit.rlim_max, kMost); // the processes of jobs choose their own
    setrlimit(RLIMIT_AS, &limit);
#endif
}

int RunChild(int argc, char** argv)
{
    LimitMemory();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    ZORHostApplication application(argc, argv);
    const RandomUserCommandLine commandLine = RandomUserCommandLine::Parse(QCoreApplication::arguments());
    RandomUserSession session(commandLine.plan);
    session.Run();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && std::strcmp(argv[1], "--child") == 0)
        return RunChild(argc, argv);
    const QCoreApplication application(argc, argv);
    return RunRandomUsers(RandomUserCommandLine::Parse(QCoreApplication::arguments()));
}
