#include "console/ZORTestMainCommand.h"

#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"

#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QApplication>
#include <QTest>

namespace {

class ZORTestMainCommandTest : public BenchTest
{
protected:
    static QAction* GetAction() { return ZORCmdController::GetController()->GetAction("ZORTestMainCommand"); }

    static QList<ZORTestMainDialog*> GetConsoles()
    {
        QList<ZORTestMainDialog*> consoles;
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows) {
            if (auto* found = qobject_cast<ZORTestMainDialog*>(window))
                consoles.append(found);
        }
        return consoles;
    }
};

TEST_F(ZORTestMainCommandTest, IsPublishedAsAHostAction)
{
    const QAction* action = GetAction();
    ASSERT_NE(nullptr, action);
    EXPECT_EQ(QString("SDK Test"), action->text());
    EXPECT_EQ(QString("Launches the SDK testing framework"), action->toolTip());
    EXPECT_EQ(QString("Test"), action->property("category").toString());
    EXPECT_EQ(1, action->property("placement").toInt());
}

TEST_F(ZORTestMainCommandTest, OpensAConsoleThatOutlivesTheCommand)
{
    GetAction()->trigger();
    ASSERT_EQ(1, GetConsoles().size());
    console = GetConsoles().first();
    EXPECT_TRUE(console->isVisible());
    EXPECT_FALSE(console->isModal());
    EXPECT_EQ(nullptr, console->parentWidget());
    EXPECT_TRUE(
        QTest::qWaitFor([] { return !ZORCmdController::GetController()->findChild<ZORTestMainCommand*>(); }));
    EXPECT_NE(nullptr, console.data());
}

TEST_F(ZORTestMainCommandTest, PassesItsTwoNumbersToTheFramework)
{
    const ZORTestMainCommand command(nullptr);
    EXPECT_EQ(2, command.GetInteraction());
    EXPECT_EQ(2, command.GetUndoScope());
}

TEST_F(ZORTestMainCommandTest, OpensAnotherConsoleEachTime)
{
    GetAction()->trigger();
    GetAction()->trigger();
    const auto consoles = GetConsoles();
    EXPECT_EQ(2, consoles.size());
    for (ZORTestMainDialog* opened : consoles)
        opened->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(GetConsoles().isEmpty());
}

} // namespace
