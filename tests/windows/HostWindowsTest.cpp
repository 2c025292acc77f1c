// The windows of the host.

#include "WindowChecks.h"
#include "WindowTest.h"
#include "actions/ZORHostActionIndex.h"
#include "actions/ZORHostCommandPalette.h"
#include "actions/ZORHostIcons.h"
#include "actions/ZORHostMnemonics.h"
#include "base/ZORHostTheme.h"
#include "core/ZORTestOptionsCmd.h"
#include "docks/ZORHostLog.h"
#include "document/ZORHostRecoveryDialog.h"
#include "help/ZORHostHelpWindow.h"
#include "objects/ZORHostPropertiesDialog.h"
#include "plugins/ZORHostPluginDialog.h"
#include "plugins/ZORHostPluginManager.h"
#include "window/ZORHostAboutDialog.h"
#include "window/ZORHostDialogHandler.h"
#include "window/ZORHostMainWindow.h"
#include "window/ZORHostNoticeBar.h"
#include "window/ZORHostPreferencesDialog.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>

#include <optional>

namespace {

class HostWindowsTest : public WindowTest
{
protected:
    HostWindowsTest()
    {
        ZORCmdController::GetController()->SetIconResolver(&ZORHostIcon);
        plugins.emplace();
        plugins->Load(GetPath("missing.so"));
        window.emplace(&*plugins, log.GetQueue());
        plugins->SetMainWindow(&*window);
        dialogs.emplace(&*window);
        ZORCmdController::GetController()->SetDialogHandler(&*dialogs);
    }
    ~HostWindowsTest() override
    {
        ZORCmdController::GetController()->SetDialogHandler(nullptr);
        dialogs.reset();
        plugins->SetMainWindow(nullptr);
        window.reset();
        ZORCmdController::GetController()->SetIconResolver({});
    }

    /// The dialog of \a className that is open; a failure when there is none.
    static QDialog* FindDialog(const char* className)
    {
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows) {
            if (candidate->isVisible() && candidate->inherits(className))
                return qobject_cast<QDialog*>(candidate);
        }
        ADD_FAILURE() << "no " << className << " is open";
        return nullptr;
    }

    ZORHostLog log;
    std::optional<ZORHostPluginManager> plugins;
    std::optional<ZORHostMainWindow> window;
    std::optional<ZORHostDialogHandler> dialogs;
};

INSTANTIATE_TEST_SUITE_P(Themes, HostWindowsTest,
                         testing::Values(ZORHostOptions::Theme::Light, ZORHostOptions::Theme::Dark),
                         [](const auto& tested) { return ZORHostTheme::ToName(tested.param).toStdString(); });

/// Walks the dialogs of the SDK's own commands in the frame of the host.
class StandardCommandWindowsTest : public HostWindowsTest
{
protected:
    StandardCommandWindowsTest()
    {
        EXPECT_TRUE(plugins->Load(library)) << plugins->GetPlugins().constLast().reason.toStdString();
        window->show();
    }
    ~StandardCommandWindowsTest() override { EXPECT_TRUE(plugins->Unload(library)); }

    void AddObjects()
    {
        AddSurface("Wing skin");
        AddPoint("Corner of the spar");
        auto* const root = qobject_cast<ZORCompRoot*>(GetContainer()->GetFeatureRoot("ZORCompRoot"));
        for (const char* name : {"Prepreg UD 134", "Glass fabric"}) {
            auto* const material = new ZORCompMaterial(ZORCompMaterialLibrary::Of(root));
            material->SetLabel(QLatin1String(name));
            ZORCompMaterialProperties properties;
            properties.type = QStringLiteral("CFRP");
            properties.thickness = 0.125;
            properties.density = 1.6e-9;
            properties.E1 = 135000;
            properties.permeability1 = 1.25e-12;
            material->SetProperties(properties);
            material->Initialize();
        }
    }
    QDialog* OpenFrame(const char* id)
    {
        ZORCmdController::GetController()->GetAction(id)->trigger();
        return FindDialog("ZORHostDialogFrame");
    }
    static void Click(const QWidget* frame, const char* button)
    {
        frame->findChild<QPushButton*>(QLatin1String(button))->click();
    }
    /// Walks a dialog as it opens, empty and with objects.
    void WalkCommand(const char* id, const QString& name)
    {
        for (const bool isEmpty : {true, false}) {
            if (!isEmpty)
                AddObjects();
            QDialog* const frame = OpenFrame(id);
            ASSERT_NE(nullptr, frame);
            Walk(frame, isEmpty ? name + "-empty" : name);
            frame->reject();
        }
    }

    const QString library = QStringLiteral(ZOR_STANDARD_COMMANDS);
};

INSTANTIATE_TEST_SUITE_P(Themes, StandardCommandWindowsTest,
                         testing::Values(ZORHostOptions::Theme::Light, ZORHostOptions::Theme::Dark),
                         [](const auto& tested) { return ZORHostTheme::ToName(tested.param).toStdString(); });

TEST_P(StandardCommandWindowsTest, HostWithTheirMenus)
{
    Walk(&*window, "host-commands");
}

/// What is missing in the texts of a menu and of those in it.
QStringList FindMissingTexts(const QList<QAction*>& actions, const QString& path)
{
    QStringList problems;
    QHash<QChar, QString> letters;
    for (const QAction* action : actions) {
        if (action->isSeparator() || !action->isVisible())
            continue;
        const QString text = path + QStringLiteral(" > ") + ZORHostPlainText(action->text());
        const bool isFileName = action->objectName().startsWith(QLatin1String("_Sample_"));
        const QChar letter = ZORHostMnemonics::Find(action->text());
        if (letter.isNull() && !isFileName && action->isEnabled())
            problems.append(text + QStringLiteral(" has no mnemonic"));
        if (!letter.isNull() && letters.contains(letter))
            problems.append(QStringLiteral("%1 shares %2 with %3").arg(text, letter, letters[letter]));
        letters[letter] = text;
        if (action->menu()) {
            problems += FindMissingTexts(action->menu()->actions(), text);
            continue;
        }
        if (action->objectName() == QLatin1String("_NothingAction"))
            continue; // a line that explains why there are no entries
        if (action->statusTip().isEmpty())
            problems.append(text + QStringLiteral(" has no status text"));
        if (action->toolTip() == ZORHostPlainText(action->text()))
            problems.append(text + QStringLiteral(" has no tool tip"));
    }
    return problems;
}

TEST_P(StandardCommandWindowsTest, EveryActionHasAMnemonicAToolTipAndAStatusText)
{
    EXPECT_EQ(QStringList(), FindMissingTexts(window->menuBar()->actions(), "Menu"));
    const auto bars = window->findChildren<QToolBar*>();
    for (const QToolBar* bar : bars) {
        for (const QAction* action : bar->actions())
            EXPECT_TRUE(action->isSeparator() || !action->statusTip().isEmpty())
                << action->text().toStdString();
    }
}

TEST_P(StandardCommandWindowsTest, Projection)
{
    WalkCommand("ZORWFProjectionCmd.Create", "projection");
}

TEST_P(StandardCommandWindowsTest, Rosette)
{
    WalkCommand("ZORCompRosetteCmd.Create", "rosette");
}

TEST_P(StandardCommandWindowsTest, Strategy)
{
    WalkCommand("ZORCompStrategyCmd.Create", "strategy");
    QDialog* const frame = OpenFrame("ZORCompStrategyCmd.Create");
    ASSERT_NE(nullptr, frame);
    frame->findChild<QComboBox*>("_SurfaceCombo")->setCurrentIndex(1);
    Walk(frame, "strategy-draping");
    frame->reject();
}

TEST_P(StandardCommandWindowsTest, Course)
{
    WalkCommand("ZORTPCourseCmd.Create", "course");
    QDialog* const frame = OpenFrame("ZORTPCourseCmd.Create");
    ASSERT_NE(nullptr, frame);
    frame->findChild<QComboBox*>("_MethodCombo")->setCurrentIndex(1);
    Walk(frame, "course-geodesic");
    frame->reject();
}

TEST_P(StandardCommandWindowsTest, Layup)
{
    WalkCommand("ZORCompLayupCmd.Create", "layup");
    QDialog* const frame = OpenFrame("ZORCompLayupCmd.Create");
    ASSERT_NE(nullptr, frame);
    for (int i = 0; i < 4; ++i)
        Click(frame, "_AddPlyBtn");
    auto* const table = frame->findChild<QTableView*>("_PlyTable");
    const QStringList cut = FindCutTexts(frame); // with the editor of an angle
    EXPECT_EQ(QStringList(), cut) << cut.join(", ").toStdString();
    table->setCurrentIndex(table->model()->index(0, 0)); // ends the edit
    Walk(frame, "layup-plies");
    frame->reject();
}

TEST_P(StandardCommandWindowsTest, MaterialLibrary)
{
    WalkCommand("ZORCompMaterialLibraryCmd.Edit", "material-library");
    QDialog* const frame = OpenFrame("ZORCompMaterialLibraryCmd.Edit");
    ASSERT_NE(nullptr, frame);
    QAbstractItemModel* const model = frame->findChild<QTableView*>("_MaterialTable")->model();
    model->setData(model->index(1, 2), "thin");
    Walk(frame, "material-library-problem");
    frame->reject();
}

TEST_P(HostWindowsTest, ActionsOfTheBenchStandInMenuAndToolBarWithTheirIcon)
{
    window->show();
    QStringList menus;
    const auto menuActions = window->menuBar()->actions();
    for (const QAction* action : menuActions)
        menus.append(action->text());
    EXPECT_EQ(QStringList({"&File", "&Edit", "&View", "&Window", "&Test", "&Help"}), menus);

    const auto* bar = window->findChild<QToolBar*>("_CommandToolBar");
    const auto* viewBar = window->findChild<QToolBar*>("_ViewToolBar");
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(viewBar->y(), bar->y());
    EXPECT_GT(bar->x(), viewBar->x());
    const QList<QAction*> actions = window->findChild<QMenu*>("_TestMenu")->actions();
    EXPECT_EQ(actions, bar->actions());
    ASSERT_EQ(2, actions.size());
    EXPECT_EQ(QString("&SDK Test"), actions[0]->text());
    EXPECT_EQ(QString("SDK &Test Options"), actions[1]->text());

    const QSize size(24, 24);
    const QImage icon = ZORHostIcon("nesting-info").pixmap(size).toImage();
    EXPECT_NE(icon, ZORHostIcon("an icon that the host lacks").pixmap(size).toImage());
    for (QAction* action : actions) {
        EXPECT_EQ(icon, action->icon().pixmap(size).toImage()) << action->text().toStdString();
        const auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action));
        ASSERT_NE(nullptr, button);
        EXPECT_EQ(icon, button->icon().pixmap(size).toImage());
        EXPECT_EQ(Qt::ToolButtonTextBesideIcon, button->toolButtonStyle());
    }
    EXPECT_LT(bar->widgetForAction(actions[0])->x(), bar->widgetForAction(actions[1])->x());
}

TEST_P(HostWindowsTest, MainWindow)
{
    AddSurface("Wing skin");
    Walk(&*window, "host");
}

TEST_P(HostWindowsTest, MainWindowWithNotice)
{
    window->show();
    window->ShowPluginProblems();
    Walk(&*window, "host-notice");
}

TEST_P(HostWindowsTest, Help)
{
    ZORHostHelpWindow help(nullptr);
    help.ShowPlace(ZORHostHelpPages::Find("Mouse and keys"));
    Walk(&help, "help");
}

TEST_P(HostWindowsTest, MainWindowWithWelcome)
{
    Walk(&*window, "host-welcome");
}

TEST_P(HostWindowsTest, Preferences)
{
    ZORHostPreferencesDialog preferences(nullptr);
    Walk(&preferences, "preferences");
}

TEST_P(HostWindowsTest, Recovery)
{
    const QDateTime time(QDate(2026, 11, 22), QTime(18, 8));
    const QList<ZORHostRescue::Entry> entries = {
        {GetPath("a.ZORCont"),
         "/home/user/wings/Wing skin with ribs and spars, second try.ZORCont",
         time,
         {}},
        {GetPath("b.ZORCont"), {}, time, {}}};
    ZORHostRecoveryDialog recovery(entries, window->GetDocumentCommands(), nullptr);
    Walk(&recovery, "recovery");
}

TEST_P(HostWindowsTest, PropertiesOfObjects)
{
    ZORFeatContainer container;
    auto* const point = new ZORGeoCartesianPoint(&container, {1, 2, 3});
    point->Initialize();
    ZORHostPropertiesDialog properties({point}, nullptr);
    Walk(&properties, "properties");
}

TEST_P(HostWindowsTest, About)
{
    ZORHostAboutDialog about(*plugins, nullptr);
    Walk(&about, "about");
}

TEST_P(HostWindowsTest, Plugins)
{
    ZORHostPluginDialog page(&*plugins, nullptr);
    Walk(&page, "plugins");
}

TEST_P(HostWindowsTest, CommandPalette)
{
    window->show();
    auto* palette = new ZORHostCommandPalette(&*window);
    Walk(palette, "palette");
    palette->close();
}

TEST_P(HostWindowsTest, FrameOfTheTestOptions)
{
    window->show();
    QAction* action = ZORCmdController::GetController()->GetAction("ZORTestOptionsCmd");
    ASSERT_NE(nullptr, action);
    action->trigger();
    QDialog* frame = FindDialog("ZORHostDialogFrame");
    ASSERT_NE(nullptr, frame);
    Walk(frame, "options-frame");
    frame->reject();
}

} // namespace
