// Walks through all windows of the host and of the test bench, in light and dark colours.

#include "HostTest.h"
#include "app/ZORHostCommandLine.h"
#include "app/ZORHostTheme.h"
#include "docks/ZORHostLineQueue.h"
#include "plugins/ZORHostPluginManager.h"
#include "support/WindowInspector.h"
#include "window/ZORHostDialogHandler.h"
#include "window/ZORHostMainWindow.h"
#include "window/ZORHostNoticeBar.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QColor>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>

namespace {

/// Inspects every modal dialog that opens and rejects it.
class ModalInspector : public QObject
{
public:
    ModalInspector() { qApp->installEventFilter(this); }

    QStringList faults;
    QStringList classes; // of the dialogs seen

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* dialog = qobject_cast<QDialog*>(watched);
        if (event->type() == QEvent::Show && dialog && dialog->isModal()) {
            QTimer::singleShot(0, dialog, [this, dialog] {
                const QString name = QString::fromLatin1(dialog->metaObject()->className());
                classes.append(name);
                // Those of Qt are not ours to lay out.
                if (name.startsWith("ZOR"))
                    faults += InspectWindow(dialog);
                dialog->reject();
            });
        }
        return QObject::eventFilter(watched, event);
    }
};

class ZORHostWindowsTest : public HostTest, public testing::WithParamInterface<ZORHostOptions::Theme>
{
public:
    ZORHostWindowsTest()
    {
        ZORHostTheme::Apply(GetParam());
        window = std::make_unique<ZORHostMainWindow>(&plugins, &log);
        plugins.SetMainWindow(window.get());
        handler = std::make_unique<ZORHostDialogHandler>(window.get());
        ZORCmdController::GetController()->SetDialogHandler(handler.get());
        window->show();
        EXPECT_TRUE(plugins.Load(ZOR_TEST_BENCH)) << ZOR_TEST_BENCH;
        QCoreApplication::processEvents();
    }
    ~ZORHostWindowsTest() override
    {
        // The windows of the library go before the document does.
        EXPECT_TRUE(plugins.Unload(ZOR_TEST_BENCH));
        ZORCmdController::GetController()->SetDialogHandler(nullptr);
        handler.reset();
        window.reset();
        ZORHostTheme::Apply(ZORHostOptions::Theme::System);
    }

    void Inspect(QWidget* inspected)
    {
        ASSERT_NE(nullptr, inspected);
        QCoreApplication::processEvents();
        const QStringList faults = InspectWindow(inspected);
        EXPECT_TRUE(faults.isEmpty()) << faults.join('\n').toStdString();
    }
    /// The visible top-level window of that class.
    static QWidget* Find(const char* className)
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows) {
            if (candidate->isVisible() && candidate->inherits(className))
                return candidate;
        }
        return nullptr;
    }
    QWidget* OpenConsole()
    {
        ZORCmdController::GetController()->GetAction("ZORTestMainCommand")->trigger();
        return Find("ZORTestMainDialog");
    }
    void AddGeometries()
    {
        ZORFeatContainer* container = GetEnvironment()->GetContainer();
        (new ZORGeoCartesianPoint(container, ZORMathPoint(1, 2, 3)))->Initialize();
        (new ZORGeoPolyline(container, QList<ZORMathPoint>{{0, 0, 0}, {1, 0, 0}}, true))->Initialize();
        AddBox("Box");
    }

    ZORHostLineQueue log{100};
    ZORHostPluginManager plugins;
    std::unique_ptr<ZORHostMainWindow> window;
    std::unique_ptr<ZORHostDialogHandler> handler;
};

TEST_P(ZORHostWindowsTest, TheMainWindowCanBeRead)
{
    AddBox("Box");
    window->GetNoticeBar()->AddMessage("A notice of some length, which has to be readable in every theme.");
    window->GetNoticeBar()->SetDetails("Details...");
    Inspect(window.get());
    window->findChild<QDockWidget*>("_ApiDock")->raise();
    Inspect(window.get());
}

TEST_P(ZORHostWindowsTest, TheDialogsOfTheHostCanBeRead)
{
    plugins.Load(GetPath("missing.so"));
    window->OnPluginsTriggered();
    Inspect(window->findChild<QDialog*>("_PluginDialog"));
    window->OnAboutTriggered();
    Inspect(window->findChild<QDialog*>("_AboutDialog"));
    window->OnPaletteTriggered();
    Inspect(window->findChild<QDialog*>("_CommandPalette"));
}

TEST_P(ZORHostWindowsTest, TheFrameOfADialogCommandCanBeRead)
{
    ZORCmdController::GetController()->GetAction("ZORTestOptionsCmd")->trigger();
    Inspect(window->findChild<QDialog*>("_DialogFrame"));
}

TEST_P(ZORHostWindowsTest, EveryTabOfTheConsoleCanBeRead)
{
    AddGeometries();
    QWidget* console = OpenConsole();
    ASSERT_NE(nullptr, console);
    auto* tabs = console->findChild<QTabWidget*>("_TabWidget");
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        Inspect(console);
    }
}

TEST_P(ZORHostWindowsTest, EveryDialogOfTheConsolesMenusCanBeRead)
{
    AddGeometries();
    ModalInspector modals;
    QWidget* console = OpenConsole();
    ASSERT_NE(nullptr, console);
    int dialogs = 0;
    const QList<QMenu*> menus = console->findChild<QMenuBar*>("_Menu")->findChildren<QMenu*>();
    for (const QMenu* menu : menus) {
        for (QAction* action : menu->actions()) {
            if (action->isSeparator())
                continue;
            action->trigger();
            QCoreApplication::processEvents();
            const QList<QDialog*> open = console->findChildren<QDialog*>();
            for (QDialog* dialog : open) {
                if (!dialog->isVisible())
                    continue;
                Inspect(dialog);
                ++dialogs;
                dialog->close();
            }
            DeleteDeferred();
        }
    }
    EXPECT_GE(dialogs, 1);
    EXPECT_TRUE(modals.faults.isEmpty()) << modals.faults.join('\n').toStdString();
}

TEST_P(ZORHostWindowsTest, TheOptionsOfTheVisualizersAndTheInspectionCanBeRead)
{
    AddGeometries();
    ModalInspector modals;
    QWidget* console = OpenConsole();
    ASSERT_NE(nullptr, console);
    auto* table = console->findChild<QAbstractItemView*>("_ContTable");
    ASSERT_EQ(3, table->model()->rowCount());
    for (int row = 0; row < 3; ++row) {
        table->setCurrentIndex(table->model()->index(row, 0));
        console->findChild<QPushButton*>("_ContVisuBtn")->click();
        table->setCurrentIndex(table->model()->index(row, 0));
        console->findChild<QPushButton*>("_ContInspectBtn")->click();
        Inspect(Find("ZORTestGeoInspectionDlg"));
    }
    for (const char* name :
         {"ZORTestPointVisOptionsDlg", "ZORTestCurveVisOptionsDlg", "ZORTestSurfaceVisOptionsDlg"})
        EXPECT_TRUE(modals.classes.contains(QLatin1String(name))) << name;
    EXPECT_TRUE(modals.faults.isEmpty()) << modals.faults.join('\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(Themes, ZORHostWindowsTest,
                         testing::Values(ZORHostOptions::Theme::Light, ZORHostOptions::Theme::Dark),
                         [](const auto& theme) { return ZORHostTheme::ToName(theme.param).toStdString(); });

// The inspector itself must find faults, or the walk above means nothing.
TEST(WindowInspectorTest, FindsTextsThatAreCutOffOrTooFaint)
{
    EXPECT_NEAR(21, GetContrast(Qt::black, Qt::white), 1e-9);
    EXPECT_NEAR(1, GetContrast(Qt::red, Qt::red), 1e-9);
    EXPECT_NEAR(4.54, GetContrast(QColor(0x76, 0x76, 0x76), Qt::white), 0.01);
    QWidget window;
    window.resize(300, 100);
    QPushButton narrow("A text too long for its button", &window);
    narrow.setGeometry(0, 0, 60, 30);
    window.show();
    ASSERT_EQ(1, InspectWindow(&window).size());
    EXPECT_TRUE(InspectWindow(&window)[0].contains("needs a width of"));
    narrow.setGeometry(0, 0, 280, 30);
    EXPECT_TRUE(InspectWindow(&window).isEmpty()) << InspectWindow(&window).join('\n').toStdString();
    QLabel faint("Hardly to be seen", &window);
    faint.setStyleSheet("color: #c0c0c0; background: white");
    faint.setGeometry(0, 40, 280, 30);
    faint.show();
    ASSERT_EQ(1, InspectWindow(&window).size());
    EXPECT_TRUE(InspectWindow(&window)[0].contains("has a contrast of 1.8 : 1 only"))
        << InspectWindow(&window)[0].toStdString();
    faint.setEnabled(false);
    EXPECT_TRUE(InspectWindow(&window).isEmpty());
}

} // namespace
