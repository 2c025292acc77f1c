// Tests of ZORNestNestingInput, ZORNestNestingInputItem and ZORNestNestingInputPackaging.

#include "NestingJobs.h"
#include "support/SharedValue.h"

#include <ZORNesting/ZORNestDebugOptions.h>
#include <ZORNesting/ZORNestInstance.h>
#include <ZORNesting/ZORNestLayout.h>
#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestTranslationInput.h>
#include <ZORNesting/ZORNestVisOptions.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

#include <cmath>

TEST(ZORNestNestingInputTest, AnItemStartsAsOneCopyAlongTheGrain)
{
    const ZORNestNestingInputItem item(QStringLiteral("rib"), "no result file");
    EXPECT_EQ("rib", item.GetName());
    EXPECT_EQ("no result file", item.GetContents());
    EXPECT_EQ(1, item.GetQuantity());
    EXPECT_FALSE(item.IsMirrored());
    EXPECT_EQ(0, item.GetOrientation());
    EXPECT_FALSE(item.IsFlippable());
    EXPECT_FALSE(item.IsGrain90Set() || item.IsGrain180Set() || item.IsGrain270Set());
    EXPECT_EQ(0, item.GetMaxDeviation());
    EXPECT_EQ(0, item.GetDeviationIncrement());
    EXPECT_EQ(0, item.GetPriority());
}

TEST(ZORNestNestingInputTest, AnItemKeepsWhatItIsGiven)
{
    ZORNestNestingInputItem item(QString(), {});
    item.SetQuantity(-3);
    item.SetMirrored(true);
    item.SetOrientation(1.5);
    item.SetFlippable(true);
    item.SetGrain90(true);
    EXPECT_TRUE(item.IsGrain90Set());
    EXPECT_FALSE(item.IsGrain180Set() || item.IsGrain270Set());
    item.SetGrain180(true);
    EXPECT_FALSE(item.IsGrain270Set());
    item.SetGrain270(true);
    item.SetMaxDeviation(0.25);
    item.SetPriority(-7);
    EXPECT_EQ(-3, item.GetQuantity());
    EXPECT_TRUE(item.IsMirrored());
    EXPECT_EQ(1.5, item.GetOrientation());
    EXPECT_TRUE(item.IsFlippable());
    EXPECT_TRUE(item.IsGrain180Set());
    EXPECT_TRUE(item.IsGrain270Set());
    EXPECT_EQ(0.25, item.GetMaxDeviation());
    EXPECT_EQ(0, item.GetDeviationIncrement());
    EXPECT_EQ(-7, item.GetPriority());
}

TEST(ZORNestNestingInputTest, APackagingKeepsWhatItIsGiven)
{
    ZORNestNestingInputPackaging packaging(QStringLiteral("roll"), 1500, kRoll);
    EXPECT_EQ("roll", packaging.GetName());
    EXPECT_EQ(1500, packaging.GetWidth());
    EXPECT_TRUE(std::isnan(packaging.GetLength()));
    EXPECT_EQ(1, packaging.GetQuantity());
    EXPECT_EQ(0, packaging.GetLeftTrim() + packaging.GetRightTrim() + packaging.GetTopTrim()
                     + packaging.GetBottomTrim() + packaging.GetCost());
    packaging.SetQuantity(4);
    packaging.SetLeftTrim(1);
    packaging.SetRightTrim(2);
    packaging.SetTopTrim(3);
    packaging.SetBottomTrim(4);
    packaging.SetCost(5);
    EXPECT_EQ(4, packaging.GetQuantity());
    EXPECT_EQ(1, packaging.GetLeftTrim());
    EXPECT_EQ(2, packaging.GetRightTrim());
    EXPECT_EQ(3, packaging.GetTopTrim());
    EXPECT_EQ(4, packaging.GetBottomTrim());
    EXPECT_EQ(5, packaging.GetCost());
    EXPECT_EQ(20, ZORNestNestingInputPackaging(QString(), 10, 20).GetLength());
}

TEST(ZORNestNestingInputTest, AnInputStartsWithoutLimitsAndFreedoms)
{
    const ZORNestNestingInput input(QStringLiteral("id"), 0.2, {MakeSquare(QStringLiteral("a"), 1)},
                                    {MakeSheets(QStringLiteral("s"), 1, 2)});
    EXPECT_EQ("id", input.GetMaterialID());
    EXPECT_EQ(0.2, input.GetMaterialThickness());
    ASSERT_EQ(1, input.GetItems().size());
    EXPECT_EQ("a", input.GetItems().at(0).GetName());
    ASSERT_EQ(1, input.GetPackagings().size());
    EXPECT_EQ("s", input.GetPackagings().at(0).GetName());
    EXPECT_EQ(0, input.GetMaxDeviation() + input.GetDeviationIncrement() + input.GetItemSeparation()
                     + input.GetFrameWidth() + input.GetMaxRunTime() + input.GetMinRunTime());
    EXPECT_FALSE(input.IsSingleSidedMaterial() || input.IsGrain90Set() || input.IsGrain180Set()
                 || input.IsGrain270Set());
    EXPECT_EQ(ZORNestBaseFeature::AsListed, input.GetPackagingUsageRule());
    EXPECT_EQ(0, input.GetStackSize());
    EXPECT_EQ(1U, input.GetSeed());
    EXPECT_EQ(0, input.GetMaxSteps());
}

TEST(ZORNestNestingInputTest, AnInputKeepsWhatItIsGiven)
{
    ZORNestNestingInput input(QString(), 0, {}, {});
    input.SetMaxDeviation(0.1);
    input.SetDeviationIncrement(0.2);
    input.SetSingleSidedMaterial(true);
    input.SetGrain90(true);
    EXPECT_FALSE(input.IsGrain180Set() || input.IsGrain270Set());
    input.SetGrain180(true);
    EXPECT_FALSE(input.IsGrain270Set());
    input.SetGrain270(true);
    input.SetItemSeparation(3);
    input.SetFrameWidth(4);
    input.SetPackagingUsageRule(ZORNestBaseFeature::PackagingUsageRule(2));
    input.SetMaxRunTime(1e25);
    input.SetMinRunTime(1e21);
    input.SetStackSize(99);
    input.SetSeed(7);
    input.SetMaxSteps(8);
    EXPECT_EQ(0.1, input.GetMaxDeviation());
    EXPECT_EQ(0.2, input.GetDeviationIncrement());
    EXPECT_TRUE(input.IsSingleSidedMaterial());
    EXPECT_TRUE(input.IsGrain90Set() && input.IsGrain180Set() && input.IsGrain270Set());
    EXPECT_EQ(3, input.GetItemSeparation());
    EXPECT_EQ(4, input.GetFrameWidth());
    EXPECT_EQ(ZORNestBaseFeature::BestSize, input.GetPackagingUsageRule());
    EXPECT_EQ(1e25, input.GetMaxRunTime());
    EXPECT_EQ(1e21, input.GetMinRunTime());
    EXPECT_EQ(99, input.GetStackSize());
    EXPECT_EQ(7U, input.GetSeed());
    EXPECT_EQ(8, input.GetMaxSteps());
}

TEST(ZORNestNestingInputTest, TheRulesHaveTheirEstablishedNumbers)
{
    EXPECT_EQ(0, ZORNestBaseFeature::AsListed);
    EXPECT_EQ(1, ZORNestBaseFeature::BestMix);
    EXPECT_EQ(2, ZORNestBaseFeature::BestSize);
}

TEST(ZORNestNestingInputTest, CopiesAreIndependent)
{
    const ZORNestNestingInputItem item(QStringLiteral("rib"), "no result file");
    ExpectSharedValue(
        item, [](ZORNestNestingInputItem& changed) { changed.SetQuantity(3); },
        [](const ZORNestNestingInputItem& value) { return value.GetQuantity(); });
    const ZORNestNestingInputPackaging packaging(QStringLiteral("roll"), 1500, kRoll);
    ExpectSharedValue(
        packaging, [](ZORNestNestingInputPackaging& changed) { changed.SetCost(3); },
        [](const ZORNestNestingInputPackaging& value) { return value.GetCost(); });
    ExpectSharedValue(
        ZORNestNestingInput(QStringLiteral("carbon"), 0.2, {item}, {packaging}),
        [](ZORNestNestingInput& changed) { changed.SetSeed(7); },
        [](const ZORNestNestingInput& value) { return value.GetSeed(); });
    ExpectSharedValue(
        ZORNestTranslationInput(), [](ZORNestTranslationInput& changed) { changed.SetJoinTolerance(2); },
        [](const ZORNestTranslationInput& value) { return value.GetJoinTolerance(); });
    ExpectSharedValue(
        ZORNestVisOptions(), [](ZORNestVisOptions& changed) { changed.SetFilters(2); },
        [](const ZORNestVisOptions& value) { return value.GetFilters(); });
}

TEST(ZORNestNestingInputTest, ACopyOfAnInputSharesItsPartsAndTheirContents)
{
    const ZORNestNestingInputItem item(QStringLiteral("rib"), QByteArray(1000, 'x'));
    const ZORNestNestingInput input(QStringLiteral("carbon"), 0.2, {item}, {});
    ZORNestNestingInput copy = input;
    copy.SetStackSize(4);
    EXPECT_EQ(input.GetItems().constData(), copy.GetItems().constData());
    ZORNestNestingInputItem other = copy.GetItems().constFirst();
    other.SetPriority(1);
    EXPECT_EQ(item.GetContents().constData(), other.GetContents().constData());
}

TEST(ZORNestNestingInputTest, ARefusedToleranceLeavesTheInputAsItWas)
{
    ZORNestTranslationInput input;
    const ZORNestTranslationInput copy = input;
    EXPECT_THROW(input.SetCurveTolerance(0), ZORSysException);
    EXPECT_EQ(0.01, input.GetCurveTolerance());
    EXPECT_EQ(0.01, copy.GetCurveTolerance());
}

TEST(ZORNestNestingInputTest, ResultsMoveWithoutCopying)
{
    static_assert(
        std::is_nothrow_move_constructible_v<
            ZORNestResult> && std::is_nothrow_move_constructible_v<ZORNestResultItem> && std::is_nothrow_move_constructible_v<ZORNestResultShape> && std::is_nothrow_move_constructible_v<ZORNestInstance> && std::is_nothrow_move_constructible_v<ZORNestLayout>);
    ZORNestResult result;
    ZORNestResult moved = std::move(result);
    EXPECT_FALSE(moved.IsValid());
    result = moved; // NOLINT(bugprone-use-after-move): assigning is allowed
    EXPECT_FALSE(result.IsValid());
    EXPECT_EQ(sizeof(void*), sizeof(ZORNestDebugOptions));
    EXPECT_EQ(2 * sizeof(void*), sizeof(ZORNestResultReader))
        << "a table of virtual functions and private data";
}
