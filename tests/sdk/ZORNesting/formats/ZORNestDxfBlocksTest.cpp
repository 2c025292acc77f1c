// Tests of blocks, layers and colors of the provider "dxf".

#include "DxfTest.h"
#include "sdk/ZORNesting/DxfText.h"

#include <QColor>

#include <cmath>

namespace {

using ZORNestDxfBlocksTest = DxfTest;

TEST_F(ZORNestDxfBlocksTest, BlocksAreScaledTurnedMirroredAndRepeated)
{
    const QByteArray blocks =
        Block("SLOT", 1, 1, Lines("0|LWPOLYLINE|8|0|70|1|10|1|20|1|10|3|20|1|42|1|10|3|20|2|10|1|20|2|"));
    EXPECT_EQ(QStringList("outline (10 20) L(10 24) A+(8 24 | 9 24) L(8 20) L(10 20)"),
              DescribeOnly(Dxf(Lines("0|INSERT|2|slot|8|0|10|10|20|20|41|2|42|2|50|90|"), blocks)));
    EXPECT_EQ(QStringList("outline (0 0) L(0 1) L(-2 1) A+(-2 0 | -2 0.5) L(0 0)"),
              DescribeOnly(Dxf(Lines("0|INSERT|2|SLOT|8|0|10|0|20|0|41|-1|"), blocks)));
    const QList<ZORNestResult> results =
        Translate(Dxf(Lines("0|INSERT|2|SLOT|8|0|10|0|20|0|50|90|70|3|71|2|44|10|45|20|"), blocks));
    ASSERT_EQ(6, results.size());
    EXPECT_EQ("outline (0 0) L(0 2) A+(-1 2 | -0.5 2) L(-1 0) L(0 0)", Describe(results[0]).at(0));
    EXPECT_EQ("outline (-20 20) L(-20 22) A+(-21 22 | -20.5 22) L(-21 20) L(-20 20)",
              Describe(results[5]).at(0));
}

TEST_F(ZORNestDxfBlocksTest, MirroredTextsAreReadableAndLieWhereTheirImageLies)
{
    const auto textOf = [this](const QByteArray& justification, const QByteArray& scale) {
        const QByteArray text = Lines("0|TEXT|8|0|10|2|20|3|11|2|21|3|40|1|1|RIB|") + Lines(justification);
        const QList<ZORNestResult> results =
            Translate(Dxf(Lines("0|INSERT|2|PART|8|0|10|0|20|0|") + Lines(scale),
                          Block("PART", 0, 0, Square(0, 0, 10) + text)));
        EXPECT_EQ(1, results.size());
        return GetShape(results.value(0), 1).GetSegments().constFirst();
    };
    const ZORNestResultSegment left = textOf("72|0|", "41|-1|");
    EXPECT_EQ(ZORMathPoint(-2, 3, 0), left.GetStartPoint());
    EXPECT_NEAR(0, std::remainder(left.GetTextAngle(), 2 * kPi), 1e-12);
    EXPECT_EQ(ZORNestResultSegment::BaselineRight, left.GetTextJustification());
    EXPECT_EQ(ZORNestResultSegment::BaselineCenter, textOf("72|1|", "41|-1|").GetTextJustification());
    EXPECT_EQ(ZORNestResultSegment::MiddleLeft, textOf("72|2|73|2|", "41|-1|").GetTextJustification());
    const ZORNestResultSegment below = textOf("72|0|73|3|", "42|-1|");
    EXPECT_EQ(ZORMathPoint(2, -3, 0), below.GetStartPoint());
    EXPECT_NEAR(0, std::remainder(below.GetTextAngle() - kPi, 2 * kPi), 1e-12);
    EXPECT_EQ(ZORNestResultSegment::TopRight, below.GetTextJustification());
    const ZORNestResultSegment both = textOf("72|0|", "41|-1|42|-1|");
    EXPECT_NEAR(0, std::remainder(both.GetTextAngle() - kPi, 2 * kPi), 1e-12);
    EXPECT_EQ(ZORNestResultSegment::BaselineLeft, both.GetTextJustification());
}

TEST_F(ZORNestDxfBlocksTest, UnevenlyScaledCirclesAreEllipses)
{
    const QByteArray blocks = Block("DOT", 0, 0, Circle(0, 0, 2));
    EXPECT_NEAR(kPi * 2 * 6, GetOnlyArea(Dxf(Lines("0|INSERT|2|DOT|8|0|42|3|50|30|"), blocks)), 0.2);
}

TEST_F(ZORNestDxfBlocksTest, BlocksLieInBlocks)
{
    const QByteArray blocks = Block("INNER", 0, 0, Square(0, 0, 1))
                              + Block("OUTER", 0, 0, Lines("0|INSERT|2|INNER|8|0|10|5|20|0|41|2|42|2|"));
    EXPECT_EQ(QStringList("outline (15 0) L(21 0) L(21 6) L(15 6) L(15 0)"),
              DescribeOnly(Dxf(Lines("0|INSERT|2|OUTER|8|0|41|3|42|3|"), blocks)));
}

TEST_F(ZORNestDxfBlocksTest, BlockInItselfFails)
{
    const QByteArray blocks = Block("A", 0, 0, Lines("0|INSERT|2|A|8|0|"));
    Translate(Dxf(Lines("0|INSERT|2|A|8|0|"), blocks));
    EXPECT_EQ("blocks lie in each other more than 32 deep", failure);
}

TEST_F(ZORNestDxfBlocksTest, MissingBlocksAndUnknownEntitiesAreReported)
{
    DescribeOnly(Dxf(Square(0, 0, 1) + Lines("0|INSERT|2|NONE|8|0|0|HATCH|8|0|0|HATCH|8|0|0|POINT|8|0|")));
    EXPECT_TRUE(report.contains("skipped: HATCH (2 times)"));
    EXPECT_TRUE(report.contains("skipped: INSERT of the missing block 'NONE' (1 times)"));
    EXPECT_TRUE(report.contains("skipped: POINT (1 times)"));
}

TEST_F(ZORNestDxfBlocksTest, ColorsComeFromEntityLayerAndBlock)
{
    const QByteArray tables = Lines(
        "0|SECTION|2|TABLES|0|TABLE|2|LAYER|0|LAYER|2|Cut|70|0|62|5|0|LAYER|2|True|70|0|62|1|420|1193046|"
        "0|ENDTAB|0|ENDSEC|");
    const QByteArray blocks =
        Block("B", 0, 0, Lines("0|CIRCLE|8|0|62|0|10|5|20|2|40|1|0|CIRCLE|8|0|10|5|20|5|40|1|"));
    const QByteArray entities = Lines("0|LWPOLYLINE|8|CUT|70|1|10|0|20|0|10|10|20|0|10|10|20|10|10|0|20|10|"
                                      "0|CIRCLE|8|True|10|2|20|2|40|1|0|CIRCLE|8|Cut|62|30|10|2|20|5|40|1|"
                                      "0|CIRCLE|8|Cut|420|255|10|2|20|8|40|1|0|INSERT|2|B|8|Cut|62|3|");
    const QList<ZORNestResult> results = Translate(Dxf(entities, blocks, QByteArray(), tables));
    ASSERT_EQ(1, results.size());
    QStringList colors;
    for (const ZORNestResultShape* shape : GetItem(results[0]).GetShapes())
        colors.append(shape->GetSegments().constFirst().GetColor().name());
    EXPECT_EQ(QStringList({"#0000ff", "#123456", "#ff7f00", "#0000ff", "#00ff00", "#0000ff"}), colors);
}

TEST_F(ZORNestDxfBlocksTest, LayersWithKnownNamesAreNoOutlines)
{
    const QByteArray entities =
        Square(0, 0, 10) + Lines("0|CIRCLE|8|Etching_Data|10|5|20|5|40|1|")
        + Lines("0|LINE|8|GRAIN|10|1|20|1|11|2|21|1|0|LINE|8|notes|10|3|20|1|11|4|21|1|");
    const QList<ZORNestResult> results = Translate(Dxf(entities));
    ASSERT_EQ(1, results.size());
    EXPECT_EQ(QStringList({"outline (0 0) L(10 0) L(10 10) L(0 10) L(0 0)", "mark (1 1) L(2 1)",
                           "mark (3 1) L(4 1)", "mark (6 5) A+(6 5 | 5 5)"}),
              Describe(results[0]));
    EXPECT_EQ(ZORNestResultSegment::Nest, GetShape(results[0], 0).GetSegments()[0].GetLayer());
    EXPECT_EQ(ZORNestResultSegment::Grain, GetShape(results[0], 1).GetSegments()[0].GetLayer());
    EXPECT_EQ(ZORNestResultSegment::EtchingData, GetShape(results[0], 2).GetSegments()[0].GetLayer());
    EXPECT_EQ(ZORNestResultSegment::EtchingData, GetShape(results[0], 3).GetSegments()[0].GetLayer());
}

TEST_F(ZORNestDxfBlocksTest, HiddenThingsAreLeftOut)
{
    const QByteArray tables =
        Lines("0|SECTION|2|TABLES|0|LAYER|2|OFF|70|0|62|-5|0|LAYER|2|COLD|70|1|62|5|0|ENDSEC|");
    const QByteArray entities = Square(0, 0, 10)
                                + Lines("0|CIRCLE|8|off|10|5|20|5|40|1|0|CIRCLE|8|Cold|10|5|20|5|40|1|")
                                + Lines("0|CIRCLE|8|0|60|1|10|5|20|5|40|1|0|CIRCLE|8|0|67|1|10|5|20|5|40|1|");
    EXPECT_EQ(1, DescribeOnly(Dxf(entities, QByteArray(), QByteArray(), tables)).size());
    EXPECT_TRUE(report.contains("skipped: CIRCLE on hidden layer 'off' (1 times)"));
    EXPECT_TRUE(report.contains("skipped: CIRCLE on hidden layer 'Cold' (1 times)"));
    EXPECT_TRUE(report.contains("skipped: invisible CIRCLE (1 times)"));
}

TEST_F(ZORNestDxfBlocksTest, PercentSignsInNamesReachTheReport)
{
    const QByteArray tables = Lines("0|SECTION|2|TABLES|0|LAYER|2|a%1b%2|70|0|62|-5|0|ENDSEC|");
    const QByteArray entities = Square(0, 0, 10) + Lines("0|CIRCLE|8|a%1b%2|10|5|20|5|40|1|");
    EXPECT_EQ(1, DescribeOnly(Dxf(entities, QByteArray(), QByteArray(), tables)).size());
    EXPECT_TRUE(report.contains("skipped: CIRCLE on hidden layer 'a%1b%2' (1 times)"));
}

} // namespace
