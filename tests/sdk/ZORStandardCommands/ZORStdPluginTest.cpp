// The library as applications meet it.

#include "StandardCommandsTest.h"
#include "support/HeapGrowth.h"

#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORSystem/ZORSysException.h>

#include <QAction>
#include <QFile>
#include <QIcon>
#include <QJsonObject>
#include <QPluginLoader>

namespace {

constexpr const char* kIds[] = {
    "ZORCompLayupCmd.Create",    "ZORCompMaterialLibraryCmd.Edit", "ZORCompRosetteCmd.Create",
    "ZORCompStrategyCmd.Create", "ZORWFProjectionCmd.Create",      "ZORTPCourseCmd.Create",
};

using ZORStdPluginTest = StandardCommandsTest;

TEST_F(ZORStdPluginTest, TellsItsVersions)
{
    const QJsonObject metaData = QPluginLoader(library.fileName()).metaData();
    EXPECT_EQ(metaData.value("IID").toString(), QString("org.zorvane.sdk.Plugin"));
    const QJsonObject own = metaData.value("MetaData").toObject();
    EXPECT_EQ(own.value("name").toString(), QString("ZORStandardCommands"));
    EXPECT_EQ(own.value("version").toString(), QString("1.0.0"));
    EXPECT_EQ(own.value("sdkVersion").toString(), QString("1.0.0"));
}

TEST_F(ZORStdPluginTest, PublishesItsActionsWhileItIsLoaded)
{
    for (const char* id : kIds) {
        const QAction* const action = GetAction(id);
        ASSERT_NE(action, nullptr) << id;
        EXPECT_FALSE(action->text().isEmpty()) << id;
        EXPECT_FALSE(action->toolTip().isEmpty()) << id;
        const QString icon = ":/zorsdk/icons/" + action->property("iconName").toString() + ".svg";
        EXPECT_TRUE(QFile::exists(icon)) << icon.toStdString();
        EXPECT_FALSE(QIcon(icon).pixmap(24).isNull()) << icon.toStdString();
    }
    const ZORCmdController* const controller = ZORCmdController::GetController();
    EXPECT_EQ(controller->GetCategories(), QStringList({"Composites", "Wireframe", "Tool Path"}));
    EXPECT_TRUE(library.unload());
    EXPECT_FALSE(IsMapped());
    EXPECT_TRUE(controller->GetCategories().isEmpty());
    EXPECT_FALSE(QFile::exists(":/zorsdk/icons"));
    for (const char* id : kIds)
        EXPECT_EQ(GetAction(id), nullptr) << id;
    EXPECT_TRUE(library.load());
}

TEST_F(ZORStdPluginTest, IconsAreThereWhenTheActionsAreMade)
{
    EXPECT_TRUE(library.unload());
    QStringList missing;
    ZORCmdController::GetController()->SetIconResolver([&missing](const QString& name) {
        if (!QFile::exists(":/zorsdk/icons/" + name + ".svg"))
            missing.append(name);
        return QIcon();
    });
    EXPECT_TRUE(library.load());
    ZORCmdController::GetController()->SetIconResolver({});
    EXPECT_EQ(missing, QStringList());
}

TEST_F(ZORStdPluginTest, CommandsSayThatThereIsNoEnvironment)
{
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(nullptr);
    for (const char* id : kIds) {
        QString message;
        try {
            GetAction(id)->trigger();
        } catch (const ZORSysException& exception) {
            message = exception.GetMessage();
        }
        EXPECT_EQ(message, QString("there is no current environment")) << id;
        EXPECT_TRUE(frame.content.isNull());
        ProcessEvents();
    }
}

TEST_F(ZORStdPluginTest, UnloadingEndsOpenDialogs)
{
    for (const char* id : kIds) {
        Open(id);
        const QPointer<QWidget> content = frame.content;
        const QPointer<ZORCmdDialogCommand> command = frame.command;
        EXPECT_TRUE(library.unload());
        EXPECT_FALSE(IsMapped());
        EXPECT_TRUE(content.isNull()) << id;
        EXPECT_TRUE(command.isNull()) << id;
        // What the dialog followed goes on without it.
        AddPoint("Point", {1, 2, 3})->SetLabel("Other");
        ProcessEvents();
        container->Clear();
        EXPECT_TRUE(library.load());
    }
}

TEST_F(ZORStdPluginTest, LeavesNothingBehindWhenItIsLoadedAndUnloadedManyTimes)
{
    const auto cycle = [this] {
        AddPoint("Point", {1, 2, 3});
        AddLineOn(AddSurface("Surface"), "Line", {10, 10, 0}, {90, 10, 0});
        for (const char* id : kIds) {
            Open(id);
            EXPECT_EQ(Accept(), QString()) << id;
        }
        EXPECT_TRUE(library.unload());
        EXPECT_FALSE(IsMapped());
        container->Clear();
        ProcessEvents();
        EXPECT_TRUE(library.load());
    };
    EXPECT_LT(MeasureHeapGrowth(40, cycle), 8192.0)
        << "bytes per cycle; Qt itself keeps some per set of windows";
}

} // namespace
