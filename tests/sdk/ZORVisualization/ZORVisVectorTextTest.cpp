// Tests of ZORVisVectorText: its values, characters and lines, and extreme input.

#include "VectorTexts.h"
#include "support/TraceCalls.h"

#include <ZORMathematics/ZORMathPlane.h>

#include <random>

namespace VectorTexts {
namespace {

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
    double low = kInf;
    double high = -kInf;
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
    EXPECT_DOUBLE_EQ(kPitch, Text::naturalLinePitch * kSize);
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
    text.SetTextSize(-kSize);
    const auto polylines = text.GetPolylines();
    ASSERT_EQ(2, polylines.size());
    ExpectNear({-4, -21, 0}, polylines[0][0]);
    ExpectNear({-4, 0, 0}, polylines[0][1]);
    ExpectNear({-4, 35, 0}, polylines[1][1]);
}

TEST(ZORVisVectorTextTest, NumbersThatAreNotFiniteCountAsZero)
{
    Text text = CreateText("I");
    for (const double value : {kNan, kInf, -kInf}) {
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
    const double values[] = {0, 1, -1, 1e-320, 1e10, -1e154, 1e200, -1e308, 1.7e308, kNan, kInf, -kInf};
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
    constexpr int kCount = 100000;
    const auto lines = CreateText(QString("I\n").repeated(kCount)).GetPolylines();
    ASSERT_EQ(kCount, lines.size());
    EXPECT_NEAR(-35.0 * (kCount - 1), lines.back()[1].GetY(), 1e-6);
    const auto line = CreateText(QString(kCount, u'I')).GetPolylines();
    ASSERT_EQ(kCount, line.size());
    EXPECT_NEAR(8.0 * (kCount - 1) + 4, line.back()[1].GetX(), 1e-6);
}

TEST(ZORVisVectorTextTest, SettersAreTracedWithTheirValues)
{
    const QStringList lines = TraceCalls([] {
        Text text;
        const ZORVisVectorFont font("greek");
        text.SetFont(font);
        text.SetAnchor(Text::TopLeft);
        text.SetOrientation(Text::Vertical);
        text.SetJustification(Text::Right);
        text.SetDecorations(Text::Underline | Text::Overline);
        text.SetLineSpacing(1.5);
        text.SetCharacterSpacing(kNan);
        text.SetTextSize(2);
        text.SetTiltAngle(100);
        text.SetPlane(ZORMathPlane());
        text.SetText("a\n\"b\"");
        EXPECT_FALSE(text.GetPolylines().isEmpty());
    });
    EXPECT_EQ(
        QStringList({"ZORVisVectorText::ZORVisVectorText()", "ZORVisVectorFont::ZORVisVectorFont(\"greek\")",
                     "ZORVisVectorText::SetFont(\"greek\")", "ZORVisVectorText::SetAnchor(9)",
                     "ZORVisVectorText::SetOrientation(1)", "ZORVisVectorText::SetJustification(2)",
                     "ZORVisVectorText::SetDecorations(5)", "ZORVisVectorText::SetLineSpacing(1.5)",
                     "ZORVisVectorText::SetCharacterSpacing(nan)", "ZORVisVectorText::SetTextSize(2)",
                     "ZORVisVectorText::SetTiltAngle(100)",
                     "ZORVisVectorText::SetPlane([(0, 0, 0), (1, 0, 0), (0, 1, 0)])",
                     "ZORVisVectorText::SetText(\"a\\n\\\"b\\\"\")"}),
        lines);
}

} // namespace
} // namespace VectorTexts
