#include "document/ZORHostOpening.h"

#include "base/ZORHostLogging.h"

#include <ZORCommand/ZORCmdTask.h>
#include <ZORExchange/ZORExcImport.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QLocale>
#include <QPointer>

#include <utility>

namespace {

/// A message of the SDK as a sentence.
QString ToSentence(const QString& message)
{
    return message.left(1).toUpper() + message.mid(1);
}

} // namespace

ZORHostOpening::ZORHostOpening(QObject* parent)
    : QObject(parent)
{
}

ZORHostOpening::~ZORHostOpening() = default;

void ZORHostOpening::SetCommitter(const Committer& committer)
{
    m_committer = committer;
}

void ZORHostOpening::Enqueue(const QString& fileName, Mode mode)
{
    if (!IsBusy())
        m_numUnread = 0;
    m_waiting.append({fileName, mode});
    QMetaObject::invokeMethod(this, &ZORHostOpening::StartNext, Qt::QueuedConnection);
}

bool ZORHostOpening::Wait()
{
    if (IsBusy()) {
        QEventLoop loop;
        connect(this, &ZORHostOpening::Idle, &loop, &QEventLoop::quit);
        connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return m_numUnread == 0 && !IsBusy(); // the event loop may have ended before
}

bool ZORHostOpening::IsBusy() const
{
    return m_task || !m_waiting.isEmpty();
}

QString ZORHostOpening::GetFile() const
{
    return m_task ? m_current.fileName : QString();
}

double ZORHostOpening::GetProgress() const
{
    return m_task ? m_task->GetProgress() : 0;
}

void ZORHostOpening::CancelFile()
{
    if (m_task)
        m_task->Cancel();
}

void ZORHostOpening::CancelAll()
{
    const QList<Entry> waiting = std::exchange(m_waiting, {});
    CancelFile();
    m_numUnread += int(waiting.size());
    for (const Entry& entry : waiting)
        emit Canceled(entry.fileName);
    if (!waiting.isEmpty() && !IsBusy())
        emit Idle();
}

void ZORHostOpening::StartNext()
{
    if (m_task || m_waiting.isEmpty())
        return;
    m_current = m_waiting.takeFirst();
    m_startTime = QDateTime::currentMSecsSinceEpoch();
    m_import = std::make_shared<ZORExcImport>(m_current.fileName);
    m_task = std::make_unique<ZORCmdTask>(
        [import = m_import](const ZORCmdTask::Report& report) { import->Prepare(report); });
    connect(m_task.get(), &ZORCmdTask::ProgressChanged, this, &ZORHostOpening::ProgressChanged);
    // Queued: the task is deleted by then.
    connect(m_task.get(), &ZORCmdTask::Finished, this, &ZORHostOpening::OnTaskFinished, Qt::QueuedConnection);
    emit Started(m_current.fileName);
    m_task->Start();
}

void ZORHostOpening::OnTaskFinished()
{
    const std::unique_ptr<ZORCmdTask> task = std::move(m_task);
    const QPointer<ZORHostOpening> self(this); // receivers may show boxes, and much happens meanwhile
    try {
        task->ThrowFailure();
        if (task->GetOutcome() == ZORCmdTask::Succeeded) {
            Commit();
        } else {
            ++m_numUnread;
            qCInfo(lcHost).noquote()
                << tr("Canceled reading '%1'").arg(QDir::toNativeSeparators(m_current.fileName));
            emit Canceled(m_current.fileName);
        }
    } catch (const ZORSysException& exception) {
        Fail(exception.GetMessage());
    }
    if (!self)
        return;
    m_import.reset();
    if (!m_waiting.isEmpty())
        StartNext();
    else if (!m_task)
        emit Idle();
}

void ZORHostOpening::Commit()
{
    const std::shared_ptr<ZORExcImport> import = m_import;
    const Entry entry = m_current;
    ZORFeatEnvironment* const environment = ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    if (!environment)
        throw ZORSysException(tr("there is no document to read '%1' into").arg(entry.fileName));
    ZORHostOpenedFile file;
    const Add add = [&] {
        const QList<ZORGeoGeometry*> added = import->Commit(environment->GetContainer());
        for (const ZORGeoGeometry* geometry : added)
            file.names.append(geometry->objectName());
    };
    ZORSysMemory::Read(QDir::toNativeSeparators(entry.fileName), 0, [&] {
        if (m_committer)
            m_committer(entry.fileName, import->GetKind(), entry.mode, add);
        else
            add();
    });
    file.fileName = entry.fileName;
    file.kind = import->GetKind();
    file.losses = import->GetLosses();
    file.size = import->GetFileSize();
    file.duration = double(QDateTime::currentMSecsSinceEpoch() - m_startTime) / 1000;
    Log(file, entry.mode);
    if (entry.mode == Mode::Open)
        emit Opened(file);
    else
        emit Imported(file);
}

void ZORHostOpening::Log(const ZORHostOpenedFile& file, Mode mode)
{
    const QString format =
        mode == Mode::Open
            ? tr("Opened '%1' (%2): %n object(s), %3 in %4 s", nullptr, int(file.names.size()))
            : tr("Imported '%1' (%2): %n object(s), %3 in %4 s", nullptr, int(file.names.size()));
    qCInfo(lcHost).noquote() << format.arg(
        QDir::toNativeSeparators(file.fileName), ZORExcFileKind::GetName(file.kind),
        QLocale::c().formattedDataSize(file.size, 1, QLocale::DataSizeSIFormat),
        QString::number(file.duration, 'f', 2));
}

void ZORHostOpening::Fail(const QString& message)
{
    ++m_numUnread;
    const QString sentence = ToSentence(message);
    qCWarning(lcHost).noquote() << sentence;
    emit Failed(m_current.fileName, sentence);
}
