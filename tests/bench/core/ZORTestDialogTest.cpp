#include "core/ZORTestDialog.h"

#include "core/ZORTestCommand.h"
#include "core/ZORTestDialogCommand.h"
#include "core/ZORTestRegistration.h"
#include "support/BenchTest.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORSystem/ZORSysException.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QTest>
#include <QVBoxLayout>

#include <stdexcept>

/// A dialog whose Apply() does as the test says.
class ScriptedDlg : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", "Scripted")

public:
    enum Behaviour { ReturnTrue, ReturnFalse, Throw, ThrowOther };

    Q_INVOKABLE explicit ScriptedDlg(ZORTestEnvironment* environment)
        : ZORTestDialog(environment)
    {
        ZORTestForm form(this);
        form.AddSelector("_Sel", QStringLiteral("Point: "), "ZORGeoPoint");
        form.AddButtonBox();
    }

    bool Apply() override
    {
        ++applied;
        switch (behaviour) {
        case ReturnTrue:
            return true;
        case ReturnFalse:
            return false;
        case Throw:
            throw ZORSysException(QStringLiteral("the operation failed"));
        case ThrowOther:
            throw std::runtime_error("no business of the bench");
        }
        return false;
    }

    static inline Behaviour behaviour = ReturnTrue;
    static inline int applied = 0;
};

ZOR_TEST_REGISTER(ScriptedDlg)

class NoButtonBoxDlg : public ZORTestDialog
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit NoButtonBoxDlg(ZORTestEnvironment* environment)
        : ZORTestDialog(environment)
    {
    }
    bool Apply() override { return true; }
};

ZOR_TEST_REGISTER(NoButtonBoxDlg)

namespace {

class ZORTestDialogTest : public BenchTest
{
protected:
    ZORTestDialogTest()
    {
        ScriptedDlg::behaviour = ScriptedDlg::ReturnTrue;
        ScriptedDlg::applied = 0;
    }

    /// Opens the scripted dialog, presses OK and expects it to be gone.
    void RunWith(ScriptedDlg::Behaviour behaviour)
    {
        ScriptedDlg::behaviour = behaviour;
        ASSERT_NE(nullptr, Open("ScriptedDlg"));
        PressOk();
        EXPECT_EQ(nullptr, dialog.data());
        EXPECT_EQ(1, ScriptedDlg::applied);
    }
};

TEST_F(ZORTestDialogTest, OpensWithoutBlockingAndWithoutAParentWhereNoConsoleIs)
{
    ASSERT_NE(nullptr, Open("ScriptedDlg"));
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(nullptr, dialog->parentWidget());
    EXPECT_TRUE(dialog->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_EQ(GetEnvironment(), dialog->GetEnvironment());
    EXPECT_TRUE(finished.isEmpty());
}

TEST_F(ZORTestDialogTest, HandsItsEnvironmentToItsSelectors)
{
    AddPoint(QStringLiteral("P"));
    ASSERT_NE(nullptr, Open("ScriptedDlg"));
    EXPECT_EQ(1, dialog->findChild<QComboBox*>(QStringLiteral("_Combo"))->count());
}

TEST_F(ZORTestDialogTest, FinishesTwiceWithTrueWhenApplySucceeds)
{
    // accept() comes from OnAccepted() and once more from the button box.
    RunWith(ScriptedDlg::ReturnTrue);
    EXPECT_EQ((QList<bool>{true, true}), finished);
}

TEST_F(ZORTestDialogTest, ClosesAndFinishesWithTrueEvenWhenApplyFails)
{
    RunWith(ScriptedDlg::ReturnFalse);
    EXPECT_EQ(QList<bool>{true}, finished);
}

TEST_F(ZORTestDialogTest, ShowsTheMessageOfAnSdkExceptionAndCloses)
{
    ScriptedDlg::behaviour = ScriptedDlg::Throw;
    ASSERT_NE(nullptr, Open("ScriptedDlg"));
    const QWidget* shown = dialog;
    bool wasVisible = false;
    boxes.whileShown = [&] { wasVisible = dialog && dialog->isVisible() && finished.isEmpty(); };
    PressOk();
    EXPECT_EQ(nullptr, dialog.data());
    EXPECT_EQ(QList<bool>{true}, finished);
    const QList<MessageBoxCatcher::Box> expected{
        {QMessageBox::Critical, "Error", "the operation failed", QMessageBox::Ok, shown}};
    EXPECT_EQ(expected, boxes.Take());
    EXPECT_TRUE(wasVisible) << "the dialog closes behind the box";
}

TEST_F(ZORTestDialogTest, PassesOtherExceptionsOn)
{
    ScriptedDlg::behaviour = ScriptedDlg::ThrowOther;
    ASSERT_NE(nullptr, Open("ScriptedDlg"));
    EXPECT_THROW(QMetaObject::invokeMethod(dialog, "OnAccepted", Qt::DirectConnection), std::runtime_error);
}

TEST_F(ZORTestDialogTest, FinishesWithFalseOnCancel)
{
    ASSERT_NE(nullptr, Open("ScriptedDlg"));
    PressCancel();
    EXPECT_EQ(nullptr, dialog.data());
    EXPECT_EQ(QList<bool>{false}, finished);
    EXPECT_EQ(0, ScriptedDlg::applied);
}

TEST_F(ZORTestDialogTest, FinishesWithFalseWhenTheWindowIsClosed)
{
    ASSERT_NE(nullptr, Open("ScriptedDlg"));
    dialog->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(nullptr, dialog.data());
    EXPECT_EQ(QList<bool>{false}, finished);
}

TEST_F(ZORTestDialogTest, OpensTwiceAtOnceWithACommandEach)
{
    const QPointer<ZORTestDialog> first(Open("ScriptedDlg"));
    const QPointer<ZORTestDialog> second(Open("ScriptedDlg"));
    ASSERT_TRUE(first && second);
    EXPECT_NE(first.data(), second.data());
    EXPECT_EQ(2, GetEnvironment()->findChildren<ZORTestDialogCommand*>().size());
    PressCancel(); // the second one
    EXPECT_EQ(QList<bool>{false}, finished);
    EXPECT_TRUE(first->isVisible());
    dialog = first;
    PressOk();
    EXPECT_EQ((QList<bool>{false, true, true}), finished);
    EXPECT_EQ(2, GetEnvironment()->findChildren<ZORTestDialogCommand*>().size())
        << "commands live as long as their environment";
}

TEST_F(ZORTestDialogTest, RefusesToOpenWithoutAButtonBox)
{
    ZORTestDialog* shown = nullptr;
    try {
        shown = Open("NoButtonBoxDlg");
        ADD_FAILURE() << "no exception";
    } catch (const ZORSysException& exception) {
        EXPECT_EQ(QString("no button box defined"), exception.GetMessage());
    }
    EXPECT_EQ(nullptr, shown);
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* hidden = qobject_cast<NoButtonBoxDlg*>(window)) {
            EXPECT_FALSE(hidden->isVisible());
            delete hidden;
        }
    }
}

TEST_F(ZORTestDialogTest, GetsTheTextOfTheActionFromItsCommand)
{
    auto* shown = new ScriptedDlg(GetEnvironment());
    auto* command = new ZORTestDialogCommand(GetEnvironment(), shown);
    command->setProperty("actionText", "Create Something");
    command->Execute();
    EXPECT_EQ(QString("Create Something"), shown->property("actionText").toString());
    delete shown;
}

TEST_F(ZORTestDialogTest, OutlivesItsCommandInSilence)
{
    ASSERT_NE(nullptr, Open("ScriptedDlg"));
    qDeleteAll(GetEnvironment()->findChildren<ZORTestCommand*>());
    PressCancel();
    EXPECT_TRUE(finished.isEmpty());
}

} // namespace

#include "ZORTestDialogTest.moc"
