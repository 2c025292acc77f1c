#include "ZORSysReplacedFile.h"

#include "files/ZORSysOverwriting_p.h"

#include <ZORSystem/ZORSysDescriptor.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

namespace {

constexpr int kOpenFlags = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
constexpr int kMaximumLinks = 40;
constexpr mode_t kNewFileMode = 0666; // less the mask of the process
constexpr mode_t kSecretMode = 0600;

/// The file that a path means in the end. A link to nothing names the file to be made.
QString FollowLinks(const QString& path)
{
    const QFileInfo present(path);
    if (present.exists())
        return present.canonicalFilePath();
    QString target = path;
    for (int i = 0; i < kMaximumLinks && QFileInfo(target).isSymLink(); ++i)
        target = QFileInfo(target).symLinkTarget();
    return target;
}

QByteArray MakeHiddenPath(const QByteArray& folder)
{
    const quint64 number = QRandomGenerator::global()->generate64();
    return folder + "/.zor-save-" + QByteArray::number(number, 16).rightJustified(16, '0');
}

QString GetLinkOf(int file)
{
    return QStringLiteral("/proc/self/fd/%1").arg(file);
}

/// Gives \a file the owner, the group and the permissions of another as far as the system lets it. A group that
/// cannot be kept gets no rights that others do not have.
void CopyRights(int file, const struct stat& other)
{
    mode_t mode = other.st_mode & 07777;
    if (fchown(file, other.st_uid, other.st_gid) != 0) {
        mode &= 0777;
        if (fchown(file, uid_t(-1), other.st_gid) != 0)
            mode = (mode & 0707) | ((mode & 07) << 3);
    }
    // Some file systems have no permissions.
    static_cast<void>(fchmod(file, mode));
}

/// Retries what a file takes only in part: its second answer has the reason.
class WholeFile : public QFile
{
public:
    /// Reason of the first write that failed; empty when none did.
    const QString& GetFailure() const { return m_failure; }

protected:
    qint64 writeData(const char* bytes, qint64 size) override
    {
        for (qint64 done = 0; done < size;) {
            const qint64 count = QFile::writeData(bytes + done, size - done);
            if (count <= 0) {
                if (m_failure.isEmpty())
                    m_failure = errorString();
                return -1;
            }
            done += count;
        }
        return size;
    }

private:
    QString m_failure;
};

} // namespace

class ZORSysReplacedFile::Private
{
public:
    explicit Private(const QString& wanted)
        : path(wanted)
    {
    }
    ~Private() { RemoveStagedName(); }
    Q_DISABLE_COPY_MOVE(Private)

    void Open();
    /// The file that is to get the content.
    enum class Goal { AnyFile, NewFile };
    bool Commit(Goal goal);

    const QString path;
    QString error;
    ZORSysDescriptor content; // outlives the device, which writes to it
    WholeFile device;

private:
    enum class Staging { None, UnnamedFile, NamedFile, Memory };

    [[noreturn]] void ThrowCannotOpen(const QString& reason);
    void OpenContent();
    bool StageInFolder(const QByteArray& folder);
    bool StageInMemory();
    bool Place(Goal goal);
    bool PlaceNew(const QByteArray& name);
    bool PlaceOverPresent();
    bool Overwrite();
    bool Fail(int number);
    void RemoveStagedName();

    Staging m_staging = Staging::None;
    QByteArray m_target;                  // behind all links
    QByteArray m_hiddenPath;              // name that an unnamed file can get
    QByteArray m_stagedName;              // name of the content at present; empty without one
    std::optional<struct stat> m_present; // nothing when there is no file yet
};

void ZORSysReplacedFile::Private::Open()
{
    if (path.contains(QChar::Null))
        ThrowCannotOpen(qt_error_string(EINVAL));
    // Before it is opened: opening alone moves the tape of some devices.
    if (const QString obstacle = ZORSysFile::FindObstacle(path, QIODevice::WriteOnly); !obstacle.isEmpty())
        ThrowCannotOpen(obstacle);
    content.Reset(open(QFile::encodeName(path).constData(), O_WRONLY | kOpenFlags));
    if (content.IsOpen() || errno == ENOENT)
        OpenContent();
    if (!content.IsOpen())
        ThrowCannotOpen(qt_error_string(errno));
    // Again: the path may lead to something else by now.
    if (const QString obstacle = ZORSysFile::FindObstacle(GetLinkOf(content.Get()), QIODevice::WriteOnly);
        !obstacle.isEmpty())
        ThrowCannotOpen(obstacle);
    if (!device.open(content.Get(), QIODevice::WriteOnly | QIODevice::Unbuffered, QFile::DontCloseHandle))
        ThrowCannotOpen(device.errorString());
}

void ZORSysReplacedFile::Private::ThrowCannotOpen(const QString& reason)
{
    error = reason;
    throw ZORSysFileOpenException(path, reason);
}

/// Makes \a content what the device has to write to; closed with errno set when that is not possible.
void ZORSysReplacedFile::Private::OpenContent()
{
    if (content.IsOpen()) {
        m_present.emplace();
        if (fstat(content.Get(), &*m_present) != 0)
            m_present->st_mode = 0;
        if (!S_ISREG(m_present->st_mode))
            return;
    }
    const QString target = FollowLinks(path);
    const QByteArray folder = QFile::encodeName(QFileInfo(target).path());
    m_target = QFile::encodeName(target);
    if (!StageInFolder(folder) && m_present)
        StageInMemory();
}

bool ZORSysReplacedFile::Private::StageInFolder(const QByteArray& folder)
{
    m_hiddenPath = MakeHiddenPath(folder);
    content.Reset(open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, kNewFileMode));
    m_staging = Staging::UnnamedFile;
    if (content.IsOpen() && access(GetLinkOf(content.Get()).toUtf8().constData(), F_OK) == 0)
        return true;
    if (!content.IsOpen() && errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)
        return false;
    // Others must not read in a new file what they may not read in the present one.
    const mode_t mode = m_present ? kSecretMode : kNewFileMode;
    content.Reset(open(m_hiddenPath.constData(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, mode));
    m_staging = Staging::NamedFile;
    if (content.IsOpen())
        m_stagedName = m_hiddenPath;
    return content.IsOpen();
}

bool ZORSysReplacedFile::Private::StageInMemory()
{
    const bool canBeKept = ZORSysDescriptor(open(m_target.constData(), O_RDWR | kOpenFlags)).IsOpen();
    content.Reset(canBeKept ? zor::sys::MakeMemoryFile() : -1);
    m_staging = Staging::Memory;
    return content.IsOpen();
}

bool ZORSysReplacedFile::Private::Commit(Goal goal)
{
    if (!device.isOpen())
        return Fail(EBADF);
    error = device.GetFailure();
    const bool isPlaced = error.isEmpty() && (m_staging == Staging::None || Place(goal));
    device.close();
    RemoveStagedName();
    return isPlaced;
}

bool ZORSysReplacedFile::Private::Place(Goal goal)
{
    if (goal == Goal::NewFile)
        return PlaceNew(QFile::encodeName(path)) || Fail(errno);
    if (m_staging == Staging::Memory)
        return Overwrite();
    if (!zor::sys::Sync(content.Get()))
        return Fail(errno);
    // Nobody can be kept from making the file meanwhile; it is replaced then.
    if (!m_present && PlaceNew(m_target))
        return true;
    if (!m_present && errno != EEXIST)
        return Fail(errno);
    if (m_present)
        CopyRights(content.Get(), *m_present);
    return PlaceOverPresent() || Overwrite();
}

/// Gives the content a name that nothing has; false with errno set otherwise.
bool ZORSysReplacedFile::Private::PlaceNew(const QByteArray& name)
{
    if (m_staging == Staging::UnnamedFile) {
        return linkat(AT_FDCWD, GetLinkOf(content.Get()).toUtf8().constData(), AT_FDCWD, name.constData(),
                      AT_SYMLINK_FOLLOW)
               == 0;
    }
    if (m_stagedName.isEmpty()) {
        errno = EEXIST; // the content is in memory, to overwrite what is there
        return false;
    }
    // FAT has no links, and network drives cannot rename without replacing.
    if (link(m_stagedName.constData(), name.constData()) == 0)
        return true;
    if (errno == EEXIST
        || renameat2(AT_FDCWD, m_stagedName.constData(), AT_FDCWD, name.constData(), RENAME_NOREPLACE) != 0)
        return false;
    m_stagedName.clear();
    return true;
}

bool ZORSysReplacedFile::Private::PlaceOverPresent()
{
    if (m_staging == Staging::UnnamedFile) {
        if (linkat(AT_FDCWD, GetLinkOf(content.Get()).toUtf8().constData(), AT_FDCWD,
                   m_hiddenPath.constData(), AT_SYMLINK_FOLLOW)
            != 0)
            return false;
        m_stagedName = m_hiddenPath;
    }
    if (rename(m_stagedName.constData(), m_target.constData()) != 0)
        return false;
    m_stagedName.clear();
    return true;
}

bool ZORSysReplacedFile::Private::Overwrite()
{
    error = zor::sys::Overwrite(m_target, content.Get());
    return error.isEmpty();
}

bool ZORSysReplacedFile::Private::Fail(int number)
{
    error = qt_error_string(number);
    return false;
}

void ZORSysReplacedFile::Private::RemoveStagedName()
{
    if (!m_stagedName.isEmpty())
        unlink(m_stagedName.constData());
    m_stagedName.clear();
}

ZORSysReplacedFile::ZORSysReplacedFile(const QString& path)
    : d(std::make_unique<Private>(path))
{
}

ZORSysReplacedFile::~ZORSysReplacedFile() = default;

void ZORSysReplacedFile::Open()
{
    d->Open();
}

QFileDevice& ZORSysReplacedFile::GetDevice()
{
    return d->device;
}

bool ZORSysReplacedFile::Write(const QByteArray& content)
{
    return d->device.write(content) == content.size();
}

bool ZORSysReplacedFile::Commit()
{
    return d->Commit(Private::Goal::AnyFile);
}

bool ZORSysReplacedFile::CommitNew()
{
    return d->Commit(Private::Goal::NewFile);
}

QString ZORSysReplacedFile::GetErrorString() const
{
    return d->error.isEmpty() ? d->device.errorString() : d->error;
}

QString ZORSysReplacedFile::Replace(const QString& path, const QByteArray& content)
{
    ZORSysReplacedFile file(path);
    try {
        file.Open();
        if (file.Write(content) && file.Commit())
            return {};
    } catch (const ZORSysFileOpenException&) {
        // The file knows the reason.
    }
    return file.GetErrorString();
}

bool ZORSysReplacedFile::WriteAll(QIODevice& device, const QByteArray& bytes)
{
    // A device that took only a part has no reason for that before it is asked again.
    int refusals = 0;
    for (qsizetype done = 0; done < bytes.size() && refusals < 2;) {
        const qint64 count = device.write(bytes.constData() + done, bytes.size() - done);
        if (count > 0)
            done += count;
        else
            ++refusals;
    }
    auto* const file = qobject_cast<QFileDevice*>(&device);
    return refusals < 2 && (!file || file->flush() || file->flush());
}
