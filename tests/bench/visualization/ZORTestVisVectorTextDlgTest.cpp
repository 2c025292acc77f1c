#include "visualization/ZORTestVisVectorTextDlg.h"

#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"
#include "support/Printers.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORDebug/ZORDebugVizObject.h>
#include <ZORMathematics/ZORMathPlane.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepFactory.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisVectorText.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QMetaClassInfo>
#include <QMetaType>
#include <QPlainTextEdit>

#include <cmath>
#include <numbers>

namespace {

/// The nine boxes of the plane, in their order.
const QStringList kPlaneBoxes = {"_OriginXSpn",    "_OriginYSpn",    "_OriginZSpn",
                                 "_FirstDirXSpn",  "_FirstDirYSpn",  "_FirstDirZSpn",
                                 "_SecondDirXSpn", "_SecondDirYSpn", "_SecondDirZSpn"};

class ZORTestVisVectorTextDlgTest : public BenchTest
{
public:
    ZORTestVisVectorTextDlgTest() { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }
    ~ZORTestVisVectorTextDlgTest() override { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }

protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestVisVectorTextDlg")); }

    template<class Widget>
    Widget* Find(const QString& objectName)
    {
        auto* widget = dialog->findChild<Widget*>(objectName);
        EXPECT_NE(nullptr, widget) << objectName.toStdString();
        return widget;
    }
    QComboBox* Combo(const char* objectName) { return Find<QComboBox>(QLatin1String(objectName)); }
    QCheckBox* Check(const char* objectName) { return Find<QCheckBox>(QLatin1String(objectName)); }
    QDoubleSpinBox* Spin(const QString& objectName) { return Find<QDoubleSpinBox>(objectName); }

    void SetPlane(const QList<double>& values)
    {
        for (int i = 0; i < values.size(); ++i)
            Spin(kPlaneBoxes[i])->setValue(values[i]);
    }
    void Type(const QString& text) { Find<QPlainTextEdit>("_TextEdit")->setPlainText(text); }

    QVariant GetSetting(const char* key)
    {
        return GetSettings()->value(QStringLiteral("Debug/VisVectorText/") + QLatin1String(key));
    }
    void SetSetting(const char* key, const QVariant& value)
    {
        GetSettings()->setValue(QStringLiteral("Debug/VisVectorText/") + QLatin1String(key), value);
    }

    static int GetNumDrawn() { return ZORDebugVizContainer::GetContainer()->GetNumObjects(); }
    /// The one primitive of a drawing, which must be white, solid and without label.
    template<class Primitive>
    static const Primitive* GetDrawn(int index)
    {
        const ZORDebugVizObject* object = ZORDebugVizContainer::GetContainer()->GetObject(index);
        const auto* rep = dynamic_cast<const ZORVisRepGraphics*>(object->GetRep());
        EXPECT_NE(nullptr, rep);
        if (!rep)
            return nullptr;
        EXPECT_EQ(QString(), object->GetLabel());
        EXPECT_EQ(1, rep->GetPrimitives().size());
        EXPECT_EQ(QColor(255, 255, 255), rep->GetOptions().GetColor());
        EXPECT_EQ(ZORVisOptions::Solid, rep->GetOptions().GetLineStyle());
        EXPECT_EQ(ZORVisOptions::Cross, rep->GetOptions().GetPointSymbol());
        return dynamic_cast<const Primitive*>(rep->GetPrimitives().constFirst());
    }
    static ZORMathSetOfPoints GetPolyline(int index)
    {
        const auto* primitive = GetDrawn<ZORVisPolylinePrimitive>(index);
        EXPECT_NE(nullptr, primitive) << index;
        if (!primitive)
            return {};
        EXPECT_EQ(ZORVisPolylinePrimitive::Chain, primitive->GetStructure());
        return primitive->GetPoints();
    }
    /// What follows the \a numPolylines strokes: the origin and the lines to \a ends.
    static void ExpectOriginAndGuideLines(int numPolylines, const ZORMathPoint& origin,
                                          const QList<ZORMathPoint>& ends)
    {
        ASSERT_EQ(numPolylines + 1 + ends.size(), GetNumDrawn());
        const auto* point = GetDrawn<ZORVisPointPrimitive>(numPolylines);
        ASSERT_NE(nullptr, point);
        EXPECT_EQ(ZORMathSetOfPoints({origin}), point->GetPoints());
        for (int i = 0; i < ends.size(); ++i) {
            const ZORMathSetOfPoints line = GetPolyline(numPolylines + 1 + i);
            ASSERT_EQ(2, line.size());
            EXPECT_EQ(origin, line[0]);
            EXPECT_PRED2(IsNear, ends[i], line[1]);
        }
    }
};

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

TEST_F(ZORTestVisVectorTextDlgTest, FirstUseShowsZerosFirstEntriesAndNoDecorations)
{
    OpenDialog();
    for (const char* combo : {"_FontCombo", "_AnchorCombo", "_OrientationCombo", "_JustificationCombo"})
        EXPECT_EQ(0, Combo(combo)->currentIndex()) << combo;
    for (const char* check : {"_UnderlineChk", "_StrikeChk", "_OverlineChk"})
        EXPECT_FALSE(Check(check)->isChecked()) << check;
    const auto spinBoxes = dialog->findChildren<QDoubleSpinBox*>();
    EXPECT_EQ(13, spinBoxes.size());
    for (const QDoubleSpinBox* box : spinBoxes)
        EXPECT_EQ(0, box->value()) << box->objectName().toStdString();
    EXPECT_EQ(QString(), Find<QPlainTextEdit>("_TextEdit")->toPlainText());
}

TEST_F(ZORTestVisVectorTextDlgTest, OkOnFirstUseDrawsOriginAndGuideLinesAndWritesEveryKey)
{
    OpenDialog();
    PressOk();
    EXPECT_EQ(QList<bool>({true, true}), finished);
    ExpectOriginAndGuideLines(0, {}, {{}, {}, {}});

    GetSettings()->beginGroup("Debug/VisVectorText");
    QStringList keys = GetSettings()->childKeys();
    GetSettings()->endGroup();
    keys.sort();
    EXPECT_EQ(QStringList({"Anchor", "CharSpacing", "Decorations", "FirstDirX", "FirstDirY", "FirstDirZ",
                           "Font", "Justification", "LineSpacing", "Orientation", "OriginX", "OriginY",
                           "OriginZ", "SecondDirX", "SecondDirY", "SecondDirZ", "TextSize", "TiltAngle"}),
              keys);
    EXPECT_EQ(keys.size(), GetSettings()->allKeys().size());
    EXPECT_EQ(QVariant(ZORVisVectorFont::GetFontNames().constFirst()), GetSetting("Font"));
    for (const char* key : {"Anchor", "Orientation", "Justification", "Decorations"})
        EXPECT_EQ(QVariant(0), GetSetting(key)) << key;
    for (const char* key : {"LineSpacing", "CharSpacing", "TextSize", "TiltAngle", "OriginX", "SecondDirZ"})
        EXPECT_EQ(QVariant(0.0), GetSetting(key)) << key;
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

TEST_F(ZORTestVisVectorTextDlgTest, UnderlineAndOverlineAreStoredAsFive)
{
    OpenDialog();
    Check("_UnderlineChk")->setChecked(true);
    Check("_OverlineChk")->setChecked(true);
    PressOk();
    EXPECT_EQ(QVariant(5), GetSetting("Decorations"));

    OpenDialog();
    EXPECT_TRUE(Check("_UnderlineChk")->isChecked());
    EXPECT_FALSE(Check("_StrikeChk")->isChecked());
    EXPECT_TRUE(Check("_OverlineChk")->isChecked());
    Check("_StrikeChk")->setChecked(true);
    PressOk();
    EXPECT_EQ(QVariant(7), GetSetting("Decorations"));
}

TEST_F(ZORTestVisVectorTextDlgTest, NextDialogStartsFromAllValuesButTheText)
{
    OpenDialog();
    const auto spinBoxes = dialog->findChildren<QDoubleSpinBox*>();
    for (int i = 0; i < spinBoxes.size(); ++i)
        spinBoxes[i]->setValue(i % 2 ? -1234567.125 - i : 0.000001 * (i + 1));
    Combo("_FontCombo")->setCurrentText("scripts");
    Combo("_AnchorCombo")->setCurrentIndex(11);
    Combo("_OrientationCombo")->setCurrentIndex(1);
    Combo("_JustificationCombo")->setCurrentIndex(3);
    Check("_StrikeChk")->setChecked(true);
    Type("Not stored");
    PressOk();
    EXPECT_EQ(QVariant(QString("scripts")), GetSetting("Font"));
    EXPECT_EQ(QVariant(11), GetSetting("Anchor"));
    EXPECT_EQ(QVariant(1), GetSetting("Orientation"));
    EXPECT_EQ(QVariant(3), GetSetting("Justification"));
    EXPECT_EQ(QVariant(2), GetSetting("Decorations"));

    OpenDialog();
    const auto restored = dialog->findChildren<QDoubleSpinBox*>();
    ASSERT_EQ(13, restored.size());
    for (int i = 0; i < restored.size(); ++i)
        EXPECT_DOUBLE_EQ(i % 2 ? -1234567.125 - i : 0.000001 * (i + 1), restored[i]->value());
    EXPECT_EQ(QString("scripts"), Combo("_FontCombo")->currentText());
    EXPECT_EQ(11, Combo("_AnchorCombo")->currentIndex());
    EXPECT_EQ(1, Combo("_OrientationCombo")->currentIndex());
    EXPECT_EQ(3, Combo("_JustificationCombo")->currentIndex());
    EXPECT_TRUE(Check("_StrikeChk")->isChecked());
    EXPECT_EQ(QString(), Find<QPlainTextEdit>("_TextEdit")->toPlainText());
}

TEST_F(ZORTestVisVectorTextDlgTest, EveryKeyBelongsToItsBox)
{
    const QList<QPair<const char*, QString>> keys = {
        {"LineSpacing", "_LineSpacingSpn"}, {"CharSpacing", "_CharSpacingSpn"},
        {"TextSize", "_TextSizeSpn"},       {"TiltAngle", "_TiltAngleSpn"},
        {"OriginX", kPlaneBoxes[0]},        {"OriginY", kPlaneBoxes[1]},
        {"OriginZ", kPlaneBoxes[2]},        {"FirstDirX", kPlaneBoxes[3]},
        {"FirstDirY", kPlaneBoxes[4]},      {"FirstDirZ", kPlaneBoxes[5]},
        {"SecondDirX", kPlaneBoxes[6]},     {"SecondDirY", kPlaneBoxes[7]},
        {"SecondDirZ", kPlaneBoxes[8]}};
    for (int i = 0; i < keys.size(); ++i)
        SetSetting(keys[i].first, 1.5 + i);
    OpenDialog();
    for (int i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(1.5 + i, Spin(keys[i].second)->value()) << keys[i].first;
        Spin(keys[i].second)->setValue(-2.25 - i);
    }
    PressOk();
    for (int i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(QMetaType::Double, GetSetting(keys[i].first).typeId()) << keys[i].first;
        EXPECT_EQ(QVariant(-2.25 - i), GetSetting(keys[i].first)) << keys[i].first;
    }
}

TEST_F(ZORTestVisVectorTextDlgTest, StoredEntriesThatDoNotExistAreHarmless)
{
    SetSetting("Font", "no such font");
    SetSetting("Anchor", 99);
    SetSetting("Orientation", -5);
    SetSetting("Justification", "text");
    SetSetting("Decorations", 8);
    SetSetting("TextSize", "nan");
    OpenDialog();
    EXPECT_EQ(0, Combo("_FontCombo")->currentIndex());
    EXPECT_EQ(-1, Combo("_AnchorCombo")->currentIndex());
    EXPECT_EQ(-1, Combo("_OrientationCombo")->currentIndex());
    EXPECT_EQ(0, Combo("_JustificationCombo")->currentIndex());
    Type("I");
    PressOk();
    EXPECT_EQ(QList<bool>({true, true}), finished);
    EXPECT_EQ(QVariant(-1), GetSetting("Anchor"));
    EXPECT_EQ(QVariant(0), GetSetting("Decorations"));
}

TEST_F(ZORTestVisVectorTextDlgTest, CancelDrawsAndWritesNothing)
{
    OpenDialog();
    Type("Wing");
    PressCancel();
    EXPECT_EQ(QList<bool>({false}), finished);
    EXPECT_EQ(0, GetNumDrawn());
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
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
