#include "ZORWorkDirectory_p.h"
#include "ZORWorkRemoval_p.h"

#include <ZORSystem/ZORSysDescriptor.h>
#include <ZORSystem/ZORSysException.h>

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <mutex>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr char kRoomPrefix[] = "zorjobs-";
constexpr char kLockName[] = "lock";

ZORSysDescriptor OpenFolder(const QByteArray& path)
{
    return ZORSysDescriptor(open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

/// Opens and locks the lock file of a room, which is made where it is missing.
/// \return closed if another process holds the lock or has removed the file
ZORSysDescriptor Lock(const ZORSysDescriptor& folder)
{
    constexpr mode_t kPrivate = 0600;
    ZORSysDescriptor lock(
        openat(folder.Get(), kLockName, O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, kPrivate));
    struct stat status = {};
    if (!lock.IsOpen() || flock(lock.Get(), LOCK_EX | LOCK_NB) != 0 || fstat(lock.Get(), &status) != 0
        || status.st_nlink == 0)
        return {};
    return lock;
}

/// Whether a folder belongs to this user, and nobody else may use it.
bool IsPrivate(const ZORSysDescriptor& folder)
{
    struct stat status = {};
    return fstat(folder.Get(), &status) == 0 && status.st_uid == geteuid() && (status.st_mode & 0777) == 0700;
}

/// Removes a room whose owner has ended, and leaves any other folder as it is.
///
/// Everything is reached through the descriptor of the folder that was examined: its path may lead elsewhere by then.
void RemoveIfAbandoned(const std::filesystem::path& path)
{
    const ZORSysDescriptor folder = OpenFolder(path.c_str());
    if (!folder.IsOpen() || !IsPrivate(folder))
        return;
    const ZORSysDescriptor lock = Lock(folder);
    if (!lock.IsOpen())
        return;
    std::error_code error;
    const std::filesystem::path content = "/proc/self/fd/" + std::to_string(folder.Get());
    std::vector<std::filesystem::path> entries; // listed first: removing changes what is listed
    for (std::filesystem::directory_iterator entry(content, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().filename() != kLockName)
            entries.push_back(entry->path());
    }
    for (const std::filesystem::path& entry : entries)
        std::filesystem::remove_all(entry, error);
    unlinkat(folder.Get(), kLockName, 0);
    rmdir(path.c_str()); // fails where something is left
}

void RemoveAbandonedRooms(const std::filesystem::path& baseDirectory)
try {
    std::error_code error;
    std::vector<std::filesystem::path> rooms;
    for (std::filesystem::directory_iterator entry(baseDirectory, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().filename().native().starts_with(kRoomPrefix))
            rooms.push_back(entry->path());
    }
    std::sort(rooms.begin(), rooms.end());
    for (const std::filesystem::path& room : rooms)
        RemoveIfAbandoned(room);
} catch (const std::exception&) {
    // The next process tries it again.
}

// Names of jobs come from files: only what every file system takes.
QString GetDirectoryName(const QString& jobName)
{
    QString name = jobName.left(40);
    for (QChar& character : name) {
        const char16_t code = character.unicode();
        if (code >= 128 || !(character.isLetterOrNumber() || code == u'-'))
            character = u'_';
    }
    return name + QStringLiteral("-XXXXXX");
}

[[noreturn]] void ThrowCannotMake(const QString& baseDirectory, const QString& reason)
{
    throw ZORSysException(
        ZORWorkDirectory::tr("cannot make a work directory in '%1': %2").arg(baseDirectory, reason));
}

} // namespace

/// The folder of this process in a base directory. It is removed with the last directory in it.
class ZORWorkDirectory::Room
{
public:
    /// Returns the room of this process in a base directory, which exists.
    /// \throws ZORSysException as the constructor of ZORWorkDirectory
    static std::shared_ptr<const Room> Get(const QString& baseDirectory);

    explicit Room(const QString& baseDirectory);
    ~Room();
    Q_DISABLE_COPY_MOVE(Room)

    QString GetPath() const { return QFile::decodeName(m_path); }

private:
    /// Whether it is still there: others may have cleaned up the base directory.
    bool IsUsable() const { return OpenFolder(m_path).IsOpen() && getpid() == m_process; }
    bool Make(QByteArray path);

    const pid_t m_process = getpid(); // a copy of the process does not own the room
    QByteArray m_path;
    ZORSysDescriptor m_folder;
    ZORSysDescriptor m_lock;
};

ZORWorkDirectory::Room::Room(const QString& baseDirectory)
{
    const QString name = QLatin1String(kRoomPrefix) + QString::number(m_process) + QLatin1String("-XXXXXX");
    const QByteArray path = QFile::encodeName(QDir(baseDirectory).filePath(name));
    // Another process may take a room for an abandoned one before it is locked.
    constexpr int kAttempts = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (Make(path))
            return;
    }
    ThrowCannotMake(baseDirectory, QString::fromLocal8Bit(std::strerror(errno)));
}

bool ZORWorkDirectory::Room::Make(QByteArray path)
{
    if (!mkdtemp(path.data()))
        return false;
    m_path = path;
    m_folder = OpenFolder(path);
    if (m_folder.IsOpen())
        m_lock = Lock(m_folder);
    if (m_lock.IsOpen())
        return true;
    const int error = errno;
    if (m_folder.IsOpen())
        unlinkat(m_folder.Get(), kLockName, 0);
    rmdir(path.constData());
    errno = error;
    return false;
}

ZORWorkDirectory::Room::~Room()
{
    if (getpid() != m_process)
        return;
    unlinkat(m_folder.Get(), kLockName, 0);
    rmdir(m_path.constData());
}

std::shared_ptr<const ZORWorkDirectory::Room> ZORWorkDirectory::Room::Get(const QString& baseDirectory)
{
    struct Rooms
    {
        std::mutex mutex; // of the map
        std::map<QString, std::weak_ptr<const Room>> map;
    };
    static Rooms* const rooms = new Rooms; // never destroyed: jobs may run until the end of the process
    const QString base = QDir(baseDirectory).absolutePath();
    const std::lock_guard lock(rooms->mutex);
    const bool isFirst = !rooms->map.contains(base);
    std::weak_ptr<const Room>& known = rooms->map[base];
    std::shared_ptr<const Room> room = known.lock();
    if (!room || !room->IsUsable()) {
        room = std::make_shared<const Room>(base);
        known = room;
    }
    if (isFirst) {
        try {
            // Nobody waits for it: there may be much to remove.
            std::thread(RemoveAbandonedRooms, std::filesystem::path(QFile::encodeName(base).toStdString()))
                .detach();
        } catch (const std::system_error&) {
            rooms->map.erase(base);
        }
    }
    return room;
}

ZORWorkDirectory::ZORWorkDirectory(const QString& baseDirectory, const QString& jobName, bool isKept)
{
    QDir().mkpath(baseDirectory);
    if (!isKept)
        m_room = Room::Get(baseDirectory);
    const QDir parent(isKept ? baseDirectory : m_room->GetPath());
    m_directory = std::make_unique<QTemporaryDir>(parent.filePath(GetDirectoryName(jobName)));
    if (!m_directory->isValid())
        ThrowCannotMake(baseDirectory, m_directory->errorString());
    m_directory->setAutoRemove(!isKept);
}

ZORWorkDirectory::~ZORWorkDirectory()
{
    if (m_room)
        ZORWorkRemoval::Remove(std::move(m_directory), std::move(m_room));
}
