#include "document/ZORHostFileMenu.h"

#include "actions/ZORHostIcons.h"
#include "base/ZORHostFileDialogs.h"
#include "base/ZORHostSettings.h"
#include "document/ZORHostDocument.h"
#include "document/ZORHostDocumentCommands.h"
#include "document/ZORHostRecentFiles.h"
#include "view/ZORHostSamples.h"
#include "view/ZORHostView3D.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QAction>
#include <QBuffer>
#include <QDir>
#include <QImageWriter>
#include <QMainWindow>
#include <QMenuBar>
#include <QToolBar>

namespace {

/// A name as the text of an action, which takes ampersands for mnemonics.
QString ToActionText(QString name)
{
    return name.replace(u'&', QLatin1String("&&"));
}

void AddPlaceholder(QMenu* menu, const QString& text)
{
    QAction* action = menu->addAction(text);
    action->setObjectName("_NothingAction");
    action->setEnabled(false);
}

} // namespace

ZORHostFileMenu::ZORHostFileMenu(QMainWindow* window, ZORHostDocumentCommands* commands, ZORHostView3D* view)
    : QObject(window)
    , m_window(window)
    , m_commands(commands)
    , m_view(view)
{
    QMenu* menu = window->menuBar()->addMenu(tr("&File"));
    menu->setObjectName("_FileMenu");
    AddOpening(menu);
    menu->addSeparator();
    AddSaving(menu);
    m_documentActions = menu->actions();
    menu->addSeparator();
    AddProgram(menu);
    connect(commands->GetDocument(), &ZORHostDocument::Changed, this, &ZORHostFileMenu::UpdateActions);
    // Later: an entry of the menu may have opened the document, and is in use.
    connect(
        commands->GetDocument(), &ZORHostDocument::Changed, this, [this] { FillRecentMenu(m_recent); },
        Qt::QueuedConnection);
    connect(commands, &ZORHostDocumentCommands::BusyChanged, this, &ZORHostFileMenu::UpdateActions);
    connect(menu, &QMenu::aboutToShow, this, &ZORHostFileMenu::UpdateActions);
    UpdateActions();
}

void ZORHostFileMenu::AddOpening(QMenu* menu)
{
    m_new = AddAction(menu, "_NewAction", "new", tr("&New"), tr("Starts with an empty document"));
    m_new->setShortcut(QKeySequence::New);
    connect(m_new, &QAction::triggered, m_commands, &ZORHostDocumentCommands::New);
    m_open = AddAction(menu, "_OpenAction", "open", tr("&Open..."),
                       tr("Replaces the document by the contents of a file"));
    m_open->setShortcut(QKeySequence::Open);
    connect(m_open, &QAction::triggered, m_commands, &ZORHostDocumentCommands::OnOpenTriggered);
    m_recent = menu->addMenu(tr("Open &Recent"));
    m_recent->setObjectName("_RecentMenu");
    m_recent->setToolTipsVisible(true);
    connect(m_recent, &QMenu::aboutToShow, this, [this] { FillRecentMenu(m_recent); });
    FillRecentMenu(m_recent);
    QMenu* samples = menu->addMenu(tr("Open Sa&mples"));
    samples->setObjectName("_SamplesMenu");
    connect(samples, &QMenu::aboutToShow, this, [this, samples] { FillSamplesMenu(samples); });
    FillSamplesMenu(samples);
    QAction* import = AddAction(menu, "_ImportAction", QString(), tr("&Import..."),
                                tr("Adds the contents of files to the document"));
    import->setShortcut(Qt::CTRL | Qt::Key_I);
    connect(import, &QAction::triggered, m_commands, &ZORHostDocumentCommands::OnImportTriggered);
    m_close = AddAction(menu, "_CloseDocumentAction", QString(), tr("&Close"),
                        tr("Closes the document and leaves an empty one"));
    m_close->setShortcut(QKeySequence::Close);
    connect(m_close, &QAction::triggered, m_commands, &ZORHostDocumentCommands::New);
}

void ZORHostFileMenu::AddSaving(QMenu* menu)
{
    m_save = AddAction(menu, "_SaveAction", "save", tr("&Save"), tr("Writes the document into its file"));
    m_save->setShortcut(QKeySequence::Save);
    connect(m_save, &QAction::triggered, m_commands, &ZORHostDocumentCommands::Save);
    QAction* saveAs =
        AddAction(menu, "_SaveDocumentAction", QString(), tr("Save &As..."),
                  tr("Writes the document into another container file, which becomes its file"));
    saveAs->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    connect(saveAs, &QAction::triggered, m_commands, &ZORHostDocumentCommands::SaveAs);
    QAction* saveCopy = AddAction(menu, "_SaveCopyAction", QString(), tr("Save a Cop&y..."),
                                  tr("Writes the document into another container file and keeps its own"));
    connect(saveCopy, &QAction::triggered, m_commands, &ZORHostDocumentCommands::SaveCopy);
    m_savePicture = AddAction(menu, "_SavePictureAction", "save-picture", tr("Save &Picture..."),
                              tr("Writes the 3D view into a PNG file"));
    m_savePicture->setShortcut(Qt::CTRL | Qt::ALT | Qt::Key_S);
    connect(m_savePicture, &QAction::triggered, this, &ZORHostFileMenu::OnSavePictureTriggered);
}

void ZORHostFileMenu::AddProgram(QMenu* menu)
{
    QAction* recover = AddAction(menu, "_RecoverAction", QString(), tr("Reco&ver Documents..."),
                                 tr("Shows unsaved documents of sessions that ended unexpectedly"));
    connect(recover, &QAction::triggered, this, &ZORHostFileMenu::RecoveryRequested);
    m_documentActions.append(recover);
    QAction* preferences = AddAction(menu, "_PreferencesAction", QString(), tr("Pre&ferences..."),
                                     tr("Chooses what holds for all documents"));
    preferences->setShortcut(QKeySequence::Preferences);
    preferences->setMenuRole(QAction::PreferencesRole);
    connect(preferences, &QAction::triggered, this, &ZORHostFileMenu::PreferencesRequested);
    menu->addSeparator();
    QAction* quit =
        AddAction(menu, "_QuitAction", QString(), tr("&Quit"), tr("Closes all windows and ends the program"));
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);
    connect(quit, &QAction::triggered, m_window, &QWidget::close);
}

QAction* ZORHostFileMenu::AddAction(QMenu* menu, const QString& objectName, const QString& icon,
                                    const QString& text, const QString& toolTip)
{
    auto* action = new QAction(ZORHostIcon(icon), text, this);
    action->setObjectName(objectName);
    action->setToolTip(toolTip);
    action->setStatusTip(toolTip);
    menu->addAction(action);
    return action;
}

void ZORHostFileMenu::AddTo(QToolBar* toolBar) const
{
    toolBar->addActions({m_new, m_open, m_save, m_savePicture});
}

void ZORHostFileMenu::UpdateActions()
{
    const ZORHostDocument* document = m_commands->GetDocument();
    const bool isFree = !m_commands->IsBusy();
    for (QAction* action : std::as_const(m_documentActions))
        action->setEnabled(isFree);
    m_close->setEnabled(isFree && (!document->GetFile().isEmpty() || !document->IsEmpty()));
}

void ZORHostFileMenu::FillRecentMenu(QMenu* menu)
{
    menu->clear();
    const QStringList files = ZORHostRecentFiles::GetFiles();
    for (qsizetype i = 0; i < files.size(); ++i) {
        const QString name = ToActionText(QFileInfo(files[i]).fileName());
        auto* action = new QAction(i < 9 ? QStringLiteral("&%1 ").arg(i + 1) + name : name, menu);
        action->setObjectName(QStringLiteral("_Recent_%1").arg(i + 1));
        action->setToolTip(ZORCmnPlainText::ToToolTip(QDir::toNativeSeparators(files[i])));
        action->setStatusTip(QDir::toNativeSeparators(files[i]));
        connect(action, &QAction::triggered, this, [this, file = files[i]] { OpenRecent(file); });
        menu->addAction(action);
    }
    if (files.isEmpty()) {
        AddPlaceholder(menu, tr("No recent files"));
        return;
    }
    menu->addSeparator();
    QAction* clear = menu->addAction(tr("C&lear List"));
    clear->setObjectName("_ClearRecentAction");
    clear->setStatusTip(tr("Forgets the recent files"));
    connect(clear, &QAction::triggered, this, &ZORHostRecentFiles::Clear);
}

void ZORHostFileMenu::OpenRecent(const QString& file)
{
    if (QFileInfo::exists(file)) {
        m_commands->Open(file);
        return;
    }
    ZORHostRecentFiles::Remove(file);
    m_commands->Report(
        tr("The file '%1' does not exist anymore. It was removed from the list of recent files.")
            .arg(QDir::toNativeSeparators(file)),
        {});
}

void ZORHostFileMenu::FillSamplesMenu(QMenu* menu)
{
    menu->clear();
    const QStringList files = ZORHostSamples::GetFiles();
    for (const QString& file : files) {
        auto* action = new QAction(ToActionText(QFileInfo(file).fileName()), menu);
        action->setObjectName(QStringLiteral("_Sample_%1").arg(QFileInfo(file).completeBaseName()));
        action->setToolTip(ZORCmnPlainText::ToToolTip(QDir::toNativeSeparators(file)));
        action->setStatusTip(QDir::toNativeSeparators(file));
        connect(action, &QAction::triggered, this, [this, file] { m_commands->Open(file); });
        menu->addAction(action);
    }
    if (files.isEmpty())
        AddPlaceholder(menu, tr("No samples found"));
}

void ZORHostFileMenu::OnSavePictureTriggered()
{
    const QString start = ZORHostSettings::Read("PictureFile", "view.png").toString();
    const QString file = ZORHostFileDialogs::ChooseFileToWrite(m_window, tr("Save Picture"), start,
                                                               tr("PNG pictures (*.png)"), "png");
    if (!file.isEmpty() && SavePicture(file))
        ZORHostSettings::Write("PictureFile", file);
}

bool ZORHostFileMenu::SavePicture(const QString& fileName)
{
    const QImage picture = m_view->RenderPicture(m_view->GetDevicePixels(), m_view->devicePixelRatioF());
    QByteArray contents;
    QBuffer buffer(&contents);
    buffer.open(QIODevice::WriteOnly);
    const QString name = QDir::toNativeSeparators(fileName);
    QString error;
    if (picture.isNull())
        error = tr("The view is too small for a picture.");
    else if (QImageWriter writer(&buffer, "png"); !writer.write(picture))
        error = writer.errorString();
    else if (const QString reason = ZORSysReplacedFile::Replace(fileName, contents); !reason.isEmpty())
        error = tr("Cannot write '%1': %2").arg(name, reason);
    return m_commands->Report(error, tr("Picture saved as '%1'").arg(name));
}
