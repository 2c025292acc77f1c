#include "console/ZORTestMainDialog.h"

#include "core/ZORTestCommand.h"
#include "core/ZORTestDialog.h"
#include "core/ZORTestRegistration.h"
#include "support/BenchTest.h"
#include "support/OpenWatch.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORFeatureUI/ZORFeatBrowserWidget.h>
#include <ZORSystem/ZORSysException.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMetaMethod>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>

#include <array>
#include <stdexcept>

/// Command that does what the test says and keeps what the console gave it.
class ConsoleProbeCmd : public ZORTestCommand
{
    Q_OBJECT

public:
    enum Behaviour { Finish, Throw, ThrowOther };

    Q_INVOKABLE explicit ConsoleProbeCmd(ZORTestEnvironment* environment)
        : ZORTestCommand(environment)
    {
    }

    void Execute() override
    {
        last = this;
        if (behaviour == Throw)
            throw ZORSysException(failure);
        if (behaviour == ThrowOther)
            throw std::runtime_error("no business of the bench");
        emit Finished(false);
    }

    static inline Behaviour behaviour = Finish;
    static inline QString failure = QStringLiteral("the command failed");
    static inline QPointer<ConsoleProbeCmd> last;
};

ZOR_TEST_REGISTER(ConsoleProbeCmd)

/// Dialog with a button box and nothing else.
class ConsoleProbeDlg : public ZORTestDialog
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ConsoleProbeDlg(ZORTestEnvironment* environment)
        : ZORTestDialog(environment)
    {
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    }
    /// The environment is whole until the last dialog is gone.
    ~ConsoleProbeDlg() override { lastUiParent = GetEnvironment()->GetUiParent(); }
    bool Apply() override { return true; }

    static inline const QWidget* lastUiParent = nullptr;
};

ZOR_TEST_REGISTER(ConsoleProbeDlg)

namespace {

class ZORTestMainDialogTest : public BenchTest
{
protected:
    ZORTestMainDialogTest()
    {
        ConsoleProbeCmd::behaviour = ConsoleProbeCmd::Finish;
        OpenConsole();
    }

    /// Adds an entry to the menu "Feature" that runs \a command.
    QAction* AddEntry(const char* command)
    {
        QAction* action =
            console->findChild<QMenu*>(QStringLiteral("menuFeature"))->addAction(QStringLiteral("&Probe..."));
        action->setProperty("command", QString::fromLatin1(command));
        return action;
    }

    MessageBoxCatcher::Box ErrorBox(const char* text) const
    {
        return {QMessageBox::Critical, "Error", QString::fromLatin1(text), QMessageBox::Ok, console.data()};
    }
};

TEST_F(ZORTestMainDialogTest, IsATopLevelWindowThatDeletesItselfOnClose)
{
    EXPECT_EQ(nullptr, console->parentWidget());
    EXPECT_EQ(QString("ZORTestMainDialog"), console->objectName());
    EXPECT_EQ(QString("C++ Qt SDK Testing Framework"), console->windowTitle());
    EXPECT_EQ(QSize(897, 690), console->size());
    EXPECT_TRUE(console->testAttribute(Qt::WA_DeleteOnClose));
}

TEST_F(ZORTestMainDialogTest, HasTheTabsInOrderAndStartsWithTheContainer)
{
    const auto* tabs = InConsole<QTabWidget>("_TabWidget");
    const std::array<std::array<const char*, 2>, 4> expected{{{"Visualization", "_VisualizationTab"},
                                                              {"Container", "_ContainerTab"},
                                                              {"Transactions", "_TransactionsTab"},
                                                              {"Stack Monitoring", "_StackMonTab"}}};
    ASSERT_EQ(int(expected.size()), tabs->count());
    for (int index = 0; index < tabs->count(); ++index) {
        EXPECT_EQ(QString::fromLatin1(expected[size_t(index)][0]), tabs->tabText(index));
        EXPECT_EQ(QString::fromLatin1(expected[size_t(index)][1]), tabs->widget(index)->objectName());
    }
    EXPECT_EQ(1, tabs->currentIndex());
    EXPECT_EQ(console->centralWidget(), InConsole<QWidget>("_MainWidget"));
    EXPECT_EQ(console->centralWidget(), tabs->parentWidget());
}

TEST_F(ZORTestMainDialogTest, HasTheWidgetsOfItsTabsWithTheirTexts)
{
    const struct
    {
        const char* name;
        const char* className;
        const char* text;
        const char* tab;
    } expected[] = {
        {"_ShowDebugChk", "QCheckBox", "Show debug visualization", "_VisualizationTab"},
        {"_ClearDebugBtn", "QPushButton", "Clear", "_VisualizationTab"},
        {"_VisLabel", "QLabel", "Displayed Visualization: ", "_VisualizationTab"},
        {"_VisList", "QListWidget", nullptr, "_VisualizationTab"},
        {"_VisEditBtn", "QPushButton", "Edit ", "_VisualizationTab"},
        {"_VisRemoveBtn", "QPushButton", "Remove", "_VisualizationTab"},
        {"_VisRemoveAllBtn", "QPushButton", "RemoveAll", "_VisualizationTab"},
        {"_ContTypeLabel", "QLabel", "Filter Type: ", "_ContainerTab"},
        {"_ContTypeCombo", "QComboBox", nullptr, "_ContainerTab"},
        {"_ContRefreshBtn", "QPushButton", "Refresh", "_ContainerTab"},
        {"_ContTable", "QTableView", nullptr, "_ContainerTab"},
        {"_ContVisuBtn", "QPushButton", "Visualize", "_ContainerTab"},
        {"_ContInspectBtn", "QPushButton", "Inspect", "_ContainerTab"},
        {"_ContDeleteBtn", "QPushButton", "Delete", "_ContainerTab"},
        {"_ContDeleteAllBtn", "QPushButton", "Delete All", "_ContainerTab"},
        {"_TransLabel", "QLabel", "Label :", "_TransactionsTab"},
        {"_TransEdit", "QLineEdit", "", "_TransactionsTab"},
        {"_TransBeginBtn", "QPushButton", "Begin", "_TransactionsTab"},
        {"_TransEndBtn", "QPushButton", "End", "_TransactionsTab"},
        {"_TransUndoBtn", "QPushButton", "Undo", "_TransactionsTab"},
        {"_TransRedoBtn", "QPushButton", "Redo", "_TransactionsTab"},
        {"_TransTree", "QTreeWidget", nullptr, "_TransactionsTab"},
        {"_StackMonLabelLbl", "QLabel", "Labels:", "_StackMonTab"},
        {"_StackMonLabelCmb", "QComboBox", nullptr, "_StackMonTab"},
        {"_StackMonTraceLbl", "QLabel", "Traces:", "_StackMonTab"},
        {"_StackMonTraceCmb", "QComboBox", nullptr, "_StackMonTab"},
        {"_StackMonRefreshBtn", "QPushButton", "Refresh", "_StackMonTab"},
        {"_StackMonLbl", "QLabel", "Stack Trace Details:", "_StackMonTab"},
        {"_StackMonEdit", "QPlainTextEdit", "", "_StackMonTab"},
        {"_StackMonClearLabelTracesBtn", "QPushButton", "Clear Label Traces", "_StackMonTab"},
        {"_StackMonClearAllTracesBtn", "QPushButton", "Clear All Traces", "_StackMonTab"},
    };
    for (const auto& row : expected) {
        const auto* widget = InConsole<QWidget>(row.name);
        ASSERT_NE(nullptr, widget) << row.name;
        EXPECT_STREQ(row.className, widget->metaObject()->className()) << row.name;
        EXPECT_TRUE(InConsole<QWidget>(row.tab)->isAncestorOf(widget)) << row.name;
        if (row.text) {
            EXPECT_EQ(QString::fromLatin1(row.text),
                      widget->property(widget->inherits("QPlainTextEdit") ? "plainText" : "text").toString());
        }
    }
}

TEST_F(ZORTestMainDialogTest, HasAStatusBarAndTheBrowserDockOnTheLeft)
{
    EXPECT_EQ(QString("_StatusBar"), console->statusBar()->objectName());
    EXPECT_EQ(QString(), console->statusBar()->currentMessage());
    auto* dock = InConsole<QDockWidget>("_BrowserDock");
    EXPECT_EQ(QString("Browser"), dock->windowTitle());
    EXPECT_EQ(Qt::LeftDockWidgetArea, console->dockWidgetArea(dock));
    EXPECT_EQ(QString("_BrowserDockContents"), dock->widget()->objectName());
    EXPECT_TRUE(dock->isAncestorOf(InConsole<ZORFeatBrowserWidget>("_Browser")));
}

TEST_F(ZORTestMainDialogTest, DeclaresItsSlotsInOrder)
{
    const QMetaObject& meta = ZORTestMainDialog::staticMetaObject;
    QList<QByteArray> slotNames;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        EXPECT_EQ(QMetaMethod::Public, meta.method(index).access());
        slotNames.append(meta.method(index).methodSignature());
    }
    EXPECT_EQ((QList<QByteArray>{"OnMenuTriggered(QAction*)", "RefreshContainer()", "VisualizeSelectedGeo()",
                                 "InspectSelectedGeo()", "DeleteSelectedGeo()", "RefreshVisualization()",
                                 "EditSelectedVis()", "RemoveSelectedVis()", "RemoveAllVis()",
                                 "UpdateDebugVis()", "RemoveDebugVis()", "RefreshStackLabels()",
                                 "RefreshStackTraces()", "RefreshStackTrace()", "ClearLabelTraces()",
                                 "ClearAllTraces()", "BeginTransaction()", "EndTransaction()"}),
              slotNames);
}

TEST_F(ZORTestMainDialogTest, ConnectsEverySignalToItsSlotOnce)
{
    using Console = ZORTestMainDialog;
    ZORTestMainDialog* receiver = console;
    // Disconnecting succeeds once for a connection made once.
    const auto check = [receiver](const char* name, auto* sender, auto signal, auto slot) {
        ASSERT_NE(nullptr, sender) << name;
        EXPECT_TRUE(QObject::disconnect(sender, signal, receiver, slot)) << name << " is not connected";
        EXPECT_FALSE(QObject::disconnect(sender, signal, receiver, slot)) << name << " is connected twice";
    };
    const auto checkButton = [&](const char* name, auto slot) {
        check(name, InConsole<QPushButton>(name), &QPushButton::clicked, slot);
    };
    check("_Menu", InConsole<QMenuBar>("_Menu"), &QMenuBar::triggered, &Console::OnMenuTriggered);
    check("_ShowDebugChk", InConsole<QCheckBox>("_ShowDebugChk"), &QCheckBox::toggled,
          &Console::UpdateDebugVis);
    checkButton("_ClearDebugBtn", &Console::RemoveDebugVis);
    checkButton("_VisEditBtn", &Console::EditSelectedVis);
    checkButton("_VisRemoveBtn", &Console::RemoveSelectedVis);
    checkButton("_VisRemoveAllBtn", &Console::RemoveAllVis);
    checkButton("_ContRefreshBtn", &Console::RefreshContainer);
    check("_ContTypeCombo", InConsole<QComboBox>("_ContTypeCombo"), &QComboBox::currentTextChanged,
          &Console::RefreshContainer);
    checkButton("_ContInspectBtn", &Console::InspectSelectedGeo);
    checkButton("_ContVisuBtn", &Console::VisualizeSelectedGeo);
    checkButton("_ContDeleteBtn", &Console::DeleteSelectedGeo);
    checkButton("_StackMonRefreshBtn", &Console::RefreshStackLabels);
    check("_StackMonLabelCmb", InConsole<QComboBox>("_StackMonLabelCmb"), &QComboBox::currentTextChanged,
          &Console::RefreshStackTraces);
    check("_StackMonTraceCmb", InConsole<QComboBox>("_StackMonTraceCmb"), &QComboBox::currentTextChanged,
          &Console::RefreshStackTrace);
    checkButton("_StackMonClearLabelTracesBtn", &Console::ClearLabelTraces);
    checkButton("_StackMonClearAllTracesBtn", &Console::ClearAllTraces);
    checkButton("_TransBeginBtn", &Console::BeginTransaction);
    checkButton("_TransEndBtn", &Console::EndTransaction);
    const ZORVisEnvironment* environment = GetFeatEnvironment();
    check("ObjectAdded", environment, &ZORVisEnvironment::ObjectAdded, &Console::RefreshVisualization);
    check("ObjectRemoved", environment, &ZORVisEnvironment::ObjectRemoved, &Console::RefreshVisualization);
}

TEST_F(ZORTestMainDialogTest, LeavesInertButtonsUnconnected)
{
    for (const char* name : {"_ContDeleteAllBtn", "_TransUndoBtn", "_TransRedoBtn"}) {
        auto* button = InConsole<QPushButton>(name);
        EXPECT_FALSE(QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr)) << name;
        EXPECT_TRUE(button->isEnabled()) << name;
    }
}

TEST_F(ZORTestMainDialogTest, TransactionsChangeNothing)
{
    AddPoint(QStringLiteral("P"));
    const int numGeometry = GetContainer()->GetNumGeometry();
    for (const char* name : {"_TransBeginBtn", "_TransEndBtn", "_TransUndoBtn", "_TransRedoBtn"})
        Click(name);
    EXPECT_EQ(numGeometry, GetContainer()->GetNumGeometry());
    EXPECT_EQ(0, InConsole<QTreeWidget>("_TransTree")->topLevelItemCount());
    EXPECT_EQ(QString(), InConsole<QLineEdit>("_TransEdit")->text());
    EXPECT_TRUE(boxes.Take().isEmpty());
}

TEST_F(ZORTestMainDialogTest, HandsTextAndActionOfTheEntryToTheCommand)
{
    QAction* action = AddEntry("ConsoleProbeCmd");
    action->trigger();
    ASSERT_NE(nullptr, ConsoleProbeCmd::last);
    EXPECT_EQ(QString("&Probe..."), ConsoleProbeCmd::last->property("actionText").toString());
    EXPECT_EQ(action, ConsoleProbeCmd::last->property("action").value<QAction*>());
    EXPECT_EQ(console.data(), ConsoleProbeCmd::last->GetEnvironment()->GetUiParent());
    EXPECT_EQ(GetFeatEnvironment(), ConsoleProbeCmd::last->GetEnvironment()->GetEnvironment());
}

TEST_F(ZORTestMainDialogTest, RefreshesTheContainerWhenACommandFinishesWhateverItsResult)
{
    const auto* model = InConsole<QTableView>("_ContTable")->model();
    AddPoint(QStringLiteral("P"));
    EXPECT_EQ(0, model->rowCount());
    AddEntry("ConsoleProbeCmd")->trigger();
    EXPECT_EQ(1, model->rowCount());
}

TEST_F(ZORTestMainDialogTest, ShowsTheMessageOfAnSdkExceptionAndStaysUsable)
{
    ConsoleProbeCmd::behaviour = ConsoleProbeCmd::Throw;
    QAction* action = AddEntry("ConsoleProbeCmd");
    action->trigger();
    EXPECT_EQ(QList{ErrorBox("the command failed")}, boxes.Take());
    EXPECT_NE(nullptr, ConsoleProbeCmd::last) << "commands live as long as the console";
    ConsoleProbeCmd::behaviour = ConsoleProbeCmd::Finish;
    action->trigger();
    EXPECT_TRUE(console->isVisible());
}

TEST_F(ZORTestMainDialogTest, PassesOtherExceptionsOn)
{
    ConsoleProbeCmd::behaviour = ConsoleProbeCmd::ThrowOther;
    EXPECT_THROW(console->OnMenuTriggered(AddEntry("ConsoleProbeCmd")), std::runtime_error);
}

TEST_F(ZORTestMainDialogTest, OpensADialogPerTriggerOfTheSameEntry)
{
    QAction* action = AddEntry("ConsoleProbeDlg");
    action->trigger();
    action->trigger();
    const auto dialogs = console->findChildren<ConsoleProbeDlg*>();
    ASSERT_EQ(2, dialogs.size());
    for (const ConsoleProbeDlg* shown : dialogs) {
        EXPECT_TRUE(shown->isVisible());
        EXPECT_EQ(console.data(), shown->parentWidget());
    }
    dialogs.first()->close();
    EXPECT_TRUE(dialogs.last()->isVisible());
}

TEST_F(ZORTestMainDialogTest, TakesCommandsAndDialogsWithItWhenItCloses)
{
    AddEntry("ConsoleProbeCmd")->trigger();
    AddEntry("ConsoleProbeDlg")->trigger();
    const QPointer<ConsoleProbeDlg> shown(console->findChild<ConsoleProbeDlg*>());
    ASSERT_TRUE(shown && ConsoleProbeCmd::last);
    ConsoleProbeDlg::lastUiParent = nullptr;
    const QWidget* closed = console;
    CloseConsole();
    EXPECT_EQ(nullptr, shown.data());
    EXPECT_EQ(nullptr, ConsoleProbeCmd::last.data());
    EXPECT_EQ(closed, ConsoleProbeDlg::lastUiParent);
}

TEST_F(ZORTestMainDialogTest, KeepsToTheEnvironmentThatWasCurrentWhenItOpened)
{
    ZORFeatEnvironment other;
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&other);
    AddPoint(QStringLiteral("P"));
    Click("_ContRefreshBtn");
    EXPECT_EQ(1, InConsole<QTableView>("_ContTable")->model()->rowCount());
    CloseConsole();
}

TEST_F(ZORTestMainDialogTest, OpensTwiceAtOnce)
{
    const QPointer<ZORTestMainDialog> first(console);
    OpenConsole();
    AddPoint(QStringLiteral("P"));
    Click("_ContRefreshBtn");
    CloseConsole();
    console = first;
    EXPECT_EQ(0, InConsole<QTableView>("_ContTable")->model()->rowCount());
    Click("_ContRefreshBtn");
    EXPECT_EQ(1, InConsole<QTableView>("_ContTable")->model()->rowCount());
}

// Messages contain names from files of strangers.
TEST_F(ZORTestMainDialogTest, BoxesShowTagsLiterallyAndOpenNothing)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(GetPath("picture.png")));
    const OpenWatch watch(GetPath("picture.png"));
    const QString hostile = QStringLiteral("geometry '<img src=\"%1\">' is gone").arg(GetPath("picture.png"));
    boxes.whileShown = [] { QApplication::processEvents(); }; // paints
    ConsoleProbeCmd::behaviour = ConsoleProbeCmd::Throw;
    const QString former = std::exchange(ConsoleProbeCmd::failure, hostile);
    AddEntry("ConsoleProbeCmd")->trigger();
    ConsoleProbeCmd::failure = former;
    EXPECT_EQ(QStringList(hostile), boxes.TakeErrors());
    EXPECT_FALSE(watch.WasOpened());
}

} // namespace

#include "ZORTestMainDialogTest.moc"
