#include "document/ZORHostDocument.h"

#include <ZORFeature/ZORFeatContainer.h>

#include <QDir>
#include <QFileInfo>

namespace {

QString ToContainerFile(const QString& file)
{
    const QFileInfo info(file);
    return info.dir().filePath(info.completeBaseName() + u'.' + ZORHostDocument::kSuffix);
}

} // namespace

ZORHostDocument::ZORHostDocument(QObject* parent)
    : QObject(parent)
{
}

void ZORHostDocument::SetContainer(ZORFeatContainer* container)
{
    if (m_container)
        disconnect(m_container, nullptr, this, nullptr);
    m_container = container;
    if (container) {
        connect(container, &ZORGeoContainer::ContentChanged, this, &ZORHostDocument::NoteChange);
        connect(container, &QObject::destroyed, this, &ZORHostDocument::Update);
    }
    MarkNew();
}

ZORFeatContainer* ZORHostDocument::GetContainer() const
{
    return m_container;
}

QString ZORHostDocument::GetName() const
{
    return m_file.isEmpty() ? tr("Untitled") : QFileInfo(m_file).fileName();
}

QString ZORHostDocument::GetProposedFile() const
{
    return m_file.isEmpty() ? m_proposed : m_file;
}

bool ZORHostDocument::IsEmpty() const
{
    return !m_container || m_container->GetNumGeometry() == 0;
}

bool ZORHostDocument::IsFileChangedByOthers() const
{
    const ZORHostFileStamp stamp = ZORHostFileStamp::Of(m_file);
    return stamp.IsValid() && stamp != m_stamp;
}

void ZORHostDocument::MarkNew()
{
    Set({}, {}, false);
}

void ZORHostDocument::MarkOpened(const QString& file)
{
    Set(QFileInfo(file).absoluteFilePath(), {}, false);
}

void ZORHostDocument::MarkOpenedForeign(const QString& file)
{
    Set({}, ToContainerFile(QFileInfo(file).absoluteFilePath()), false);
}

void ZORHostDocument::MarkRecovered(const QString& file)
{
    Set({}, file.isEmpty() ? QString() : QFileInfo(file).absoluteFilePath(), true);
}

void ZORHostDocument::MarkSaved(const QString& file, qint64 numChanges)
{
    Set(QFileInfo(file).absoluteFilePath(), {}, numChanges != m_numChanges);
}

void ZORHostDocument::RestoreModified(bool wasModified)
{
    m_isMarked = wasModified;
    Update();
}

void ZORHostDocument::NoteChange()
{
    ++m_numChanges;
    m_isMarked = true;
    Update();
    emit ContentChanged();
}

void ZORHostDocument::Set(const QString& file, const QString& proposed, bool isMarked)
{
    m_file = file;
    m_proposed = proposed;
    m_stamp = file.isEmpty() ? ZORHostFileStamp() : ZORHostFileStamp::Of(file);
    m_isMarked = isMarked;
    m_isModified = m_container && isMarked && (!file.isEmpty() || !IsEmpty());
    emit Changed();
}

// Called for each of the thousands of changes that a command may make, so that it reports only what is new.
void ZORHostDocument::Update()
{
    const bool isModified = m_container && m_isMarked && (!m_file.isEmpty() || !IsEmpty());
    if (isModified == m_isModified)
        return;
    m_isModified = isModified;
    emit Changed();
}
