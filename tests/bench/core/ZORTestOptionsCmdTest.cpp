#include "core/ZORTestOptionsCmd.h"

#include "core/ZORTestOptionsDlg.h"
#include "core/ZORTestPlugin.h"
#include "support/BenchTest.h"
#include "support/DialogFrame.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORSystem/ZORSysInit.h>

#include <QAction>
#include <QCheckBox>
#include <QSignalSpy>
#include <QWidget>

namespace {

class ZORTestOptionsCmdTest : public BenchTest
{
protected:
    ~ZORTestOptionsCmdTest() override
    {
        ZORGeoDebugOptions::GetInstance()->SetConstructorStackTraces(false);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static QAction* GetAction() { return ZORCmdController::GetController()->GetAction("ZORTestOptionsCmd"); }
};

TEST_F(ZORTestOptionsCmdTest, IsPublishedAsAHostAction)
{
    const QAction* action = GetAction();
    ASSERT_NE(nullptr, action);
    EXPECT_EQ(QString("SDK Test Options"), action->text());
    EXPECT_EQ(QString("Launches the SDK testing framework options dialog"), action->toolTip());
    EXPECT_EQ(QString("Test"), action->property("category").toString());
    EXPECT_EQ(1, action->property("placement").toInt());
    EXPECT_EQ(QString("nesting-info"), action->property("iconName").toString());
}

TEST_F(ZORTestOptionsCmdTest, PutsTheOptionsIntoTheFrameOfTheHost)
{
    DialogFrame frame;
    GetAction()->trigger();
    ASSERT_NE(nullptr, frame.command);
    EXPECT_EQ(1, frame.command->GetInteraction());
    EXPECT_EQ(0, frame.command->GetUndoScope());
    EXPECT_NE(nullptr, qobject_cast<ZORTestOptionsDlg*>(frame.content));
    EXPECT_EQ(&frame.widget, frame.content->parentWidget());
    EXPECT_EQ(frame.content.data(), frame.command->GetContentWidget());
}

TEST_F(ZORTestOptionsCmdTest, WritesTheOptionsOnOk)
{
    DialogFrame frame;
    GetAction()->trigger();
    frame.content->findChild<QCheckBox*>(QStringLiteral("_GeoConstStackChk"))->setChecked(true);
    EXPECT_FALSE(ZORGeoDebugOptions::GetInstance()->IsConstructorStackTraces());
    frame.command->Accept();
    EXPECT_TRUE(ZORGeoDebugOptions::GetInstance()->IsConstructorStackTraces());
    EXPECT_TRUE(frame.command->IsFinishing());
}

TEST_F(ZORTestOptionsCmdTest, WritesNothingOnCancel)
{
    DialogFrame frame;
    GetAction()->trigger();
    frame.content->findChild<QCheckBox*>(QStringLiteral("_GeoConstStackChk"))->setChecked(true);
    frame.command->Reject();
    EXPECT_FALSE(ZORGeoDebugOptions::GetInstance()->IsConstructorStackTraces());
}

TEST_F(ZORTestOptionsCmdTest, CommitsNothingWithoutItsContent)
{
    ZORTestOptionsCmd command(nullptr);
    EXPECT_NO_THROW(command.Commit());
    EXPECT_FALSE(ZORGeoDebugOptions::GetInstance()->IsConstructorStackTraces());
}

TEST(ZORTestPluginTest, IsMarkedAsLoadedOnceTheSystemIsInitialised)
{
    ZORSysInitialize();
    EXPECT_TRUE(_ZORTestingLoaded);
}

} // namespace
