#include "document/ZORHostDocumentCommands.h"

#include "base/ZORHostFileDialogs.h"
#include "base/ZORHostSettings.h"
#include "document/ZORHostAutosave.h"
#include "document/ZORHostDocument.h"
#include "document/ZORHostProgressPanel.h"
#include "document/ZORHostRecentFiles.h"
#include "document/ZORHostSaving.h"
#include "view/ZORHostSamples.h"
#include "view/ZORHostView3D.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoContainerFile.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QDir>
#include <QFileDialog>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStatusBar>

#include <utility>

namespace {

ZORFeatEnvironment* Environment()
{
    return ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
}

QString ContainerFilter()
{
    return ZORHostDocumentCommands::tr("Container files (*.%1)").arg(ZORHostDocument::kSuffix);
}

} // namespace

ZORHostDocumentCommands::ZORHostDocumentCommands(QMainWindow* window, ZORHostView3D* view)
    : QObject(window)
    , m_window(window)
    , m_view(view)
    , m_document(new ZORHostDocument(this))
    , m_autosave(new ZORHostAutosave(m_document, this))
    , m_opening(new ZORHostOpening(this))
    , m_saving(new ZORHostSaving(this))
{
    m_opening->SetCommitter([this](const QString& file, ZORExcFileKind::Kind kind, ZORHostOpening::Mode mode,
                                   const ZORHostOpening::Add& add) { Commit(file, kind, mode, add); });
    connect(m_opening, &ZORHostOpening::Opened, this, &ZORHostDocumentCommands::ShowRead);
    connect(m_opening, &ZORHostOpening::Imported, this, &ZORHostDocumentCommands::ShowRead);
    connect(m_opening, &ZORHostOpening::Failed, this,
            [this](const QString&, const QString& message) { m_error = message; });
    connect(m_opening, &ZORHostOpening::Canceled, this, [this](const QString& file) {
        m_isCanceled = true;
        m_window->statusBar()->showMessage(tr("Canceled reading '%1'").arg(QFileInfo(file).fileName()));
    });
    connect(m_saving, &ZORHostSaving::Finished, this, &ZORHostDocumentCommands::Settled,
            Qt::QueuedConnection); // the caller of Write() goes on first
    CreateProgress();
}

void ZORHostDocumentCommands::CreateProgress()
{
    auto* panel = new ZORHostProgressPanel(m_window);
    m_window->statusBar()->addPermanentWidget(panel);
    connect(panel, &ZORHostProgressPanel::CancelRequested, m_opening, &ZORHostOpening::CancelAll);
    connect(panel, &ZORHostProgressPanel::CancelRequested, m_saving, &ZORHostSaving::Cancel);
    connect(m_opening, &ZORHostOpening::Started, this, [this, panel](const QString& file) {
        panel->Begin(tr("Reading '%1'...").arg(QFileInfo(file).fileName()));
        emit BusyChanged();
    });
    connect(m_saving, &ZORHostSaving::Started, this, [this, panel](const QString& file) {
        panel->Begin(tr("Writing '%1'...").arg(QFileInfo(file).fileName()));
        emit BusyChanged();
    });
    connect(m_opening, &ZORHostOpening::ProgressChanged, panel, &ZORHostProgressPanel::SetProgress);
    connect(m_saving, &ZORHostSaving::ProgressChanged, panel, &ZORHostProgressPanel::SetProgress);
    const auto end = [this, panel] {
        panel->End();
        emit BusyChanged();
    };
    connect(m_opening, &ZORHostOpening::Idle, this, end);
    connect(m_saving, &ZORHostSaving::Finished, this, end);
}

bool ZORHostDocumentCommands::IsBusy() const
{
    return m_opening->IsBusy() || m_saving->IsBusy();
}

bool ZORHostDocumentCommands::IsWriting() const
{
    return m_saving->IsBusy();
}

void ZORHostDocumentCommands::CancelReading()
{
    m_opening->CancelAll();
}

void ZORHostDocumentCommands::SetEnvironment(ZORFeatEnvironment* environment)
{
    m_document->SetContainer(environment ? environment->GetContainer() : nullptr);
}

void ZORHostDocumentCommands::SetAsksToSave(bool asks)
{
    m_asksToSave = asks;
    m_autosave->SetEnabled(asks);
}

bool ZORHostDocumentCommands::ConfirmClosing()
{
    if (!m_asksToSave || !m_document->IsModified())
        return true;
    if (m_isAsking)
        return false;
    const QScopedValueRollback guard(m_isAsking, true);
    const auto answer = ZORHostFileDialogs::Ask(
        m_window, tr("Unsaved Changes"),
        tr("'%1' has changes that are in no file yet. Save them?").arg(m_document->GetName()),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save)
        return Save();
    return answer == QMessageBox::Discard;
}

void ZORHostDocumentCommands::Rescue()
{
    m_isSessionOver = true;
    if (m_asksToSave)
        m_autosave->Rescue();
}

void ZORHostDocumentCommands::Empty()
{
    ZORFeatEnvironment* environment = Environment();
    if (!environment)
        return;
    const QList<ZORVisVirtualObject*> shown = environment->GetVirtualObjects();
    const QList<QPointer<ZORVisVirtualObject>> objects(shown.cbegin(), shown.cend());
    for (const QPointer<ZORVisVirtualObject>& object : objects)
        delete object; // one may take others with it
    environment->GetContainer()->Clear();
}

bool ZORHostDocumentCommands::New()
{
    if (IsBusy() || !ConfirmClosing())
        return false;
    Empty();
    m_document->MarkNew();
    m_window->statusBar()->showMessage(tr("New document"));
    return true;
}

bool ZORHostDocumentCommands::Open(const QString& file)
{
    if (IsBusy() || !ConfirmClosing() || !Read(file, ZORHostOpening::Mode::Open))
        return false;
    ZORHostRecentFiles::Add(file);
    return true;
}

bool ZORHostDocumentCommands::Import(const QString& file)
{
    return !IsBusy() && Read(file, ZORHostOpening::Mode::Import);
}

bool ZORHostDocumentCommands::OpensFirst() const
{
    return m_document->IsEmpty() && !m_document->IsModified();
}

bool ZORHostDocumentCommands::Add(const QStringList& files)
{
    if (IsBusy())
        return false;
    bool isAllRead = true;
    bool isOpened = OpensFirst();
    m_isSessionOver = false;
    for (const QString& file : files) {
        isAllRead = (std::exchange(isOpened, false) ? Open(file) : Import(file)) && isAllRead;
        if (m_isCanceled || m_isSessionOver) // while this file was read, or since a box about it
            return false;
    }
    return isAllRead;
}

bool ZORHostDocumentCommands::Recover(const ZORHostRescue::Entry& entry)
{
    if (IsBusy() || !ConfirmClosing())
        return false;
    const QScopedValueRollback guard(m_recovered, entry.path);
    if (!Read(entry.path, ZORHostOpening::Mode::Open))
        return false;
    m_document->MarkNew(); // ends the copies of the former document
    m_document->MarkRecovered(entry.document);
    m_autosave->Adopt(entry);
    const QString name =
        entry.document.isEmpty() ? m_document->GetName() : QFileInfo(entry.document).fileName();
    return Report({}, tr("Recovered '%1'; its file is written only when you save it").arg(name));
}

bool ZORHostDocumentCommands::Read(const QString& file, ZORHostOpening::Mode mode)
{
    m_error.clear();
    m_isCanceled = false;
    m_numChanges = m_document->GetNumChanges();
    m_opening->Enqueue(file, mode);
    emit BusyChanged();
    const bool isRead = m_opening->Wait();
    if (!m_error.isEmpty())
        Report(m_error, {});
    return isRead;
}

void ZORHostDocumentCommands::Commit(const QString& file, ZORExcFileKind::Kind kind,
                                     ZORHostOpening::Mode mode, const ZORHostOpening::Add& add)
{
    const ZORFeatShowNew show(m_document->GetContainer());
    const bool wasModified = m_document->IsModified();
    try {
        if (mode == ZORHostOpening::Mode::Open)
            Replace(file, add);
        else
            add();
    } catch (const ZORSysException&) {
        m_document->RestoreModified(wasModified); // whatever came in has left again
        throw;
    }
    if (mode == ZORHostOpening::Mode::Import || file == m_recovered)
        return;
    if (kind == ZORExcFileKind::Kind::Container)
        m_document->MarkOpened(file);
    else
        m_document->MarkOpenedForeign(file);
}

// What the document held comes back where the file does not fit in: both are not in the container at once, where they would
// take each other's names.
void ZORHostDocumentCommands::Replace(const QString& file, const ZORHostOpening::Add& add)
{
    if (m_document->GetNumChanges() != m_numChanges) {
        throw ZORSysException(
            tr("'%1' was not opened, because the document has changed while the file was being read")
                .arg(QDir::toNativeSeparators(file)));
    }
    ZORFeatContainer* container = m_document->GetContainer();
    const ZORGeoContainerFile former = ZORGeoContainerFile::Take(*container);
    Empty();
    try {
        add();
    } catch (const ZORSysException&) {
        former.AddTo(*container);
        throw;
    }
}

void ZORHostDocumentCommands::ShowRead(const ZORHostOpenedFile& file)
{
    m_view->FitAllOnceShown();
    m_window->statusBar()->showMessage(
        tr("%1: %n object(s) in %2 s", nullptr, int(file.names.size()))
            .arg(QFileInfo(file.fileName).fileName(), QString::number(file.duration, 'f', 2)));
}

QStringList ZORHostDocumentCommands::ChooseFilesToRead(const QString& title, bool severalFiles)
{
    const QString start = ZORHostSettings::Read("OpenDir", ZORHostSamples::FindFolder()).toString();
    const QString filter = tr("All that can be opened (*.ZORCont *.stl *.STL *.xml *.json *.msi);;"
                              "Container files (*.ZORCont);;STL files (*.stl *.STL);;"
                              "Contours and layups (*.xml *.json);;Nesting results (*.msi);;All files (*)");
    QStringList files;
    if (severalFiles)
        files = QFileDialog::getOpenFileNames(m_window, title, start, filter);
    else
        files = {QFileDialog::getOpenFileName(m_window, title, start, filter)};
    files.removeAll(QString());
    return files;
}

void ZORHostDocumentCommands::OnOpenTriggered()
{
    for (const QString& file : ChooseFilesToRead(tr("Open"), false)) {
        if (Open(file))
            ZORHostSettings::Write("OpenDir", QFileInfo(file).absolutePath());
    }
}

void ZORHostDocumentCommands::OnImportTriggered()
{
    m_isSessionOver = false;
    for (const QString& file : ChooseFilesToRead(tr("Import"), true)) {
        if (Import(file))
            ZORHostSettings::Write("OpenDir", QFileInfo(file).absolutePath());
        if (m_isCanceled || m_isSessionOver) // while this file was read, or since a box about it
            return;
    }
}

bool ZORHostDocumentCommands::Save()
{
    const QString file = m_document->GetFile();
    if (IsBusy())
        return false;
    if (file.isEmpty())
        return SaveAs();
    if (!m_document->IsFileChangedByOthers())
        return Write(file);
    QMessageBox box(QMessageBox::Warning, tr("File Changed"),
                    tr("Another program has changed '%1' since it was opened or saved here. Saving replaces "
                       "these changes.")
                        .arg(QDir::toNativeSeparators(file)),
                    QMessageBox::Cancel, m_window);
    box.setTextFormat(Qt::PlainText);
    const QAbstractButton* overwrite = box.addButton(tr("&Overwrite"), QMessageBox::DestructiveRole);
    const QAbstractButton* saveAs = box.addButton(tr("Save &As..."), QMessageBox::AcceptRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    if (box.clickedButton() == saveAs)
        return SaveAs();
    return box.clickedButton() == overwrite && Write(file);
}

bool ZORHostDocumentCommands::SaveAs()
{
    QString start = m_document->GetProposedFile();
    if (start.isEmpty()) {
        const QString last = ZORHostSettings::Read("DocumentFile").toString();
        start = QFileInfo(last).dir().filePath(tr("document") + u'.' + ZORHostDocument::kSuffix);
    }
    const QString file = ZORHostFileDialogs::ChooseFileToWrite(m_window, tr("Save As"), start,
                                                               ContainerFilter(), ZORHostDocument::kSuffix);
    return !file.isEmpty() && Write(file);
}

bool ZORHostDocumentCommands::SaveCopy()
{
    const QFileInfo present(m_document->GetProposedFile());
    const QString name = present.completeBaseName().isEmpty() ? tr("document") : present.completeBaseName();
    const QString start = present.dir().filePath(tr("%1 - copy").arg(name) + u'.' + ZORHostDocument::kSuffix);
    const QString file = ZORHostFileDialogs::ChooseFileToWrite(m_window, tr("Save a Copy"), start,
                                                               ContainerFilter(), ZORHostDocument::kSuffix);
    if (file.isEmpty())
        return false;
    if (!m_document->GetFile().isEmpty() && QFileInfo(file) == QFileInfo(m_document->GetFile()))
        return Write(file); // not a copy
    return WriteFile(file, tr("Copy saved as '%1'"));
}

bool ZORHostDocumentCommands::Write(const QString& file)
{
    const qint64 numChanges = m_document->GetNumChanges();
    if (!WriteFile(file, tr("Document saved as '%1'")))
        return false;
    m_document->MarkSaved(file, numChanges);
    ZORHostSettings::Write("DocumentFile", file);
    ZORHostRecentFiles::Add(file);
    return true;
}

bool ZORHostDocumentCommands::WriteFile(const QString& file, const QString& message)
{
    if (IsBusy() || !m_document->GetContainer())
        return false;
    const QPointer<ZORHostDocumentCommands> self(this);
    const auto outcome = m_saving->Write(*m_document->GetContainer(), file);
    if (!self)
        return false; // the program has ended meanwhile
    const QString name = QDir::toNativeSeparators(file);
    if (outcome == ZORHostSaving::Outcome::Canceled)
        m_window->statusBar()->showMessage(tr("Canceled writing '%1'").arg(name));
    else
        Report(m_saving->GetError(), message.arg(name));
    return outcome == ZORHostSaving::Outcome::Written;
}

bool ZORHostDocumentCommands::Report(const QString& error, const QString& message)
{
    if (!error.isEmpty()) {
        m_window->statusBar()->clearMessage(); // of an earlier success
        ZORCmnPlainText::ShowBox(QMessageBox::Critical, m_window, tr("Error"), error);
        return false;
    }
    m_window->statusBar()->showMessage(message);
    return true;
}
