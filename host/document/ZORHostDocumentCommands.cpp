#include "document/ZORHostDocumentCommands.h"

#include "base/ZORHostSettings.h"
#include "document/ZORHostAutosave.h"
#include "document/ZORHostDocument.h"
#include "document/ZORHostDocumentFile.h"
#include "document/ZORHostRecentFiles.h"
#include "view/ZORHostSamples.h"
#include "view/ZORHostView3D.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysMemory.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStatusBar>

#include <utility>

namespace {

/// Shows that the program is busy until destroyed, also by an exception.
class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(WaitCursor)
};

ZORFeatEnvironment* Environment()
{
    return ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
}

QMessageBox::StandardButton Ask(QWidget* parent, const QString& title, const QString& text,
                                QMessageBox::StandardButtons buttons,
                                QMessageBox::StandardButton defaultButton)
{
    QMessageBox box(QMessageBox::Warning, title, text, buttons, parent);
    box.setTextFormat(Qt::PlainText); // the text contains names of files, which are not HTML
    box.setDefaultButton(defaultButton);
    return QMessageBox::StandardButton(box.exec());
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
{
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
    const auto answer =
        Ask(m_window, tr("Unsaved Changes"),
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
    m_document->MarkNew();
}

bool ZORHostDocumentCommands::New()
{
    if (!ConfirmClosing())
        return false;
    Empty();
    m_window->statusBar()->showMessage(tr("New document"));
    return true;
}

bool ZORHostDocumentCommands::Open(const QString& file)
{
    if (!ConfirmClosing() || !Read(file, Role::Document))
        return false;
    if (ZORHostIsContainerFile(file))
        m_document->MarkOpened(file);
    else
        m_document->MarkOpenedForeign(file);
    ZORHostRecentFiles::Add(file);
    return true;
}

bool ZORHostDocumentCommands::Import(const QString& file)
{
    return Read(file, Role::Addition);
}

bool ZORHostDocumentCommands::OpensFirst() const
{
    return m_document->IsEmpty() && !m_document->IsModified();
}

bool ZORHostDocumentCommands::Add(const QStringList& files)
{
    bool isAllRead = true;
    bool isOpened = OpensFirst();
    m_isSessionOver = false;
    for (const QString& file : files) {
        isAllRead = (std::exchange(isOpened, false) ? Open(file) : Import(file)) && isAllRead;
        if (m_isSessionOver) // since a box about this file
            return false;
    }
    return isAllRead;
}

bool ZORHostDocumentCommands::Recover(const ZORHostRescue::Entry& entry)
{
    if (!ConfirmClosing() || !Read(entry.path, Role::Document))
        return false;
    m_document->MarkRecovered(entry.document);
    m_autosave->Adopt(entry);
    return true;
}

bool ZORHostDocumentCommands::Read(const QString& file, Role role)
{
    ShowReading(file);
    QElapsedTimer timer;
    timer.start();
    int count = 0;
    const QString error = ReadInto(file, role, &count);
    if (error.isEmpty())
        m_view->FitAll();
    return Report(
        error, tr("%1: %n object(s) in %2 s", nullptr, count)
                   .arg(QFileInfo(file).fileName(), QString::number(double(timer.elapsed()) / 1000, 'f', 2)));
}

QString ZORHostDocumentCommands::ReadInto(const QString& file, Role role, int* count)
{
    ZORFeatEnvironment* environment = Environment();
    if (!environment)
        return tr("There is no document.");
    const bool wasModified = m_document->IsModified();
    try {
        const WaitCursor cursor;
        ZORSysMemory::Read(QDir::toNativeSeparators(file), 0, [&] {
            if (role == Role::Document && !m_document->IsEmpty()) {
                ZORFeatEnvironment trial; // the document is emptied only for a file that can be read
                ZORHostOpenFile(file, &trial);
            }
            if (role == Role::Document)
                Empty();
            *count = ZORHostOpenFile(file, environment);
        });
    } catch (const ZORSysException& exception) {
        m_document->RestoreModified(wasModified); // whatever came in has left again
        return exception.GetMessage();
    }
    return {};
}

// Reading blocks the window, so that it has to be painted before.
void ZORHostDocumentCommands::ShowReading(const QString& file)
{
    m_window->statusBar()->showMessage(tr("Reading '%1'...").arg(QFileInfo(file).fileName()));
    m_window->repaint();
}

QStringList ZORHostDocumentCommands::ChooseFilesToRead(const QString& title, bool severalFiles)
{
    const QString start = ZORHostSettings::Read("OpenDir", ZORHostSamples::FindFolder()).toString();
    const QString filter = tr("All that can be opened (*.stl *.STL *.ZORCont);;STL files (*.stl *.STL);;"
                              "Container files (*.ZORCont);;All files (*)");
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
        if (m_isSessionOver) // since a box about this file
            return;
    }
}

QString ZORHostDocumentCommands::ChooseFileToWrite(const QString& title, const QString& start,
                                                   const QString& filter, const QString& suffix)
{
    QFileInfo proposed(start);
    const QString ending = u'.' + suffix;
    while (true) {
        QFileDialog dialog(m_window, title, proposed.absolutePath(), filter);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        // Completed by the dialog itself, which then asks before it replaces the file of the whole name.
        dialog.setDefaultSuffix(suffix);
        dialog.selectFile(proposed.fileName());
        const QString file = dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
        if (file.isEmpty())
            return {};
        if (file.endsWith(ending, Qt::CaseInsensitive))
            return file;
        // The dialog takes the end of "part.v2" for a suffix.
        proposed = QFileInfo(file + ending);
        if (!proposed.exists() || ConfirmReplacing(proposed.filePath()))
            return proposed.filePath();
    }
}

bool ZORHostDocumentCommands::ConfirmReplacing(const QString& file)
{
    const QString text = tr("The file '%1' already exists. Replace it?").arg(QDir::toNativeSeparators(file));
    return Ask(m_window, tr("Replace File"), text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
           == QMessageBox::Yes;
}

bool ZORHostDocumentCommands::Save()
{
    const QString file = m_document->GetFile();
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
    const QString file = ChooseFileToWrite(tr("Save As"), start, ContainerFilter(), ZORHostDocument::kSuffix);
    return !file.isEmpty() && Write(file);
}

bool ZORHostDocumentCommands::SaveCopy()
{
    const QFileInfo present(m_document->GetProposedFile());
    const QString name = present.completeBaseName().isEmpty() ? tr("document") : present.completeBaseName();
    const QString start = present.dir().filePath(tr("%1 - copy").arg(name) + u'.' + ZORHostDocument::kSuffix);
    const QString file =
        ChooseFileToWrite(tr("Save a Copy"), start, ContainerFilter(), ZORHostDocument::kSuffix);
    if (file.isEmpty() || !m_document->GetContainer())
        return false;
    if (!m_document->GetFile().isEmpty() && QFileInfo(file) == QFileInfo(m_document->GetFile()))
        return Write(file); // not a copy
    const QString error = ZORHostDocumentFile::Write(*m_document->GetContainer(), file);
    return Report(error, tr("Copy saved as '%1'").arg(QDir::toNativeSeparators(file)));
}

bool ZORHostDocumentCommands::Write(const QString& file)
{
    if (!m_document->GetContainer())
        return false;
    const QString error = ZORHostDocumentFile::Write(*m_document->GetContainer(), file);
    if (error.isEmpty()) {
        m_document->MarkSaved(file);
        ZORHostSettings::Write("DocumentFile", file);
        ZORHostRecentFiles::Add(file);
    }
    return Report(error, tr("Document saved as '%1'").arg(QDir::toNativeSeparators(file)));
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
