#include "document/ZORHostFileMenu.h"

#include "actions/ZORHostIcons.h"
#include "base/ZORHostLogging.h"
#include "base/ZORHostSettings.h"
#include "document/ZORHostDocumentState.h"
#include "document/ZORHostRescue.h"
#include "view/ZORHostSamples.h"
#include "view/ZORHostView3D.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysMemory.h>
#include <ZORSystem/ZORSysReplacedFile.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QImageWriter>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QToolBar>

#include <new>

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

/// The error of writing \a contents, none of it or all; empty when it went well.
QString Write(const QString& fileName, const QByteArray& contents)
{
    const QString reason = ZORSysReplacedFile::Replace(fileName, contents);
    return reason.isEmpty()
               ? QString()
               : ZORHostFileMenu::tr("Cannot write '%1': %2").arg(QDir::toNativeSeparators(fileName), reason);
}

} // namespace

ZORHostFileMenu::ZORHostFileMenu(QMainWindow* window, ZORHostView3D* view)
    : QObject(window)
    , m_window(window)
    , m_view(view)
    , m_state(new ZORHostDocumentState(this))
{
    QMenu* menu = window->menuBar()->addMenu(tr("&File"));
    menu->setObjectName("_FileMenu");
    m_new = AddAction(menu, "_NewAction", "new", tr("&New"), tr("Takes everything out of the document"));
    m_new->setShortcut(QKeySequence::New);
    connect(m_new, &QAction::triggered, this, &ZORHostFileMenu::OnNewTriggered);
    m_open = AddAction(menu, "_OpenAction", "open", tr("&Open..."),
                       tr("Adds the contents of STL and container files to the document"));
    m_open->setShortcut(QKeySequence::Open);
    connect(m_open, &QAction::triggered, this, &ZORHostFileMenu::OnOpenTriggered);
    QMenu* samples = menu->addMenu(tr("Open &Samples"));
    samples->setObjectName("_SamplesMenu");
    connect(samples, &QMenu::aboutToShow, this, [this, samples] { FillSamplesMenu(samples); });
    FillSamplesMenu(samples);
    menu->addSeparator();
    m_saveDocument = AddAction(menu, "_SaveDocumentAction", "save", tr("&Save As..."),
                               tr("Writes the document into a container file"));
    m_saveDocument->setShortcut(QKeySequence::Save);
    connect(m_saveDocument, &QAction::triggered, this, &ZORHostFileMenu::OnSaveDocumentTriggered);
    m_savePicture = AddAction(menu, "_SavePictureAction", "save-picture", tr("Save &Picture..."),
                              tr("Writes the 3D view into a PNG file"));
    m_savePicture->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    connect(m_savePicture, &QAction::triggered, this, &ZORHostFileMenu::OnSavePictureTriggered);
    menu->addSeparator();
    QAction* quit = AddAction(menu, "_QuitAction", QString(), tr("&Quit"), QString());
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);
    connect(quit, &QAction::triggered, window, &QWidget::close);
}

void ZORHostFileMenu::SetEnvironment(ZORFeatEnvironment* environment)
{
    m_state->SetContainer(environment ? environment->GetContainer() : nullptr);
}

bool ZORHostFileMenu::HasUnsavedChanges() const
{
    return m_state->IsChanged();
}

bool ZORHostFileMenu::ConfirmClosing()
{
    if (!HasUnsavedChanges())
        return true;
    if (m_isAsking)
        return false;
    const QScopedValueRollback guard(m_isAsking, true);
    const auto answer = QMessageBox::warning(
        m_window, tr("Unsaved Changes"),
        tr("The document has changes that are in no file yet. Save them before closing?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save)
        return SaveDocumentAs();
    return answer == QMessageBox::Discard;
}

QAction* ZORHostFileMenu::AddAction(QMenu* menu, const QString& objectName, const QString& icon,
                                    const QString& text, const QString& toolTip)
{
    auto* action = new QAction(ZORHostIcon(icon), text, this);
    action->setObjectName(objectName);
    action->setToolTip(toolTip);
    menu->addAction(action);
    return action;
}

void ZORHostFileMenu::AddTo(QToolBar* toolBar) const
{
    toolBar->addActions({m_new, m_open, m_saveDocument, m_savePicture});
}

void ZORHostFileMenu::FillSamplesMenu(QMenu* menu)
{
    menu->clear();
    const QStringList files = ZORHostSamples::GetFiles();
    for (const QString& file : files) {
        auto* action = new QAction(QFileInfo(file).fileName(), menu);
        action->setObjectName(QStringLiteral("_Sample_%1").arg(QFileInfo(file).completeBaseName()));
        action->setToolTip(QDir::toNativeSeparators(file));
        connect(action, &QAction::triggered, this, [this, file] { OpenFile(file); });
        menu->addAction(action);
    }
    if (files.isEmpty())
        menu->addAction(tr("No samples found"))->setEnabled(false);
}

void ZORHostFileMenu::OnNewTriggered()
{
    ZORFeatEnvironment* environment = Environment();
    const int count = environment ? environment->GetContainer()->GetNumGeometry() : 0;
    if (count == 0)
        return;
    const auto answer =
        QMessageBox::question(m_window, tr("New Document"), tr("Remove all %n object(s)?", nullptr, count),
                              QMessageBox::Yes | QMessageBox::Cancel);
    if (answer != QMessageBox::Yes)
        return;
    const QList<ZORVisVirtualObject*> shown = environment->GetVirtualObjects();
    QList<QPointer<ZORVisVirtualObject>> objects(shown.cbegin(), shown.cend());
    for (const QPointer<ZORVisVirtualObject>& object : std::as_const(objects))
        delete object; // one may take others with it
    environment->GetContainer()->Clear();
    m_state->MarkNew();
    m_window->statusBar()->showMessage(tr("%n object(s) removed", nullptr, count));
}

bool ZORHostFileMenu::OpenFile(const QString& fileName)
{
    ZORFeatEnvironment* environment = Environment();
    if (!environment)
        return false;
    ShowReading(fileName);
    QElapsedTimer timer;
    timer.start();
    QString error;
    int count = 0;
    try {
        const WaitCursor cursor;
        ZORSysMemory::Read(QDir::toNativeSeparators(fileName), 0, [&] {
            m_state->AddFromFile(ZORHostIsContainerFile(fileName),
                                 [&] { count = ZORHostOpenFile(fileName, environment); });
        });
    } catch (const ZORSysException& exception) {
        error = exception.GetMessage();
    }
    if (error.isEmpty())
        m_view->FitAll();
    return Report(error, tr("%1: %n object(s) in %2 s", nullptr, count)
                             .arg(QFileInfo(fileName).fileName(),
                                  QString::number(double(timer.elapsed()) / 1000, 'f', 2)));
}

// Reading blocks the window, so that it has to be painted before.
void ZORHostFileMenu::ShowReading(const QString& fileName)
{
    m_window->statusBar()->showMessage(tr("Reading '%1'...").arg(QFileInfo(fileName).fileName()));
    m_window->repaint();
}

void ZORHostFileMenu::OnOpenTriggered()
{
    const QString start = ZORHostSettings::Read("OpenDir", ZORHostSamples::FindFolder()).toString();
    const QStringList files = QFileDialog::getOpenFileNames(
        m_window, tr("Open"), start,
        tr("All that can be opened (*.stl *.STL *.ZORCont);;STL files (*.stl *.STL);;"
           "Container files (*.ZORCont);;All files (*)"));
    for (const QString& file : files) {
        if (m_isSessionOver) // since a box about the file before
            return;
        if (OpenFile(file))
            ZORHostSettings::Write("OpenDir", QFileInfo(file).absolutePath());
    }
}

QString ZORHostFileMenu::ChooseFile(const QString& title, const QString& start, const QString& filter,
                                    const QString& suffix)
{
    const QFileInfo proposed(start);
    QFileDialog dialog(m_window, title, proposed.absolutePath(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // Completed by the dialog itself, which then asks before it replaces the file of the whole name.
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(proposed.fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void ZORHostFileMenu::OnSaveDocumentTriggered()
{
    SaveDocumentAs();
}

bool ZORHostFileMenu::SaveDocumentAs()
{
    const QString start = ZORHostSettings::Read("DocumentFile", "document.ZORCont").toString();
    const QString file = ChooseFile(tr("Save As"), start, tr("Container files (*.ZORCont)"), "ZORCont");
    if (file.isEmpty() || !SaveDocument(file))
        return false;
    ZORHostSettings::Write("DocumentFile", file);
    return true;
}

QString ZORHostFileMenu::WriteDocument(const QString& fileName)
{
    QByteArray contents;
    try {
        QBuffer buffer(&contents);
        buffer.open(QIODevice::WriteOnly);
        Environment()->GetContainer()->Save(buffer);
        return Write(fileName, contents);
    } catch (const ZORSysException& exception) {
        return exception.GetMessage();
    } catch (const std::bad_alloc&) {
        contents = {};
        return tr("not enough memory to write '%1'").arg(QDir::toNativeSeparators(fileName));
    }
}

void ZORHostFileMenu::RescueDocument()
{
    m_isSessionOver = true;
    if (!Environment() || !HasUnsavedChanges())
        return;
    const QString path = ZORHostRescue::MakePath();
    if (const QString error = WriteDocument(path); !error.isEmpty()) {
        qCCritical(lcHost).noquote() << tr("The unsaved changes of the document are lost: %1").arg(error);
        return;
    }
    ZORHostRescue::Remember(path);
    qCWarning(lcHost).noquote()
        << tr("The document with its unsaved changes was saved as '%1'").arg(QDir::toNativeSeparators(path));
}

bool ZORHostFileMenu::SaveDocument(const QString& fileName)
{
    if (!Environment())
        return false;
    const QString error = WriteDocument(fileName);
    if (error.isEmpty())
        m_state->MarkSaved();
    return Report(error, tr("Document saved as '%1'").arg(QDir::toNativeSeparators(fileName)));
}

void ZORHostFileMenu::OnSavePictureTriggered()
{
    const QString start = ZORHostSettings::Read("PictureFile", "view.png").toString();
    const QString file = ChooseFile(tr("Save Picture"), start, tr("PNG pictures (*.png)"), "png");
    if (!file.isEmpty() && SavePicture(file))
        ZORHostSettings::Write("PictureFile", file);
}

bool ZORHostFileMenu::SavePicture(const QString& fileName)
{
    const QImage picture = m_view->RenderPicture(m_view->GetDevicePixels(), m_view->devicePixelRatioF());
    QByteArray contents;
    QBuffer buffer(&contents);
    buffer.open(QIODevice::WriteOnly);
    QString error;
    if (picture.isNull())
        error = tr("The view is too small for a picture.");
    else if (QImageWriter writer(&buffer, "png"); !writer.write(picture))
        error = writer.errorString();
    else
        error = Write(fileName, contents);
    return Report(error, tr("Picture saved as '%1'").arg(QDir::toNativeSeparators(fileName)));
}

bool ZORHostFileMenu::Report(const QString& error, const QString& message)
{
    if (!error.isEmpty()) {
        m_window->statusBar()->clearMessage(); // of an earlier success
        ZORCmnPlainText::ShowBox(QMessageBox::Critical, m_window, tr("Error"), error);
        return false;
    }
    m_window->statusBar()->showMessage(message);
    return true;
}
