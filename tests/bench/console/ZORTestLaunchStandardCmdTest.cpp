#include "console/ZORTestLaunchStandardCmd.h"

#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"

#include <ZORCommand/ZORCmdActionPublisher.h>
#include <ZORCommand/ZORCmdCommand.h>
#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QMetaClassInfo>
#include <QSignalSpy>
#include <QTableView>

/// Stands for one of the SDK's own commands.
class StandardProbeCommand : public ZORCmdCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit StandardProbeCommand(QObject* parent)
        : ZORCmdCommand(parent, 0, 0)
    {
    }
    void Start() override
    {
        ++started;
        FinishLater();
    }

    static inline int started = 0;
};

namespace {

class ZORTestLaunchStandardCmdTest : public BenchTest
{
protected:
    ZORTestLaunchStandardCmdTest()
    {
        StandardProbeCommand::started = 0;
        ZORCmdController::GetController()->RegisterCommand(&StandardProbeCommand::staticMetaObject);
    }
    ~ZORTestLaunchStandardCmdTest() override
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ZORCmdController::GetController()->UnregisterCommand(&StandardProbeCommand::staticMetaObject);
    }

    MessageBoxCatcher::Box NoMatch() const
    {
        return {QMessageBox::Critical, "Error", "No action matches the menu action.", QMessageBox::Ok,
                console.data()};
    }
};

TEST_F(ZORTestLaunchStandardCmdTest, HasItsLabel)
{
    const QMetaObject& meta = ZORTestLaunchStandardCmd::staticMetaObject;
    EXPECT_STREQ("Launch Standard Command", meta.classInfo(meta.indexOfClassInfo("label")).value());
}

TEST_F(ZORTestLaunchStandardCmdTest, RunsTheActionOfTheControllerOfThatId)
{
    const ZORCmdActionPublisher publisher("Probe", &StandardProbeCommand::staticMetaObject, QString(),
                                          "Probe", QString(), 0, 0, {{"method", "Create"}});
    OpenConsole();
    MenuAction("actionCreate_Rosette")->setProperty("actionId", "StandardProbeCommand.Create");
    TriggerMenu("actionCreate_Rosette");
    EXPECT_EQ(1, StandardProbeCommand::started);
    EXPECT_TRUE(boxes.Take().isEmpty());
    TriggerMenu("actionCreate_Rosette");
    EXPECT_EQ(2, StandardProbeCommand::started);
}

TEST_F(ZORTestLaunchStandardCmdTest, ReportsIdsThatTheControllerDoesNotKnow)
{
    OpenConsole();
    AddPoint(QStringLiteral("P"));
    for (const char* name :
         {"actionCreate_Layup", "actionMaterials", "actionCreate_Rosette", "actionCreate_Projection"}) {
        MenuAction(name)->setProperty("actionId", "NoSuchCommand.Create");
        TriggerMenu(name);
        EXPECT_EQ(QList{NoMatch()}, boxes.Take()) << name;
    }
    EXPECT_EQ(0, InConsole<QTableView>("_ContTable")->model()->rowCount()) << "Finished() is never emitted";
}

TEST_F(ZORTestLaunchStandardCmdTest, ReportsAnEntryWithoutAnId)
{
    OpenConsole();
    MenuAction("actionMaterials")->setProperty("actionId", QVariant());
    TriggerMenu("actionMaterials");
    EXPECT_EQ(QList{NoMatch()}, boxes.Take());
}

TEST_F(ZORTestLaunchStandardCmdTest, ReportsThatNoMatchWithoutAMenuEntry)
{
    ZORTestLaunchStandardCmd command(GetEnvironment());
    QSignalSpy finishedSpy(&command, &ZORTestCommand::Finished);
    command.Execute();
    EXPECT_EQ(QList{NoMatch()}, boxes.Take());
    EXPECT_EQ(0, finishedSpy.count());
}

} // namespace

#include "ZORTestLaunchStandardCmdTest.moc"
