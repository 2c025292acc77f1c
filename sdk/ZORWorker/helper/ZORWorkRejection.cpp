#include "ZORWorkRejection_p.h"

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <sys/stat.h>

namespace {

Q_LOGGING_CATEGORY(ZorWorkerLog, "zor.worker")

using namespace std::chrono_literals;

constexpr auto kShortest = 1s; // until a program is tried again
constexpr int kFactor = 3;     // the same time as a multiple of the time that trying it took

} // namespace

QByteArray ZORWorkRejection::GetFileState(const QString& path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    const std::array<qint64, 8> values{qint64(status.st_dev),  qint64(status.st_ino), qint64(status.st_size),
                                       qint64(status.st_mode), status.st_mtim.tv_sec, status.st_mtim.tv_nsec,
                                       status.st_ctim.tv_sec,  status.st_ctim.tv_nsec};
    return {reinterpret_cast<const char*>(values.data()), qsizetype(sizeof values)};
}

bool ZORWorkRejection::IsRejected(const QString& program)
{
    const std::lock_guard lock(m_mutex);
    return program == m_program && Clock::now() < m_end && GetFileState(program) == m_file;
}

void ZORWorkRejection::Reject(const QString& program, const QByteArray& file, const QString& reason,
                              Clock::duration effort)
{
    {
        const std::lock_guard lock(m_mutex);
        const bool isKnown = program == m_program && reason == m_reason;
        m_program = program;
        m_file = file;
        m_reason = reason;
        m_end = Clock::now() + std::max<Clock::duration>(kShortest, kFactor * effort);
        if (isKnown)
            return;
    }
    qCWarning(ZorWorkerLog).noquote()
        << tr("jobs run in threads of this process: cannot use helper program '%1': %2").arg(program, reason);
}

void ZORWorkRejection::Readmit(const QString& program)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_program != program)
            return;
        m_program.clear();
    }
    qCInfo(ZorWorkerLog).noquote()
        << tr("jobs run in helper processes again: helper program '%1' can be used").arg(program);
}

void ZORWorkRejection::WarnOfKind(const QString& program, const QByteArray& kind)
{
    const QString message =
        tr("jobs of kind '%1' run in threads of this process: helper program '%2' does not know them")
            .arg(QString::fromUtf8(kind), program);
    {
        const std::lock_guard lock(m_mutex);
        if (m_warnings.contains(message))
            return;
        m_warnings.insert(message);
    }
    qCWarning(ZorWorkerLog).noquote() << message;
}
