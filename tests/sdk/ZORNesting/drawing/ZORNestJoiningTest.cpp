// Tests of how curves become outlines, and outlines parts.

#include "sdk/ZORNesting/DxfText.h"
#include "sdk/ZORNesting/TranslationTest.h"

#include <algorithm>
#include <numbers>
#include <random>

namespace {

class ZORNestJoiningTest : public TranslationTest
{
protected:
    ZORNestJoiningTest()
        : TranslationTest("dxf")
    {
    }

    QStringList DescribeOnly(const QByteArray& entities)
    {
        const QList<ZORNestResult> results = Translate(Dxf(entities));
        EXPECT_EQ("", failure);
        EXPECT_EQ(1, results.size());
        return results.isEmpty() ? QStringList() : Describe(results.constFirst());
    }
};

QByteArray Triangle(double gap)
{
    return Line(0, 0, 4, 0) + Line(4, gap, 4, 3) + Line(4, 3, 0, 0);
}

TEST_F(ZORNestJoiningTest, GapsUpToTheToleranceAreClosed)
{
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 3) L(0 0)"), DescribeOnly(Triangle(0.0099)));
    EXPECT_TRUE(report.contains("closed: 1 gaps of up to 0.0099 mm"));
    input.SetJoinTolerance(0.25);
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 3) L(0 0)"), DescribeOnly(Triangle(0.25)));
    input.SetJoinTolerance(0.2499);
    EXPECT_TRUE(Translate(Dxf(Triangle(0.25))).isEmpty());
    EXPECT_EQ("no closed outline found: 1 curves have loose ends", failure);
}

TEST_F(ZORNestJoiningTest, ToleranceZeroJoinsEqualEnds)
{
    input.SetJoinTolerance(0);
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 3) L(0 0)"), DescribeOnly(Triangle(0)));
    EXPECT_TRUE(Translate(Dxf(Triangle(1e-9))).isEmpty());
}

TEST_F(ZORNestJoiningTest, GapBetweenArcsGetsALine)
{
    const QByteArray arcs =
        Lines("0|ARC|8|0|10|0|20|0|40|5|50|0|51|180|0|ARC|8|0|10|0|20|-0.01|40|5|50|180|51|0|");
    input.SetJoinTolerance(0.02);
    EXPECT_EQ(QStringList("outline (5 0) A+(-5 0 | 0 0) L(-5 -0.01) A+(5 -0.01 | 0 -0.01) L(5 0)"),
              DescribeOnly(arcs));
    EXPECT_TRUE(report.contains("closed: 2 gaps of up to 0.01 mm"));
}

TEST_F(ZORNestJoiningTest, GapBetweenLineAndArcMovesTheLine)
{
    const QByteArray arc = Lines("0|ARC|8|0|10|0|20|0|40|5|50|0|51|180|");
    EXPECT_EQ(QStringList("outline (5 0) A+(-5 0 | 0 0) L(5 0)"),
              DescribeOnly(arc + Line(-5, 0.005, 5, -0.005)));
}

TEST_F(ZORNestJoiningTest, NearestEndsAreJoinedFirst)
{
    input.SetJoinTolerance(0.5);
    // Three ends near (4, 0): the stray line starts farther off than the side of the triangle.
    const QList<ZORNestResult> results = Translate(Dxf(Line(4.3, 0, 9, 0) + Triangle(0.1)));
    ASSERT_EQ(1, results.size());
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 3) L(0 0)"), Describe(results[0]));
    EXPECT_TRUE(report.contains("left out: 1 curves and texts that lie on no part"));
}

TEST_F(ZORNestJoiningTest, EqualDistancesPreferTheSameLayer)
{
    const QList<ZORNestResult> results = Translate(Dxf(Line(0, 0, 4, 0, "cut") + Line(4, 0, 9, 0, "notes")
                                                       + Line(4, 0, 4, 3, "cut") + Line(4, 3, 0, 0, "cut")));
    ASSERT_EQ(1, results.size());
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 3) L(0 0)"), Describe(results[0]));
}

TEST_F(ZORNestJoiningTest, ExactCopiesCountOnce)
{
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 3) L(0 0)"),
              DescribeOnly(Triangle(0) + Line(4, 0, 0, 0) + Line(4, 3, 4, 0)));
    EXPECT_TRUE(report.contains("left out: 2 exact copies"));
    EXPECT_EQ(1, DescribeOnly(Square(0, 0, 4) + Square(0, 0, 4, Turning::Clockwise)).size());
    EXPECT_EQ(1, DescribeOnly(Circle(0, 0, 4) + Circle(0, 0, 4)).size());
}

TEST_F(ZORNestJoiningTest, TinyCurvesDoNotCloseOnThemselves)
{
    EXPECT_EQ(
        QStringList("outline (0 0) L(4 0) L(4 0.005) L(4 3) L(0 0)"),
        DescribeOnly(Line(0, 0, 4, 0) + Line(4, 0, 4, 0.005) + Line(4, 0.005, 4, 3) + Line(4, 3, 0, 0)));
}

TEST_F(ZORNestJoiningTest, ShuffledPiecesOfManyOutlinesFindTogether)
{
    std::mt19937 random(7);
    QList<QByteArray> lines;
    constexpr int kCount = 60;
    for (int i = 0; i < kCount; ++i) {
        const double x = 20 * (i % 10), y = 20 * (i / 10), size = 1 + i % 17;
        const double corners[][2] = {{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}};
        for (int k = 0; k < 4; ++k) {
            const double* a = corners[k];
            const double* b = corners[(k + 1) % 4];
            lines.append(random() % 2 ? Line(a[0], a[1], b[0], b[1]) : Line(b[0], b[1], a[0], a[1]));
        }
    }
    std::shuffle(lines.begin(), lines.end(), random);
    const QList<ZORNestResult> results = Translate(Dxf(lines.join()));
    ASSERT_EQ(kCount, results.size());
    double area = 0, expected = 0;
    for (int i = 0; i < kCount; ++i) {
        area += GetArea(results[i]);
        expected += (1 + i % 17) * (1 + i % 17);
    }
    EXPECT_NEAR(expected, area, 1e-9);
}

TEST_F(ZORNestJoiningTest, DeepNestingAlternatesBetweenPartsAndHoles)
{
    QByteArray entities;
    for (int i = 0; i < 9; ++i)
        entities += i % 2 ? Circle(0, 0, 10 + i) : Square(-10 - i, -10 - i, 20 + 2 * i);
    const QList<ZORNestResult> results = Translate(Dxf(entities));
    ASSERT_EQ(5, results.size());
    int holes = 0;
    for (const ZORNestResult& result : results)
        holes += int(GetItem(result).GetShapes().size()) - 1;
    EXPECT_EQ(4, holes);
}

TEST_F(ZORNestJoiningTest, HolesThatTouchTheirOutlineAreHoles)
{
    const QList<ZORNestResult> results = Translate(Dxf(Square(0, 0, 10) + Square(0, 2, 3) + Circle(5, 8, 2)));
    ASSERT_EQ(1, results.size());
    EXPECT_NEAR(100 - 9 - 4 * std::numbers::pi, GetArea(results[0]), 1e-12);
}

TEST_F(ZORNestJoiningTest, OpenCurvesLieOnThePartAroundThemNotInItsHoles)
{
    const QList<ZORNestResult> results = Translate(
        Dxf(Square(0, 0, 10) + Square(5, 5, 4) + Line(1, 1, 2, 1) + Line(6, 6, 7, 6) + Line(20, 20, 30, 20)));
    ASSERT_EQ(1, results.size());
    EXPECT_EQ("mark (1 1) L(2 1)", Describe(results[0]).constLast());
    EXPECT_EQ(3, Describe(results[0]).size());
    EXPECT_TRUE(report.contains("left out: 2 curves and texts that lie on no part"));
}

TEST_F(ZORNestJoiningTest, FarFromTheOriginNothingIsLost)
{
    const QList<ZORNestResult> results = Translate(Dxf(Square(5e8, -5e8, 4) + Square(5e8 + 1, -5e8 + 1, 2)));
    ASSERT_EQ(1, results.size());
    EXPECT_NEAR(12, GetArea(results[0]), 1e-6);
    Translate(Dxf(Square(2e9, 0, 1)));
    EXPECT_EQ("no closed outline found", failure);
    EXPECT_TRUE(report.contains("skipped: LWPOLYLINE (1 times)"));
}

} // namespace
