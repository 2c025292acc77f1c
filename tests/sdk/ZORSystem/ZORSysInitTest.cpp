// Tests of the initialisation hook.
//
// The system initialises once in a process: the whole story is one test.

#include "SystemTestLibrary.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysInit.h>

#include <QLibrary>
#include <QStringList>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace {

QStringList& Calls()
{
    static QStringList calls;
    return calls;
}

QStringList& Messages()
{
    static QStringList messages;
    return messages;
}

std::function<void()> Note(const QString& name)
{
    return [name] { Calls().append(name); };
}

const bool kRegisteredEarly = ZORSysRegisterInit(Note("static initialiser"));

TEST(ZORSysInitTest, EveryCallbackRunsOnceInTheOrderOfRegistration)
{
    EXPECT_TRUE(kRegisteredEarly);
    const auto previous =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
            if (type == QtCriticalMsg)
                Messages().append(message);
        });
    const auto resource = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = resource;

    ZORSysRegisterInit([] {
        Calls().append("first");
        ZORSysRegisterInit(Note("nested"));
        ZORSysInitialize();
        Calls().append("first again");
    });
    ZORSysRegisterInit([] { throw ZORSysException("bad plug-in"); });
    ZORSysRegisterInit([] { throw std::runtime_error("worse plug-in"); });
    ZORSysRegisterInit([] { throw 1; });
    ZORSysRegisterInit({});
    ZORSysRegisterInit([kept = resource] { Calls().append("last"); });
    EXPECT_TRUE(Calls().isEmpty());

    ZORSysInitialize();
    EXPECT_EQ(QStringList({"static initialiser", "first", "nested", "first again", "last"}), Calls());
    EXPECT_EQ(
        QStringList({"initialisation callback failed: bad plug-in",
                     "initialisation callback failed: worse plug-in", "initialisation callback failed"}),
        Messages());
    EXPECT_EQ(1, resource.use_count()) << "a callback was kept";

    Calls().clear();
    Messages().clear();
    ZORSysInitialize();
    EXPECT_TRUE(Calls().isEmpty());
    EXPECT_TRUE(ZORSysRegisterInit(Note("late")));
    EXPECT_EQ(QStringList("late"), Calls());
    EXPECT_TRUE(ZORSysRegisterInit([kept = resource] { throw ZORSysException("late failure"); }));
    EXPECT_EQ(QStringList("initialisation callback failed: late failure"), Messages());
    EXPECT_EQ(1, resource.use_count());

    int counter = 0;
    QLibrary library(SYSTEM_TEST_LIBRARY);
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    const auto registerInit =
        reinterpret_cast<ZorTestRegisterInitFunction>(library.resolve("ZorTestRegisterInit"));
    ASSERT_TRUE(registerInit);
    registerInit(&counter);
    EXPECT_EQ(1, counter);
    EXPECT_TRUE(library.unload());
    ZORSysInitialize();
    qInstallMessageHandler(previous);
}

} // namespace
