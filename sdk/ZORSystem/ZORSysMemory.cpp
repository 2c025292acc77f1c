#include "ZORSysMemory.h"

#include <ZORSystem/ZORSysFileException.h>

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <limits>
#include <optional>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr qint64 kUnlimited = std::numeric_limits<qint64>::max();

QByteArray ReadSystemFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Returns the number behind \a key at the beginning of a line, and nothing when no line has it.
std::optional<qint64> FindNumber(const QByteArray& text, const QByteArray& key)
{
    for (const QByteArray& line : text.split('\n')) {
        if (!line.startsWith(key))
            continue;
        bool isNumber = false;
        const qint64 number = line.mid(key.size()).simplified().split(' ').constFirst().toLongLong(&isNumber);
        if (isNumber)
            return number;
    }
    return std::nullopt;
}

qint64 GetAvailableOfMachine()
{
    const QByteArray text = ReadSystemFile(QStringLiteral("/proc/meminfo"));
    const std::optional<qint64> free = FindNumber(text, "MemAvailable:");
    return free ? (*free + FindNumber(text, "SwapFree:").value_or(0)) * 1024 : kUnlimited;
}

/// What the control group of the process, or one around it, leaves. Pages of files count as free, since the system
/// drops them first.
qint64 GetAvailableOfGroup()
{
    QByteArray group;
    for (const QByteArray& line : ReadSystemFile(QStringLiteral("/proc/self/cgroup")).split('\n')) {
        if (line.startsWith("0::/"))
            group = line.mid(3);
    }
    qint64 available = kUnlimited;
    while (!group.isEmpty()) {
        const QString folder = QStringLiteral("/sys/fs/cgroup") + QString::fromLocal8Bit(group);
        const std::optional<qint64> most =
            FindNumber(ReadSystemFile(folder + QLatin1String("/memory.max")), "");
        const std::optional<qint64> used =
            FindNumber(ReadSystemFile(folder + QLatin1String("/memory.current")), "");
        if (most && used) {
            const QByteArray kinds = ReadSystemFile(folder + QLatin1String("/memory.stat"));
            const qint64 files = FindNumber(kinds, "active_file ").value_or(0)
                                 + FindNumber(kinds, "inactive_file ").value_or(0);
            available = std::min(available, std::max<qint64>(0, *most - *used + files));
        }
        group.truncate(group.lastIndexOf('/'));
    }
    return available;
}

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORSysMemory)
};

/// \param moreDigits  behind the decimal point; with 0, everything below 1 MB is 1 MB
QString Format(qint64 bytes, int moreDigits)
{
    constexpr double kMega = 1e6;
    constexpr double kGiga = 1e9;
    if (bytes >= qint64(kGiga))
        return Texts::tr("%1 GB").arg(double(bytes) / kGiga, 0, 'f', 1 + moreDigits);
    const double megabytes = double(bytes) / kMega;
    return Texts::tr("%1 MB").arg(moreDigits == 0 ? std::max(1.0, megabytes) : megabytes, 0, 'f', moreDigits);
}

} // namespace

qint64 ZORSysMemory::GetAvailableAddresses()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return kUnlimited;
    const qint64 pages =
        ReadSystemFile(QStringLiteral("/proc/self/statm")).split(' ').constFirst().toLongLong();
    const qint64 most = qint64(std::min<rlim_t>(limit.rlim_cur, rlim_t(kUnlimited)));
    return std::max<qint64>(0, most - pages * sysconf(_SC_PAGESIZE));
}

qint64 ZORSysMemory::GetAvailable()
{
    return std::min({GetAvailableAddresses(), GetAvailableOfGroup(), GetAvailableOfMachine()});
}

QString ZORSysMemory::FormatSize(qint64 bytes)
{
    return Format(bytes, 0);
}

std::pair<QString, QString> ZORSysMemory::FormatSizes(qint64 first, qint64 second)
{
    constexpr int kMostDigits = 8; // bytes, in gigabytes
    int digits = 0;
    while (digits < kMostDigits && Format(first, digits) == Format(second, digits))
        ++digits;
    return {Format(first, digits), Format(second, digits)};
}

void ZORSysMemory::ThrowCannotRead(const QString& subject, qint64 needed)
{
    if (needed <= 0)
        throw ZORSysFileException(Texts::tr("not enough memory to read '%1'").arg(subject));
    throw ZORSysFileException(Texts::tr("not enough memory to read '%1' (needs about %2)")
                                  .arg(subject, ZORSysMemory::FormatSize(needed)));
}

ZORSysMemory::Reserve::Reserve(qint64 size)
    : m_size(size)
{
    Hold();
}

ZORSysMemory::Reserve::~Reserve()
{
    Release();
}

void ZORSysMemory::Reserve::Hold()
{
    if (m_block)
        return;
    // From the system itself: an allocator may keep memory that is returned to it.
    void* const block = mmap(nullptr, size_t(m_size), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    m_block = block == MAP_FAILED ? nullptr : block;
}

void ZORSysMemory::Reserve::Release()
{
    if (m_block)
        munmap(m_block, size_t(m_size));
    m_block = nullptr;
}
