#include "OperationTest.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QDoubleSpinBox>

namespace {

const QString Key = QStringLiteral("Debug/CreateTopSurface/Tolerance");

class ZORTestCreateTopSurfaceDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestCreateTopSurfaceDlg")); }
    QDoubleSpinBox* Tolerance() const { return Field<QDoubleSpinBox>("_ToleranceSpin"); }
    QVariant Stored() { return GetSettings()->value(Key); }
};

TEST_F(ZORTestCreateTopSurfaceDlgTest, FormAsksForASurfaceAndAnEdgeTolerance)
{
    AddCube("C");
    AddPolyline("P", {{0, 0, 0}, {1, 0, 0}});
    OpenDialog();
    EXPECT_EQ(QString("Create Topological Surface"), dialog->windowTitle());
    EXPECT_EQ(QString("Create Topological Surface"), GetClassInfo("label"));
    EXPECT_EQ(QString("ZORTopBody"), GetClassInfo("createdTypes"));
    EXPECT_EQ(QString("2"), GetClassInfo("bodyDim"));
    EXPECT_EQ(QStringList({"Surface: ", "Edge Tolerance: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORGeoSurface"}), GetGeoTypes());
    EXPECT_EQ(QStringList({"C"}), GetCandidates("_SurfaceSel"));
}

TEST_F(ZORTestCreateTopSurfaceDlgTest, FirstUseShowsAndPasses45Degrees)
{
    AddCube("C");
    TakeNew();
    OpenDialog();
    EXPECT_EQ(45.0, Tolerance()->value());
    EXPECT_FALSE(Stored().isValid());
    EXPECT_EQ(QStringList({"ZORSysSettingGroupContext::ZORSysSettingGroupContext(<>, \"Debug\")",
                           "ZORSysSettingGroupContext::ZORSysSettingGroupContext(<>, \"CreateTopSurface\")",
                           "ZORTopFactory::ZORTopFactory(<>)",
                           "ZORTopFactory::CreateSurface(<C>, 0.78539816339744828)"}),
              TraceOk());
    EXPECT_EQ(0.7853981633974483, Stored().toDouble());
    const auto* body = TakeOnly<ZORTopBody>();
    EXPECT_TRUE(body->IsInitialized());
    EXPECT_EQ(2, body->GetDimension());
    EXPECT_EQ(6, body->GetNumFaces());
    EXPECT_EQ(12, body->GetNumEdges());
    EXPECT_EQ(8, body->GetNumVertices());
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_F(ZORTestCreateTopSurfaceDlgTest, ToleranceIsStoredInRadiansAndShownInDegrees)
{
    AddCube("C");
    TakeNew();
    OpenDialog();
    Tolerance()->setValue(99);
    PressOk();
    EXPECT_EQ(99 * 3.141592653589793 / 180, Stored().toDouble());
    const auto* body = TakeOnly<ZORTopBody>();
    EXPECT_EQ(1, body->GetNumFaces()) << "turns of 90 degrees are smooth";
    OpenDialog();
    EXPECT_EQ(99.0, Tolerance()->value());
    GetSettings()->setValue(Key, 0.5235987755982988);
    OpenDialog();
    EXPECT_EQ(30.0, Tolerance()->value());
}

TEST_F(ZORTestCreateTopSurfaceDlgTest, MissingSelectionIsReportedAndStoresNothing)
{
    AddPolyline("P", {{0, 0, 0}, {1, 0, 0}});
    TakeNew();
    OpenDialog();
    EXPECT_EQ(QStringList(), TraceOk());
    EXPECT_EQ(QStringList({"Surface selection invalid"}), boxes.TakeErrors());
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_FALSE(Stored().isValid());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestCreateTopSurfaceDlgTest, FailureOfTheSdkShowsNoMessageAndStoresTheTolerance)
{
    (new ZORGeoSurface(GetContainer(), {}, {}))->Initialize();
    TakeNew();
    OpenDialog();
    Tolerance()->setValue(10);
    PressOk();
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(10 * 3.141592653589793 / 180, Stored().toDouble());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestCreateTopSurfaceDlgTest, CancelCreatesAndStoresNothing)
{
    AddCube("C");
    TakeNew();
    OpenDialog();
    PressCancel();
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_FALSE(Stored().isValid());
}

TEST_F(ZORTestCreateTopSurfaceDlgTest, ConsoleOpensItFromItsMenu)
{
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu("_TopSurfaceAction"));
    EXPECT_STREQ("ZORTestCreateTopSurfaceDlg", dialog->metaObject()->className());
}

} // namespace
