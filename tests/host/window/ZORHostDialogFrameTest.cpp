#include "window/ZORHostDialogFrame.h"

#include "HostTest.h"
#include "support/MessageBoxCatcher.h"
#include "window/ZORHostDialogHandler.h"

#include <ZORCommand/ZORCmdDialogCommand.h>
#include <ZORSystem/ZORSysException.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

/// Notes what is asked of it.
class NotingCommand : public ZORCmdDialogCommand
{
public:
    explicit NotingCommand(QStringList* notes)
        : ZORCmdDialogCommand(nullptr, Dialog, NoUndo)
        , m_notes(notes)
    {
        SetTitle("Title of the Action");
    }
    ~NotingCommand() override { m_notes->append("deleted"); }

    using ZORCmdDialogCommand::SetProblem;

    bool fail = false;
    bool closesContent = false; // as a content does that closes itself on OK

protected:
    QWidget* CreateContent(QWidget* parent) override
    {
        if (!closesContent)
            return new QLineEdit("text", parent);
        auto* dialog = new QDialog(parent);
        new QLineEdit("text", dialog);
        return dialog;
    }
    void Commit() override
    {
        m_notes->append("commit");
        if (closesContent)
            GetContentWidget()->close();
        if (fail)
            throw ZORSysException("value out of range");
    }

private:
    QStringList* m_notes;
};

class ZORHostDialogFrameTest : public HostTest
{
public:
    ~ZORHostDialogFrameTest() override
    {
        handler.reset();
        Settle(); // the commands note their end
    }
    ZORHostDialogFrame* Show(NotingCommand* command)
    {
        handler->ShowDialogCommand(command);
        frame = parent.findChildren<ZORHostDialogFrame*>().constLast();
        return frame;
    }
    void Press(QDialogButtonBox::StandardButton button)
    {
        frame->findChild<QDialogButtonBox*>("_ButtonBox")->button(button)->click();
    }
    /// Lets the command end itself and the frame go.
    void Settle()
    {
        QCoreApplication::processEvents();
        DeleteDeferred();
    }

    MessageBoxCatcher boxes;
    QStringList notes;
    QWidget parent;
    std::unique_ptr<ZORHostDialogHandler> handler = std::make_unique<ZORHostDialogHandler>(&parent);
    QPointer<ZORHostDialogFrame> frame;
};

TEST_F(ZORHostDialogFrameTest, IsNonModalWithTheTitleOfTheActionOkAndCancel)
{
    Show(new NotingCommand(&notes));
    EXPECT_TRUE(frame->isVisible());
    EXPECT_FALSE(frame->isModal());
    EXPECT_EQ(QString("Title of the Action"), frame->windowTitle());
    EXPECT_NE(nullptr, frame->findChild<QLineEdit*>());
    const auto* box = frame->findChild<QDialogButtonBox*>("_ButtonBox");
    EXPECT_EQ(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, box->standardButtons());
    Press(QDialogButtonBox::Cancel);
    Settle();
    EXPECT_EQ(QStringList("deleted"), notes);
    EXPECT_FALSE(frame);
}

TEST_F(ZORHostDialogFrameTest, OkCommitsOnceAndEnds)
{
    Show(new NotingCommand(&notes));
    Press(QDialogButtonBox::Ok);
    Settle();
    EXPECT_EQ(QStringList({"commit", "deleted"}), notes);
    EXPECT_FALSE(frame);
}

TEST_F(ZORHostDialogFrameTest, AFailedCommitShowsTheMessageAndKeepsTheFrame)
{
    for (const bool closesContent : {false, true}) {
        notes.clear();
        auto* command = new NotingCommand(&notes);
        command->fail = true;
        command->closesContent = closesContent;
        Show(command);
        Press(QDialogButtonBox::Ok);
        EXPECT_EQ(QStringList("value out of range"), boxes.TakeErrors());
        Settle();
        ASSERT_TRUE(frame);
        EXPECT_TRUE(frame->isVisible());
        EXPECT_TRUE(command->GetContentWidget()->isVisible());
        EXPECT_EQ(QString("text"), frame->findChild<QLineEdit*>()->text());
        command->fail = false;
        Press(QDialogButtonBox::Ok);
        Settle();
        EXPECT_EQ(QStringList({"commit", "commit", "deleted"}), notes);
        EXPECT_FALSE(frame);
    }
}

TEST_F(ZORHostDialogFrameTest, ThereIsNoOkWhileTheInputHasAProblem)
{
    auto* command = new NotingCommand(&notes);
    Show(command);
    const auto* ok = frame->findChild<QDialogButtonBox*>("_ButtonBox")->button(QDialogButtonBox::Ok);
    const auto* label = frame->findChild<QLabel*>("_ProblemLbl");
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_FALSE(label->isVisible());
    command->SetProblem("Enter a name.");
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_TRUE(label->isVisible());
    EXPECT_EQ(QString("Enter a name."), label->text());
    QTest::keyClick(frame, Qt::Key_Return);
    frame->accept();
    EXPECT_EQ(QStringList("Enter a name."), boxes.TakeErrors());
    EXPECT_TRUE(frame->isVisible());
    command->SetProblem({});
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_EQ(QString(), label->text());
    Press(QDialogButtonBox::Ok);
    Settle();
    EXPECT_EQ(QStringList({"commit", "deleted"}), notes);

    auto* later = new NotingCommand(&notes);
    later->SetProblem("Choose a surface.");
    Show(later);
    EXPECT_TRUE(frame->findChild<QLabel*>("_ProblemLbl")->isVisible()) << "from the start";
}

TEST_F(ZORHostDialogFrameTest, EscapeAndCloseEndTheCommandWithoutCommit)
{
    Show(new NotingCommand(&notes));
    QTest::keyClick(frame, Qt::Key_Escape);
    Settle();
    EXPECT_EQ(QStringList("deleted"), notes);
    Show(new NotingCommand(&notes));
    frame->close();
    Settle();
    EXPECT_EQ(QStringList({"deleted", "deleted"}), notes);
    EXPECT_FALSE(frame);
}

TEST_F(ZORHostDialogFrameTest, EscapeInAContentThatIsADialogClosesTheFrame)
{
    auto* command = new NotingCommand(&notes);
    command->closesContent = true;
    Show(command);
    EXPECT_FALSE(command->GetContentWidget()->isWindow());
    QTest::keyClick(frame->findChild<QLineEdit*>(), Qt::Key_Escape);
    Settle();
    EXPECT_EQ(QStringList("deleted"), notes);
    EXPECT_FALSE(frame);
}

TEST_F(ZORHostDialogFrameTest, ReturnInAFieldPressesOkAlsoInAContentThatIsADialog)
{
    for (const bool isDialog : {false, true}) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            notes.clear();
            auto* command = new NotingCommand(&notes);
            command->closesContent = isDialog;
            Show(command);
            QTest::keyClick(frame->findChild<QLineEdit*>(), key,
                            key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
            Settle();
            EXPECT_EQ(QStringList({"commit", "deleted"}), notes) << isDialog << ' ' << key;
            EXPECT_FALSE(frame);
        }
    }
}

TEST_F(ZORHostDialogFrameTest, ReturnDoesNothingWhileTheInputHasAProblem)
{
    for (const bool isDialog : {false, true}) {
        auto* command = new NotingCommand(&notes);
        command->closesContent = isDialog;
        Show(command);
        command->SetProblem("Enter a name.");
        QTest::keyClick(frame->findChild<QLineEdit*>(), Qt::Key_Return);
        Settle();
        EXPECT_EQ(QStringList(), notes);
        ASSERT_TRUE(frame);
        EXPECT_TRUE(frame->isVisible());
        Press(QDialogButtonBox::Cancel);
        Settle();
        notes.clear();
    }
}

TEST_F(ZORHostDialogFrameTest, SeveralFramesAtOnce)
{
    const QPointer<ZORHostDialogFrame> first = Show(new NotingCommand(&notes));
    const QPointer<ZORHostDialogFrame> second = Show(new NotingCommand(&notes));
    EXPECT_NE(first, second);
    Press(QDialogButtonBox::Ok);
    Settle();
    EXPECT_TRUE(first && first->isVisible());
    EXPECT_FALSE(second);
}

TEST_F(ZORHostDialogFrameTest, AFrameGoesWithItsCommandAndWithTheHandler)
{
    auto* command = new NotingCommand(&notes);
    Show(command);
    delete command;
    Settle();
    EXPECT_FALSE(frame);
    auto other = std::make_unique<ZORHostDialogHandler>(&parent);
    other->ShowDialogCommand(new NotingCommand(&notes));
    frame = parent.findChild<ZORHostDialogFrame*>();
    ASSERT_TRUE(frame);
    other.reset();
    EXPECT_FALSE(frame);
    Settle();
    EXPECT_EQ(QStringList({"deleted", "deleted"}), notes);
}

} // namespace
