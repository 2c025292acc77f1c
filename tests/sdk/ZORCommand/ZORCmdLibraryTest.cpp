// Tests of commands and actions of a library that comes and goes.

#include "support/Printers.h"

#include <ZORCommand/ZORCmdCommand.h>
#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QCoreApplication>
#include <QLibrary>
#include <QPointer>

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace {

bool IsInMemory()
{
    void* handle = dlopen(COMMAND_TEST_LIBRARY, RTLD_NOLOAD | RTLD_LAZY);
    if (handle)
        dlclose(handle);
    return handle != nullptr;
}

class ZORCmdLibraryTest : public testing::Test
{
protected:
    void Load() { ASSERT_TRUE(library.load()) << library.errorString().toStdString(); }
    void Unload()
    {
        ASSERT_TRUE(library.unload());
        ASSERT_FALSE(IsInMemory());
    }
    QAction* Action() const { return controller->GetAction("LibraryCommand"); }

    ZORCmdController* const controller = ZORCmdController::GetController();
    QLibrary library = QLibrary(QStringLiteral(COMMAND_TEST_LIBRARY));
};

TEST_F(ZORCmdLibraryTest, ActionComesAndGoesWithTheLibrary)
{
    EXPECT_EQ(nullptr, Action());
    for (int round = 0; round < 20; ++round) {
        Load();
        ASSERT_TRUE(Action());
        EXPECT_TRUE(controller->GetCategories().contains("Library"));
        Unload();
        EXPECT_EQ(nullptr, Action());
        EXPECT_FALSE(controller->GetCategories().contains("Library"));
        EXPECT_TRUE(controller->GetActions("Library").isEmpty());
    }
}

TEST_F(ZORCmdLibraryTest, RunningCommandsGoWithTheLibrary)
{
    Load();
    Action()->trigger();
    Action()->trigger();
    QList<QPointer<ZORCmdCommand>> running;
    for (ZORCmdCommand* command : controller->findChildren<ZORCmdCommand*>("running"))
        running.append(command);
    ASSERT_EQ(2, running.size());
    running.constFirst()->FinishLater(); // its deletion must not come later than the library goes
    Unload();
    EXPECT_FALSE(running[0]);
    EXPECT_FALSE(running[1]);
    QCoreApplication::processEvents();
}

TEST_F(ZORCmdLibraryTest, TextsOfAnUnloadedLibraryStayReadable)
{
    Load();
    Action()->trigger();
    const auto* command = controller->findChild<ZORCmdCommand*>("running");
    ASSERT_TRUE(command);
    const QStringList texts = {Action()->text(),
                               Action()->toolTip(),
                               Action()->property("category").toString(),
                               controller->GetCategories().constLast(),
                               command->GetTitle(),
                               command->property("flavour").toString()};
    const QString id = Action()->objectName();
    Unload();
    EXPECT_EQ(QStringList(
                  {"Library Command", "Goes on running", "Library", "Library", "Library Command", "vanilla"}),
              texts);
    EXPECT_EQ("LibraryCommand", id);
}

} // namespace
