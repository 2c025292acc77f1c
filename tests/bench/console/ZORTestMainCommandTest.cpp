#include "console/ZORTestMainCommand.h"

#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"

#include <ZORCommand/ZORCmdActionPublisher.h>
#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QApplication>
#include <QTest>

#include <memory>

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
    EXPECT_EQ(QString("nesting-info"), action->property("iconName").toString());
}

TEST_F(ZORTestMainCommandTest, BothHostActionsHavePositionZero)
{
    const auto publish = [](const char* text, int position) {
        return std::make_unique<ZORCmdActionPublisher>("Test", &ZORTestMainCommand::staticMetaObject, "icon",
                                                       QLatin1String(text), "tip", position, 1,
                                                       QVariantMap{{"method", QLatin1String(text)}});
    };
    // Entries of one position are sorted by their text, so that these show where the two stand.
    const auto last = publish("A later entry", 1);
    const auto first = publish("Z earlier entry", -1);
    const auto before = publish("SDK", 0);
    const auto behind = publish("SDK Z", 0);
    QStringList texts;
    const auto actions = ZORCmdController::GetController()->GetActions("Test");
    for (const QAction* action : actions)
        texts.append(action->text());
    EXPECT_EQ(
        QStringList({"Z earlier entry", "SDK", "SDK Test", "SDK Test Options", "SDK Z", "A later entry"}),
        texts);
}

TEST_F(ZORTestMainCommandTest, OpensAConsoleThatOutlivesTheCommand)
{
    GetAction()->trigger();
    ASSERT_EQ(1, GetConsoles().size());
    console = GetConsoles().constFirst();
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
