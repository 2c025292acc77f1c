#include "window/ZORHostMainWindow.h"

#include "HostTest.h"
#include "base/ZORHostTheme.h"
#include "docks/ZORHostLineQueue.h"
#include "plugins/ZORHostPluginManager.h"
#include "support/DialogAnswerer.h"
#include "support/MessageBoxCatcher.h"
#include "support/UncheckedLeaks.h"
#include "view/ZORHostView3D.h"
#include "window/ZORHostAboutDialog.h"
#include "window/ZORHostNoticeBar.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORFeatureUI/ZORFeatBrowserWidget.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisGraphicsContext.h>
#include <ZORVisualization/ZORVisScene.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QImage>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QToolBar>

#include <new>
#include <utility>

namespace {

class ZORHostMainWindowTest : public HostTest
{
public:
    ZORHostMainWindowTest()
    {
        QDir().mkpath(GetPath("samples"));
        WriteTetrahedron("samples/part.stl");
        qputenv("ZOR_SAMPLES", QFile::encodeName(GetPath("samples")));
        MakeWindow();
    }
    ~ZORHostMainWindowTest() override
    {
        window.reset();
        ZORHostTheme::Apply(ZORHostOptions::Theme::System);
        qunsetenv("ZOR_SAMPLES");
    }
    void MakeWindow()
    {
        window = std::make_unique<ZORHostMainWindow>(&plugins, &log);
        window->RestoreSettings();
        window->show();
        QCoreApplication::processEvents();
    }
    /// Waits until the view draws that many objects of the document.
    bool WaitForDrawings(int count)
    {
        return WaitFor([&] { return window->GetView()->GetScene()->GetNumDrawings() == count; });
    }
    QAction* Action(const char* name)
    {
        auto* action = window->findChild<QAction*>(QString::fromLatin1(name));
        EXPECT_NE(nullptr, action) << name;
        return action;
    }
    QString Status() { return window->statusBar()->currentMessage(); }

    MessageBoxCatcher boxes;
    DialogAnswerer answers;
    ZORHostLineQueue log{100};
    ZORHostPluginManager plugins;
    std::unique_ptr<ZORHostMainWindow> window;
};

TEST_F(ZORHostMainWindowTest, EveryActionDockAndToolBarHasANameAndATextOrIcon)
{
    for (const QDockWidget* dock : window->findChildren<QDockWidget*>())
        EXPECT_TRUE(dock->objectName().startsWith('_')) << dock->windowTitle().toStdString();
    for (const QToolBar* bar : window->findChildren<QToolBar*>())
        EXPECT_TRUE(bar->objectName().startsWith('_')) << bar->windowTitle().toStdString();
    for (const char* name : {"_BrowserDock", "_LogDock", "_ApiDock"})
        EXPECT_NE(nullptr, window->findChild<QDockWidget*>(QString::fromLatin1(name))) << name;
    const QList<QMenu*> menus = window->menuBar()->findChildren<QMenu*>();
    EXPECT_GE(menus.size(), 5);
    for (const QMenu* menu : menus) {
        for (const QAction* action : menu->actions()) {
            if (action->isSeparator() || action->menu())
                continue;
            EXPECT_FALSE(action->text().isEmpty());
            EXPECT_TRUE(action->objectName().startsWith('_')) << action->text().toStdString();
        }
    }
}

TEST_F(ZORHostMainWindowTest, ASampleOpensFromTheMenuAndIsShown)
{
    Action("_Sample_part")->trigger();
    EXPECT_EQ(1, GetEnvironment()->GetContainer()->GetNumGeometry());
    EXPECT_TRUE(WaitForDrawings(1));
    EXPECT_EQ(0, GetEnvironment()->GetNumVirtualObjects());
    EXPECT_TRUE(Status().startsWith("part.stl: 1 object(s)")) << Status().toStdString();
}

TEST_F(ZORHostMainWindowTest, PercentSignsInTheNameOfAFileReachTheStatusBar)
{
    EXPECT_TRUE(window->OpenFile(WriteTetrahedron("a%1b%2.stl")));
    EXPECT_TRUE(Status().startsWith("a%1b%2.stl: 1 object(s) in ")) << Status().toStdString();
}

TEST_F(ZORHostMainWindowTest, OpeningABrokenFileShowsAnErrorAndAddsNothing)
{
    answers.AnswerFile(WriteFile("broken.stl", "\xff\xfe"
                                               "b\0r\0o\0"));
    Action("_OpenAction")->trigger();
    EXPECT_EQ(1, boxes.TakeErrors().size());
    EXPECT_EQ(0, GetEnvironment()->GetContainer()->GetNumGeometry());
    answers.CancelFile();
    Action("_OpenAction")->trigger();
    window->statusBar()->showMessage("an earlier success");
    EXPECT_FALSE(window->OpenFile(GetPath("missing.stl")));
    EXPECT_EQ(QString(), Status());
    const QStringList errors = boxes.TakeErrors();
    ASSERT_EQ(1, errors.size());
    EXPECT_TRUE(errors[0].startsWith("Cannot open file '")) << errors[0].toStdString();
}

TEST_F(ZORHostMainWindowTest, RunningOutOfMemoryWhileOpeningLeavesTheDocumentAndTheCursorAsTheyWere)
{
    const UncheckedLeaks unchecked; // it throws through Qt
    AddBox("Box");
    const QString file = WriteTetrahedron("part.stl");
    {
        QObject receiver;
        bool isFirst = true; // the next one is that of a destructor, which has to pass
        QObject::connect(GetEnvironment()->GetContainer(), &ZORGeoContainer::ContentChanged, &receiver,
                         [first = &isFirst] {
                             if (std::exchange(*first, false))
                                 throw std::bad_alloc();
                         });
        EXPECT_FALSE(window->OpenFile(file));
    }
    const QStringList errors = boxes.TakeErrors();
    ASSERT_EQ(1, errors.size());
    EXPECT_TRUE(errors[0].startsWith("Not enough memory to read '" + file + "'")) << errors[0].toStdString();
    EXPECT_EQ(nullptr, QApplication::overrideCursor());
    EXPECT_EQ(1, GetEnvironment()->GetContainer()->GetNumGeometry());
    EXPECT_TRUE(window->OpenFile(file));
    EXPECT_EQ(2, GetEnvironment()->GetContainer()->GetNumGeometry());
}

TEST_F(ZORHostMainWindowTest, NewTakesEverythingOutAfterTheQuestionAboutUnsavedChanges)
{
    Action("_NewAction")->trigger(); // nothing to ask about
    ZORFeatContainer* container = GetEnvironment()->GetContainer();
    AddBox("Box");
    PressInNextBox(QMessageBox::Cancel);
    Action("_NewAction")->trigger();
    const QList<MessageBoxCatcher::Box> shown = boxes.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("'Untitled' has changes that are in no file yet. Save them?"), shown[0].text);
    EXPECT_EQ(1, container->GetNumGeometry());
    PressInNextBox(QMessageBox::Discard);
    Action("_NewAction")->trigger();
    EXPECT_EQ(1, boxes.Take().size());
    EXPECT_EQ(0, container->GetNumGeometry());
    EXPECT_EQ(0, GetEnvironment()->GetNumVirtualObjects());
    EXPECT_EQ(QString("New document"), Status());
}

TEST_F(ZORHostMainWindowTest, TheDocumentGoesToAContainerFileAndComesBack)
{
    AddBox("Box");
    answers.AnswerFile(GetPath("document"));
    Action("_SaveDocumentAction")->trigger();
    const QString file = GetPath("document.ZORCont");
    EXPECT_EQ("Document saved as '" + file + "'", Status());
    EXPECT_EQ(file, GetSettings()->value("Host/DocumentFile").toString());
    Action("_NewAction")->trigger();
    EXPECT_TRUE(boxes.Take().isEmpty()) << "nothing has changed since";
    answers.AnswerFile(file);
    Action("_OpenAction")->trigger();
    EXPECT_TRUE(Status().startsWith("document.ZORCont: 1 object(s)")) << Status().toStdString();
    ASSERT_EQ(1, GetEnvironment()->GetContainer()->GetNumGeometry());
    EXPECT_EQ(QString("Box"), GetEnvironment()->GetContainer()->GetGeometryByIndex(0)->objectName());
    EXPECT_TRUE(WaitForDrawings(1));
}

TEST_F(ZORHostMainWindowTest, ADocumentThatCannotBeWrittenShowsAnError)
{
    AddBox("Box");
    QDir().mkpath(GetPath("missing"));
    answers.AnswerFile(GetPath("missing/folder.ZORCont"),
                       [this] { QDir(GetPath("missing")).removeRecursively(); });
    Action("_SaveDocumentAction")->trigger();
    const QStringList errors = boxes.TakeErrors();
    ASSERT_EQ(1, errors.size());
    EXPECT_TRUE(errors[0].startsWith("Cannot write '" + GetPath("missing/folder.ZORCont") + "': "))
        << errors[0].toStdString();
    EXPECT_FALSE(GetSettings()->contains("Host/DocumentFile"));
}

TEST_F(ZORHostMainWindowTest, SavesThePictureOfTheView)
{
    AddBox("Box");
    answers.AnswerFile(GetPath("picture"));
    Action("_SavePictureAction")->trigger();
    const QImage picture(GetPath("picture.png"));
    EXPECT_EQ(window->GetView()->GetDevicePixels(), picture.size());
    EXPECT_EQ(GetPath("picture.png"), GetSettings()->value("Host/PictureFile").toString());
}

TEST_F(ZORHostMainWindowTest, APictureThatCannotBeWrittenShowsAnError)
{
    QDir().mkpath(GetPath("vanishing"));
    answers.AnswerFile(GetPath("vanishing/picture.png"),
                       [this] { QDir(GetPath("vanishing")).removeRecursively(); });
    Action("_SavePictureAction")->trigger();
    const QStringList errors = boxes.TakeErrors();
    ASSERT_EQ(1, errors.size());
    EXPECT_TRUE(errors[0].startsWith("Cannot write '" + GetPath("vanishing/picture.png") + "': "))
        << errors[0].toStdString();
    EXPECT_FALSE(GetSettings()->contains("Host/PictureFile"));
}

TEST_F(ZORHostMainWindowTest, AClickInTheViewNamesTheObjectAndSelectsItInTheBrowser)
{
    if (!ZORVisGraphicsContext::GetInstance()->IsAvailable())
        GTEST_SKIP() << "no graphics context";
    ZORGeoSurface* box = AddBox("My Box");
    QCoreApplication::processEvents();
    ZORHostView3D* view = window->GetView();
    QTest::mouseClick(view, Qt::LeftButton, {}, view->rect().center());
    EXPECT_TRUE(Status().startsWith("My Box at (")) << Status().toStdString();
    EXPECT_EQ(box, window->findChild<ZORFeatBrowserWidget*>("_Browser")->GetCurrentGeometry());
    QTest::mouseClick(view, Qt::LeftButton, {}, {3, 3});
    EXPECT_TRUE(Status().isEmpty());
}

TEST_F(ZORHostMainWindowTest, KeysOfTheViewWorkInTheView)
{
    AddBox("Box");
    ZORHostView3D* view = window->GetView();
    window->activateWindow();
    view->setFocus();
    QTest::keyClick(view, Qt::Key_6);
    EXPECT_NEAR(-1, view->GetCamera().GetViewDirection().GetZ(), 1e-12);
    QTest::keyClick(view, Qt::Key_W);
    EXPECT_EQ(ZORVisRenderer::Wireframe, view->GetDisplayMode());
    EXPECT_TRUE(Action("_WireframeAction")->isChecked());
    EXPECT_FALSE(Action("_ShadedAction")->isChecked());
    QTest::keyClick(view, Qt::Key_S);
    EXPECT_EQ(ZORVisRenderer::Shaded, view->GetDisplayMode());
}

TEST_F(ZORHostMainWindowTest, LayoutThemeAndDisplayModeAreKept)
{
    window->setWindowState(Qt::WindowNoState);
    window->resize(700, 600);
    window->findChild<QDockWidget*>("_ApiDock")->hide();
    Action("_WireframeAction")->trigger();
    Action("_Theme_dark")->trigger();
    EXPECT_TRUE(ZORHostTheme::IsDark(QApplication::palette()));
    window->close();
    window.reset();
    ZORHostTheme::Apply(ZORHostOptions::Theme::System);
    MakeWindow();
    EXPECT_EQ(QSize(700, 600), window->size());
    EXPECT_TRUE(window->findChild<QDockWidget*>("_ApiDock")->isHidden());
    EXPECT_EQ(ZORVisRenderer::Wireframe, window->GetView()->GetDisplayMode());
    EXPECT_TRUE(Action("_Theme_dark")->isChecked());
    EXPECT_TRUE(ZORHostTheme::IsDark(QApplication::palette()));
}

TEST_F(ZORHostMainWindowTest, SettingsThatMakeNoSenseGiveTheDefaults)
{
    window.reset();
    GetSettings()->setValue("Host/Geometry", "garbage");
    GetSettings()->setValue("Host/Layout", QByteArray(100, 'x'));
    GetSettings()->setValue("Host/Theme", "purple");
    MakeWindow();
    EXPECT_TRUE(Action("_Theme_system")->isChecked());
    EXPECT_TRUE(window->findChild<QDockWidget*>("_LogDock")->isVisibleTo(window.get()));
}

TEST_F(ZORHostMainWindowTest, ClosingItClosesTheOtherWindowsFirstUnlessOneRefuses)
{
    class Stubborn : public QWidget
    {
    public:
        bool refuse = true;

    protected:
        void closeEvent(QCloseEvent* event) override { event->setAccepted(!refuse); }
    };
    Stubborn other;
    other.show();
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(window->isVisible());
    other.refuse = false;
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(other.isVisible());
}

TEST_F(ZORHostMainWindowTest, TheAboutBoxTellsVersionsGraphicsAndAcknowledgements)
{
    Action("_AboutAction")->trigger();
    const auto* about = window->findChild<ZORHostAboutDialog*>();
    ASSERT_NE(nullptr, about);
    EXPECT_TRUE(about->isVisible());
    const auto text = [about](const char* name) {
        return about->findChild<QLabel*>(QString::fromLatin1(name))->text();
    };
    EXPECT_EQ(QString("1.0.0"), text("_AboutHostLbl"));
    EXPECT_EQ(QString("1.0.0"), text("_AboutSdkLbl"));
    EXPECT_TRUE(text("_AboutQtLbl").startsWith(QString::fromLatin1(qVersion())));
    EXPECT_EQ(ZORVisGraphicsContext::GetInstance()->GetDescription(), text("_AboutGraphicsLbl"));
    EXPECT_EQ(QString("none"), text("_AboutPluginsLbl"));
    const QString notices =
        about->findChild<QPlainTextEdit*>("_AboutNoticesEdit")->toPlainText().simplified();
    EXPECT_TRUE(
        notices.contains("The Hershey Fonts were originally created by Dr. A. V. Hershey while working at "
                         "the U. S. National Bureau of Standards."));
    EXPECT_TRUE(
        notices.contains("The format of the Font data in this distribution was originally created by James "
                         "Hurt Cognition, Inc. 900 Technology Park Drive Billerica, MA 01821 "
                         "(mit-eddie!ci-dandelion!hurt)"));
}

TEST_F(ZORHostMainWindowTest, PluginsThatDidNotLoadAreOnTheNoticeBar)
{
    EXPECT_FALSE(window->GetNoticeBar()->isVisible());
    plugins.Load(GetPath("missing.so"));
    window->ShowPluginProblems();
    EXPECT_TRUE(window->GetNoticeBar()->isVisible());
    EXPECT_EQ(QStringList("Plug-in 'missing.so' was not loaded: the file does not exist"),
              window->GetNoticeBar()->GetMessages());
    window->findChild<QPushButton*>("_NoticeDetailsBtn")->click();
    EXPECT_NE(nullptr, window->findChild<QDialog*>("_PluginDialog"));
    window->findChild<QPushButton*>("_NoticeCloseBtn")->click();
    EXPECT_FALSE(window->GetNoticeBar()->isVisible());
}

TEST_F(ZORHostMainWindowTest, TheCommandPaletteOpensByItsShortcut)
{
    window->activateWindow();
    ASSERT_TRUE(WaitFor([this] { return window->isActiveWindow(); }));
    QTest::keyClick(window.get(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    const QPointer<QDialog> palette = window->findChild<QDialog*>("_CommandPalette");
    ASSERT_NE(nullptr, palette);
    EXPECT_TRUE(palette->isVisible());
}

} // namespace
