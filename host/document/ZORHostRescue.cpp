#include "document/ZORHostRescue.h"

#include "base/ZORHostLogging.h"

#include <ZORSystem/ZORSysDescriptor.h>
#include <ZORSystem/ZORSysFile.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

#include <algorithm>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostRescue)
};

constexpr char kMark[] =
    ".new"; // ends the name of an empty file beside each document that no start has named yet
constexpr char kNote[] = ".session"; // ends the name of the file that names the document and bears the lock
constexpr char kDocumentKey[] = "document";

/// Makes the folder for this user alone.
/// \return whether it can be used; others may have taken its name in the folder for temporary files
bool MakeFolder(const QString& path)
{
    if (!QDir().mkpath(path))
        return false;
    const QFileInfo folder(path);
    if (!folder.isDir() || folder.isSymLink() || folder.ownerId() != uint(geteuid()))
        return false;
    return QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString MakePath(const QDir& folder)
{
    // Several hosts end at the same time when a session does.
    const QString start =
        QStringLiteral("%1-%2").arg(QDateTime::currentDateTime().toString("yyyy-MM-dd-hhmmss"),
                                    QString::number(QCoreApplication::applicationPid()));
    const auto isTaken = [](const QString& path) {
        return QFile::exists(path) || QFile::exists(path + kNote);
    };
    QString path = folder.filePath(start + ".ZORCont");
    for (int number = 2; isTaken(path); ++number)
        path = folder.filePath(QStringLiteral("%1-%2.ZORCont").arg(start, QString::number(number)));
    return path;
}

/// Opens the note beside a file and locks it; closed where it is missing or somebody else holds the lock.
std::unique_ptr<ZORSysDescriptor> LockNote(const QString& path, int flags)
{
    constexpr int kFlags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const QByteArray note = QFile::encodeName(path + kNote);
    auto lock = std::make_unique<ZORSysDescriptor>(open(note.constData(), kFlags | flags, 0600));
    if (lock->IsOpen() && flock(lock->Get(), LOCK_EX | LOCK_NB) != 0)
        lock->Reset(-1);
    return lock;
}

QString ReadDocument(const QString& path)
{
    constexpr qint64 kMost = 1 << 20; // bytes
    ZORSysFile note(path + kNote);
    if (!note.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(note.read(kMost)).object().value(QLatin1String(kDocumentKey)).toString();
}

} // namespace

QStringList ZORHostRescue::GetFolders()
{
    return {QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/rescued",
            QDir::tempPath() + QStringLiteral("/zorhost-rescued-%1").arg(geteuid())};
}

QList<ZORHostRescue::Entry> ZORHostRescue::FindAbandoned()
{
    QList<Entry> entries;
    for (const QString& path : GetFolders()) {
        const QDir folder(path);
        if (QFileInfo(path).ownerId() != uint(geteuid()))
            continue; // somebody else's work, or a trap
        for (const QString& name : folder.entryList({QLatin1Char('*') + kNote}, QDir::Files)) {
            const QString file = folder.filePath(name).chopped(qstrlen(kNote));
            std::shared_ptr<ZORSysDescriptor> lock = LockNote(file, 0);
            if (!lock->IsOpen())
                continue;
            const QFileInfo info(file);
            if (info.isFile())
                entries.append({file, ReadDocument(file), info.lastModified(), std::move(lock)});
            else
                QFile::remove(file + kNote); // its process ended before the first save
        }
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.time > b.time; });
    return entries;
}

void ZORHostRescue::Discard(const Entry& entry)
{
    for (const char* ending : {"", kMark, kNote})
        QFile::remove(entry.path + QLatin1String(ending));
}

void ZORHostRescue::Remember(const QString& path)
{
    QFile mark(path + kMark);
    if (!mark.open(QIODevice::WriteOnly))
        qCWarning(lcHost).noquote() << "the next start cannot name the rescued document:"
                                    << mark.errorString();
}

QStringList ZORHostRescue::TakeNotices()
{
    QStringList notices;
    for (const QString& place : GetFolders()) {
        const QDir folder(place);
        for (const QString& name : folder.entryList({QLatin1Char('*') + kMark}, QDir::Files, QDir::Name)) {
            const QString mark = folder.filePath(name);
            if (!QFile::remove(mark) && !QFile::exists(mark))
                continue; // a host that starts at the same time names it
            const QString path = mark.chopped(qstrlen(kMark));
            if (!QFile::exists(path))
                continue;
            notices.append(Texts::tr("A session was ended with unsaved changes. Its document is in '%1'.")
                               .arg(QDir::toNativeSeparators(path)));
        }
    }
    return notices;
}

ZORHostRescueFile::ZORHostRescueFile() = default;

ZORHostRescueFile::~ZORHostRescueFile()
{
    Remove();
}

QString ZORHostRescueFile::Write(const std::function<QString(const QString& path)>& write,
                                 const QString& document)
{
    if (!m_path.isEmpty() && write(m_path).isEmpty())
        return {};
    Remove(); // the folder takes nothing anymore
    QString error;
    for (const QString& folder : ZORHostRescue::GetFolders()) {
        if (!Reserve(folder, document)) {
            error = Texts::tr("Cannot write into the folder '%1'").arg(QDir::toNativeSeparators(folder));
            continue;
        }
        error = write(m_path);
        if (error.isEmpty())
            return {};
        Remove();
    }
    return error;
}

bool ZORHostRescueFile::Reserve(const QString& folder, const QString& document)
{
    if (!MakeFolder(folder))
        return false;
    const QString path = MakePath(QDir(folder));
    std::unique_ptr<ZORSysDescriptor> lock = LockNote(path, O_CREAT | O_EXCL);
    if (!lock->IsOpen())
        return false;
    const QByteArray note =
        QJsonDocument(QJsonObject{{QLatin1String(kDocumentKey), document}}).toJson(QJsonDocument::Compact);
    // Without it, the work is recovered as an untitled document.
    static_cast<void>(write(lock->Get(), note.constData(), size_t(note.size())) == note.size());
    m_path = path;
    m_lock = std::move(lock);
    return true;
}

void ZORHostRescueFile::Remove()
{
    if (!m_path.isEmpty())
        ZORHostRescue::Discard({m_path, {}, {}, {}});
    Leave();
}

void ZORHostRescueFile::Leave()
{
    m_path.clear();
    m_lock.reset();
}
