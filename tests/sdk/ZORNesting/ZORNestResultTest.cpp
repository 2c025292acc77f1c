// Tests of ZORNestResult and ZORNestResultItem.

#include "support/Printers.h"

#include <ZORNesting/ZORNestResult.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace {

ZORNestResultShape Mark(double x)
{
    return ZORNestResultShape({ZORNestResultSegment::CreateLine({x, 0, 0}, {x + 1, 0, 0})});
}

ZORNestResultItem Part()
{
    ZORNestResultItem item(QStringLiteral("Rib \u2116 1"));
    item.SetPartName(QStringLiteral("Rib"));
    item.SetAssemblyName(QStringLiteral("Wing"));
    item.SetSubassemblyName(QStringLiteral("Box"));
    item.SetJobName(QStringLiteral("J-7"));
    item.SetComment(QStringLiteral("two\nlines"));
    item.SetPosition({1, 2, 3});
    item.SetOrientation(0.25);
    item.SetMirrored(true);
    item.AddShape(Mark(0));
    item.AddShape(Mark(5));
    return item;
}

TEST(ZORNestResultTest, ItemStartsAtTheOriginWithoutShapes)
{
    const ZORNestResultItem item;
    EXPECT_EQ(QString(), item.GetName());
    EXPECT_EQ(ZORMathPoint(), item.GetPosition());
    EXPECT_EQ(0, item.GetOrientation());
    EXPECT_FALSE(item.IsMirrored());
    EXPECT_TRUE(item.GetShapes().isEmpty());
}

TEST(ZORNestResultTest, ItemKeepsItsTextsAndPose)
{
    const ZORNestResultItem item = Part();
    EXPECT_EQ(QStringLiteral("Rib \u2116 1"), item.GetName());
    EXPECT_EQ(QStringLiteral("Rib"), item.GetPartName());
    EXPECT_EQ(QStringLiteral("Wing"), item.GetAssemblyName());
    EXPECT_EQ(QStringLiteral("Box"), item.GetSubassemblyName());
    EXPECT_EQ(QStringLiteral("J-7"), item.GetJobName());
    EXPECT_EQ(QStringLiteral("two\nlines"), item.GetComment());
    EXPECT_EQ(ZORMathPoint(1, 2, 3), item.GetPosition());
    EXPECT_EQ(0.25, item.GetOrientation());
    EXPECT_TRUE(item.IsMirrored());
    ASSERT_EQ(2, item.GetShapes().size());
    EXPECT_TRUE(*item.GetShapes().at(1) == Mark(5));
}

TEST(ZORNestResultTest, ItemRefusesNumbersThatAreNotFinite)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    ZORNestResultItem item = Part();
    EXPECT_THROW(item.SetPosition({0, nan, 0}), ZORSysException);
    EXPECT_THROW(item.SetOrientation(nan), ZORSysException);
    EXPECT_TRUE(item == Part());
}

TEST(ZORNestResultTest, DefaultResultIsInvalidAndEmpty)
{
    const ZORNestResult result;
    EXPECT_FALSE(result.IsValid());
    EXPECT_EQ(ZORNestResult::Nesting, result.GetResultType());
    EXPECT_TRUE(result.GetItems().isEmpty());
    EXPECT_TRUE(result.GetSheet().IsEmpty());
}

TEST(ZORNestResultTest, ResultKeepsEveryType)
{
    for (const int type : {0, 1, 2, -7}) {
        const ZORNestResult result{ZORNestResult::ResultType(type)};
        EXPECT_TRUE(result.IsValid());
        EXPECT_EQ(type, result.GetResultType());
    }
}

TEST(ZORNestResultTest, AResultIsOneSheetUnlessItIsAStack)
{
    EXPECT_EQ(1, ZORNestResult().GetStackSize());
    ZORNestResult result(ZORNestResult::Nesting);
    EXPECT_EQ(1, result.GetStackSize());
    const ZORNestResult copy = result;
    for (const int count : {1, 2, 99, std::numeric_limits<int>::max()}) {
        result.SetStackSize(count);
        EXPECT_EQ(count, result.GetStackSize());
        EXPECT_EQ(count == 1, result == copy);
    }
    EXPECT_EQ(1, copy.GetStackSize());
}

TEST(ZORNestResultTest, AStackWithoutSheetsIsRefused)
{
    ZORNestResult result(ZORNestResult::Nesting);
    result.SetStackSize(4);
    for (const int count : {0, -1, std::numeric_limits<int>::min()}) {
        try {
            result.SetStackSize(count);
            ADD_FAILURE() << count;
        } catch (const ZORSysException& exception) {
            EXPECT_EQ("a stack needs at least one sheet", exception.GetMessage());
        }
        EXPECT_EQ(4, result.GetStackSize());
    }
}

TEST(ZORNestResultTest, PointersStayTheSameInCopies)
{
    std::optional<ZORNestResult> result(ZORNestResult::Translation);
    result->AddItem(Part());
    const ZORNestResultItem* const item = result->GetItems().constFirst();
    const ZORNestResultShape* const shape = item->GetShapes().at(1);

    ZORNestResult copy = *result;
    copy.AddItem(Part());
    EXPECT_EQ(1, result->GetItems().size());
    ASSERT_EQ(2, copy.GetItems().size());
    EXPECT_EQ(item, copy.GetItems().constFirst());
    result.reset();
    EXPECT_EQ(1, copy.GetItems().constFirst()->GetShapes().indexOf(shape));
    EXPECT_TRUE(*shape == Mark(5));
}

TEST(ZORNestResultTest, EqualContentIsEqual)
{
    ZORNestResult a(ZORNestResult::Nesting);
    a.AddItem(Part());
    ZORNestResult b(ZORNestResult::Nesting);
    b.AddItem(Part());
    EXPECT_TRUE(a == b);
    b.SetSheet({{0, 0, 0}, {1000, 500, 0}});
    EXPECT_FALSE(a == b);
    a.SetSheet(b.GetSheet());
    EXPECT_TRUE(a == b);
    ZORNestResultItem other = Part();
    other.AddShape(Mark(9));
    a.AddItem(Part());
    b.AddItem(other);
    EXPECT_FALSE(a == b);
}

} // namespace
