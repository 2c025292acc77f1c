// Tests of the provider "svg".

#include "sdk/ZORNesting/TranslationTest.h"

#include <QColor>

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

class ZORNestSvgTest : public TranslationTest
{
protected:
    ZORNestSvgTest()
        : TranslationTest("svg")
    {
    }

    /// In a drawing of 100 x 100 mm with millimetres as units.
    static QByteArray Svg(const QByteArray& content, const QByteArray& attributes = "")
    {
        return "<svg xmlns='http://www.w3.org/2000/svg' width='100mm' height='100mm' viewBox='0 0 100 100' "
               + attributes + '>' + content + "</svg>";
    }
    static QByteArray Path(const QByteArray& data) { return Svg("<path d='" + data + "'/>"); }

    QStringList DescribeAll(const QByteArray& content)
    {
        QStringList lines;
        const QList<ZORNestResult> results = Translate(content);
        EXPECT_EQ("", failure);
        for (const ZORNestResult& result : results)
            lines.append(Describe(result));
        return lines;
    }
};

TEST_F(ZORNestSvgTest, StraightCommandsAbsoluteAndRelative)
{
    const QStringList expected("outline (10 90) L(10 70) L(30 70) L(30 90) L(10 90)");
    EXPECT_EQ(expected, DescribeAll(Path("M10 10 L10 30 L30 30 L30 10 Z")));
    EXPECT_EQ(expected, DescribeAll(Path("m10,10 0,20 20,0 0-20z")));
    EXPECT_EQ(expected, DescribeAll(Path("M10 10V30H30V10Z")));
    EXPECT_EQ(expected, DescribeAll(Path("M1e1 1.0e+1v20h20v-20z")));
    EXPECT_EQ(expected, DescribeAll(Path("M10 10 10 30 30 30 30 10z")));
}

TEST_F(ZORNestSvgTest, AfterAClosedSubPathTheNextStartsWhereItStarted)
{
    EXPECT_EQ(QStringList({"outline (10 90) L(10 80) L(20 80) L(10 90)",
                           "outline (50 50) L(50 40) L(60 40) L(50 50)"}),
              DescribeAll(Path("M10 10v10h10z m40 40v10h10z")));
    EXPECT_EQ(QStringList({"outline (10 90) L(10 80) L(20 80) L(10 90)",
                           "outline (10 90) L(10 100) L(0 100) L(10 90)"}),
              DescribeAll(Path("M10 10v10h10z v-10h-10z")));
}

TEST_F(ZORNestSvgTest, CircularArcsStayArcs)
{
    EXPECT_EQ(QStringList("outline (10 90) A+(30 90 | 20 90) A+(10 90 | 20 90)"),
              DescribeAll(Path("M10 10A10 10 0 0 0 30 10A10 10 0 0 0 10 10Z")));
    EXPECT_EQ(QStringList("outline (10 90) A+(30 90 | 20 90) A+(10 90 | 20 90)"),
              DescribeAll(Path("M10 10a10 10 0 0020 0a10 10 0 00-20 0z"))); // flags without gaps
    // Radii that are too small grow.
    EXPECT_EQ(QStringList("outline (10 90) A+(30 90 | 20 90) L(10 90)"),
              DescribeAll(Path("M10 10A1 1 0 0 0 30 10Z")));
}

TEST_F(ZORNestSvgTest, LargeAndSweepChooseAmongFourArcs)
{
    const double small = 25 * kPi - 50, large = 75 * kPi + 50; // radius 10, chord over a right angle
    EXPECT_NEAR(small, GetOnlyArea(Path("M20 10A10 10 0 0 0 30 20Z")), 1e-9);
    EXPECT_NEAR(small, GetOnlyArea(Path("M20 10A10 10 0 0 1 30 20Z")), 1e-9);
    EXPECT_NEAR(large, GetOnlyArea(Path("M20 10A10 10 0 1 0 30 20Z")), 1e-9);
    EXPECT_NEAR(large, GetOnlyArea(Path("M20 10A10 10 0 1 1 30 20Z")), 1e-9);
    EXPECT_EQ(QStringList("outline (20 90) L(30 80) A+(20 90 | 20 80)"),
              DescribeAll(Path("M20 10A10 10 0 0 1 30 20Z")));
}

TEST_F(ZORNestSvgTest, EllipticArcsAreSplines)
{
    EXPECT_NEAR(kPi * 20 * 10, GetOnlyArea(Path("M10 50A20 10 0 0 1 50 50A20 10 0 0 1 10 50Z")), 1);
    EXPECT_NEAR(kPi * 20 * 10 / 2, GetOnlyArea(Path("M50 30A20 10 90 0 1 50 70Z")), 1);
}

TEST_F(ZORNestSvgTest, BezierCurvesKeepWithinTheTolerance)
{
    EXPECT_NEAR(0.6 * 900, GetOnlyArea(Path("M10 50C10 20 40 20 40 50Z")), 0.9);
    EXPECT_NEAR(0.6 * 900, GetOnlyArea(Path("m10 50c0-30 30-30 30 0z")), 0.9);
    // A parabola over a chord of 30 with a control point 30 above: two thirds of half of it.
    EXPECT_NEAR(300, GetOnlyArea(Path("M10 50Q25 20 40 50Z")), 0.9);
    input.SetCurveTolerance(1e-5);
    EXPECT_NEAR(0.6 * 900, GetOnlyArea(Path("M10 50C10 20 40 20 40 50Z")), 0.001);
    EXPECT_NEAR(300, GetOnlyArea(Path("m10 50q15-30 30 0z")), 0.001);
}

TEST_F(ZORNestSvgTest, SmoothCurvesMirrorTheLastControlPoint)
{
    input.SetCurveTolerance(1e-5);
    const double cubic = GetOnlyArea(Path("M10 50C10 30 30 30 30 50C30 70 50 70 50 50L50 90L10 90Z"));
    EXPECT_NEAR(cubic, GetOnlyArea(Path("M10 50C10 30 30 30 30 50S50 70 50 50L50 90L10 90Z")), 1e-6);
    EXPECT_NEAR(cubic, GetOnlyArea(Path("M10 50c0-20 20-20 20 0s20 20 20 0V90H10Z")), 1e-6);
    const double quadratic = GetOnlyArea(Path("M10 50Q20 30 30 50Q40 70 50 50L50 90L10 90Z"));
    EXPECT_NEAR(quadratic, GetOnlyArea(Path("M10 50Q20 30 30 50T50 50L50 90L10 90Z")), 1e-6);
    // Without a curve before, the control point is the current point.
    EXPECT_NEAR(GetOnlyArea(Path("M10 50C10 50 40 20 40 50Z")), GetOnlyArea(Path("M10 50S40 20 40 50Z")),
                1e-6);
}

TEST_F(ZORNestSvgTest, BasicShapes)
{
    EXPECT_NEAR(200, GetOnlyArea(Svg("<rect x='10' y='10' width='10' height='20'/>")), 1e-12);
    EXPECT_NEAR(200 - 16 + 4 * kPi, GetOnlyArea(Svg("<rect width='10' height='20' rx='2'/>")), 1e-12);
    EXPECT_NEAR(200 - (4 - kPi) * 2 * 4, GetOnlyArea(Svg("<rect width='10' height='20' rx='2' ry='4'/>")),
                0.2);
    EXPECT_NEAR(100 - (4 - kPi) * 25, GetOnlyArea(Svg("<rect width='10' height='10' rx='99'/>")), 1e-12);
    EXPECT_EQ(QStringList("outline (60 50) A+(60 50 | 50 50)"),
              DescribeAll(Svg("<circle cx='50' cy='50' r='10'/>")));
    EXPECT_NEAR(kPi * 50, GetOnlyArea(Svg("<ellipse cx='50' cy='50' rx='10' ry='5'/>")), 0.5);
    EXPECT_NEAR(50, GetOnlyArea(Svg("<polygon points='0,0 10,0 10,10'/>")), 1e-12);
    EXPECT_NEAR(50, GetOnlyArea(Svg("<polyline points='0 0,10 0,10 10,0 0'/>")), 1e-12);
    EXPECT_NEAR(
        50, GetOnlyArea(Svg("<line x2='10'/><line x1='10' x2='10' y2='10'/><polyline points='10 10 0 0'/>")),
        1e-12);
}

TEST_F(ZORNestSvgTest, UnitsComeFromSizeAndViewBox)
{
    const QByteArray square = "<rect width='10' height='10'/></svg>";
    const auto area = [&](const QByteArray& attributes) {
        return GetOnlyArea("<svg " + attributes + '>' + square);
    };
    const double pixel = 25.4 / 96;
    EXPECT_NEAR(100 * pixel * pixel, area(""), 1e-9);
    EXPECT_NEAR(100 * pixel * pixel, area("width='50' height='50'"), 1e-9);
    EXPECT_NEAR(100 * pixel * pixel, area("width='100%' height='100%' viewBox='0 0 7 7'"), 1e-9);
    EXPECT_NEAR(400, area("width='10cm' height='10cm' viewBox='0 0 50 50'"), 1e-9);
    EXPECT_NEAR(25.4 * 25.4, area("width='1in' viewBox='0 0 10 5'"), 1e-9);
    EXPECT_NEAR(25, area("width='100mm' height='50mm' viewBox='0 0 100 100'"), 1e-9); // in proportion
    EXPECT_NEAR(100, area("width='100mm' height='100mm' viewBox='-20,-20,100,100'"), 1e-9);
}

TEST_F(ZORNestSvgTest, LengthsMayHaveUnits)
{
    EXPECT_NEAR(254, GetOnlyArea("<svg><rect width='1in' height='10mm'/></svg>"), 1e-9);
}

TEST_F(ZORNestSvgTest, TransformationsOfGroupsAndShapesMultiply)
{
    EXPECT_EQ(QStringList("outline (30 60) L(30 40) L(50 40) L(50 60) L(30 60)"),
              DescribeAll(
                  Svg("<g transform='translate(30,40)'><path transform='scale(2)' d='M0 0V10H10V0Z'/></g>")));
    EXPECT_EQ(QStringList("outline (50 50) L(40 50) L(40 40) L(50 40) L(50 50)"),
              DescribeAll(Svg("<path transform='rotate(90 50 50)' d='M50 50H60V60H50Z'/>")));
    EXPECT_NEAR(100, GetOnlyArea(Svg("<path transform='rotate(30) skewX(20)' d='M50 50V60H60V50Z'/>")), 1e-9);
    EXPECT_NEAR(100, GetOnlyArea(Svg("<path transform='skewY(-45),translate(5)' d='M50 50V60H60V50Z'/>")),
                1e-9);
    EXPECT_NEAR(600, GetOnlyArea(Svg("<path transform='matrix(2 0 0 3 1 1)' d='M5 5V15H15V5Z'/>")), 1e-9);
    EXPECT_NEAR(kPi * 6, GetOnlyArea(Svg("<circle transform='scale(2 3)' r='1' cx='9' cy='9'/>")), 0.2);
}

TEST_F(ZORNestSvgTest, DegenerateTransformationsSkipTheShape)
{
    DescribeAll(Svg("<rect width='5' height='5'/><circle r='3' transform='scale(0)'/><circle r='3' "
                    "transform='bend(2)'/>"));
    EXPECT_TRUE(report.contains("skipped: circle (1 times)"));
    EXPECT_TRUE(report.contains("skipped: faulty transformation (1 times)"));
}

TEST_F(ZORNestSvgTest, ColorsAndLayersAreInherited)
{
    const QList<ZORNestResult> results =
        Translate(Svg("<g id='a' stroke='red'><rect width='50' height='50'/>"
                      "<g xmlns:i='x' i:label='etch box' style='stroke: #00ff00; fill:none'><rect x='9' "
                      "y='9' width='5' height='5'/></g>"
                      "<rect x='19' y='19' width='5' height='5' stroke='none' fill='rgb(1, 2, 3)'/></g>"));
    ASSERT_EQ(1, results.size());
    ASSERT_EQ(3, GetItem(results[0]).GetShapes().size());
    EXPECT_EQ(QColor(255, 0, 0), GetShape(results[0], 0).GetSegments()[0].GetColor());
    EXPECT_EQ(QColor(1, 2, 3), GetShape(results[0], 1).GetSegments()[0].GetColor());
    EXPECT_EQ(1, GetShape(results[0], 1).GetShapeHole());
    EXPECT_EQ(QColor(0, 255, 0), GetShape(results[0], 2).GetSegments()[0].GetColor());
    EXPECT_EQ(ZORNestResultSegment::EtchBox, GetShape(results[0], 2).GetSegments()[0].GetLayer());
}

TEST_F(ZORNestSvgTest, WhatDoesNotShowIsIgnored)
{
    const QByteArray hidden = "<rect x='2' y='2' width='2' height='2'/>";
    EXPECT_EQ(
        1, DescribeAll(Svg("<rect width='50' height='50'/><defs>" + hidden + "</defs><clipPath>" + hidden
                           + "</clipPath>" + "<g display='none'>" + hidden + "</g><g style='display: none'>"
                           + hidden + "</g><text>A</text><use href='#a'/><image/><svg>" + hidden + "</svg>"))
               .size());
    EXPECT_EQ(QStringList({"units: 1 mm", "skipped: image (1 times)", "skipped: svg (1 times)",
                           "skipped: text (1 times)", "skipped: use (1 times)"}),
              report);
}

TEST_F(ZORNestSvgTest, FaultyPathDataAreDrawnUpToTheFault)
{
    EXPECT_EQ(1, DescribeAll(Path("M10 10V30H30Z M50 50V60 L oops")).size());
    EXPECT_TRUE(report.contains("skipped: rest of faulty path data (1 times)"));
    Translate(Path("L10 10"));
    EXPECT_EQ("no closed outline found", failure);
    Translate(Path("M1 1A2 2 0 5 0 9 9Z"));
    EXPECT_EQ("no closed outline found", failure);
    EXPECT_EQ(1, DescribeAll(Svg("<rect width='5' height='5'/><polygon points='1 1 2 x'/>")).size());
    EXPECT_TRUE(report.contains("skipped: rest of faulty points (1 times)"));
}

TEST_F(ZORNestSvgTest, MalformedFilesFailWithAReason)
{
    Translate("");
    EXPECT_FALSE(failure.isEmpty());
    Translate("<html/>");
    EXPECT_EQ("no SVG file: the root element is 'html'", failure);
    Translate("<svg>\n<g>\n</svg>");
    EXPECT_TRUE(failure.startsWith("line 3: ")) << failure.toStdString();
    QByteArray attributes;
    for (int i = 0; i < 4001; ++i)
        attributes += " a" + QByteArray::number(i) + "='1'";
    Translate("<svg><g" + attributes + "/></svg>");
    EXPECT_EQ("an XML element has more than 4000 attributes", failure);
}

TEST_F(ZORNestSvgTest, GroupsNestUpToTheBoundAndTransformAllTheWay)
{
    const auto nest = [](int depth) {
        return "<svg width='5000mm' height='5mm' viewBox='0 0 5000 5'>"
               + QByteArray("<g transform='translate(1)'>").repeated(depth) + "<rect width='2' height='3'/>"
               + QByteArray("</g>").repeated(depth) + "</svg>";
    };
    EXPECT_EQ(QStringList("outline (3998 5) L(3998 2) L(4000 2) L(4000 5) L(3998 5)"),
              DescribeAll(nest(3998)));
    EXPECT_EQ("", failure);
    Translate(nest(3999));
    EXPECT_EQ("XML elements nest more than 4000 deep", failure);
    EXPECT_EQ(1,
              DescribeAll("<svg><g transform='scale(2)'><g/></g><rect width='2' height='3'/></svg>").size());
}

TEST_F(ZORNestSvgTest, EntitiesThatTheFileDeclaresAreFollowed)
{
    const QByteArray type = "<!DOCTYPE svg [<!ENTITY ns 'http://www.w3.org/2000/svg'><!ENTITY size '3'>"
                            "<!ENTITY shape '<rect width=\"&size;\" height=\"&size;\"/>'>]>";
    EXPECT_EQ(1, DescribeAll(type + "<svg xmlns='&ns;'><g>&shape;</g></svg>").size());
    EXPECT_EQ("", failure);
    Translate("<!DOCTYPE svg [<!ENTITY a '&b;&b;&b;&b;&b;&b;'><!ENTITY b '" + QByteArray(1000000, 'x')
              + "'>]><svg>&a;</svg>");
    EXPECT_EQ("the entities of the XML expand too far", failure);
    Translate("<!DOCTYPE svg [<!ENTITY a '&a;'>]><svg>&a;</svg>");
    EXPECT_EQ("XML is not well-formed", failure);
}

// Numbers so large that their last place is coarser than the tolerance.
TEST_F(ZORNestSvgTest, CurvesThatNoArcsCanFollowAreSkippedAndTheOthersStay)
{
    const QByteArray arcs = QByteArray("M0 0A1e16 5e15 20 0 1 1000 777").repeated(20);
    const QList<ZORNestResult> results = Translate("<svg xmlns='http://www.w3.org/2000/svg'><path d='" + arcs
                                                   + "'/><rect width='10' height='20'/></svg>");
    EXPECT_EQ(1, results.size()) << failure.toStdString();
    EXPECT_TRUE(report.contains("skipped: curve that needs too many arcs (20 times)"))
        << report.join('\n').toStdString();
}

TEST_F(ZORNestSvgTest, LargeCurvesKeepWithinAHundredMillionthOfTheirSize)
{
    // 200 km by 100 km, so that a millimeter is invisible.
    const QList<ZORNestResult> results =
        Translate("<svg xmlns='http://www.w3.org/2000/svg' width='1mm' height='1mm' viewBox='0 0 1 1'>"
                  "<ellipse rx='1e8' ry='5e7'/></svg>");
    ASSERT_EQ(1, results.size()) << failure.toStdString();
    const double area = std::numbers::pi * 1e8 * 5e7;
    EXPECT_NEAR(1, GetArea(results[0]) / area, 1e-7);
}

} // namespace
