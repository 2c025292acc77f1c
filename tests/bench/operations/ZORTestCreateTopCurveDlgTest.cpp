#include "OperationTest.h"

#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORTopology/ZORTopBody.h>

#include <QDoubleSpinBox>

namespace {

const QString Key = QStringLiteral("Debug/CreateTopCurve/Tolerance");

class ZORTestCreateTopCurveDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestCreateTopCurveDlg")); }
    QDoubleSpinBox* Tolerance() const { return Field<QDoubleSpinBox>("_ToleranceSpin"); }
    QVariant Stored() { return GetSettings()->value(Key); }
};

TEST_F(ZORTestCreateTopCurveDlgTest, FormAsksForACurveAndAnEdgeTolerance)
{
    AddPolyline("C", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}});
    AddSquare("S");
    OpenDialog();
    EXPECT_EQ(QString("Create Topological Curve"), dialog->windowTitle());
    EXPECT_EQ(QString("Create Topological Curve"), GetClassInfo("label"));
    EXPECT_EQ(QString("ZORTopBody"), GetClassInfo("createdTypes"));
    EXPECT_EQ(QString("1"), GetClassInfo("bodyDim"));
    EXPECT_EQ(QStringList({"Curve: ", "Edge Tolerance: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORGeoCurve"}), GetGeoTypes());
    EXPECT_EQ(QStringList({"C"}), GetCandidates("_CurveSel"));
}

TEST_F(ZORTestCreateTopCurveDlgTest, FirstUseShowsAndPasses45Degrees)
{
    AddPolyline("C", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}});
    TakeNew();
    OpenDialog();
    EXPECT_EQ(45.0, Tolerance()->value());
    EXPECT_FALSE(Stored().isValid());
    EXPECT_EQ(QStringList({"ZORSysSettingGroupContext::ZORSysSettingGroupContext(<>, \"Debug\")",
                           "ZORSysSettingGroupContext::ZORSysSettingGroupContext(<>, \"CreateTopCurve\")",
                           "ZORTopFactory::ZORTopFactory(<>)",
                           "ZORTopFactory::CreateCurve(<C>, 0.78539816339744828)"}),
              TraceOk());
    EXPECT_EQ(0.7853981633974483, Stored().toDouble());
    const auto* body = TakeOnly<ZORTopBody>();
    EXPECT_TRUE(body->IsInitialized());
    EXPECT_EQ(1, body->GetDimension());
    EXPECT_EQ(0, body->GetNumFaces());
    EXPECT_EQ(4, body->GetNumEdges());
    EXPECT_EQ(4, body->GetNumVertices());
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_F(ZORTestCreateTopCurveDlgTest, ToleranceIsStoredInRadiansAndShownInDegrees)
{
    AddPolyline("C", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}});
    TakeNew();
    OpenDialog();
    Tolerance()->setValue(99);
    PressOk();
    EXPECT_EQ(99 * 3.141592653589793 / 180, Stored().toDouble());
    const auto* body = TakeOnly<ZORTopBody>();
    EXPECT_EQ(1, body->GetNumEdges()) << "turns of 90 degrees are smooth";
    OpenDialog();
    EXPECT_EQ(99.0, Tolerance()->value());
    GetSettings()->setValue(Key, 0.5235987755982988);
    OpenDialog();
    EXPECT_EQ(30.0, Tolerance()->value());
}

TEST_F(ZORTestCreateTopCurveDlgTest, MissingSelectionIsReportedAndStoresNothing)
{
    AddSquare("S");
    TakeNew();
    OpenDialog();
    EXPECT_EQ(QStringList(), TraceOk());
    EXPECT_EQ(QStringList({"Curve selection invalid"}), boxes.TakeErrors());
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_FALSE(Stored().isValid());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestCreateTopCurveDlgTest, FailureOfTheSdkShowsNoMessageAndStoresTheTolerance)
{
    AddPolyline("Empty", {});
    TakeNew();
    OpenDialog();
    Tolerance()->setValue(10);
    PressOk();
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(10 * 3.141592653589793 / 180, Stored().toDouble());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestCreateTopCurveDlgTest, CancelCreatesAndStoresNothing)
{
    AddPolyline("C", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}});
    TakeNew();
    OpenDialog();
    PressCancel();
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_FALSE(Stored().isValid());
}

TEST_F(ZORTestCreateTopCurveDlgTest, ConsoleOpensItFromItsMenu)
{
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu("_TopCurveAction"));
    EXPECT_STREQ("ZORTestCreateTopCurveDlg", dialog->metaObject()->className());
}

} // namespace
