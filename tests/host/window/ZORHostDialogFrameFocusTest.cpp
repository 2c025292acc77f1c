// Tests of the keyboard in ZORHostDialogFrame: first focus, order of the Tab key, Return and the space bar.

#include "HostTest.h"
#include "window/ZORHostDialogFrame.h"
#include "window/ZORHostDialogHandler.h"

#include <ZORCommand/ZORCmdDialogCommand.h>
#include <ZORCommonUI/ZORCmnUnitSpinBox.h>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

namespace {

/// Counts its commits; the test builds the content.
class BuiltCommand : public ZORCmdDialogCommand
{
public:
    using Builder = std::function<void(QWidget* content, QVBoxLayout* column)>;

    BuiltCommand(const Builder& builder, int* numCommits)
        : ZORCmdDialogCommand(nullptr, Dialog, NoUndo)
        , m_builder(builder)
        , m_numCommits(numCommits)
    {
    }

protected:
    QWidget* CreateContent(QWidget* parent) override
    {
        auto* const content = new QWidget(parent);
        m_builder(content, new QVBoxLayout(content));
        return content;
    }
    void Commit() override { ++*m_numCommits; }

private:
    const Builder m_builder;
    int* const m_numCommits;
};

class ZORHostDialogFrameFocusTest : public HostTest
{
public:
    ~ZORHostDialogFrameFocusTest() override
    {
        handler.reset();
        Settle();
    }
    void Show(const BuiltCommand::Builder& builder, const QString& title = {})
    {
        auto* const command = new BuiltCommand(builder, &numCommits);
        command->SetTitle(title);
        handler->ShowDialogCommand(command);
        frame = parent.findChildren<ZORHostDialogFrame*>().constLast();
        frame->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(frame));
    }
    QPushButton* GetButton(QDialogButtonBox::StandardButton button) const
    {
        return frame->findChild<QDialogButtonBox*>("_ButtonBox")->button(button);
    }
    /// Lets the command end itself and the frame go.
    static void Settle()
    {
        QCoreApplication::processEvents();
        DeleteDeferred();
    }

    int numCommits = 0;
    QWidget parent;
    std::unique_ptr<ZORHostDialogHandler> handler = std::make_unique<ZORHostDialogHandler>(&parent);
    QPointer<ZORHostDialogFrame> frame;
};

TEST_F(ZORHostDialogFrameFocusTest, StartsInTheFirstFieldWithItsTextSelected)
{
    Show([](QWidget* content, QVBoxLayout* column) {
        column->addWidget(new QPushButton("Help", content));
        auto* const disabled = new QLineEdit("off", content);
        disabled->setEnabled(false);
        auto* const hidden = new QLineEdit("hidden", content);
        hidden->hide();
        for (QWidget* field :
             {disabled, hidden, new QLineEdit("first", content), new QLineEdit("second", content)})
            column->addWidget(field);
    });
    const auto* const focus = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(focus, nullptr);
    EXPECT_EQ(focus->text(), QString("first"));
    EXPECT_EQ(focus->selectedText(), QString("first"));
}

TEST_F(ZORHostDialogFrameFocusTest, StartsInACheckBoxThatComesFirst)
{
    Show([](QWidget* content, QVBoxLayout* column) {
        column->addWidget(new QCheckBox("Dump", content));
        column->addWidget(new QLineEdit(content));
    });
    EXPECT_TRUE(frame->findChild<QCheckBox*>()->hasFocus());
}

TEST_F(ZORHostDialogFrameFocusTest, StartsInASpinBoxWithItsNumberSelected)
{
    Show([](QWidget* content, QVBoxLayout* column) {
        auto* const spin = new ZORCmnUnitSpinBox(content);
        spin->setProperty("magnitude", "Length");
        column->addWidget(spin);
    });
    auto* const spin = frame->findChild<ZORCmnUnitSpinBox*>();
    EXPECT_TRUE(spin->hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), "1000");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(spin->GetInternalValue(), 1000);
}

TEST_F(ZORHostDialogFrameFocusTest, KeepsTheFieldThatTheContentHasChosen)
{
    Show([](QWidget* content, QVBoxLayout* column) {
        for (const char* text : {"first", "second"})
            column->addWidget(new QLineEdit(QLatin1String(text), content));
        content->findChildren<QLineEdit*>().constLast()->setFocus();
    });
    const auto* const focus = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(focus, nullptr);
    EXPECT_EQ(focus->text(), QString("second"));
}

TEST_F(ZORHostDialogFrameFocusTest, TabReachesOkAndCancelAfterTheContent)
{
    Show([](QWidget* content, QVBoxLayout* column) {
        for (const char* text : {"first", "second"})
            column->addWidget(new QLineEdit(QLatin1String(text), content));
    });
    QList<QWidget*> order{QApplication::focusWidget()};
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(order.constLast(), Qt::Key_Tab);
        order.append(QApplication::focusWidget());
    }
    EXPECT_EQ(order.at(1), frame->findChildren<QLineEdit*>().constLast());
    EXPECT_EQ((QSet<QWidget*>{order.at(2), order.at(3)}),
              (QSet<QWidget*>{GetButton(QDialogButtonBox::Ok), GetButton(QDialogButtonBox::Cancel)}));
    EXPECT_EQ(order.at(4), order.at(0));
}

TEST_F(ZORHostDialogFrameFocusTest, TypedBlankGoesIntoTheFieldAndReturnIsOk)
{
    Show([](QWidget* content, QVBoxLayout* column) { column->addWidget(new QLineEdit("old", content)); });
    EXPECT_TRUE(GetButton(QDialogButtonBox::Ok)->isDefault());
    QTest::keyClicks(QApplication::focusWidget(), "a b");
    EXPECT_EQ(frame->findChild<QLineEdit*>()->text(), QString("a b"));
    EXPECT_EQ(numCommits, 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(numCommits, 1);
}

TEST_F(ZORHostDialogFrameFocusTest, ReturnInATextOfSeveralLinesStartsALine)
{
    Show([](QWidget* content, QVBoxLayout* column) { column->addWidget(new QPlainTextEdit(content)); });
    QTest::keyClicks(QApplication::focusWidget(), "one");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), "two");
    EXPECT_EQ(frame->findChild<QPlainTextEdit*>()->toPlainText(), QString("one\ntwo"));
    EXPECT_EQ(numCommits, 0);
}

TEST_F(ZORHostDialogFrameFocusTest, LeavesADefaultButtonOfTheContent)
{
    Show([](QWidget* content, QVBoxLayout* column) {
        auto* const button = new QPushButton("Compute", content);
        button->setDefault(true);
        column->addWidget(new QLineEdit(content));
        column->addWidget(button);
    });
    EXPECT_FALSE(GetButton(QDialogButtonBox::Ok)->isDefault());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(numCommits, 0);
}

TEST_F(ZORHostDialogFrameFocusTest, IsWideEnoughForItsTitle)
{
    const QString title(60, 'W');
    Show([](QWidget* content, QVBoxLayout* column) { column->addWidget(new QLineEdit(content)); }, title);
    EXPECT_GT(frame->width(), frame->fontMetrics().horizontalAdvance(title));
}

} // namespace
