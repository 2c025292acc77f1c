// Tests of ZORCmdActionPublisher.

#include "CommandTestClasses.h"
#include "support/Printers.h"

#include <ZORCommand/ZORCmdActionPublisher.h>
#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QApplication>

#include <gtest/gtest.h>

#include <memory>

namespace {

// As a library does it: before main() and the application object.
const ZORCmdActionPublisher kStaticPublisher("Static", &ScriptedDialogCommand::staticMetaObject,
                                             "static-icon", "Static Command", "Published early", 0, 1,
                                             {{"method", "Early"}});
const bool kActionExistedEarly =
    QCoreApplication::instance()
    || ZORCmdController::GetController()->GetAction("ScriptedDialogCommand.Early");

class ZORCmdActionPublisherTest : public testing::Test
{
protected:
    static std::unique_ptr<ZORCmdActionPublisher> Publish(const QString& text, int position = 0,
                                                          int placement = 1, const QVariantMap& options = {},
                                                          const QString& category = "Tests")
    {
        return std::make_unique<ZORCmdActionPublisher>(category, &ScriptedCommand::staticMetaObject, "icon",
                                                       text, "tip of " + text, position, placement, options);
    }
    static QStringList Texts(const QList<QAction*>& actions)
    {
        QStringList texts;
        for (const QAction* action : actions)
            texts.append(action->text());
        return texts;
    }

    ZORCmdController* const controller = ZORCmdController::GetController();
};

TEST_F(ZORCmdActionPublisherTest, PublishingWorksBeforeTheApplicationObject)
{
    EXPECT_FALSE(kActionExistedEarly);
    const QAction* action = controller->GetAction("ScriptedDialogCommand.Early");
    ASSERT_TRUE(action);
    EXPECT_EQ("Static Command", action->text());
    EXPECT_EQ(action, controller->GetAction("ScriptedDialogCommand.Early")) << "made once";
}

TEST_F(ZORCmdActionPublisherTest, ActionCarriesWhatWasPublished)
{
    const auto publisher = Publish("Draw", 3, 2);
    const QAction* action = controller->GetAction("ScriptedCommand");
    ASSERT_TRUE(action);
    EXPECT_EQ("Draw", action->text());
    EXPECT_EQ("tip of Draw", action->toolTip());
    EXPECT_EQ("tip of Draw", action->statusTip());
    EXPECT_EQ("ScriptedCommand", action->objectName());
    EXPECT_EQ("Tests", action->property("category").toString());
    EXPECT_EQ("ScriptedCommand", action->property("commandId").toString());
    EXPECT_EQ(ZORCmdActionPublisher::MenuOnly, action->property("placement").toInt());
    EXPECT_EQ("icon", action->property("iconName").toString());
}

TEST_F(ZORCmdActionPublisherTest, MethodOptionBelongsToTheId)
{
    const auto create = Publish("Create", 0, 1, {{"method", "Create"}});
    const auto edit = Publish("Edit", 0, 1, {{"method", QByteArray("Edit")}});
    EXPECT_EQ("Create", controller->GetAction("ScriptedCommand.Create")->text());
    EXPECT_EQ("Edit", controller->GetAction("ScriptedCommand.Edit")->text());
    EXPECT_EQ(nullptr, controller->GetAction("ScriptedCommand"));
    EXPECT_EQ(nullptr, controller->GetAction(""));
}

TEST_F(ZORCmdActionPublisherTest, CategoryIsSortedByPositionThenByText)
{
    const auto a = Publish("a", -1, 1, {{"method", "a"}});
    const auto d = Publish("d", 5, 0, {{"method", "d"}});
    const auto c = Publish("c", 5, 1, {{"method", "c"}});
    const auto b = Publish("b", 0, 1, {{"method", "b"}});
    const auto other = Publish("other", 0, 1, {{"method", "other"}}, "Other Tests");
    EXPECT_EQ(QStringList({"a", "b", "c", "d"}), Texts(controller->GetActions("Tests")));
    EXPECT_EQ(QStringList({"other"}), Texts(controller->GetActions("Other Tests")));
    EXPECT_EQ(QStringList(), Texts(controller->GetActions("tests")));
    EXPECT_EQ(QStringList({"Static", "Tests", "Other Tests"}), controller->GetCategories());
}

TEST_F(ZORCmdActionPublisherTest, DestructionWithdrawsTheAction)
{
    auto publisher = Publish("Draw");
    const QPointer<QAction> action = controller->GetAction("ScriptedCommand");
    QString withdrawn;
    QObject receiver;
    QObject::connect(controller, &ZORCmdController::ActionAboutToBeWithdrawn, &receiver,
                     [text = &withdrawn](const QAction* going) { *text = going->text(); });
    publisher.reset();
    EXPECT_EQ("Draw", withdrawn);
    EXPECT_FALSE(action);
    EXPECT_EQ(nullptr, controller->GetAction("ScriptedCommand"));
    EXPECT_EQ(QStringList({"Static"}), controller->GetCategories());
}

TEST_F(ZORCmdActionPublisherTest, PublishingAnnouncesTheAction)
{
    QList<QAction*> published;
    QObject receiver;
    QObject::connect(controller, &ZORCmdController::ActionPublished, &receiver,
                     [list = &published](QAction* action) { list->append(action); });
    const auto publisher = Publish("Draw");
    EXPECT_EQ(QList<QAction*>({controller->GetAction("ScriptedCommand")}), published);
}

TEST_F(ZORCmdActionPublisherTest, TwoActionsOfOneIdBothWork)
{
    controller->RegisterCommand(&ScriptedCommand::staticMetaObject);
    auto first = Publish("first");
    const auto second = Publish("second");
    const QList<QAction*> actions = controller->GetActions("Tests");
    ASSERT_EQ(2, actions.size());
    EXPECT_EQ(actions[0], controller->GetAction("ScriptedCommand"));
    actions[1]->trigger();
    ASSERT_TRUE(ScriptedCommand::s_last);
    EXPECT_EQ("second", ScriptedCommand::s_last->GetTitle());
    first.reset();
    EXPECT_EQ(actions[1], controller->GetAction("ScriptedCommand"));
    controller->UnregisterCommand(&ScriptedCommand::staticMetaObject);
}

} // namespace
