#include "CurveOnSupportDlgTest.h"

#include <ZORTopology/ZORTopBody.h>

#include <QLayout>

namespace {

using ZORTestWFCurveOnSupportDlgTest = CurveOnSupportDlgTest;

TEST_F(ZORTestWFCurveOnSupportDlgTest, FormStandsAsItIsKnown)
{
    AddInputs();
    OpenDialog(1);
    Field<ZORTestGeometrySelector>("_EndPtSel")->show(); // all of it at once
    EXPECT_EQ(QString("Create Curve on Support"), dialog->windowTitle());
    EXPECT_EQ(QString("Curve on Support"), GetClassInfo("label"));
    EXPECT_EQ(QString(), GetClassInfo("createdTypes"));
    dialog->adjustSize();
    dialog->layout()->activate();
    EXPECT_EQ(QStringList({"Type: ", "Folder: ", "Support: ", "Start Point: ", "End Point: ", "Direction: ",
                           "Angle: ", "Flip direction", "Limit start to:", "Limit end to:",
                           "Start Limit Geometry:", "End Limit Geometry: "}),
              GetCaptions());
    const QString geometry("ZORFeatGeometry");
    EXPECT_EQ(
        QStringList({"ZORFeatFolder", geometry, geometry, geometry, "ZORFeatObject", geometry, geometry}),
        GetGeoTypes());
    const QStringList shapes{"Su (Su)", "St (St)", "En (En)"};
    for (const char* name : {"_SurfaceSel", "_StartPtSel", "_EndPtSel"})
        EXPECT_EQ(shapes, GetCandidates(name)) << name;
    EXPECT_EQ(5, GetCandidates("_DirSel").size()) << "folders as well";
    for (const char* name : {"_StartLimitSel", "_EndLimitSel"})
        EXPECT_TRUE(Field<ZORTestGeometrySelector>(name)->property("multi").toBool()) << name;
    EXPECT_EQ(QString("Angle"), Field<ZORCmnUnitSpinBox>("_AngleSpin")->property("magnitude").toString());
    for (const char* name : {"_StartLenSpin", "_EndLenSpin"})
        EXPECT_EQ(QString("Length"), Field<ZORCmnUnitSpinBox>(name)->property("magnitude").toString());
    const auto* combo = Field<QComboBox>("_TypeCombo");
    QStringList types;
    for (int i = 0; i < combo->count(); ++i)
        types.append(combo->itemText(i));
    EXPECT_EQ(QStringList({"point to point", "point direction", "constant angle"}), types);
}

TEST_F(ZORTestWFCurveOnSupportDlgTest, FirstTimeUserFindsTheDefaults)
{
    OpenDialog();
    EXPECT_EQ(0, Field<QComboBox>("_TypeCombo")->currentIndex());
    EXPECT_TRUE(Field<QCheckBox>("_StartLenCheck")->isChecked());
    EXPECT_TRUE(Field<QCheckBox>("_EndLenCheck")->isChecked());
    EXPECT_FALSE(Field<QCheckBox>("_FlipCheck")->isChecked());
    EXPECT_EQ(0.0, Field<ZORCmnUnitSpinBox>("_StartLenSpin")->GetInternalValue());
    EXPECT_EQ(100.0, Field<ZORCmnUnitSpinBox>("_EndLenSpin")->GetInternalValue());
    EXPECT_EQ(0.0, Field<ZORCmnUnitSpinBox>("_AngleSpin")->GetInternalValue());
    PressCancel();
    EXPECT_TRUE(SettingKeys().isEmpty()) << "written by OK alone";
}

TEST_F(ZORTestWFCurveOnSupportDlgTest, TypeShowsWhatItNeeds)
{
    const auto expectShown = [&](bool endPoint) {
        EXPECT_EQ(endPoint, Field<QWidget>("_EndPtSel")->isVisible());
        for (const char* name : {"_DirSel", "_AngleLabel", "_AngleSpin", "_FlipCheck"})
            EXPECT_EQ(!endPoint, Field<QWidget>(name)->isVisible()) << name;
        for (const char* name : {"_StartLenCheck", "_StartLenSpin", "_EndLenCheck", "_EndLenSpin",
                                 "_StartLimitSel", "_EndLimitSel", "_AngleSpin"})
            EXPECT_TRUE(Field<QWidget>(name)->isEnabled()) << name;
        for (const char* name : {"_StartLenCheck", "_EndLenSpin", "_StartLimitSel", "_EndLimitSel"})
            EXPECT_TRUE(Field<QWidget>(name)->isVisible()) << name;
    };
    OpenDialog();
    expectShown(true);
    for (const int type : {1, 0, 2, 1, 0}) {
        Field<QComboBox>("_TypeCombo")->setCurrentIndex(type);
        expectShown(type == 0);
    }
    PressCancel();
    GetSettings()->setValue(kGroup + "Type", 2);
    ASSERT_NE(nullptr, Open("ZORTestWFCurveOnSupportDlg"));
    expectShown(false);
}

TEST_F(ZORTestWFCurveOnSupportDlgTest, PointToPointPassesEverythingInOrder)
{
    AddInputs();
    OpenDialog();
    SelectInputs();
    Clear("_DirSel"); // hidden, not read
    Check("_FlipCheck", true);
    SetValue("_AngleSpin", 90);
    SetValue("_StartLenSpin", 2.5);
    EXPECT_EQ(QStringList({kClass + "ZORWFCurveOnSupport(<F>)", "ZORFeatComputedGeometry::Initialize()",
                           kClass + "SetSupport(<Su>)", kClass + "SetComputationMethod(0)",
                           kClass + "SetStartPoint(<St>)", kClass + "SetEndPoint(<En>)",
                           kClass + "SetStartLength(2.5)", kClass + "SetEndLength(100)",
                           kClass + "SetDirection(null)", kClass + "SetAngle(1.5707963267948966)",
                           kClass + "SetDirectionFlipped(true)"}),
              TraceFeature());
    ExpectRun(TakeFeature(), {50, 20, 0}, {90, 50, 0});
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_F(ZORTestWFCurveOnSupportDlgTest, DirectedTypesPassEverythingInOrder)
{
    AddInputs();
    ZORWFRawCurve* const first = AddLimit("L1", 45);
    ZORWFRawCurve* const second = AddLimit("L2", 75);
    for (const int type : {1, 2}) {
        OpenDialog(type);
        SelectInputs();
        Clear("_EndPtSel"); // hidden, not read
        SetValue("_StartLenSpin", 30);
        SelectInList("_StartLimitSel", second);
        SelectInList("_StartLimitSel", first);
        SelectInList("_EndLimitSel", second);
        EXPECT_EQ(
            QStringList({kClass + "ZORWFCurveOnSupport(<F>)", "ZORFeatComputedGeometry::Initialize()",
                         kClass + "SetSupport(<Su>)", kClass + QString("SetComputationMethod(%1)").arg(type),
                         kClass + "SetStartPoint(<St>)", kClass + "SetEndPoint(null)",
                         kClass + "SetStartLength(30)", kClass + "SetEndLength(100)",
                         kClass + "AddStartLimit(<L2>)", kClass + "AddStartLimit(<L1>)",
                         kClass + "AddEndLimit(<L2>)", kClass + "SetDirection(<F>)", kClass + "SetAngle(0)",
                         kClass + "SetDirectionFlipped(false)"}),
            TraceFeature());
        ExpectRun(TakeFeature(), {45, 20, 0}, {75, 20, 0});
    }
}

TEST_F(ZORTestWFCurveOnSupportDlgTest, AngleAndFlipTurnTheCurve)
{
    AddInputs();
    OpenDialog(2);
    SelectInputs();
    SetValue("_AngleSpin", -90);
    SetValue("_EndLenSpin", 30);
    Check("_FlipCheck", true);
    PressOk();
    ExpectRun(TakeFeature(), {50, 20, 0}, {50, 50, 0});
}

TEST_F(ZORTestWFCurveOnSupportDlgTest, UncheckedLengthsAreNanAndKeepTheirSettings)
{
    AddInputs();
    GetSettings()->setValue(kGroup + "StartLen", 7.0);
    OpenDialog(1);
    SelectInputs();
    Check("_StartLenCheck", false);
    Check("_EndLenCheck", false);
    SetValue("_StartLenSpin", 1);
    SetValue("_EndLenSpin", 2);
    const QStringList calls = TraceOk();
    EXPECT_TRUE(calls.contains(kClass + "SetStartLength(nan)"));
    EXPECT_TRUE(calls.contains(kClass + "SetEndLength(nan)"));
    EXPECT_EQ(7.0, Setting("StartLen").toDouble());
    EXPECT_FALSE(Setting("EndLen").isValid());
    EXPECT_EQ(QVariant(false), Setting("UseStartLen"));
    EXPECT_EQ(QVariant(false), Setting("UseEndLen"));
    ExpectRun(TakeFeature(), {0, 20, 0}, {200, 20, 0});
}

TEST_F(ZORTestWFCurveOnSupportDlgTest, SettingsComeBackInTheNextDialog)
{
    AddInputs();
    OpenDialog(2);
    SelectInputs();
    SetValue("_AngleSpin", 45);
    SetValue("_StartLenSpin", 3);
    SetValue("_EndLenSpin", 4);
    Check("_FlipCheck", true);
    PressOk();
    EXPECT_EQ(QStringList({"Angle", "EndLen", "Flip", "StartLen", "Type", "UseEndLen", "UseStartLen"}),
              SettingKeys());
    EXPECT_EQ(2, Setting("Type").toInt());
    EXPECT_NEAR(0.7853981633974483, Setting("Angle").toDouble(), 1e-12) << "radians";
    EXPECT_EQ(QVariant(true), Setting("Flip"));
    ASSERT_NE(nullptr, Open("ZORTestWFCurveOnSupportDlg"));
    EXPECT_EQ(2, Field<QComboBox>("_TypeCombo")->currentIndex());
    EXPECT_NEAR(45, Field<ZORCmnUnitSpinBox>("_AngleSpin")->value(), 1e-9);
    EXPECT_EQ(3.0, Field<ZORCmnUnitSpinBox>("_StartLenSpin")->GetInternalValue());
    EXPECT_EQ(4.0, Field<ZORCmnUnitSpinBox>("_EndLenSpin")->GetInternalValue());
    EXPECT_TRUE(Field<QCheckBox>("_FlipCheck")->isChecked());
}

TEST_F(ZORTestWFCurveOnSupportDlgTest, SelectorsFindTheCurveInItsBody)
{
    AddInputs();
    OpenDialog();
    SelectInputs();
    PressOk();
    const ZORWFCurveOnSupport* const feature = TakeFeature();
    ZORTestGeometrySelector selector(nullptr);
    selector.setProperty("geoType", "ZORFeatGeometry");
    selector.setProperty("bodyDim", "1");
    selector.SetEnvironment(GetEnvironment());
    EXPECT_EQ(feature, selector.GetSelectedGeometry());
    selector.setProperty("geoType", "ZORGeoCurveOnSurface");
    selector.OnReload();
    EXPECT_EQ(feature->GetBody()->GetGeometry(), selector.GetSelectedGeometry());
}

TEST_F(ZORTestWFCurveOnSupportDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("actionCreate_Curve_on_Support", "ZORTestWFCurveOnSupportDlg");
}

} // namespace
