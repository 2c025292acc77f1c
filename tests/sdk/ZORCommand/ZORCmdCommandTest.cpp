// Tests of ZORCmdCommand.

#include "CommandTestClasses.h"
#include "support/Printers.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

TEST(ZORCmdCommandTest, KeepsItsCodesAndTitle)
{
    ScriptedCommand command(nullptr);
    EXPECT_EQ(ZORCmdCommand::OwnWindows, command.GetInteraction());
    EXPECT_EQ(ZORCmdCommand::SelfManaged, command.GetUndoScope());
    EXPECT_EQ(2, int(ZORCmdCommand::OwnWindows));
    EXPECT_EQ(2, int(ZORCmdCommand::SelfManaged));
    EXPECT_EQ(QString(), command.GetTitle());
    command.SetTitle("Title");
    EXPECT_EQ("Title", command.GetTitle());
}

TEST(ZORCmdCommandTest, FinishesFromTheEventLoopAndOnce)
{
    const QPointer<ScriptedCommand> command = new ScriptedCommand(nullptr);
    const QSignalSpy finished(command, &ZORCmdCommand::Finished);
    EXPECT_FALSE(command->IsFinishing());
    command->FinishLater();
    command->FinishLater();
    EXPECT_TRUE(command->IsFinishing());
    EXPECT_EQ(0, finished.size());
    ASSERT_TRUE(command);
    DeletePosted();
    EXPECT_EQ(1, finished.size());
    EXPECT_FALSE(command);
}

TEST(ZORCmdCommandTest, ReceiverOfFinishedMayDeleteTheCommand)
{
    const QPointer<ScriptedCommand> command = new ScriptedCommand(nullptr);
    QObject::connect(command, &ZORCmdCommand::Finished, command, [command] { delete command.data(); });
    command->FinishLater();
    DeletePosted();
    EXPECT_FALSE(command);
}

TEST(ZORCmdCommandTest, CommandDeletedWhileFinishingIsForgotten)
{
    auto* command = new ScriptedCommand(nullptr);
    const QSignalSpy finished(command, &ZORCmdCommand::Finished);
    command->FinishLater();
    delete command;
    DeletePosted();
    EXPECT_EQ(0, finished.count());
}

} // namespace
