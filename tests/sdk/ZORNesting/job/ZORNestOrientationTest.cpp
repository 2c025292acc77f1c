// Tests of the angles and hands at which nesting jobs lay parts.

#include "NestingRunTest.h"

namespace {

using ZORNestOrientationTest = NestingRunTest;

TEST_F(ZORNestOrientationTest, PartsLieAlongTheGrainOnly)
{
    ZORNestNestingInputItem item = MakeItem("w", MakeWedge(), 8);
    EXPECT_EQ(QList<int>({0}), GetDegrees(Nest(MakeJob({item}, {MakeSheets("r", 40, kRoll)}))));
    item.SetOrientation(std::numbers::pi / 6);
    EXPECT_EQ(QList<int>({30}), GetDegrees(Nest(MakeJob({item}, {MakeSheets("r", 40, kRoll)}))));
}

TEST_F(ZORNestOrientationTest, GrainFlagsOfPartAndJobAllowTurns)
{
    ZORNestNestingInputItem item = MakeItem("w", MakeWedge(), 8);
    item.SetGrain180(true);
    const QList<ZORNestNestingInputPackaging> rolls = {MakeSheets("r", 40, kRoll)};
    EXPECT_EQ(QList<int>({0, 180}), GetDegrees(Nest(MakeJob({item}, rolls))));

    ZORNestNestingInput input = MakeJob({MakeItem("w", MakeWedge(), 8)}, {MakeSheets("r", 25, kRoll)});
    input.SetGrain90(true);
    input.SetGrain270(true);
    const Response* const turned = Nest(input);
    EXPECT_EQ(8, GetNames(turned).size());
    for (const int degrees : GetDegrees(turned))
        EXPECT_TRUE(degrees == 0 || degrees == 90 || degrees == 270) << degrees;
}

TEST_F(ZORNestOrientationTest, EachGrainFlagOfPartAndJobAllowsItsOwnTurn)
{
    // Longer than the roll is wide: fits across only.
    const ZORNestNestingInputItem plain =
        MakeItem("bar", MakePart({ZORNestResultShape(MakeRectangle(5, 30))}), 2);
    const QList<ZORNestNestingInputPackaging> rolls = {MakeSheets("r", 10, kRoll)};
    EXPECT_TRUE(Nest(MakeJob({plain}, rolls))->GetSheetFiles().isEmpty());
    for (const int degrees : {90, 180, 270}) {
        ZORNestNestingInputItem item = plain;
        ZORNestNestingInput input = MakeJob({plain}, rolls);
        if (degrees == 90) {
            item.SetGrain90(true);
            input.SetGrain90(true);
        } else if (degrees == 180) {
            item.SetGrain180(true);
            input.SetGrain180(true);
        } else {
            item.SetGrain270(true);
            input.SetGrain270(true);
        }
        for (const Response* response : {Nest(MakeJob({item}, rolls)), Nest(input)}) {
            EXPECT_EQ(degrees == 180 ? 0 : 2, GetNames(response).size()) << degrees;
            EXPECT_EQ(degrees == 180 ? QList<int>() : QList<int>({degrees}), GetDegrees(response));
        }
    }
}

TEST_F(ZORNestOrientationTest, DeviationsTurnPartsByWholeIncrementsOrFreely)
{
    const double degree = std::numbers::pi / 180;
    // Too long for the sheet unless turned by 6 degrees.
    const QByteArray bar = MakePart({ZORNestResultShape(MakeRectangle(100, 1))});
    const QList<ZORNestNestingInputPackaging> sheets = {MakeSheets("s", 30, 99.5)};
    ZORNestNestingInputItem item = MakeItem("bar", bar);
    EXPECT_TRUE(Nest(MakeJob({item}, sheets))->GetSheetFiles().isEmpty());

    ZORNestNestingInput input = MakeJob({item}, sheets);
    input.SetMaxDeviation(12 * degree);
    input.SetDeviationIncrement(4 * degree);
    const QList<int> found = GetDegrees(Nest(input));
    ASSERT_EQ(1, found.size());
    EXPECT_TRUE(QList<int>({8, 12, 348, 352}).contains(found[0])) << found[0];

    item.SetMaxDeviation(3 * degree); // its own holds, and is too small
    input = MakeJob({item}, sheets);
    input.SetMaxDeviation(12 * degree);
    input.SetDeviationIncrement(3 * degree);
    EXPECT_TRUE(Nest(input)->GetSheetFiles().isEmpty());
}

TEST_F(ZORNestOrientationTest, HandsAreThoseThatAreWanted)
{
    ZORNestNestingInputItem item = MakeItem("w", MakeWedge(), 6);
    const QList<ZORNestNestingInputPackaging> rolls = {MakeSheets("r", 32, kRoll)};
    const Response* const drawn = Nest(MakeJob({item}, rolls));
    EXPECT_EQ(6, GetNames(drawn).size());
    EXPECT_EQ(0, CountMirrored(drawn));
    item.SetMirrored(true);
    EXPECT_EQ(6, CountMirrored(Nest(MakeJob({item}, rolls))));
    item.SetFlippable(true);
    ZORNestNestingInput input = MakeJob({item}, rolls);
    input.SetSingleSidedMaterial(true);
    EXPECT_EQ(6, CountMirrored(Nest(input)));
}

TEST_F(ZORNestOrientationTest, FlippablePartsUseBothHands)
{
    // Each has a side as long as two thirds of the sheet's width on the left, or mirrored on the right: two of one hand
    // do not fit on the sheet, one of each do.
    const QByteArray part = MakePart({ZORNestResultShape(MakeRing({{0, 0, 0}, {20, 10, 0}, {0, 20, 0}}))});
    for (const bool isMirrored : {false, true}) {
        for (const bool isFlippable : {false, true}) {
            for (const bool isSingleSided : {false, true}) {
                ZORNestNestingInputItem item = MakeItem("w", part, 2);
                item.SetMirrored(isMirrored);
                item.SetFlippable(isFlippable);
                ZORNestNestingInput input = MakeJob({item}, {MakeSheets("s", 30.5, 20.5)});
                input.SetSingleSidedMaterial(isSingleSided);
                input.SetMaxSteps(2000);
                const Response* const response = Nest(input);
                const bool areBothUsed = isFlippable && !isSingleSided;
                EXPECT_EQ(areBothUsed ? 2 : 1, GetNames(response).size());
                EXPECT_EQ(areBothUsed || isMirrored ? 1 : 0, CountMirrored(response));
                EXPECT_EQ(QList<int>({0}), GetDegrees(response));
            }
        }
    }
}

} // namespace
