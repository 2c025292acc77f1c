#include "GeodesicDlgTest.h"

#include <ZORGeometry/ZORGeoPointOnSurface.h>

#include <QComboBox>

#include <numbers>

namespace {

using ZORTestGeoGeodesicDlgTest = GeodesicDlgTest;

constexpr double kPi = std::numbers::pi;

void ExpectAngles(const QList<double>& expected, const QList<double>& angles)
{
    ASSERT_EQ(expected.size(), angles.size());
    for (qsizetype i = 0; i < expected.size(); ++i)
        EXPECT_DOUBLE_EQ(expected[i], angles[i]) << i;
}

TEST_F(ZORTestGeoGeodesicDlgTest, FormStandsAsItIsKnown)
{
    AddPoint("Free");
    OpenDialog();
    EXPECT_EQ(QString("Create Geodesic"), dialog->windowTitle());
    EXPECT_EQ(QString("Create Geodesic Curve"), GetClassInfo("label"));
    EXPECT_EQ(QString("ZORGeoCurveOnSurface"), GetClassInfo("createdTypes"));
    EXPECT_EQ(
        QStringList({"Start Point:  ", "End Point:  ", "Angle: ", "Start Length: ", "End Length: ",
                     "Reference Dir: ", "Compute as fan", "Brute Force", "Brute Force Limits Preprocessing",
                     "Start Limits: ", "End Limits: ", "Soft Start Limits: ", "Soft End Limits: "}),
        GetCaptions());
    const QString point("ZORGeoPointOnSurface"), curve("ZORGeoCurveOnSurface");
    EXPECT_EQ(QStringList({point, point, curve, curve, curve, curve}), GetGeoTypes());
    EXPECT_EQ(QStringList({"P"}), GetCandidates("_StartSel"));
    EXPECT_EQ(QStringList({"P"}), GetCandidates("_EndSel"));
    for (const char* name : {"_StartLimSel", "_EndLimSel", "_StartSoftSel", "_EndSoftSel"})
        EXPECT_TRUE(Field<ZORTestGeometrySelector>(name)->property("multi").toBool()) << name;
    EXPECT_EQ(QString("Angle"), Field<ZORCmnUnitSpinBox>("_AngleSpin")->property("magnitude").toString());
    for (const char* name : {"_StartLenSpin", "_EndLenSpin"})
        EXPECT_EQ(QString("Length"), Field<ZORCmnUnitSpinBox>(name)->property("magnitude").toString());

    const auto* combo = Field<QComboBox>("_DirCombo");
    QStringList directions;
    for (int i = 0; i < combo->count(); ++i)
        directions.append(combo->itemText(i));
    EXPECT_EQ(QStringList({"X", "Y", "Z", "Second Pt"}), directions);
    EXPECT_EQ(0, Field<QSpinBox>("_BruteForceSpin")->minimum());
    EXPECT_EQ(99, Field<QSpinBox>("_BruteForceSpin")->maximum());
}

TEST_F(ZORTestGeoGeodesicDlgTest, FieldsStartWithTheirDefaultsAndStayEnabled)
{
    OpenDialog();
    for (const char* name : {"_AngleSpin", "_StartLenSpin", "_EndLenSpin"}) {
        EXPECT_EQ(0.0, Field<ZORCmnUnitSpinBox>(name)->GetInternalValue()) << name;
        EXPECT_TRUE(Field<ZORCmnUnitSpinBox>(name)->isEnabled()) << name;
    }
    for (const char* name :
         {"_StartLenCheck", "_EndLenCheck", "_FanCheck", "_BruteForceCheck", "_BruteForceLimitsCheck"})
        EXPECT_FALSE(Field<QCheckBox>(name)->isChecked()) << name;
    EXPECT_EQ(0, Field<QComboBox>("_DirCombo")->currentIndex());
    EXPECT_EQ(1, Field<QSpinBox>("_BruteForceSpin")->value());
    EXPECT_TRUE(Field<QSpinBox>("_BruteForceSpin")->isEnabled());
    PressCancel();
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty()) << "written by OK alone";
}

TEST_F(ZORTestGeoGeodesicDlgTest, OneGeodesicRunsFromBorderToBorderWithoutLengths)
{
    OpenDialog();
    EXPECT_EQ(QStringList({"ZORGeoCurveOnSurfaceProcessor::ZORGeoCurveOnSurfaceProcessor(<S>, nan, nan)",
                           "ZORGeoCurveOnSurfaceProcessor::ClearGeometricLimits()"}),
              TraceOk().filter("Processor").mid(0, 2));
    const QList<const ZORGeoCurveOnSurface*> curves = TakeCurves();
    ASSERT_EQ(1, curves.size());
    EXPECT_TRUE(IsNear({0, 60, 0}, curves[0]->GetPoint(0)));
    EXPECT_TRUE(IsNear({100, 60, 0}, EndOf(curves[0])));
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_F(ZORTestGeoGeodesicDlgTest, CheckedLengthsBoundTheSides)
{
    OpenDialog();
    Check("_StartLenCheck");
    SetLength("_StartLenSpin", 5);
    SetLength("_EndLenSpin", 7); // not checked
    EXPECT_TRUE(TraceOk().join('\n').contains("ZORGeoCurveOnSurfaceProcessor(<S>, 5, nan)"));
    OpenDialog();
    Check("_StartLenCheck", false);
    Check("_EndLenCheck");
    SetLength("_EndLenSpin", 7);
    EXPECT_TRUE(TraceOk().join('\n').contains("ZORGeoCurveOnSurfaceProcessor(<S>, nan, 7)"));
    const QList<const ZORGeoCurveOnSurface*> curves = TakeCurves();
    ASSERT_EQ(2, curves.size());
    EXPECT_TRUE(IsNear({35, 60, 0}, curves[0]->GetPoint(0)));
    EXPECT_TRUE(IsNear({100, 60, 0}, EndOf(curves[0])));
    EXPECT_TRUE(IsNear({0, 60, 0}, curves[1]->GetPoint(0)));
    EXPECT_TRUE(IsNear({47, 60, 0}, EndOf(curves[1])));
}

TEST_F(ZORTestGeoGeodesicDlgTest, DirectionsGoByTheirIndex)
{
    const QString expected[] = {"(1, 0, 0)", "(0, 1, 0)", "(0, 0, 1)", "(0, 0, 0)"};
    for (int i = 0; i < 4; ++i) {
        OpenDialog();
        Field<QComboBox>("_DirCombo")->setCurrentIndex(i);
        const QString call = TraceOk().filter("::ComputeGeodesic(").value(0);
        EXPECT_TRUE(call.endsWith(QString(", %1, 0)").arg(expected[i]))) << call.toStdString();
    }
    OpenDialog();
    Field<QComboBox>("_DirCombo")->setCurrentIndex(-1);
    EXPECT_TRUE(TraceOk().filter("::ComputeGeodesic(").value(0).endsWith(", (0, 0, 0), 0)"));
    EXPECT_EQ(5, TakeCurves().size()) << "a vanishing reference gives a curve as well";
}

TEST_F(ZORTestGeoGeodesicDlgTest, AngleIsShownInDegreesAndPassedInRadians)
{
    OpenDialog();
    Field<ZORCmnUnitSpinBox>("_AngleSpin")->setValue(90);
    ExpectAngles({kPi / 2}, AnglesOf(TraceOk()));
    EXPECT_DOUBLE_EQ(kPi / 2, Setting("Angle").toDouble());
    const QList<const ZORGeoCurveOnSurface*> curves = TakeCurves();
    ASSERT_EQ(1, curves.size());
    EXPECT_TRUE(IsNear({40, 100, 0}, EndOf(curves[0])));
}

TEST_F(ZORTestGeoGeodesicDlgTest, BruteForceWithoutFanKeepsTheFirstCurveOfAll)
{
    OpenDialog();
    SetBruteForce(4);
    Field<ZORCmnUnitSpinBox>("_AngleSpin")->SetInternalValue(0.25);
    const QStringList calls = TraceOk();
    ExpectAngles({0.25, 0.25 + kPi / 2, 0.25 + kPi, 0.25 + 3 * kPi / 2}, AnglesOf(calls));
    EXPECT_EQ(1, calls.filter("::ClearGeometricLimits(").size());
    EXPECT_EQ(4, calls.filter("::AddGeometricLimits(").size());
    EXPECT_EQ(1, TakeCurves().size());
}

TEST_F(ZORTestGeoGeodesicDlgTest, FanKeepsAllOfThem)
{
    OpenDialog();
    SetBruteForce(4);
    Check("_FanCheck");
    Check("_EndLenCheck");
    SetLength("_EndLenSpin", 10);
    Check("_StartLenCheck"); // of length 0
    TraceOk();
    const QList<const ZORGeoCurveOnSurface*> curves = TakeCurves();
    ASSERT_EQ(4, curves.size());
    const ZORMathPoint ends[] = {{50, 60, 0}, {40, 70, 0}, {30, 60, 0}, {40, 50, 0}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(IsNear({40, 60, 0}, curves[i]->GetPoint(0))) << i;
        EXPECT_TRUE(IsNear(ends[i], EndOf(curves[i]))) << i;
    }
}

TEST_F(ZORTestGeoGeodesicDlgTest, FanWithoutBruteForceIsOneCurve)
{
    OpenDialog();
    Check("_FanCheck");
    Field<QSpinBox>("_BruteForceSpin")->setValue(7);
    EXPECT_EQ(1, AnglesOf(TraceOk()).size());
    EXPECT_EQ(1, TakeCurves().size());
}

TEST_F(ZORTestGeoGeodesicDlgTest, NoIterationsComputeNothingAndSucceed)
{
    OpenDialog();
    SetBruteForce(0);
    const QStringList calls = TraceOk();
    EXPECT_EQ(1, calls.filter("Processor").size()) << "it is made: " << calls.join('\n').toStdString();
    EXPECT_EQ(0, calls.filter("GeometricLimits").size());
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_F(ZORTestGeoGeodesicDlgTest, InvalidStartPointIsReportedAfterTheSettingsAreWritten)
{
    OpenDialog();
    Field<ZORTestGeometrySelector>("_StartSel")->findChild<QComboBox*>("_Combo")->clear();
    Check("_FanCheck");
    EXPECT_EQ(QStringList({"ZORSysSettingGroupContext::ZORSysSettingGroupContext(<>, \"Debug\")",
                           "ZORSysSettingGroupContext::ZORSysSettingGroupContext(<>, \"GeoGeodesic\")"}),
              TraceOk());
    EXPECT_EQ(QStringList({"Invalid start point selection"}), boxes.TakeErrors());
    EXPECT_TRUE(Setting("ComputeAsFan").toBool());
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestGeoGeodesicDlgTest, WritesTheSettingsOfWhatIsUsed)
{
    OpenDialog();
    SetLength("_StartLenSpin", 3);
    Field<QSpinBox>("_BruteForceSpin")->setValue(9);
    PressOk();
    QStringList keys = GetSettings()->allKeys();
    for (QString& key : keys)
        key.remove(kGroup);
    EXPECT_EQ(QStringList({"Angle", "BruteForce", "BruteForceLimits", "ComputeAsFan", "Direction",
                           "UseEndLen", "UseStartLen"}),
              keys)
        << "neither length nor iterations, which are not used";
    for (const char* key : {"BruteForce", "BruteForceLimits", "ComputeAsFan", "UseEndLen", "UseStartLen"}) {
        EXPECT_EQ(QMetaType::Bool, Setting(key).typeId()) << key;
        EXPECT_FALSE(Setting(key).toBool()) << key;
    }
    EXPECT_EQ(QMetaType::Double, Setting("Angle").typeId());
    EXPECT_EQ(QVariant(0), Setting("Direction"));

    OpenDialog();
    SetBruteForce(2);
    Check("_StartLenCheck");
    Check("_EndLenCheck");
    SetLength("_StartLenSpin", 3);
    SetLength("_EndLenSpin", 4);
    PressOk();
    EXPECT_EQ(QVariant(3.0), Setting("StartLen"));
    EXPECT_EQ(QVariant(2), Setting("BruteForceIter"));
    EXPECT_FALSE(Setting("EndLen").isValid()) << "the end length never reaches the settings";
}

TEST_F(ZORTestGeoGeodesicDlgTest, ReopeningRestoresEverythingButTheEndLength)
{
    OpenDialog();
    Field<ZORCmnUnitSpinBox>("_AngleSpin")->setValue(33);
    Field<QComboBox>("_DirCombo")->setCurrentIndex(3);
    SetLength("_StartLenSpin", 1.5);
    SetLength("_EndLenSpin", 2.5);
    SetBruteForce(6);
    for (const char* name : {"_StartLenCheck", "_EndLenCheck", "_FanCheck", "_BruteForceLimitsCheck"})
        Check(name);
    PressOk();
    OpenDialog();
    EXPECT_DOUBLE_EQ(33, Field<ZORCmnUnitSpinBox>("_AngleSpin")->value());
    EXPECT_EQ(3, Field<QComboBox>("_DirCombo")->currentIndex());
    EXPECT_EQ(1.5, Field<ZORCmnUnitSpinBox>("_StartLenSpin")->value());
    EXPECT_EQ(0.0, Field<ZORCmnUnitSpinBox>("_EndLenSpin")->value());
    EXPECT_EQ(6, Field<QSpinBox>("_BruteForceSpin")->value());
    for (const char* name :
         {"_StartLenCheck", "_EndLenCheck", "_FanCheck", "_BruteForceCheck", "_BruteForceLimitsCheck"})
        EXPECT_TRUE(Field<QCheckBox>(name)->isChecked()) << name;
    PressCancel();

    GetSettings()->setValue(kGroup + "EndLen", 8.0);
    OpenDialog();
    EXPECT_EQ(8.0, Field<ZORCmnUnitSpinBox>("_EndLenSpin")->value()) << "whatever the key held before";
    SetLength("_EndLenSpin", 2);
    EXPECT_TRUE(TraceOk().join('\n').contains("Processor(<S>, 1.5, 2)")) << "the field is what counts";
    EXPECT_EQ(QVariant(8.0), Setting("EndLen"));
}

TEST_F(ZORTestGeoGeodesicDlgTest, FailureOfTheSdkIsShown)
{
    OpenDialog();
    Check("_EndLenCheck");
    SetLength("_EndLenSpin", -1);
    ExpectRefused("end length is negative");
}

TEST_F(ZORTestGeoGeodesicDlgTest, StartPointWhoseSurfaceIsGoneIsReportedByTheSdk)
{
    OpenDialog();
    delete surface;
    PressOk();
    EXPECT_EQ(QStringList({"surface is null"}), boxes.TakeErrors());
}

TEST_F(ZORTestGeoGeodesicDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("_GeodesicCurveAction", "ZORTestGeoGeodesicDlg");
}

} // namespace
