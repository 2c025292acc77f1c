// Tests of ZORNestDebugOptions.

#include <ZORNesting/ZORNestDebugOptions.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QStringList>

#include <gtest/gtest.h>

namespace {

class ZORNestDebugOptionsTest : public testing::Test
{
protected:
    ~ZORNestDebugOptionsTest() override
    {
        options->SetKeepNestingWorkDirectories(false);
        options->SetKeepTranslationWorkDirectories(false);
    }

    ZORNestDebugOptions* const options = ZORNestDebugOptions::GetInstance();
};

TEST_F(ZORNestDebugOptionsTest, AreOffAtStart)
{
    EXPECT_FALSE(options->GetKeepNestingWorkDirectories());
    EXPECT_FALSE(options->GetKeepTranslationWorkDirectories());
    EXPECT_EQ(options, ZORNestDebugOptions::GetInstance());
}

TEST_F(ZORNestDebugOptionsTest, AreIndependentOfEachOther)
{
    options->SetKeepNestingWorkDirectories(true);
    EXPECT_TRUE(options->GetKeepNestingWorkDirectories());
    EXPECT_FALSE(options->GetKeepTranslationWorkDirectories());
    options->SetKeepTranslationWorkDirectories(true);
    options->SetKeepNestingWorkDirectories(false);
    EXPECT_FALSE(options->GetKeepNestingWorkDirectories());
    EXPECT_TRUE(options->GetKeepTranslationWorkDirectories());
}

TEST_F(ZORNestDebugOptionsTest, ChangesAreTraced)
{
    ZORSysApiTrace* trace = ZORSysApiTrace::GetInstance();
    QStringList lines;
    QObject receiver;
    QObject::connect(
        trace, &ZORSysApiTrace::CallTraced, &receiver,
        [&lines](const QByteArray& line) { lines.append(QString::fromUtf8(line)); }, Qt::DirectConnection);
    trace->SetEnabled(true);
    options->SetKeepNestingWorkDirectories(true);
    options->SetKeepTranslationWorkDirectories(false);
    trace->SetEnabled(false);
    EXPECT_EQ(QStringList({"ZORNestDebugOptions::SetKeepNestingWorkDirectories(true)",
                           "ZORNestDebugOptions::SetKeepTranslationWorkDirectories(false)"}),
              lines);
}

} // namespace
