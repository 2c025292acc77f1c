#include "core/ZORTestCommand.h"

#include "support/BenchTest.h"

#include <QMetaMethod>
#include <QSignalSpy>

namespace {

class ZORTestCommandTest : public BenchTest
{
};

TEST_F(ZORTestCommandTest, IsAChildOfItsEnvironment)
{
    const auto* command = new ZORTestCommand(GetEnvironment());
    EXPECT_EQ(GetEnvironment(), command->parent());
    EXPECT_EQ(GetEnvironment(), command->GetEnvironment());
}

TEST_F(ZORTestCommandTest, FinishesWithTrueAndNothingElse)
{
    ZORTestCommand command(GetEnvironment());
    QSignalSpy finishedSpy(&command, &ZORTestCommand::Finished);
    command.Execute();
    ASSERT_EQ(1, finishedSpy.count());
    EXPECT_TRUE(finishedSpy.first().constFirst().toBool());
}

TEST_F(ZORTestCommandTest, DeclaresTheSignalBeforeTheSlotAndAnInvokableConstructor)
{
    const QMetaObject& meta = ZORTestCommand::staticMetaObject;
    ASSERT_EQ(2, meta.methodCount() - meta.methodOffset());
    EXPECT_EQ(QByteArray("Finished(bool)"), meta.method(meta.methodOffset()).methodSignature());
    EXPECT_EQ(QMetaMethod::Signal, meta.method(meta.methodOffset()).methodType());
    EXPECT_EQ(QByteArray("Execute()"), meta.method(meta.methodOffset() + 1).methodSignature());
    EXPECT_EQ(QMetaMethod::Slot, meta.method(meta.methodOffset() + 1).methodType());
    ASSERT_EQ(1, meta.constructorCount());
    EXPECT_EQ(QByteArray("ZORTestCommand(ZORTestEnvironment*)"), meta.constructor(0).methodSignature());
}

} // namespace
