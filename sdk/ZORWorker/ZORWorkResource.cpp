#include "ZORWorkResource.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileName.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLoggingCategory>

#include <array>
#include <bit>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>

namespace {

Q_LOGGING_CATEGORY(ZorResourceLog, "zor.worker")

constexpr int kMaximumNumber = 9999;
constexpr qint64 kPieceSize = qint64(1) << 20; // bytes
constexpr auto kSuccession = std::chrono::seconds(1);
constexpr unsigned kMostLines = 16; // for failures of one kind in succession, before most are left out

// "part.msi", "part-2.msi", "part-3.msi" ... A name that starts with its only dot has no suffix.
QString GetCandidate(const QFileInfo& file, int number)
{
    if (number == 1)
        return file.fileName();
    const QString name = file.fileName();
    const qsizetype dot = name.lastIndexOf(u'.');
    const qsizetype stem = dot > 0 ? dot : name.size();
    const QString end = u'-' + QString::number(number) + name.mid(stem);
    return ZORSysFileName::Cut(name.left(stem), end.toUtf8().size()) + end;
}

/// Copies a file under a name that is free. Nobody sees a part of the copy.
/// \return the reason of the failure; empty when the copy is there
QString CopyFile(const QString& source, const QString& target)
{
    ZORSysFile original(source);
    if (!original.open(QIODevice::ReadOnly))
        return original.errorString();
    ZORSysReplacedFile copy(target);
    try {
        copy.Open();
    } catch (const ZORSysException& exception) {
        return exception.GetMessage();
    }
    while (!original.atEnd()) {
        const QByteArray piece = original.read(kPieceSize);
        if (original.error() != QFileDevice::NoError)
            return original.errorString();
        if (!copy.Write(piece))
            return copy.GetErrorString();
    }
    // Some file systems have no permissions.
    struct stat status = {};
    if (fstat(original.handle(), &status) == 0)
        static_cast<void>(fchmod(copy.GetDevice().handle(), status.st_mode & 0777));
    return copy.CommitNew() ? QString() : copy.GetErrorString();
}

/// Moves a file to a name that is free, by copying it where it cannot be renamed.
QString MoveFile(const QString& source, const QString& target)
{
    if (renameat2(AT_FDCWD, QFile::encodeName(source).constData(), AT_FDCWD,
                  QFile::encodeName(target).constData(), RENAME_NOREPLACE)
        == 0)
        return {};
    const QString reason = CopyFile(source, target);
    if (!reason.isEmpty())
        return reason;
    QFile original(source);
    if (original.remove())
        return {};
    QFile::remove(target);
    return original.errorString();
}

/// Remembers which numbered names are taken in the directory that got files last, so that thousands of files of one name do
/// not examine each other's names. Forgets everything as soon as somebody else changes the directory.
class TakenNumbers
{
public:
    /// Returns the highest number that is known to be taken, along with all below it; 0 for none.
    int Find(const QString& directory, const QString& name)
    {
        const std::lock_guard lock(m_mutex);
        return GetState(directory) == m_state ? m_numbers.value(name) : 0;
    }
    /// \param before  GetState() before the file was put into the directory
    void Add(const QString& directory, const QString& name, int number, const QByteArray& before)
    {
        const std::lock_guard lock(m_mutex);
        if (m_state.isEmpty() || before != m_state || m_numbers.size() >= kMostNames)
            m_numbers.clear();
        m_numbers[name] = number;
        m_state = GetState(directory);
    }
    /// Returns what changes when a name appears in a directory or disappears; empty where it cannot be examined.
    static QByteArray GetState(const QString& directory)
    {
        struct stat status = {};
        if (stat(QFile::encodeName(directory).constData(), &status) != 0)
            return {};
        const std::array<qint64, 4> values{qint64(status.st_dev), qint64(status.st_ino),
                                           status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
        return {reinterpret_cast<const char*>(values.data()), qsizetype(sizeof values)};
    }

private:
    static constexpr qsizetype kMostNames = 10000;

    std::mutex m_mutex; // of everything below
    QByteArray m_state; // of the directory
    QHash<QString, int> m_numbers;
};

/// Does what ConvertToLocalStorage() promises.
/// \param written  receives the path of the file in the directory
/// \return the reason of the failure; empty when the file is there
QString Convert(const QString& file, const QString& directory,
                ZORWorkResource::LocalConversionBehavior behavior, QString& written)
{
    const QFileInfo source(file);
    // An empty directory would be the current one: nobody means that.
    if (directory.isEmpty() || !QFileInfo(directory).isDir())
        return ZORWorkResource::tr("there is no such directory");
    if (!source.isFile())
        return ZORWorkResource::tr("there is no such file");

    written = file;
    const bool isInside = source.canonicalPath() == QFileInfo(directory).canonicalFilePath();
    if (behavior == ZORWorkResource::CopyIfElsewhere && isInside)
        return {};
    static TakenNumbers taken;
    const QByteArray before = TakenNumbers::GetState(directory);
    for (int number = taken.Find(directory, source.fileName()) + 1; number <= kMaximumNumber; ++number) {
        written = QDir(directory).filePath(GetCandidate(source, number));
        // A dangling link does not "exist" and yet takes the name.
        const auto isTaken = [&written] {
            return QFileInfo::exists(written) || QFileInfo(written).isSymLink();
        };
        if (isTaken())
            continue;
        const QString reason =
            behavior == ZORWorkResource::Move ? MoveFile(file, written) : CopyFile(file, written);
        const bool freesName = behavior == ZORWorkResource::Move && isInside;
        if (reason.isEmpty() && !freesName)
            taken.Add(directory, source.fileName(), number, before);
        // Another program may have taken the name meanwhile.
        if (reason.isEmpty() || !isTaken())
            return reason;
    }
    return ZORWorkResource::tr("no name is free");
}

/// Failures of one kind in quick succession, such as those of thousands of files on a full disk.
class FailureCounter
{
public:
    /// \return the number of failures like this one so far
    unsigned Add(const QString& directory, const QString& reason)
    {
        const std::lock_guard lock(m_mutex);
        const Clock::time_point now = Clock::now();
        const bool isLikeLast = directory == m_directory && reason == m_reason && now - m_time < kSuccession;
        m_count = isLikeLast ? m_count + 1 : 1;
        m_directory = directory;
        m_reason = reason;
        m_time = now;
        return m_count;
    }

private:
    using Clock = std::chrono::steady_clock;

    std::mutex m_mutex; // of everything below
    QString m_directory;
    QString m_reason;
    Clock::time_point m_time;
    unsigned m_count = 0;
};

// Thousands of equal lines would push all others out of sight, so beyond the first ones the log gets those whose
// number is a power of two.
void WarnOfFailure(const QString& file, const QString& directory, const QString& reason)
{
    static FailureCounter counter;
    const unsigned count = counter.Add(directory, reason);
    if (count > kMostLines && !std::has_single_bit(count))
        return;
    QString line = ZORWorkResource::tr("cannot bring '%1' into '%2': %3").arg(file, directory, reason);
    if (count >= kMostLines)
        line += ZORWorkResource::tr(" (%1 files so far; few of the next ones are logged)").arg(count);
    qCWarning(ZorResourceLog).noquote() << line;
}

} // namespace

class ZORWorkResourceData : public QSharedData
{
public:
    QString path;
};

ZORWorkResource::ZORWorkResource()
    : d(new ZORWorkResourceData)
{
}

ZORWorkResource::ZORWorkResource(const ZORWorkResource& other) = default;
ZORWorkResource::ZORWorkResource(ZORWorkResource&& other) noexcept = default;
ZORWorkResource& ZORWorkResource::operator=(const ZORWorkResource& other) = default;
ZORWorkResource& ZORWorkResource::operator=(ZORWorkResource&& other) noexcept = default;
ZORWorkResource::~ZORWorkResource() = default;

ZORWorkResource::ZORWorkResource(const QString& path)
    : ZORWorkResource()
{
    d->path = path;
    ZOR_TRACE_CALL(path);
}

QString ZORWorkResource::GetFilePath() const
{
    return d->path;
}

bool ZORWorkResource::ConvertToLocalStorage(const QString& directory, LocalConversionBehavior behavior,
                                            QStringList* written) const
{
    ZOR_TRACE_CALL(directory, behavior, static_cast<const void*>(written));
    QString path;
    const QString reason = Convert(d->path, directory, behavior, path);
    if (!reason.isEmpty()) {
        WarnOfFailure(d->path, directory, reason);
        return false;
    }
    if (written)
        written->append(path);
    return true;
}

bool operator==(const ZORWorkResource& a, const ZORWorkResource& b)
{
    return a.d->path == b.d->path;
}

void ZorTraceAppend(QByteArray& out, const ZORWorkResource& resource)
{
    ZorTraceAppend(out, resource.d->path);
}
