#include "ZORWorkSpawn_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

// Descriptors of this process that become those of the helper lie above them, so that no copy overwrites
// another.
constexpr int kLowestSource = 16;

[[noreturn]] void ThrowError(int error)
{
    throw ZORSysException(QString::fromLocal8Bit(std::strerror(error)));
}

void Check(int result)
{
    if (result != 0)
        ThrowError(result);
}

ZORSysDescriptor Lift(ZORSysDescriptor descriptor)
{
    ZORSysDescriptor lifted(fcntl(descriptor.Get(), F_DUPFD_CLOEXEC, kLowestSource));
    if (!lifted.IsOpen())
        ThrowError(errno);
    return lifted;
}

void MakeNonBlocking(const ZORSysDescriptor& descriptor)
{
    if (fcntl(descriptor.Get(), F_SETFL, fcntl(descriptor.Get(), F_GETFL) | O_NONBLOCK) != 0)
        ThrowError(errno);
}

class FileActions
{
public:
    FileActions() { Check(posix_spawn_file_actions_init(&m_actions)); }
    ~FileActions() { posix_spawn_file_actions_destroy(&m_actions); }
    Q_DISABLE_COPY_MOVE(FileActions)

    void Fill(const ZORSysDescriptor& socket, const ZORSysDescriptor& errors)
    {
        Check(posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
        Check(posix_spawn_file_actions_addopen(&m_actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0));
        Check(posix_spawn_file_actions_adddup2(&m_actions, errors.Get(), STDERR_FILENO));
        Check(posix_spawn_file_actions_adddup2(&m_actions, socket.Get(), ZORWorkSpawn::kSocket));
        Check(posix_spawn_file_actions_addclosefrom_np(&m_actions, ZORWorkSpawn::kSocket + 1));
    }
    const posix_spawn_file_actions_t* Get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions;
};

class Attributes
{
public:
    Attributes()
    {
        Check(posix_spawnattr_init(&m_attributes));
        sigset_t set;
        sigemptyset(&set);
        Check(posix_spawnattr_setsigmask(&m_attributes, &set));
        sigfillset(&set);
        Check(posix_spawnattr_setsigdefault(&m_attributes, &set));
        // Its own process group: an interrupt from the terminal is the caller's matter.
        Check(posix_spawnattr_setpgroup(&m_attributes, 0));
        Check(posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF
                                                          | POSIX_SPAWN_SETPGROUP));
    }
    ~Attributes() { posix_spawnattr_destroy(&m_attributes); }
    Q_DISABLE_COPY_MOVE(Attributes)

    const posix_spawnattr_t* Get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes;
};

// Strings for exec(): a name and a value each.
std::vector<QByteArray> MakeEnvironment()
{
    constexpr std::array<const char*, 3> kWithheld{
        "ZOR_API_TRACE=", "QT_QPA_PLATFORM=", "QT_QPA_PLATFORMTHEME="};
    std::vector<QByteArray> environment{"QT_QPA_PLATFORM=offscreen"};
    for (char** entry = environ; entry && *entry; ++entry) {
        const QByteArray text(*entry);
        if (std::none_of(kWithheld.begin(), kWithheld.end(),
                         [&text](const char* name) { return text.startsWith(name); }))
            environment.push_back(text);
    }
    return environment;
}

std::vector<char*> GetPointers(std::vector<QByteArray>& strings)
{
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (QByteArray& string : strings)
        pointers.push_back(string.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

ZORWorkSpawned ZORWorkSpawn::Spawn(const QString& program)
{
    std::array<int, 2> sockets{}, pipes{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0)
        ThrowError(errno);
    ZORWorkSpawned spawned;
    spawned.socket = ZORSysDescriptor(sockets[0]);
    ZORSysDescriptor socket(sockets[1]);
    spawned.wake = ZORSysDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!spawned.wake.IsOpen())
        ThrowError(errno);
    if (pipe2(pipes.data(), O_CLOEXEC) != 0)
        ThrowError(errno);
    spawned.errors = ZORSysDescriptor(pipes[0]);
    ZORSysDescriptor errors(pipes[1]);
    MakeNonBlocking(spawned.socket);
    MakeNonBlocking(spawned.errors);
    socket = Lift(std::move(socket));
    errors = Lift(std::move(errors));

    FileActions actions;
    actions.Fill(socket, errors);
    const Attributes attributes;
    std::vector<QByteArray> environment = MakeEnvironment();
    std::vector<QByteArray> arguments{QFile::encodeName(program), "--serve", QByteArray::number(getpid())};
    Check(posix_spawn(&spawned.pid, arguments[0].constData(), actions.Get(), attributes.Get(),
                      GetPointers(arguments).data(), GetPointers(environment).data()));
    return spawned;
}
