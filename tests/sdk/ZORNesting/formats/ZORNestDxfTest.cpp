// Tests of the provider "dxf".

#include "DxfTest.h"
#include "sdk/ZORNesting/DxfText.h"

#include <QColor>

#include <cmath>

namespace {

using ZORNestDxfTest = DxfTest;

TEST_F(ZORNestDxfTest, LinesMakeAnOutline)
{
    const QByteArray content = Dxf(Line(0, 0, 4, 0) + Line(4, 3, 4, 0) + Line(4, 3, 0, 0));
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 3) L(0 0)"), DescribeOnly(content));
    EXPECT_EQ("drawing", GetItem(Translate(content).constFirst()).GetName());
    EXPECT_EQ(QStringList("units: 1 mm"), report);
}

TEST_F(ZORNestDxfTest, ByteOrderMarkBeforeTheTextIsNoPartOfIt)
{
    EXPECT_EQ(100, GetOnlyArea("\xEF\xBB\xBF" + Dxf(Square(0, 0, 10, Turning::Clockwise))));
}

TEST_F(ZORNestDxfTest, OutlinesRunCounterClockwiseAndHolesClockwise)
{
    const QByteArray content = Dxf(Square(0, 0, 10, Turning::Clockwise) + Square(1, 1, 2) + Circle(7, 7, 1));
    EXPECT_EQ(QStringList({"outline (0 0) L(10 0) L(10 10) L(0 10) L(0 0)",
                           "hole (1 1) L(1 3) L(3 3) L(3 1) L(1 1)", "hole (8 7) A-(8 7 | 7 7)"}),
              DescribeOnly(content));
    EXPECT_NEAR(100 - 4 - kPi, GetOnlyArea(content), 1e-12);
}

TEST_F(ZORNestDxfTest, IslandInAHoleIsAPartOfItsOwn)
{
    const QList<ZORNestResult> results = Translate(Dxf(Square(2, 2, 2) + Square(0, 0, 10) + Square(1, 1, 5)));
    ASSERT_EQ(2, results.size());
    EXPECT_EQ("drawing-1", GetItem(results[0]).GetName());
    EXPECT_EQ(4, GetArea(results[0]));
    EXPECT_EQ("drawing-2", GetItem(results[1]).GetName());
    EXPECT_EQ(75, GetArea(results[1]));
}

TEST_F(ZORNestDxfTest, ArcsStayArcs)
{
    const QByteArray arc = Lines("0|ARC|8|0|10|0|20|0|40|5|50|0|51|180|");
    EXPECT_EQ(QStringList("outline (5 0) A+(-5 0 | 0 0) L(5 0)"), DescribeOnly(Dxf(arc + Line(-5, 0, 5, 0))));
    EXPECT_NEAR(12.5 * kPi, GetOnlyArea(Dxf(arc + Line(-5, 0, 5, 0))), 1e-12);
    EXPECT_EQ(QStringList("units: 1 mm"), report) << "ends that differ by rounding are no gap";
    // Across the zero angle.
    const QByteArray across = Lines("0|ARC|8|0|10|0|20|0|40|5|50|270|51|90|");
    EXPECT_EQ(QStringList("outline (0 -5) A+(0 5 | 0 0) L(0 -5)"),
              DescribeOnly(Dxf(across + Line(0, 5, 0, -5))));
}

TEST_F(ZORNestDxfTest, CircleIsOneArc)
{
    EXPECT_EQ(QStringList("outline (5 2) A+(5 2 | 2 2)"), DescribeOnly(Dxf(Circle(2, 2, 3))));
    EXPECT_NEAR(9 * kPi, GetOnlyArea(Dxf(Circle(2, 2, 3))), 1e-12);
}

TEST_F(ZORNestDxfTest, EllipseIsASplineOfArcsWithinTheTolerance)
{
    const QByteArray ellipse =
        Lines("0|ELLIPSE|8|0|10|1|20|2|30|0|11|30|21|40|31|0|40|0.4|41|0|42|6.283185307179586|");
    for (const double tolerance : {1.0, 0.01, 0.0001}) {
        input.SetCurveTolerance(tolerance);
        const QList<ZORNestResult> results = Translate(Dxf(ellipse));
        ASSERT_EQ(1, results.size());
        const QList<ZORNestResultSegment> segments = GetShape(results[0]).GetSegments();
        ASSERT_EQ(1, segments.size());
        ASSERT_EQ(ZORNestResultSegment::Spline, segments[0].GetType());
        EXPECT_NEAR(kPi * 50 * 20, GetArea(results[0]), 250 * tolerance);
        for (const ZORMathPoint& point : segments[0].GetPoints(tolerance / 10)) {
            const double x = point.GetX() - 1, y = point.GetY() - 2;
            const double along = (0.6 * x + 0.8 * y) / 50, across = (0.6 * y - 0.8 * x) / 20;
            // Distance to the ellipse, to first order: value of the implicit function over its gradient.
            const double value = along * along + across * across - 1;
            ASSERT_LT(std::abs(value) / (2 * std::hypot(along / 50, across / 20)), 1.3 * tolerance);
        }
    }
}

TEST_F(ZORNestDxfTest, PartOfAnEllipseHasItsEnds)
{
    const QByteArray half = Lines("0|ELLIPSE|8|0|10|0|20|0|11|4|21|0|40|0.5|41|0|42|3.141592653589793|");
    EXPECT_NEAR(4 * kPi, GetOnlyArea(Dxf(half + Line(-4, 0, 4, 0))), 0.1);
    const QByteArray round = Lines("0|ELLIPSE|8|0|10|0|20|0|11|4|21|0|40|1|41|0|42|3.141592653589793|");
    EXPECT_EQ(QStringList("outline (4 0) A+(-4 0 | 0 0) L(4 0)"),
              DescribeOnly(Dxf(round + Line(-4, 0, 4, 0))));
}

TEST_F(ZORNestDxfTest, LwPolylineHasBulges)
{
    const QByteArray slot =
        Lines("0|LWPOLYLINE|8|0|90|4|70|1|10|0|20|0|10|10|20|0|42|1|10|10|20|4|10|0|20|4|42|1|");
    EXPECT_EQ(QStringList("outline (0 0) L(10 0) A+(10 4 | 10 2) L(0 4) A+(0 0 | 0 2)"),
              DescribeOnly(Dxf(slot)));
    EXPECT_NEAR(40 + 4 * kPi, GetOnlyArea(Dxf(slot)), 1e-12);
    const QByteArray inward = Lines("0|LWPOLYLINE|8|0|90|2|70|1|10|0|20|0|42|-0.5|10|8|20|0|42|2|");
    EXPECT_EQ(QStringList("outline (0 0) A-(8 0 | 4 -3) A+(0 0 | 4 3)"), DescribeOnly(Dxf(inward)));
}

TEST_F(ZORNestDxfTest, PolylineReadsItsVertices)
{
    const QByteArray polyline = Lines("0|POLYLINE|8|0|66|1|70|1|"
                                      "0|VERTEX|8|0|10|0|20|0|0|VERTEX|8|0|10|6|20|0|42|1|"
                                      "0|VERTEX|8|0|10|99|20|99|70|16|"
                                      "0|VERTEX|8|0|10|6|20|2|0|VERTEX|8|0|10|0|20|2|0|SEQEND|8|0|");
    EXPECT_EQ(QStringList("outline (0 0) L(6 0) A+(6 2 | 6 1) L(0 2) L(0 0)"), DescribeOnly(Dxf(polyline)));
    const QByteArray mesh = Lines("0|POLYLINE|8|0|66|1|70|64|0|VERTEX|8|0|10|0|20|0|0|SEQEND|8|0|");
    DescribeOnly(Dxf(polyline + mesh));
    EXPECT_TRUE(report.contains("skipped: POLYLINE that is a mesh (1 times)"));
}

TEST_F(ZORNestDxfTest, RationalSplineFollowsItsCircle)
{
    const QByteArray quarter = Lines("0|SPLINE|8|0|70|4|71|2|72|6|73|3|40|0|40|0|40|0|40|1|40|1|40|1|"
                                     "41|1|41|0.7071067811865476|41|1|10|10|20|0|10|10|20|10|10|0|20|10|");
    EXPECT_NEAR(25 * kPi, GetOnlyArea(Dxf(quarter + Line(0, 10, 0, 0) + Line(0, 0, 10, 0))), 0.05);
}

TEST_F(ZORNestDxfTest, SplineOfDegreeThreeWithKinksAndDegreeOne)
{
    const QByteArray straight =
        Lines("0|SPLINE|8|0|71|1|40|0|40|0|40|1|40|2|40|2|10|0|20|0|10|4|20|0|10|4|20|4|");
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 4) L(0 0)"),
              DescribeOnly(Dxf(straight + Line(4, 4, 0, 0))));
    // Two cubics with a corner between them: area by the closed form of each.
    const QByteArray kinked =
        Lines("0|SPLINE|8|0|71|3|40|0|40|0|40|0|40|0|40|1|40|1|40|1|40|2|40|2|40|2|40|2|"
              "10|0|20|0|10|0|20|6|10|6|20|6|10|6|20|0|10|6|20|6|10|12|20|6|10|12|20|0|");
    EXPECT_NEAR(2 * 0.6 * 36, GetOnlyArea(Dxf(kinked + Line(12, 0, 0, 0))), 0.2);
}

TEST_F(ZORNestDxfTest, FaultySplinesAreSkipped)
{
    const QByteArray counts = Lines("0|SPLINE|8|0|71|3|40|0|40|1|10|0|20|0|10|4|20|0|");
    const QByteArray falling = Lines("0|SPLINE|8|0|71|1|40|0|40|3|40|1|40|2|10|0|20|0|10|4|20|0|");
    const QByteArray fit = Lines("0|SPLINE|8|0|71|3|74|2|11|0|21|0|11|4|21|0|");
    DescribeOnly(Dxf(Square(0, 0, 1) + counts + falling + fit));
    EXPECT_TRUE(report.contains("skipped: SPLINE (2 times)"));
    EXPECT_TRUE(report.contains("skipped: SPLINE without control points (1 times)"));
    for (const int degree : {25, 60}) {
        QByteArray spline = "0|SPLINE|8|0|71|" + QByteArray::number(degree) + "|";
        for (int i = 0; i <= degree; ++i)
            spline += "40|0|10|" + QByteArray::number(i % 7) + "|20|" + QByteArray::number(i % 3) + "|";
        spline += QByteArray("40|1|").repeated(degree + 1);
        Translate(Dxf(Square(0, 0, 50) + Lines(spline)));
        EXPECT_TRUE(report.contains("skipped: SPLINE of a degree above 15 (1 times)"))
            << report.join('\n').toStdString();
    }
}

TEST_F(ZORNestDxfTest, TextsLieOnTheirPart)
{
    const QByteArray text =
        Lines("0|TEXT|8|0|10|1|20|2|40|3|1|50%%d \\U+00e4|50|90|41|0.8|51|15|7|ROMANS|72|4|11|5|21|6|");
    const QByteArray paragraphs = Lines("0|MTEXT|8|0|10|7|20|8|40|2|71|5|3|{\\fArial;one}\\P|1|t\\S1^2;\\~o|"
                                        "50|30|0|TEXT|10|50|20|50|40|1|1|outside|");
    const QList<ZORNestResult> results = Translate(Dxf(Square(0, 0, 10) + text + paragraphs));
    ASSERT_EQ(1, results.size());
    ASSERT_EQ(2, GetItem(results[0]).GetShapes().size());
    const QList<ZORNestResultSegment> segments = GetShape(results[0], 1).GetSegments();
    ASSERT_EQ(2, segments.size());
    EXPECT_EQ(QString::fromUtf8("50° ä"), segments[0].GetText());
    EXPECT_EQ(ZORMathPoint(5, 6, 0), segments[0].GetStartPoint());
    EXPECT_EQ(3, segments[0].GetTextHeight());
    EXPECT_NEAR(kPi / 2, segments[0].GetTextAngle(), 1e-12);
    EXPECT_NEAR(0.8, segments[0].GetTextWidth(), 1e-12);
    EXPECT_NEAR(kPi / 12, segments[0].GetTextTiltAngle(), 1e-12);
    EXPECT_EQ(ZORNestResultSegment::MiddleCenter, segments[0].GetTextJustification());
    EXPECT_EQ("ROMANS", segments[0].GetFont());
    EXPECT_EQ(ZORNestResultSegment::EtchingData, segments[0].GetLayer());
    EXPECT_EQ(QString::fromUtf8("one\nt1/2\u00a0o"), segments[1].GetText());
    EXPECT_EQ(ZORNestResultSegment::MiddleCenter, segments[1].GetTextJustification());
    EXPECT_NEAR(kPi / 6, segments[1].GetTextAngle(), 1e-12);
    EXPECT_TRUE(report.contains("left out: 1 curves and texts that lie on no part"));
}

TEST_F(ZORNestDxfTest, APartOfTooManyCurvesIsNamed)
{
    constexpr int kSide = 182; // 33,124 marks
    QByteArray entities = Square(0, 0, 2 * kSide);
    for (int i = 0; i < kSide * kSide; ++i) {
        const QByteArray x = QByteArray::number(2 * (i % kSide) + 1);
        const QByteArray y = QByteArray::number(2 * (i / kSide));
        entities += Lines("0|LINE|8|0|10|" + x + "|20|" + y + ".5|11|" + x + "|21|" + y + ".8|");
    }
    const QString path = directory.filePath("a%1b%2.dxf");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(Dxf(entities));
    file.close();
    EXPECT_TRUE(TranslateFile(path).isEmpty());
    EXPECT_EQ("part 'a%1b%2' has more than 32767 outlines and curves", failure);
}

TEST_F(ZORNestDxfTest, NamesOfOldFilesAreLatin)
{
    const QByteArray tables = Lines("0|SECTION|2|TABLES|0|LAYER|2|L\xd6"
                                    "CHER|70|0|62|-5|0|ENDSEC|");
    const QByteArray entities = Square(0, 0, 10)
                                + Lines("0|CIRCLE|8|l\xf6"
                                        "cher|10|5|20|5|40|1|");
    EXPECT_EQ(1, DescribeOnly(Dxf(entities, QByteArray(), QByteArray(), tables)).size());
}

TEST_F(ZORNestDxfTest, UnitsComeFromTheHeader)
{
    const QByteArray square = Square(0, 0, 1);
    EXPECT_NEAR(25.4 * 25.4, GetOnlyArea(Dxf(square, {}, Lines("9|$INSUNITS|70|1|"))), 1e-9);
    EXPECT_NEAR(100, GetOnlyArea(Dxf(square, {}, Lines("9|$MEASUREMENT|70|0|9|$INSUNITS|70|5|"))), 1e-9);
    EXPECT_NEAR(1e6, GetOnlyArea(Dxf(square, {}, Lines("9|$INSUNITS|70|     6|"))), 1e-6);
    EXPECT_NEAR(25.4 * 25.4, GetOnlyArea(Dxf(square, {}, Lines("9|$INSUNITS|70|0|9|$MEASUREMENT|70|0|"))),
                1e-9);
    EXPECT_NEAR(1, GetOnlyArea(Dxf(square, {}, Lines("9|$MEASUREMENT|70|1|"))), 1e-12);
    EXPECT_EQ(QStringList("units: 1 mm, since the file names none"), report);
    EXPECT_NEAR(1, GetOnlyArea(Dxf(square, {}, Lines("9|$ACADVER|1|AC1009|"))), 1e-12);
}

TEST_F(ZORNestDxfTest, EntitiesSeenFromBelowAreMirrored)
{
    const QByteArray arc = Lines("0|ARC|8|0|10|-2|20|0|40|5|50|0|51|180|230|-1|");
    EXPECT_EQ(QStringList("outline (-3 0) L(7 0) A+(-3 0 | 2 0)"),
              DescribeOnly(Dxf(arc + Line(-3, 0, 7, 0))));
    DescribeOnly(Dxf(Square(0, 0, 1) + Lines("0|CIRCLE|8|0|10|0|20|0|40|1|210|1|230|0|")));
    EXPECT_TRUE(report.contains("skipped: CIRCLE out of the plane (1 times)"));
}

TEST_F(ZORNestDxfTest, LineEndsOfOtherSystemsAndCommentsAreFine)
{
    QByteArray content = Lines("999|made by hand|") + Dxf(Square(0, 0, 2));
    EXPECT_EQ(4, GetOnlyArea(content));
    content.replace('\n', "\r\n");
    EXPECT_EQ(4, GetOnlyArea(content));
    EXPECT_EQ(4, GetOnlyArea(content + "\r\n\r\n"));
}

TEST_F(ZORNestDxfTest, MalformedFilesFailWithAReason)
{
    ExpectFailures({
        {"", "no DXF file: SECTION is missing"},
        {"Somebody Binary DXF\r\n\x1a", "binary DXF cannot be read, only ASCII DXF"},
        {"hello\nworld\n", "line 1: group code expected"},
        {"0\nSECTION\n2\n", "line 3: value missing"},
        {Lines("0|SECTION|2|ENTITIES|0|LINE|10|0|"), "file is incomplete: EOF is missing"},
        {Lines("0|SECTION|2|ENTITIES|0|LINE|10|x|20|0|11|1|21|1|0|ENDSEC|0|EOF|"), "line 8: number expected"},
        {Lines("0|SECTION|2|ENTITIES|0|LINE|10|nan|20|0|11|1|21|1|0|ENDSEC|0|EOF|"),
         "line 8: number expected"},
        {Dxf(""), "no closed outline found"},
        {Dxf(Line(0, 0, 1, 0) + Line(5, 0, 5, 5)), "no closed outline found: 2 curves have loose ends"},
    });
    EXPECT_TRUE(TranslateFile(directory.filePath("missing.dxf")).isEmpty());
    EXPECT_EQ("cannot open file '" + directory.filePath("missing.dxf") + "': No such file or directory",
              failure);
}

} // namespace
