#include "VectorTextDlgTest.h"

#include <ZORMathematics/ZORMathPlane.h>
#include <ZORVisualization/ZORVisRepFactory.h>
#include <ZORVisualization/ZORVisVectorText.h>

#include <QGroupBox>
#include <QLabel>
#include <QMetaClassInfo>

#include <cmath>
#include <numbers>

namespace {

using ZORTestVisVectorTextDlgTest = VectorTextDlgTest;

TEST_F(ZORTestVisVectorTextDlgTest, ShowsItsTexts)
{
    const QMetaObject& metaObject = ZORTestVisVectorTextDlg::staticMetaObject;
    EXPECT_STREQ("Create vector text graphics",
                 metaObject.classInfo(metaObject.indexOfClassInfo("label")).value());
    OpenDialog();
    EXPECT_EQ(QString("Create vector text graphics"), dialog->windowTitle());
    QStringList labels;
    const auto found = dialog->findChildren<QLabel*>();
    for (const QLabel* label : found)
        labels.append(label->text());
    EXPECT_EQ(QStringList({"Font:",
                           "Anchor Location:",
                           "Line Spacing:",
                           "Character Spacing:",
                           "Orientation:",
                           "Justification:",
                           "Text Size:",
                           "Tilt Angle:",
                           "Origin:",
                           "X",
                           "Y",
                           "Z",
                           "First Direction:",
                           "X",
                           "Y",
                           "Z",
                           "Second Direction:",
                           "X",
                           "Y",
                           "Z",
                           "Text:"}),
              labels);
    EXPECT_EQ(QString("Decorations"), Find<QGroupBox>("groupBox")->title());
    EXPECT_EQ(QString("Plane"), Find<QGroupBox>("groupBox_2")->title());
    EXPECT_EQ(QString("Underline"), Check("_UnderlineChk")->text());
    EXPECT_EQ(QString("Strike through"), Check("_StrikeChk")->text());
    EXPECT_EQ(QString("Overline"), Check("_OverlineChk")->text());
}

TEST_F(ZORTestVisVectorTextDlgTest, CombosOfferWhatTheSdkOffers)
{
    OpenDialog();
    QStringList fonts;
    for (int i = 0; i < Combo("_FontCombo")->count(); ++i)
        fonts.append(Combo("_FontCombo")->itemText(i));
    EXPECT_EQ(ZORVisVectorFont::GetFontNames(), fonts);

    const auto anchors = ZORVisVectorText::GetAnchors();
    ASSERT_EQ(anchors.size(), Combo("_AnchorCombo")->count());
    for (int i = 0; i < anchors.size(); ++i) {
        EXPECT_EQ(ZORVisVectorText::GetAnchorLabel(anchors[i]), Combo("_AnchorCombo")->itemText(i));
        EXPECT_EQ(QVariant(int(anchors[i])), Combo("_AnchorCombo")->itemData(i));
    }
    const auto orientations = ZORVisVectorText::GetOrientations();
    ASSERT_EQ(orientations.size(), Combo("_OrientationCombo")->count());
    for (int i = 0; i < orientations.size(); ++i) {
        EXPECT_EQ(ZORVisVectorText::GetOrientationLabel(orientations[i]),
                  Combo("_OrientationCombo")->itemText(i));
        EXPECT_EQ(QVariant(int(orientations[i])), Combo("_OrientationCombo")->itemData(i));
    }
    const auto justifications = ZORVisVectorText::GetJustifications();
    ASSERT_EQ(justifications.size(), Combo("_JustificationCombo")->count());
    for (int i = 0; i < justifications.size(); ++i) {
        EXPECT_EQ(ZORVisVectorText::GetJustificationLabel(justifications[i]),
                  Combo("_JustificationCombo")->itemText(i));
        EXPECT_EQ(QVariant(int(justifications[i])), Combo("_JustificationCombo")->itemData(i));
    }
}

TEST_F(ZORTestVisVectorTextDlgTest, ZeroSizeAndDirectionsDrawTheTextAtTheOrigin)
{
    OpenDialog();
    Type("Wing");
    PressOk();
    EXPECT_EQ(QList<bool>({true, true}), finished);
    ZORVisVectorText text;
    text.SetText("Wing");
    const int numPolylines = int(text.GetPolylines().size());
    ExpectOriginAndGuideLines(numPolylines, {}, {{}, {}, {}});
    QList<const ZORVisRep*> reps;
    for (int i = 0; i < GetNumDrawn(); ++i)
        reps.append(ZORDebugVizContainer::GetContainer()->GetObject(i)->GetRep());
    for (int i = 0; i < numPolylines; ++i)
        EXPECT_EQ(ZORMathSetOfPoints(GetPolyline(i).size(), ZORMathPoint()), GetPolyline(i));
    EXPECT_FALSE(ZORVisRepFactory::CreateImage(QSize(40, 30), reps, Qt::black).isNull());
}

TEST_F(ZORTestVisVectorTextDlgTest, DrawsTheStrokesOfTheTextWithAllValuesOfTheForm)
{
    OpenDialog();
    Combo("_FontCombo")->setCurrentText("gothiceng");
    Combo("_AnchorCombo")->setCurrentIndex(7);
    Spin("_LineSpacingSpn")->setValue(2.5);
    Spin("_CharSpacingSpn")->setValue(-0.25);
    Combo("_OrientationCombo")->setCurrentIndex(1);
    Combo("_JustificationCombo")->setCurrentIndex(2);
    Check("_UnderlineChk")->setChecked(true);
    Check("_StrikeChk")->setChecked(true);
    Spin("_TextSizeSpn")->setValue(12);
    Spin("_TiltAngleSpn")->setValue(15);
    SetPlane({10, 20, 30, 0, 2, 0, -1, 0, 0.5});
    Type("Wing\nskin");
    PressOk();

    ZORVisVectorText text;
    text.SetFont(ZORVisVectorFont("gothiceng"));
    text.SetAnchor(ZORVisVectorText::MiddleCenter);
    text.SetLineSpacing(2.5);
    text.SetCharacterSpacing(-0.25);
    text.SetOrientation(ZORVisVectorText::Vertical);
    text.SetJustification(ZORVisVectorText::Right);
    text.SetDecorations(ZORVisVectorText::Underline | ZORVisVectorText::StrikeThrough);
    text.SetTextSize(12);
    text.SetTiltAngle(15);
    ZORMathPlane plane;
    plane.SetOrigin({10, 20, 30});
    plane.SetDirections({0, 2, 0}, {-1, 0, 0.5});
    text.SetPlane(plane);
    text.SetText("Wing\nskin");
    const auto polylines = text.GetPolylines();
    ASSERT_GT(polylines.size(), 20);
    const double slope = std::tan(15 * std::numbers::pi / 180);
    ExpectOriginAndGuideLines(
        int(polylines.size()), {10, 20, 30},
        {plane.Evaluate(12, 0), plane.Evaluate(12 * slope, 12), plane.Evaluate(0, -22.5)});
    for (int i = 0; i < polylines.size(); ++i)
        EXPECT_EQ(polylines[i], GetPolyline(i));
}

TEST_F(ZORTestVisVectorTextDlgTest, OriginAndGuideLinesHaveTheAnchorsOfTheirLabels)
{
    OpenDialog();
    const QStringList calls = TraceCalls([this] { PressOk(); });
    EXPECT_EQ(QStringList("ZORDebugVizContainer::AddPoint((0, 0, 0), 255, 255, 255, 0, \"\", 4)"),
              calls.filter("::AddPoint("));
    const QStringList lines = calls.filter("::AddLine(");
    EXPECT_EQ(3, lines.size());
    for (const QString& line : lines)
        EXPECT_TRUE(line.endsWith("255, 255, 255, 0, \"\", 4, 2)")) << line.toStdString();
}

TEST_F(ZORTestVisVectorTextDlgTest, GuideLinesRunAlongTheBaselineAndTheHeightOfTheFirstLine)
{
    OpenDialog();
    Spin("_TextSizeSpn")->setValue(6);
    Spin("_LineSpacingSpn")->setValue(2);
    SetPlane({1, 2, 3, 1, 0, 0, 0, 1, 0});
    PressOk();
    ExpectOriginAndGuideLines(0, {1, 2, 3}, {{7, 2, 3}, {1, 8, 3}, {1, -10, 3}});
}

TEST_F(ZORTestVisVectorTextDlgTest, TiltOfTheGuideLineIsThatOfTheText)
{
    OpenDialog();
    Spin("_TextSizeSpn")->setValue(6);
    Spin("_TiltAngleSpn")->setValue(90); // more than the text can
    SetPlane({0, 0, 0, 1, 0, 0, 0, 1, 0});
    PressOk();
    const double slope = std::tan(85 * std::numbers::pi / 180);
    ExpectOriginAndGuideLines(0, {}, {{6, 0, 0}, {6 * slope, 6, 0}, {0, -10, 0}});
    EXPECT_EQ(QVariant(90.0), GetSetting("TiltAngle"));
}

TEST_F(ZORTestVisVectorTextDlgTest, CallsTheSdkInTheOrderOfTheForm)
{
    OpenDialog();
    Spin("_LineSpacingSpn")->setValue(1.5);
    Type("I");
    QStringList names;
    for (const QString& call : TraceCalls([this] { PressOk(); })) {
        if (call.startsWith("ZORVisVectorText::"))
            names.append(call.mid(18).section('(', 0, 0));
    }
    EXPECT_EQ(QStringList({"ZORVisVectorText", "SetFont", "SetAnchor", "SetLineSpacing",
                           "SetCharacterSpacing", "SetOrientation", "SetJustification", "SetDecorations",
                           "SetTextSize", "SetTiltAngle", "SetPlane", "SetText"}),
              names);
}

TEST_F(ZORTestVisVectorTextDlgTest, MenuEntryOfTheConsoleOpensIt)
{
    OpenConsole();
    ZORTestDialog* opened = TriggerMenu("actionCreate_Vector_Text");
    ASSERT_NE(nullptr, opened);
    EXPECT_STREQ("ZORTestVisVectorTextDlg", opened->metaObject()->className());
    Spin("_TextSizeSpn")->setValue(10);
    SetPlane({0, 0, 0, 1, 0, 0, 0, 1, 0});
    Type("I");
    PressOk();
    EXPECT_LT(4, GetNumDrawn());
    EXPECT_FALSE(dialog && dialog->isVisible());
}

} // namespace
