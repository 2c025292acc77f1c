#include "document/ZORHostAutosave.h"

#include "base/ZORHostLogging.h"
#include "base/ZORHostPreferences.h"
#include "document/ZORHostDocument.h"
#include "document/ZORHostDocumentFile.h"

#include <ZORSystem/ZORSysApiTracePause.h>

#include <QDir>

#include <utility>

ZORHostAutosave::ZORHostAutosave(ZORHostDocument* document, QObject* parent)
    : QObject(parent)
    , m_document(document)
{
    connect(&m_timer, &QTimer::timeout, this, &ZORHostAutosave::SaveNow);
    connect(document, &ZORHostDocument::Changed, this, [this] {
        if (!m_document->IsModified())
            RemoveCopies();
    });
    connect(ZORHostPreferences::Get(), &ZORHostPreferences::Changed, this, &ZORHostAutosave::UpdateInterval);
    UpdateInterval();
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

void ZORHostAutosave::SaveNow()
{
    if (!m_document->IsModified() || m_numSavedChanges == m_document->GetNumChanges())
        return;
    const QString reason = WriteCopy();
    if (!reason.isEmpty() && reason != m_reason) {
        qCWarning(lcHost).noquote() << tr("The document could not be saved automatically: %1").arg(reason);
        emit Failed(reason);
    }
    m_reason = reason;
}

void ZORHostAutosave::Rescue()
{
    if (!m_document->IsModified())
        return;
    if (const QString reason = WriteCopy(); !reason.isEmpty()) {
        qCCritical(lcHost).noquote() << tr("The unsaved changes of the document are lost: %1").arg(reason);
        return;
    }
    const QString path = m_file.GetPath();
    ZORHostRescue::Remember(path);
    m_file.Leave();
    m_numSavedChanges = -1;
    qCWarning(lcHost).noquote()
        << tr("The document with its unsaved changes was saved as '%1'").arg(QDir::toNativeSeparators(path));
}

void ZORHostAutosave::Adopt(const ZORHostRescue::Entry& entry)
{
    m_adopted = entry;
}

QString ZORHostAutosave::WriteCopy()
{
    const ZORSysApiTracePause pause; // nobody has called for it
    const qint64 numChanges = m_document->GetNumChanges();
    const QString reason = m_file.Write(
        [this](const QString& path) { return ZORHostDocumentFile::Write(*m_document->GetContainer(), path); },
        m_document->GetProposedFile());
    m_numSavedChanges = reason.isEmpty() ? numChanges : -1;
    if (const auto former = reason.isEmpty() ? std::exchange(m_adopted, {}) : std::nullopt)
        ZORHostRescue::Discard(*former);
    return reason;
}

void ZORHostAutosave::RemoveCopies()
{
    m_file.Remove();
    m_numSavedChanges = -1;
    if (const auto former = std::exchange(m_adopted, {}))
        ZORHostRescue::Discard(*former);
}
