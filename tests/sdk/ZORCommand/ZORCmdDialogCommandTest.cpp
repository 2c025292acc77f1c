// Tests of ZORCmdDialogCommand.

#include "CommandTestClasses.h"
#include "support/Printers.h"
#include "support/TraceCalls.h"

#include <ZORCommand/ZORCmdController.h>

#include <QLabel>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

namespace {

class ZORCmdDialogCommandTest : public testing::Test
{
protected:
    ~ZORCmdDialogCommandTest() override
    {
        controller->SetDialogHandler(nullptr);
        ScriptedDialogCommand::s_commit = nullptr;
        ScriptedDialogCommand::s_hasContent = true;
        delete command;
    }

    ZORCmdController* const controller = ZORCmdController::GetController();
    const QPointer<ScriptedDialogCommand> command = new ScriptedDialogCommand(nullptr);
};

TEST_F(ZORCmdDialogCommandTest, MissingHandlerIsReported)
{
    EXPECT_EQ("no dialog handler set", MessageOf([this] { command->Start(); }));
}

TEST_F(ZORCmdDialogCommandTest, HandlerIsAskedToShowIt)
{
    RecordingDialogHandler handler;
    controller->SetDialogHandler(&handler);
    EXPECT_EQ(&handler, controller->GetDialogHandler());
    command->Start();
    EXPECT_EQ(command.data(), handler.shown.data());
    EXPECT_FALSE(command->IsFinishing());
}

TEST_F(ZORCmdDialogCommandTest, ContentIsBuiltOnceBelowTheFrame)
{
    auto frame = std::make_unique<QWidget>();
    EXPECT_EQ(nullptr, command->GetContentWidget());
    QWidget* content = command->BuildContent(frame.get());
    EXPECT_EQ(frame.get(), content->parentWidget());
    EXPECT_EQ(content, command->GetContentWidget());
    EXPECT_EQ("content of the command was built already",
              MessageOf([&] { command->BuildContent(frame.get()); }));
    EXPECT_EQ(content, command->GetContentWidget());
    frame.reset();
    EXPECT_EQ(nullptr, command->GetContentWidget());
}

TEST_F(ZORCmdDialogCommandTest, MissingContentIsReported)
{
    ScriptedDialogCommand::s_hasContent = false;
    EXPECT_EQ("command has no content", MessageOf([this] { command->BuildContent(nullptr); }));
}

TEST_F(ZORCmdDialogCommandTest, AcceptCommitsOnceAndFinishes)
{
    int commits = 0;
    ScriptedDialogCommand::s_commit = [&commits] { ++commits; };
    command->Accept();
    command->Accept();
    EXPECT_EQ(1, commits);
    DeletePosted();
    EXPECT_FALSE(command);
}

TEST_F(ZORCmdDialogCommandTest, FailingCommitKeepsItAlive)
{
    ScriptedDialogCommand::s_commit = [] { throw ZORSysException("radius must be positive"); };
    EXPECT_EQ("radius must be positive", MessageOf([this] { command->Accept(); }));
    EXPECT_FALSE(command->IsFinishing());
    DeletePosted();
    ASSERT_TRUE(command);
    ScriptedDialogCommand::s_commit = nullptr;
    command->Accept();
    DeletePosted();
    EXPECT_FALSE(command);
}

TEST_F(ZORCmdDialogCommandTest, IsNotCommittedWhileItsInputHasAProblem)
{
    class CheckedCommand final : public ScriptedDialogCommand
    {
    public:
        using ScriptedDialogCommand::ScriptedDialogCommand;
        using ScriptedDialogCommand::SetProblem;
    } checked(nullptr);
    int commits = 0;
    ScriptedDialogCommand::s_commit = [&commits] { ++commits; };
    QSignalSpy changes(&checked, &ZORCmdDialogCommand::ProblemChanged);
    EXPECT_EQ(checked.GetProblem(), QString());
    checked.SetProblem("Enter a name.");
    checked.SetProblem("Enter a name.");
    EXPECT_EQ(checked.GetProblem(), QString("Enter a name."));
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toString(), QString("Enter a name."));
    EXPECT_EQ("Enter a name.", MessageOf([&] { checked.Accept(); }));
    EXPECT_EQ(commits, 0);
    EXPECT_FALSE(checked.IsFinishing());
    checked.SetProblem({});
    checked.Accept();
    EXPECT_EQ(commits, 1);
    EXPECT_TRUE(checked.IsFinishing());
    QCoreApplication::removePostedEvents(&checked); // it is not to delete itself
}

TEST_F(ZORCmdDialogCommandTest, RejectFinishesWithoutACommit)
{
    int commits = 0;
    ScriptedDialogCommand::s_commit = [&commits] { ++commits; };
    const QSignalSpy finished(command.data(), &ZORCmdCommand::Finished);
    command->Reject();
    command->Accept();
    DeletePosted();
    EXPECT_EQ(0, commits);
    EXPECT_EQ(1, finished.size());
    EXPECT_FALSE(command);
}

TEST_F(ZORCmdDialogCommandTest, ContentGoesWithTheCommand)
{
    QWidget frame;
    const QPointer<QWidget> content = command->BuildContent(&frame);
    delete command;
    EXPECT_FALSE(content);
    EXPECT_TRUE(frame.findChildren<QWidget*>().isEmpty());
}

TEST_F(ZORCmdDialogCommandTest, HandlerThatDiesTakesItselfFromTheController)
{
    {
        RecordingDialogHandler first;
        RecordingDialogHandler second;
        controller->SetDialogHandler(&first);
        controller->SetDialogHandler(&second);
        {
            const RecordingDialogHandler third;
        }
        EXPECT_EQ(&second, controller->GetDialogHandler());
    }
    EXPECT_EQ(nullptr, controller->GetDialogHandler());
    EXPECT_EQ("no dialog handler set", MessageOf([this] { command->Start(); }));
}

TEST_F(ZORCmdDialogCommandTest, TwoCommandsAreOpenAtOnce)
{
    int commits = 0;
    ScriptedDialogCommand::s_commit = [&commits] { ++commits; };
    const QPointer<ScriptedDialogCommand> other = new ScriptedDialogCommand(nullptr);
    QWidget frame;
    QWidget otherFrame;
    QWidget* const content = command->BuildContent(&frame);
    const QPointer<QWidget> otherContent = other->BuildContent(&otherFrame);
    other->Reject();
    DeletePosted();
    EXPECT_FALSE(other);
    EXPECT_FALSE(otherContent);
    EXPECT_EQ(0, commits);
    EXPECT_EQ(content, command->GetContentWidget());
    command->Accept();
    EXPECT_EQ(1, commits);
    DeletePosted();
    EXPECT_FALSE(command);
}

TEST_F(ZORCmdDialogCommandTest, ConstructionIsTracedOnce)
{
    std::unique_ptr<ScriptedDialogCommand> traced;
    EXPECT_EQ(QStringList("ZORCmdDialogCommand::ZORCmdDialogCommand(<ZORCmdController>, 1, 0)"),
              TraceCalls([&] { traced.reset(new ScriptedDialogCommand(controller)); }));
}

} // namespace
