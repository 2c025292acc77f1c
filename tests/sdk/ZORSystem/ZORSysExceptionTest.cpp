// Tests of the exception family, also across libraries.

#include "SystemTestLibrary.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysFileException.h>

#include <QLibrary>

#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <thread>

namespace {

TEST(ZORSysExceptionTest, TheMessageIsKeptAsItIs)
{
    const QString message = QString::fromUtf8("fl\u00e4che '%1' is empty\n\U0001F6E9");
    const ZORSysException exception(message);
    EXPECT_EQ(message, exception.GetMessage());
    EXPECT_EQ(message.toUtf8(), QByteArray(exception.what()));
    EXPECT_EQ(QString(), ZORSysException({}).GetMessage());
    EXPECT_STREQ("", ZORSysException({}).what());
}

TEST(ZORSysExceptionTest, CopiesCarryTheMessage)
{
    auto original = std::make_unique<ZORSysException>("first");
    const ZORSysException copy(*original);
    ZORSysException assigned("second");
    assigned = *original;
    assigned = *&assigned;
    original.reset();
    EXPECT_EQ("first", copy.GetMessage());
    EXPECT_EQ("first", assigned.GetMessage());
    EXPECT_STREQ("first", assigned.what());
}

TEST(ZORSysExceptionTest, AFileThatCannotBeOpenedIsNamedWithTheReason)
{
    try {
        throw ZORSysFileOpenException("/tmp/%1/%2.stl", "no such %1");
    } catch (const ZORSysFileException& exception) {
        EXPECT_EQ("cannot open file '/tmp/%1/%2.stl': no such %1", exception.GetMessage());
    }
}

TEST(ZORSysExceptionTest, AnExceptionMayBeCaughtInAnotherThread)
{
    std::exception_ptr transported;
    std::thread([&transported] {
        try {
            throw ZORSysException("job failed");
        } catch (...) {
            transported = std::current_exception();
        }
    }).join();
    try {
        std::rethrow_exception(std::exchange(transported, nullptr));
    } catch (const ZORSysException& exception) {
        EXPECT_EQ("job failed", exception.GetMessage());
    }
}

TEST(ZORSysExceptionTest, AnExceptionOfALoadedLibraryIsCaughtByItsType)
{
    QLibrary library(SYSTEM_TEST_LIBRARY);
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    const auto throwOpen =
        reinterpret_cast<ZorTestThrowFileOpenFunction>(library.resolve("ZorTestThrowFileOpen"));
    const auto tryCall = reinterpret_cast<ZorTestCatchFunction>(library.resolve("ZorTestCatch"));
    ASSERT_TRUE(throwOpen && tryCall);

    QString message;
    try {
        throwOpen("a.stl");
    } catch (const ZORSysFileOpenException& exception) {
        message = exception.GetMessage();
    }
    EXPECT_EQ("cannot open file 'a.stl': no such device", message);

    EXPECT_EQ("file: x", tryCall([] { throw ZORSysFileException("x"); }));
    EXPECT_EQ("file: cannot open file 'x': y", tryCall([] { throw ZORSysFileOpenException("x", "y"); }));
    EXPECT_EQ("sdk: x", tryCall([] { throw ZORSysException("x"); }));
    EXPECT_EQ("none", tryCall([] {}));
    EXPECT_TRUE(library.unload());
}

} // namespace
