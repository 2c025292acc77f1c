#include "support/Printers.h"

#include <ZORMathematics/ZORMathPlane.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORVisualization/ZORVisVectorText.h>

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

using Text = ZORVisVectorText;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// In this font at this size a unit of the font is a millimetre. The letter I is one stroke from (4, 21) down
// to (4, 0) and advances by 8; a blank advances by 16, a box by 16 from x = 2 to 14.
constexpr double size = 21;
constexpr double pitch = 35; // of lines, and of rows of vertical text

Text CreateText(const QString& string)
{
    Text text;
    text.SetFont(ZORVisVectorFont("futural"));
    text.SetTextSize(size);
    text.SetText(string);
    return text;
}

/// Lower ends of the strokes of a text of the letter I alone, as "x,y" each.
QStringList GetFeet(const Text& text)
{
    QStringList feet;
    const auto polylines = text.GetPolylines();
    for (const ZORMathSetOfPoints& points : polylines) {
        EXPECT_EQ(2, points.size());
        EXPECT_NEAR(points[0].GetX(), points[1].GetX(), 1e-12);
        EXPECT_NEAR(size, points[0].GetY() - points[1].GetY(), 1e-12);
        // Without the noise of divisions, and without -0.
        const auto number = [](double value) { return QString::number(std::round(value * 1e9) / 1e9 + 0.0); };
        feet.append(number(points[1].GetX()) + u',' + number(points[1].GetY()));
    }
    return feet;
}

void ExpectNear(const ZORMathPoint& expected, const ZORMathPoint& actual)
{
    EXPECT_NEAR(0, expected.DistanceTo(actual), 1e-9)
        << actual.GetX() << ", " << actual.GetY() << ", " << actual.GetZ();
}

bool IsFinite(const QList<ZORMathSetOfPoints>& polylines)
{
    for (const ZORMathSetOfPoints& points : polylines) {
        if (points.size() < 2)
            return false;
        for (const ZORMathPoint& point : points) {
            if (!point.IsFinite())
                return false;
        }
    }
    return true;
}

TEST(ZORVisVectorTextTest, NamesOfAllChoices)
{
    QStringList anchors;
    const auto anchorCodes = Text::GetAnchors();
    for (int i = 0; i < anchorCodes.size(); ++i) {
        EXPECT_EQ(i, int(anchorCodes[i]));
        anchors.append(Text::GetAnchorLabel(anchorCodes[i]));
    }
    EXPECT_EQ(QStringList({"Baseline Left", "Baseline Center", "Baseline Right", "Bottom Left",
                           "Bottom Center", "Bottom Right", "Middle Left", "Middle Center", "Middle Right",
                           "Top Left", "Top Center", "Top Right"}),
              anchors);
    EXPECT_EQ(QList<Text::Orientation>({Text::Horizontal, Text::Vertical}), Text::GetOrientations());
    EXPECT_EQ(QString("Horizontal"), Text::GetOrientationLabel(Text::Horizontal));
    EXPECT_EQ(QString("Vertical"), Text::GetOrientationLabel(Text::Vertical));
    EXPECT_EQ(QList<Text::Justification>({Text::Left, Text::Center, Text::Right, Text::Block}),
              Text::GetJustifications());
    EXPECT_EQ(QString("Left"), Text::GetJustificationLabel(Text::Left));
    EXPECT_EQ(QString("Center"), Text::GetJustificationLabel(Text::Center));
    EXPECT_EQ(QString("Right"), Text::GetJustificationLabel(Text::Right));
    EXPECT_EQ(QString("Block"), Text::GetJustificationLabel(Text::Block));
    EXPECT_EQ(QString(), Text::GetAnchorLabel(Text::Anchor(12)));
    EXPECT_EQ(QString(), Text::GetOrientationLabel(Text::Orientation(-1)));
    EXPECT_EQ(QString(), Text::GetJustificationLabel(Text::Justification(4)));
}

TEST(ZORVisVectorTextTest, StartsWithItsDefaults)
{
    const Text text;
    EXPECT_EQ(ZORVisVectorFont::GetFontNames().constFirst(), text.GetFont().GetName());
    EXPECT_EQ(Text::BaselineLeft, text.GetAnchor());
    EXPECT_EQ(Text::Horizontal, text.GetOrientation());
    EXPECT_EQ(Text::Left, text.GetJustification());
    EXPECT_EQ(0, text.GetDecorations().toInt());
    EXPECT_EQ(0, text.GetLineSpacing());
    EXPECT_EQ(0, text.GetCharacterSpacing());
    EXPECT_EQ(10, text.GetTextSize());
    EXPECT_EQ(0, text.GetTiltAngle());
    EXPECT_EQ(ZORMathVector(1, 0, 0), text.GetPlane().GetFirstDirection());
    EXPECT_EQ(ZORMathVector(0, 1, 0), text.GetPlane().GetSecondDirection());
    EXPECT_EQ(QString(), text.GetText());
    EXPECT_TRUE(text.GetPolylines().isEmpty());
}

TEST(ZORVisVectorTextTest, CopiesAreIndependent)
{
    Text text = CreateText("I");
    const Text copy = text;
    text.SetText("II");
    text.SetTextSize(1);
    EXPECT_EQ(QString("I"), copy.GetText());
    EXPECT_EQ(QStringList("4,0"), GetFeet(copy));
    text = copy;
    EXPECT_EQ(QStringList("4,0"), GetFeet(text));
}

TEST(ZORVisVectorTextTest, TextSizeIsTheHeightOfCapitals)
{
    Text text = CreateText("H");
    text.SetTextSize(3.5);
    double low = inf;
    double high = -inf;
    const auto polylines = text.GetPolylines();
    for (const ZORMathSetOfPoints& points : polylines) {
        for (const ZORMathPoint& point : points) {
            low = std::min(low, point.GetY());
            high = std::max(high, point.GetY());
        }
    }
    EXPECT_NEAR(0, low, 1e-12);
    EXPECT_NEAR(3.5, high, 1e-12);
}

TEST(ZORVisVectorTextTest, CharactersFollowEachOtherByTheirAdvanceAndTheSpacing)
{
    Text text = CreateText("II I");
    EXPECT_EQ(QStringList({"4,0", "12,0", "36,0"}), GetFeet(text));
    text.SetCharacterSpacing(2);
    EXPECT_EQ(QStringList({"4,0", "14,0", "42,0"}), GetFeet(text));
    text.SetCharacterSpacing(-3);
    EXPECT_EQ(QStringList({"4,0", "9,0", "27,0"}), GetFeet(text));
}

TEST(ZORVisVectorTextTest, LinesFollowEachOtherByTheNaturalPitchAndTheSpacing)
{
    Text text = CreateText("I\nI\n\nI");
    EXPECT_EQ(QStringList({"4,0", "4,-35", "4,-105"}), GetFeet(text));
    text.SetLineSpacing(5);
    EXPECT_EQ(QStringList({"4,0", "4,-40", "4,-120"}), GetFeet(text));
    text.SetLineSpacing(-40);
    EXPECT_EQ(QStringList({"4,0", "4,5", "4,15"}), GetFeet(text));
    EXPECT_DOUBLE_EQ(pitch, Text::naturalLinePitch * size);
}

TEST(ZORVisVectorTextTest, EveryKindOfLineBreakBeginsOneLine)
{
    const QString string = QString::fromUtf8("I\nI\r\nI\rI\u2028I\u2029I\n\rI");
    EXPECT_EQ(QStringList({"4,0", "4,-35", "4,-70", "4,-105", "4,-140", "4,-175", "4,-245"}),
              GetFeet(CreateText(string)));
}

TEST(ZORVisVectorTextTest, TabsGoToTheNextMultipleOfEightBlanks)
{
    EXPECT_EQ(QStringList({"132,0"}), GetFeet(CreateText("\tI")));
    EXPECT_EQ(QStringList({"260,0"}), GetFeet(CreateText("\t\tI")));
    EXPECT_EQ(QStringList({"4,0", "132,0"}), GetFeet(CreateText("I\tI")));
    EXPECT_EQ(QStringList({"132,0"}), GetFeet(CreateText("       \tI")));
    EXPECT_EQ(QStringList({"260,0"}), GetFeet(CreateText("        \tI")));
    Text text = CreateText("I\tI");
    text.SetOrientation(Text::Vertical);
    EXPECT_EQ(QStringList({"4,0", "4,-280"}), GetFeet(text));
}

TEST(ZORVisVectorTextTest, CharactersThatTheFontDoesNotHaveAreBoxes)
{
    const ZORMathSetOfPoints box = {{2, 0, 0}, {14, 0, 0}, {14, 21, 0}, {2, 21, 0}, {2, 0, 0}};
    const QString absent[] = {QString::fromUtf8("\u20ac"), QString::fromUtf8("\U0001f600"),
                              QString(QChar(0xd83d)),      QString(QChar(0xde00)),
                              QString(QChar(0)),           QString(QChar(7)),
                              QString::fromUtf8("\u00ad"), QString::fromUtf8("\u200b")};
    for (const QString& character : absent) {
        const auto polylines = CreateText(character + u'I').GetPolylines();
        ASSERT_EQ(2, polylines.size());
        ASSERT_EQ(5, polylines[0].size());
        for (int i = 0; i < 5; ++i)
            ExpectNear(box[i], polylines[0][i]);
        ExpectNear({20, 0, 0}, polylines[1][1]);
    }
}

TEST(ZORVisVectorTextTest, CharactersWithoutStrokesInTheirFontAreBoxes)
{
    const QStringList fonts = {"greekc", "greeks"};
    for (const QString& font : fonts) {
        Text text = CreateText("Yz");
        text.SetFont(ZORVisVectorFont(font));
        EXPECT_EQ(2, text.GetPolylines().size());
    }
}

TEST(ZORVisVectorTextTest, EveryFontDrawsEveryPrintableCharacterButTheBlank)
{
    const QStringList fonts = ZORVisVectorFont::GetFontNames();
    for (const QString& font : fonts) {
        Text text = CreateText(" ");
        text.SetFont(ZORVisVectorFont(font));
        EXPECT_TRUE(text.GetPolylines().isEmpty()) << font.toStdString();
        for (char c = '!'; c <= '~'; ++c) {
            text.SetText(QChar::fromLatin1(c));
            EXPECT_FALSE(text.GetPolylines().isEmpty()) << font.toStdString() << ' ' << c;
        }
    }
}

TEST(ZORVisVectorTextTest, JapaneseFontDrawsItsCodesAboveAscii)
{
    Text text = CreateText(QString(QChar(224)));
    text.SetFont(ZORVisVectorFont("japanese"));
    EXPECT_GT(text.GetPolylines().size(), 1);
    text.SetText(QString(QChar(225)));
    EXPECT_EQ(1, text.GetPolylines().size());
}

TEST(ZORVisVectorTextTest, WhiteSpaceIsAsWideAsTheBlank)
{
    EXPECT_EQ(QStringList("20,0"), GetFeet(CreateText(QString::fromUtf8("\u00a0I"))));
    EXPECT_EQ(QStringList("20,0"), GetFeet(CreateText(QString::fromUtf8("\u2003I"))));
}

TEST(ZORVisVectorTextTest, AnchorsOfHorizontalTextLieOnItsBox)
{
    const double x[] = {0, 8, 16};
    const double y[] = {0, -42, -7, 21};
    Text text = CreateText("I\nII");
    EXPECT_EQ(QStringList({"4,0", "4,-35", "12,-35"}), GetFeet(text));
    for (const Text::Anchor anchor : Text::GetAnchors()) {
        text.SetAnchor(anchor);
        const auto polylines = text.GetPolylines();
        ASSERT_EQ(3, polylines.size());
        ExpectNear({4 - x[anchor % 3], 0 - y[anchor / 3], 0}, polylines[0][1]);
        ExpectNear({12 - x[anchor % 3], -35 - y[anchor / 3], 0}, polylines[2][1]);
    }
}

TEST(ZORVisVectorTextTest, AnchorsOfVerticalTextLieOnItsBox)
{
    const double x[] = {-4, 17.5, 39};
    const double y[] = {0, -42, -7, 21};
    Text text = CreateText("I\nII");
    text.SetOrientation(Text::Vertical);
    for (const Text::Anchor anchor : Text::GetAnchors()) {
        text.SetAnchor(anchor);
        const auto polylines = text.GetPolylines();
        ASSERT_EQ(3, polylines.size());
        ExpectNear({0 - x[anchor % 3], 0 - y[anchor / 3], 0}, polylines[0][1]);
        ExpectNear({35 - x[anchor % 3], -35 - y[anchor / 3], 0}, polylines[2][1]);
    }
}

TEST(ZORVisVectorTextTest, AnchorsMoveTheTextOnly)
{
    Text text = CreateText("Some text\nof two lines, and g");
    const auto expected = text.GetPolylines();
    for (const Text::Anchor anchor : Text::GetAnchors()) {
        text.SetAnchor(anchor);
        const auto polylines = text.GetPolylines();
        ASSERT_EQ(expected.size(), polylines.size());
        const ZORMathVector shift = polylines[0][0] - expected[0][0];
        for (int i = 0; i < polylines.size(); ++i) {
            for (int k = 0; k < polylines[i].size(); ++k)
                ExpectNear(expected[i][k] + shift, polylines[i][k]);
        }
    }
}

TEST(ZORVisVectorTextTest, VerticalTextStacksUprightCharactersAndSetsLinesSideBySide)
{
    Text text = CreateText("I I\nI");
    text.SetOrientation(Text::Vertical);
    EXPECT_EQ(QStringList({"8,0", "8,-70", "43,0"}), GetFeet(text));
    text.SetCharacterSpacing(2);
    text.SetLineSpacing(5);
    EXPECT_EQ(QStringList({"8,0", "8,-74", "48,0"}), GetFeet(text));
}

TEST(ZORVisVectorTextTest, LinesAreJustifiedInTheLongestOne)
{
    Text text = CreateText("I\nIII");
    text.SetJustification(Text::Center);
    EXPECT_EQ(QStringList({"12,0", "4,-35", "12,-35", "20,-35"}), GetFeet(text));
    text.SetJustification(Text::Right);
    EXPECT_EQ(QStringList({"20,0", "4,-35", "12,-35", "20,-35"}), GetFeet(text));
    text.SetOrientation(Text::Vertical);
    EXPECT_EQ(QStringList({"4,-70", "39,0", "39,-35", "39,-70"}), GetFeet(text));
}

TEST(ZORVisVectorTextTest, BlockWidensTheBlanksOfAllLinesButTheLast)
{
    Text text = CreateText("I I\nIIIII I\nIII\nI I");
    text.SetJustification(Text::Block);
    EXPECT_EQ(QStringList({"4,0", "60,0", "4,-35", "12,-35", "20,-35", "28,-35", "36,-35", "60,-35", "4,-70",
                           "12,-70", "20,-70", "4,-105", "28,-105"}),
              GetFeet(text));
}

TEST(ZORVisVectorTextTest, BlockLeavesWhatStandsBeforeATab)
{
    Text text = CreateText("I I\tI I\nI\tI I I\n");
    text.SetJustification(Text::Block);
    EXPECT_EQ(QStringList({"4,0", "28,0", "132,0", "180,0", "4,-35", "132,-35", "156,-35", "180,-35"}),
              GetFeet(text));
}

TEST(ZORVisVectorTextTest, DecorationsRunAlongEveryLine)
{
    Text text = CreateText("I I\n\n  ");
    text.SetDecorations(Text::Underline | Text::StrikeThrough | Text::Overline);
    const auto polylines = text.GetPolylines();
    ASSERT_EQ(2 + 3 + 3, polylines.size());
    const double heights[] = {-3.5, 9, 24.5};
    for (int i = 0; i < 3; ++i) {
        ExpectNear({0, heights[i], 0}, polylines[2 + i][0]);
        ExpectNear({32, heights[i], 0}, polylines[2 + i][1]);
        ExpectNear({0, heights[i] - 70, 0}, polylines[5 + i][0]);
        ExpectNear({32, heights[i] - 70, 0}, polylines[5 + i][1]);
    }
}

TEST(ZORVisVectorTextTest, EveryDecorationIsOneBit)
{
    Text text = CreateText("I");
    for (int bits = 0; bits < 8; ++bits) {
        text.SetDecorations(QFlags<Text::Decoration>::fromInt(bits));
        EXPECT_EQ(1 + std::popcount(unsigned(bits)), text.GetPolylines().size()) << bits;
        EXPECT_EQ(bits, text.GetDecorations().toInt());
    }
    text.SetDecorations(QFlags<Text::Decoration>::fromInt(-8)); // unknown bits alone
    EXPECT_EQ(1, text.GetPolylines().size());
}

TEST(ZORVisVectorTextTest, DecorationsFollowTheJustifiedLine)
{
    Text text = CreateText("I I\nIIIII I");
    text.SetDecorations(Text::Underline);
    text.SetJustification(Text::Block);
    ExpectNear({64, -3.5, 0}, text.GetPolylines()[2][1]);
    text.SetJustification(Text::Right);
    ExpectNear({32, -3.5, 0}, text.GetPolylines()[2][0]);
    ExpectNear({64, -3.5, 0}, text.GetPolylines()[2][1]);
}

TEST(ZORVisVectorTextTest, CharactersOfVerticalTextAreDecoratedOneByOne)
{
    Text text = CreateText("I I");
    text.SetOrientation(Text::Vertical);
    text.SetDecorations(Text::Underline);
    const auto polylines = text.GetPolylines();
    ASSERT_EQ(5, polylines.size());
    ExpectNear({4, -3.5, 0}, polylines[1][0]);
    ExpectNear({12, -3.5, 0}, polylines[1][1]);
    ExpectNear({0, -38.5, 0}, polylines[2][0]); // the blank
    ExpectNear({16, -38.5, 0}, polylines[2][1]);
    ExpectNear({12, -73.5, 0}, polylines[4][1]);
}

TEST(ZORVisVectorTextTest, EmptyTextHasNoPolylinesWhateverItsDecorations)
{
    for (const char* string : {"", "\n", "\r\n\n"}) {
        Text text = CreateText(QString::fromLatin1(string));
        text.SetDecorations(Text::Underline | Text::StrikeThrough | Text::Overline);
        for (const Text::Orientation orientation : Text::GetOrientations()) {
            text.SetOrientation(orientation);
            EXPECT_TRUE(text.GetPolylines().isEmpty());
        }
    }
}

TEST(ZORVisVectorTextTest, TiltSlantsEveryLineAboutItsOwnBaseline)
{
    Text text = CreateText("I\nI");
    text.SetDecorations(Text::Underline);
    text.SetTiltAngle(45);
    const auto polylines = text.GetPolylines();
    ASSERT_EQ(4, polylines.size());
    ExpectNear({25, 21, 0}, polylines[0][0]);
    ExpectNear({4, 0, 0}, polylines[0][1]);
    ExpectNear({-3.5, -3.5, 0}, polylines[1][0]);
    ExpectNear({4.5, -3.5, 0}, polylines[1][1]);
    ExpectNear({25, -14, 0}, polylines[2][0]);
    text.SetTiltAngle(-45);
    ExpectNear({-17, 21, 0}, text.GetPolylines()[0][0]);
}

TEST(ZORVisVectorTextTest, TiltIsLimited)
{
    Text text = CreateText("I");
    for (const double angle : {86.0, 90.0, 1000.0, 1e300}) {
        text.SetTiltAngle(angle);
        EXPECT_EQ(85, text.GetTiltAngle());
        text.SetTiltAngle(-angle);
        EXPECT_EQ(-85, text.GetTiltAngle());
    }
    ExpectNear({4 - 21 * std::tan(85 * std::numbers::pi / 180), 21, 0}, text.GetPolylines()[0][0]);
}

TEST(ZORVisVectorTextTest, PlaneDirectionsAreTakenAsTheyAre)
{
    Text text = CreateText("Plane, gjq\n2nd");
    text.SetTiltAngle(20);
    text.SetAnchor(Text::MiddleCenter);
    const auto flat = text.GetPolylines();
    ZORMathPlane plane;
    plane.SetOrigin({100, -20, 7});
    plane.SetDirections({0, 2, 0.5}, {-3, 1, 0});
    text.SetPlane(plane);
    const auto polylines = text.GetPolylines();
    ASSERT_EQ(flat.size(), polylines.size());
    for (int i = 0; i < flat.size(); ++i) {
        for (int k = 0; k < flat[i].size(); ++k)
            ExpectNear(plane.Evaluate(flat[i][k].GetX(), flat[i][k].GetY()), polylines[i][k]);
    }
}

TEST(ZORVisVectorTextTest, ZeroSizeAndZeroDirectionsGiveStrokesWithoutExtent)
{
    Text text = CreateText("Text\n\tin two lines");
    const auto numStrokes = text.GetPolylines().size();
    text.SetTextSize(0);
    ZORMathPlane plane;
    plane.SetOrigin({1, 2, 3});
    const ZORMathVector directions[] = {{0, 0, 0}, {0, 1, 0}};
    for (const ZORMathVector& direction : directions) {
        plane.SetDirections({0, 0, 0}, direction);
        text.SetPlane(plane);
        const auto polylines = text.GetPolylines();
        EXPECT_EQ(numStrokes, polylines.size());
        for (const ZORMathSetOfPoints& points : polylines) {
            for (const ZORMathPoint& point : points)
                ExpectNear({1, 2, 3}, point);
        }
    }
}

TEST(ZORVisVectorTextTest, NegativeSizeTurnsTheText)
{
    Text text = CreateText("I\nI");
    text.SetTextSize(-size);
    const auto polylines = text.GetPolylines();
    ASSERT_EQ(2, polylines.size());
    ExpectNear({-4, -21, 0}, polylines[0][0]);
    ExpectNear({-4, 0, 0}, polylines[0][1]);
    ExpectNear({-4, 35, 0}, polylines[1][1]);
}

TEST(ZORVisVectorTextTest, NumbersThatAreNotFiniteCountAsZero)
{
    Text text = CreateText("I");
    for (const double value : {nan, inf, -inf}) {
        text.SetTextSize(value);
        EXPECT_EQ(0, text.GetTextSize());
        text.SetLineSpacing(value);
        EXPECT_EQ(0, text.GetLineSpacing());
        text.SetCharacterSpacing(value);
        EXPECT_EQ(0, text.GetCharacterSpacing());
        text.SetTiltAngle(value);
        EXPECT_EQ(0, text.GetTiltAngle());
        ZORMathPlane plane;
        plane.SetOrigin({value, 1, value});
        plane.SetDirections({1, value, 0}, {value, 0, 1});
        text.SetPlane(plane);
        EXPECT_EQ(ZORMathPoint(0, 1, 0), text.GetPlane().GetOrigin());
        EXPECT_EQ(ZORMathVector(1, 0, 0), text.GetPlane().GetFirstDirection());
        EXPECT_EQ(ZORMathVector(0, 0, 1), text.GetPlane().GetSecondDirection());
    }
}

TEST(ZORVisVectorTextTest, UnknownCodesCountAsTheFirst)
{
    Text text;
    for (const int code : {-1, 12, 1 << 30}) {
        text.SetAnchor(Text::TopRight);
        text.SetAnchor(Text::Anchor(code));
        EXPECT_EQ(Text::BaselineLeft, text.GetAnchor());
        text.SetOrientation(Text::Orientation(code));
        EXPECT_EQ(Text::Horizontal, text.GetOrientation());
        text.SetJustification(Text::Justification(code));
        EXPECT_EQ(Text::Left, text.GetJustification());
    }
}

TEST(ZORVisVectorTextTest, NoInputGivesCoordinatesThatAreNotFinite)
{
    const double values[] = {0, 1, -1, 1e-320, 1e10, -1e154, 1e200, -1e308, 1.7e308, nan, inf, -inf};
    const QString characters = QString::fromUtf8("Ig \t\n\r\u20ac");
    std::mt19937 random(1967);
    const auto value = [&] { return values[random() % std::size(values)]; };
    const QStringList fonts = ZORVisVectorFont::GetFontNames();
    for (int i = 0; i < 5000; ++i) {
        Text text;
        text.SetFont(ZORVisVectorFont(fonts[int(random() % 32)]));
        text.SetAnchor(Text::Anchor(random() % 12));
        text.SetOrientation(Text::Orientation(random() % 2));
        text.SetJustification(Text::Justification(random() % 4));
        text.SetDecorations(QFlags<Text::Decoration>::fromInt(int(random() % 8)));
        text.SetLineSpacing(value());
        text.SetCharacterSpacing(value());
        text.SetTextSize(value());
        text.SetTiltAngle(value());
        ZORMathPlane plane;
        plane.SetOrigin({value(), value(), value()});
        plane.SetDirections({value(), value(), value()}, {value(), value(), value()});
        text.SetPlane(plane);
        QString string;
        for (auto k = random() % 12; k > 0; --k)
            string += characters[int(random() % quint32(characters.size()))];
        text.SetText(string);
        ASSERT_TRUE(IsFinite(text.GetPolylines())) << i;
    }
}

TEST(ZORVisVectorTextTest, LongTextsAreLaidOutInOneGo)
{
    constexpr int count = 100000;
    const auto lines = CreateText(QString("I\n").repeated(count)).GetPolylines();
    ASSERT_EQ(count, lines.size());
    EXPECT_NEAR(-35.0 * (count - 1), lines.back()[1].GetY(), 1e-6);
    const auto line = CreateText(QString(count, u'I')).GetPolylines();
    ASSERT_EQ(count, line.size());
    EXPECT_NEAR(8.0 * (count - 1) + 4, line.back()[1].GetX(), 1e-6);
}

TEST(ZORVisVectorTextTest, SettersAreTracedWithTheirValues)
{
    auto* trace = ZORSysApiTrace::GetInstance();
    QSignalSpy calls(trace, &ZORSysApiTrace::CallTraced);
    trace->SetEnabled(true);
    Text text;
    const ZORVisVectorFont font("greek");
    text.SetFont(font);
    text.SetAnchor(Text::TopLeft);
    text.SetOrientation(Text::Vertical);
    text.SetJustification(Text::Right);
    text.SetDecorations(Text::Underline | Text::Overline);
    text.SetLineSpacing(1.5);
    text.SetCharacterSpacing(nan);
    text.SetTextSize(2);
    text.SetTiltAngle(100);
    text.SetPlane(ZORMathPlane());
    text.SetText("a\n\"b\"");
    EXPECT_FALSE(text.GetPolylines().isEmpty());
    trace->SetEnabled(false);

    QByteArrayList lines;
    for (const QList<QVariant>& call : calls)
        lines.append(call[0].toByteArray());
    EXPECT_EQ(QByteArrayList({"ZORVisVectorText::ZORVisVectorText()",
                              "ZORVisVectorFont::ZORVisVectorFont(\"greek\")",
                              "ZORVisVectorText::SetFont(\"greek\")", "ZORVisVectorText::SetAnchor(9)",
                              "ZORVisVectorText::SetOrientation(1)", "ZORVisVectorText::SetJustification(2)",
                              "ZORVisVectorText::SetDecorations(5)", "ZORVisVectorText::SetLineSpacing(1.5)",
                              "ZORVisVectorText::SetCharacterSpacing(nan)",
                              "ZORVisVectorText::SetTextSize(2)", "ZORVisVectorText::SetTiltAngle(100)",
                              "ZORVisVectorText::SetPlane([(0, 0, 0), (1, 0, 0), (0, 1, 0)])",
                              "ZORVisVectorText::SetText(\"a\\n\\\"b\\\"\")"}),
              lines);
}

} // namespace
