// Tests of ZORNestDebugOptions.

#include "support/TraceCalls.h"

#include <ZORNesting/ZORNestDebugOptions.h>

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
    const QStringList lines = TraceCalls([this] {
        options->SetKeepNestingWorkDirectories(true);
        options->SetKeepTranslationWorkDirectories(false);
    });
    EXPECT_EQ(QStringList({"ZORNestDebugOptions::SetKeepNestingWorkDirectories(true)",
                           "ZORNestDebugOptions::SetKeepTranslationWorkDirectories(false)"}),
              lines);
}

} // namespace
