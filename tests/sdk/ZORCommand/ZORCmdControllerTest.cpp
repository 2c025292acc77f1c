// Tests of ZORCmdController: running commands, registration, icons.

#include "CommandTestClasses.h"
#include "support/Printers.h"

#include <ZORCommand/ZORCmdActionPublisher.h>
#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QPixmap>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

class ZORCmdControllerTest : public testing::Test
{
protected:
    ZORCmdControllerTest() { controller->RegisterCommand(&ScriptedCommand::staticMetaObject); }
    ~ZORCmdControllerTest() override
    {
        ScriptedCommand::s_start = nullptr;
        publisher.reset();
        controller->UnregisterCommand(&ScriptedCommand::staticMetaObject);
        controller->SetIconResolver(nullptr);
    }
    QAction* Publish(const QMetaObject* command, const QVariantMap& options = {})
    {
        publisher.emplace("Tests", command, "icon", "Run", "tip", 0, 1, options);
        return controller->GetActions("Tests").constFirst();
    }

    ZORCmdController* const controller = ZORCmdController::GetController();
    std::optional<ZORCmdActionPublisher> publisher;
};

TEST_F(ZORCmdControllerTest, TriggeredActionCreatesAndStartsTheCommand)
{
    ScriptedCommand* started = nullptr;
    ScriptedCommand::s_start = [&started](ScriptedCommand& command) { started = &command; };
    Publish(&ScriptedCommand::staticMetaObject, {{"flavour", "vanilla"}, {"size", 3}})->trigger();
    ASSERT_TRUE(started);
    EXPECT_EQ(controller, started->parent());
    EXPECT_EQ("Run", started->GetTitle());
    EXPECT_EQ("vanilla", started->property("flavour").toString());
    EXPECT_EQ(3, started->property("size").toInt());
    DeletePosted();
    EXPECT_TRUE(ScriptedCommand::s_last) << "it lives until it finishes";
    started->FinishLater();
    DeletePosted();
    EXPECT_FALSE(ScriptedCommand::s_last);
}

TEST_F(ZORCmdControllerTest, FailingStartIsReportedAndTheCommandGoes)
{
    ScriptedCommand::s_start = [](ScriptedCommand&) { throw ZORSysException("no part is open"); };
    QAction* action = Publish(&ScriptedCommand::staticMetaObject);
    EXPECT_EQ("no part is open", MessageOf([action] { action->trigger(); }));
    DeletePosted();
    EXPECT_FALSE(ScriptedCommand::s_last);
    ScriptedCommand::s_start = nullptr;
    action->trigger();
    EXPECT_TRUE(ScriptedCommand::s_last) << "the action goes on working";
}

TEST_F(ZORCmdControllerTest, CommandMayEndItselfInItsStart)
{
    ScriptedCommand::s_start = [](ScriptedCommand& command) { delete &command; };
    Publish(&ScriptedCommand::staticMetaObject)->trigger();
    EXPECT_FALSE(ScriptedCommand::s_last);
    ScriptedCommand::s_start = [](ScriptedCommand& command) {
        delete &command;
        throw ZORSysException("gone");
    };
    EXPECT_EQ("gone", MessageOf([this] { controller->GetAction("ScriptedCommand")->trigger(); }));
}

TEST_F(ZORCmdControllerTest, ClassThatIsNotRegisteredIsReported)
{
    controller->UnregisterCommand(&ScriptedCommand::staticMetaObject);
    QAction* action = Publish(&ScriptedCommand::staticMetaObject);
    EXPECT_EQ("command class 'ScriptedCommand' is not registered",
              MessageOf([action] { action->trigger(); }));
}

TEST_F(ZORCmdControllerTest, ClassThatCannotBeCreatedIsReported)
{
    controller->RegisterCommand(&ClosedCommand::staticMetaObject);
    EXPECT_EQ("command class 'ClosedCommand' cannot be created",
              MessageOf([&] { Publish(&ClosedCommand::staticMetaObject)->trigger(); }));
    controller->RegisterCommand(&NoCommand::staticMetaObject);
    EXPECT_EQ("command class 'NoCommand' cannot be created",
              MessageOf([&] { Publish(&NoCommand::staticMetaObject)->trigger(); }));
    EXPECT_FALSE(NoCommand::s_last) << "what was created is deleted";
}

TEST_F(ZORCmdControllerTest, WithdrawingDeletesTheRunningCommandsOfTheClassOnly)
{
    ZORCmdActionPublisher other("Other Tests", &DerivedCommand::staticMetaObject, "", "Other", "", 0, 1, {});
    controller->RegisterCommand(&DerivedCommand::staticMetaObject);
    Publish(&ScriptedCommand::staticMetaObject)->trigger();
    const QPointer<ScriptedCommand> run = ScriptedCommand::s_last;
    Publish(&NoCommand::staticMetaObject);
    EXPECT_FALSE(run);

    controller->GetAction("DerivedCommand")->trigger();
    const QPointer<ScriptedCommand> derived = ScriptedCommand::s_last;
    ASSERT_TRUE(derived);
    Publish(&NoCommand::staticMetaObject);
    EXPECT_TRUE(derived);
    controller->UnregisterCommand(&DerivedCommand::staticMetaObject);
    EXPECT_FALSE(derived);
}

TEST_F(ZORCmdControllerTest, CommandThatLeftItsParentIsDeletedAsWell)
{
    ScriptedCommand::s_start = [](ScriptedCommand& command) { command.setParent(nullptr); };
    Publish(&ScriptedCommand::staticMetaObject)->trigger();
    ASSERT_TRUE(ScriptedCommand::s_last);
    publisher.reset();
    EXPECT_FALSE(ScriptedCommand::s_last);
}

TEST_F(ZORCmdControllerTest, ClassStaysRegisteredWhileAnotherActionOfItIsPublished)
{
    const ZORCmdActionPublisher second("Other Tests", &ScriptedCommand::staticMetaObject, "", "Second", "", 0,
                                       1, {{"method", "Second"}});
    Publish(&ScriptedCommand::staticMetaObject)->trigger();
    publisher.reset();
    EXPECT_TRUE(ScriptedCommand::s_last);
    controller->GetAction("ScriptedCommand.Second")->trigger();
    EXPECT_EQ("Second", ScriptedCommand::s_last->GetTitle());
}

TEST_F(ZORCmdControllerTest, UnknownClassCanBeUnregistered)
{
    controller->UnregisterCommand(&ClosedCommand::staticMetaObject);
    controller->RegisterCommand(&ScriptedCommand::staticMetaObject);
    controller->RegisterCommand(&ScriptedCommand::staticMetaObject);
    controller->UnregisterCommand(&ScriptedCommand::staticMetaObject);
    EXPECT_NE(QString(), MessageOf([this] { Publish(&ScriptedCommand::staticMetaObject)->trigger(); }))
        << "registering twice counts once";
}

TEST_F(ZORCmdControllerTest, IconResolverServesActionsThatExistAlready)
{
    QAction* action = Publish(&ScriptedCommand::staticMetaObject);
    EXPECT_TRUE(action->icon().isNull()) << "no theme has this icon";
    QStringList asked;
    controller->SetIconResolver([&asked](const QString& name) {
        asked.append(name);
        QPixmap pixmap(4, 4);
        pixmap.fill(Qt::red);
        return QIcon(pixmap);
    });
    EXPECT_TRUE(asked.contains("icon"));
    EXPECT_FALSE(action->icon().isNull());
    EXPECT_FALSE(Publish(&DerivedCommand::staticMetaObject)->icon().isNull());
}

/// Objects that commands edit.
class EditedBase : public QObject
{
    Q_OBJECT
};
class EditedDerived : public EditedBase
{
    Q_OBJECT
};

TEST_F(ZORCmdControllerTest, EditsAnObjectByTheCommandForItsMostDerivedClass)
{
    EditedBase base;
    EditedDerived derived;
    Publish(&ScriptedCommand::staticMetaObject, {{"edits", QStringList("EditedBase")}});
    EXPECT_EQ(controller->GetEditor(&base), controller->GetAction("ScriptedCommand"));
    EXPECT_EQ(controller->GetEditor(&derived), controller->GetAction("ScriptedCommand"));
    controller->RegisterCommand(&DerivedCommand::staticMetaObject);
    {
        const ZORCmdActionPublisher closer("Tests", &DerivedCommand::staticMetaObject, "icon", "Edit", "tip",
                                           1, 1, {{"edits", QStringList({"Other", "EditedDerived"})}});
        EXPECT_EQ(controller->GetEditor(&base), controller->GetAction("ScriptedCommand"));
        EXPECT_EQ(controller->GetEditor(&derived), controller->GetAction("DerivedCommand"));
        EXPECT_TRUE(controller->Edit(&derived));
        ASSERT_TRUE(ScriptedCommand::s_last);
        EXPECT_TRUE(qobject_cast<DerivedCommand*>(ScriptedCommand::s_last));
        EXPECT_EQ(ScriptedCommand::s_last->GetEditedObject(), &derived);
    }
    EXPECT_EQ(controller->GetEditor(&derived), controller->GetAction("ScriptedCommand"));
    const QObject other;
    EXPECT_EQ(controller->GetEditor(&other), nullptr);
    EXPECT_EQ(controller->GetEditor(nullptr), nullptr);
    EXPECT_FALSE(controller->Edit(nullptr));
}

TEST_F(ZORCmdControllerTest, ForgetsAnEditedObjectThatIsDestroyed)
{
    auto object = std::make_unique<EditedBase>();
    Publish(&ScriptedCommand::staticMetaObject, {{"edits", QStringList("EditedBase")}});
    bool wasEditor = false;
    ScriptedCommand::s_start = [&wasEditor](ScriptedCommand& command) { wasEditor = command.IsEditor(); };
    EXPECT_TRUE(controller->Edit(object.get()));
    EXPECT_TRUE(wasEditor) << "before Start()";
    object.reset();
    ASSERT_TRUE(ScriptedCommand::s_last);
    EXPECT_EQ(ScriptedCommand::s_last->GetEditedObject(), nullptr);
    EXPECT_TRUE(ScriptedCommand::s_last->IsEditor());
    controller->GetAction("ScriptedCommand")->trigger();
    EXPECT_FALSE(ScriptedCommand::s_last->IsEditor()) << "creates";
}

TEST_F(ZORCmdControllerTest, PassesAFailureOfAnEditorOn)
{
    EditedBase object;
    Publish(&ScriptedCommand::staticMetaObject, {{"edits", QStringList("EditedBase")}});
    ScriptedCommand::s_start = [](ScriptedCommand&) { throw ZORSysException("no part is open"); };
    EXPECT_EQ("no part is open", MessageOf([&] { controller->Edit(&object); }));
    DeletePosted();
    EXPECT_FALSE(ScriptedCommand::s_last);
}

} // namespace

#include "ZORCmdControllerTest.moc"
