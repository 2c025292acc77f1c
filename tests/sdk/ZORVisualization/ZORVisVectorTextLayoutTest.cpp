// Tests of ZORVisVectorText: anchors, orientation, justification, decorations, tilt and plane.

#include "VectorTexts.h"

#include <ZORMathematics/ZORMathPlane.h>

#include <bit>
#include <numbers>

namespace VectorTexts {
namespace {

TEST(ZORVisVectorTextLayoutTest, AnchorsOfHorizontalTextLieOnItsBox)
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

TEST(ZORVisVectorTextLayoutTest, AnchorsOfVerticalTextLieOnItsBox)
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

TEST(ZORVisVectorTextLayoutTest, AnchorsMoveTheTextOnly)
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

TEST(ZORVisVectorTextLayoutTest, VerticalTextStacksUprightCharactersAndSetsLinesSideBySide)
{
    Text text = CreateText("I I\nI");
    text.SetOrientation(Text::Vertical);
    EXPECT_EQ(QStringList({"8,0", "8,-70", "43,0"}), GetFeet(text));
    text.SetCharacterSpacing(2);
    text.SetLineSpacing(5);
    EXPECT_EQ(QStringList({"8,0", "8,-74", "48,0"}), GetFeet(text));
}

TEST(ZORVisVectorTextLayoutTest, LinesAreJustifiedInTheLongestOne)
{
    Text text = CreateText("I\nIII");
    text.SetJustification(Text::Center);
    EXPECT_EQ(QStringList({"12,0", "4,-35", "12,-35", "20,-35"}), GetFeet(text));
    text.SetJustification(Text::Right);
    EXPECT_EQ(QStringList({"20,0", "4,-35", "12,-35", "20,-35"}), GetFeet(text));
    text.SetOrientation(Text::Vertical);
    EXPECT_EQ(QStringList({"4,-70", "39,0", "39,-35", "39,-70"}), GetFeet(text));
}

TEST(ZORVisVectorTextLayoutTest, BlockWidensTheBlanksOfAllLinesButTheLast)
{
    Text text = CreateText("I I\nIIIII I\nIII\nI I");
    text.SetJustification(Text::Block);
    EXPECT_EQ(QStringList({"4,0", "60,0", "4,-35", "12,-35", "20,-35", "28,-35", "36,-35", "60,-35", "4,-70",
                           "12,-70", "20,-70", "4,-105", "28,-105"}),
              GetFeet(text));
}

TEST(ZORVisVectorTextLayoutTest, BlockLeavesWhatStandsBeforeATab)
{
    Text text = CreateText("I I\tI I\nI\tI I I\n");
    text.SetJustification(Text::Block);
    EXPECT_EQ(QStringList({"4,0", "28,0", "132,0", "180,0", "4,-35", "132,-35", "156,-35", "180,-35"}),
              GetFeet(text));
}

TEST(ZORVisVectorTextLayoutTest, DecorationsRunAlongEveryLine)
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

TEST(ZORVisVectorTextLayoutTest, EveryDecorationIsOneBit)
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

TEST(ZORVisVectorTextLayoutTest, DecorationsFollowTheJustifiedLine)
{
    Text text = CreateText("I I\nIIIII I");
    text.SetDecorations(Text::Underline);
    text.SetJustification(Text::Block);
    ExpectNear({64, -3.5, 0}, text.GetPolylines()[2][1]);
    text.SetJustification(Text::Right);
    ExpectNear({32, -3.5, 0}, text.GetPolylines()[2][0]);
    ExpectNear({64, -3.5, 0}, text.GetPolylines()[2][1]);
}

TEST(ZORVisVectorTextLayoutTest, CharactersOfVerticalTextAreDecoratedOneByOne)
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

TEST(ZORVisVectorTextLayoutTest, EmptyTextHasNoPolylinesWhateverItsDecorations)
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

TEST(ZORVisVectorTextLayoutTest, TiltSlantsEveryLineAboutItsOwnBaseline)
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

TEST(ZORVisVectorTextLayoutTest, TiltIsLimited)
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

TEST(ZORVisVectorTextLayoutTest, PlaneDirectionsAreTakenAsTheyAre)
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

} // namespace
} // namespace VectorTexts
