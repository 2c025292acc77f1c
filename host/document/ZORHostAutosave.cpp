#include "document/ZORHostAutosave.h"

#include "base/ZORHostLogging.h"
#include "base/ZORHostPreferences.h"
#include "document/ZORHostDocument.h"
#include "document/ZORHostDocumentFile.h"

#include <ZORCommand/ZORCmdTask.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoContainerFile.h>
#include <ZORSystem/ZORSysApiTracePause.h>
#include <ZORSystem/ZORSysException.h>

#include <QDir>

#include <new>
#include <utility>

struct ZORHostAutosave::Copy
{
    /// Writes the file, in any thread.
    void Write(const std::function<bool(double)>& report)
    {
        const ZORSysApiTracePause pause; // nobody has called for it
        reason = file->Write(
            [&](const QString& path) -> QString {
                try {
                    return ZORHostDocumentFile::Write(content, path, report) ? QString() : tr("Canceled");
                } catch (const ZORSysException& exception) {
                    return exception.GetMessage();
                } catch (const std::bad_alloc&) {
                    return tr("Not enough memory");
                }
            },
            document);
    }

    std::shared_ptr<ZORHostRescueFile> file;
    ZORGeoContainerFile content;
    QString document; // file that it belongs to
    qint64 numChanges = 0;
    QString reason; // empty when it was written
};

ZORHostAutosave::ZORHostAutosave(ZORHostDocument* document, QObject* parent)
    : QObject(parent)
    , m_document(document)
    , m_file(std::make_shared<ZORHostRescueFile>())
    , m_timer(this)
{
    m_timer.setObjectName("_AutosaveTimer");
    connect(&m_timer, &QTimer::timeout, this, &ZORHostAutosave::SaveNow);
    connect(document, &ZORHostDocument::Changed, this, [this] {
        if (!m_document->IsModified())
            RemoveCopies();
    });
    connect(ZORHostPreferences::Get(), &ZORHostPreferences::Changed, this, &ZORHostAutosave::UpdateInterval);
    UpdateInterval();
}

ZORHostAutosave::~ZORHostAutosave()
{
    RemoveCopies();
}

void ZORHostAutosave::SetEnabled(bool isEnabled)
{
    m_isEnabled = isEnabled;
    UpdateInterval();
}

std::chrono::milliseconds ZORHostAutosave::GetInterval() const
{
    return m_timer.isActive() ? m_timer.intervalAsDuration() : std::chrono::milliseconds(0);
}

void ZORHostAutosave::UpdateInterval()
{
    const std::chrono::minutes interval(ZORHostPreferences::Get()->GetAutosaveMinutes());
    if (!m_isEnabled || interval.count() == 0)
        m_timer.stop();
    else if (!m_timer.isActive() || m_timer.intervalAsDuration() != interval)
        m_timer.start(interval);
}

QString ZORHostAutosave::GetPath() const
{
    return m_task ? QString() : m_file->GetPath();
}

std::shared_ptr<ZORHostAutosave::Copy> ZORHostAutosave::MakeCopy()
{
    const ZORSysApiTracePause pause; // nobody has called for it
    auto copy = std::make_shared<Copy>();
    copy->file = m_file;
    copy->document = m_document->GetProposedFile();
    copy->numChanges = m_document->GetNumChanges();
    try {
        copy->content = ZORGeoContainerFile::Take(*m_document->GetContainer());
    } catch (const ZORSysException& exception) {
        copy->reason = exception.GetMessage();
    } catch (const std::bad_alloc&) {
        copy->reason = tr("Not enough memory");
    }
    return copy;
}

void ZORHostAutosave::SaveNow()
{
    if (m_task || !m_document->IsModified() || m_numSavedChanges == m_document->GetNumChanges())
        return;
    m_copy = MakeCopy();
    m_task = std::make_unique<ZORCmdTask>([copy = m_copy](const ZORCmdTask::Report& report) {
        if (copy->reason.isEmpty())
            copy->Write(report);
    });
    // Queued: the task is deleted by then.
    connect(m_task.get(), &ZORCmdTask::Finished, this, &ZORHostAutosave::OnTaskFinished,
            Qt::QueuedConnection);
    m_task->Start();
}

void ZORHostAutosave::OnTaskFinished()
{
    if (!m_task || m_task->IsRunning())
        return; // of a task that was canceled
    m_task.reset();
    const std::shared_ptr<Copy> copy = std::exchange(m_copy, {});
    const bool hadFailed = std::exchange(m_hasFailed, !copy->reason.isEmpty());
    m_numSavedChanges = copy->reason.isEmpty() ? copy->numChanges : -1;
    if (copy->reason.isEmpty()) {
        DiscardAdopted();
    } else if (!hadFailed) {
        qCWarning(lcHost).noquote()
            << tr("The document could not be saved automatically: %1").arg(copy->reason);
        emit Failed(copy->reason);
    }
}

void ZORHostAutosave::CancelTask()
{
    if (!m_task)
        return;
    m_task->Cancel();
    m_task.reset(); // waits for the thread
    m_copy.reset();
}

void ZORHostAutosave::Rescue()
{
    if (!m_document->IsModified())
        return;
    CancelTask();
    const std::shared_ptr<Copy> copy = MakeCopy();
    if (copy->reason.isEmpty())
        copy->Write({});
    if (!copy->reason.isEmpty()) {
        qCCritical(lcHost).noquote()
            << tr("The unsaved changes of the document are lost: %1").arg(copy->reason);
        return;
    }
    const QString path = m_file->GetPath();
    ZORHostRescue::Remember(path);
    m_file->Leave();
    DiscardAdopted();
    m_numSavedChanges = -1;
    qCWarning(lcHost).noquote()
        << tr("The document with its unsaved changes was saved as '%1'").arg(QDir::toNativeSeparators(path));
}

void ZORHostAutosave::Adopt(const ZORHostRescue::Entry& entry)
{
    m_adopted = entry;
}

void ZORHostAutosave::DiscardAdopted()
{
    if (const auto former = std::exchange(m_adopted, {}))
        ZORHostRescue::Discard(*former);
}

void ZORHostAutosave::RemoveCopies()
{
    CancelTask();
    m_file->Remove();
    m_numSavedChanges = -1;
    DiscardAdopted();
}
