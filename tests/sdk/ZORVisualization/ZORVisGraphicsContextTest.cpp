#include <ZORVisualization/ZORVisGraphicsContext.h>

#include <gtest/gtest.h>

#include <thread>

TEST(ZORVisGraphicsContextTest, SaysWhyThereIsNone)
{
    const ZORVisGraphicsContext* context = ZORVisGraphicsContext::GetInstance();
    EXPECT_EQ(context->IsAvailable(), context->GetFailureReason().isEmpty());
    EXPECT_FALSE(context->GetDescription().isEmpty());
    if (qEnvironmentVariableIntValue("ZOR_NO_GRAPHICS") == 1) {
        EXPECT_FALSE(context->IsAvailable());
        EXPECT_EQ(context->GetFailureReason(),
                  QStringLiteral("graphics are switched off by the environment variable ZOR_NO_GRAPHICS"));
        EXPECT_EQ(context->GetDescription(), QStringLiteral("software drawing"));
    }
}

TEST(ZORVisGraphicsContextTest, BelongsToOneThread)
{
    const ZORVisGraphicsContext* context = ZORVisGraphicsContext::GetInstance();
    EXPECT_EQ(context->MakeCurrent(), context->IsAvailable());
    bool currentElsewhere = true;
    std::thread([&] { currentElsewhere = context->MakeCurrent(); }).join();
    EXPECT_FALSE(currentElsewhere);
}

TEST(ZORVisGraphicsContextTest, KnowsItsLimits)
{
    const ZORVisGraphicsContext* context = ZORVisGraphicsContext::GetInstance();
    EXPECT_GE(context->GetSamples(), 1);
    EXPECT_EQ(context->GetMaximumSize() > 0, context->IsAvailable());
}
