// Tests of the dialogs ZORTestCreateTopCurveDlg and ZORTestCreateTopSurfaceDlg.

#include "OperationTest.h"

#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QDoubleSpinBox>

#include <numbers>

namespace {

struct TopDialog
{
    QString geometry; // also the suffix of the class of the geometry
    int dimension;
    int numFaces;
    int numEdges;
    int numVertices;
    const char* action;
};

const TopDialog kTopDialogs[] = {
    {"Curve", 1, 0, 4, 4, "_TopCurveAction"},
    {"Surface", 2, 6, 12, 8, "_TopSurfaceAction"},
};

class ZORTestCreateTopDlgTest : public OperationTest, public testing::WithParamInterface<TopDialog>
{
protected:
    QString GetGroup() const { return "CreateTop" + GetParam().geometry; }
    QString GetKey() const { return "Debug/" + GetGroup() + "/Tolerance"; }
    QString GetClassName() const { return "ZORTest" + GetGroup() + "Dlg"; }
    QByteArray GetSelector() const { return "_" + GetParam().geometry.toLatin1() + "Sel"; }
    bool IsCurve() const { return GetParam().dimension == 1; }
    void OpenDialog() { ASSERT_NE(nullptr, Open(GetClassName().toLatin1())); }
    QDoubleSpinBox* Tolerance() const { return Field<QDoubleSpinBox>("_ToleranceSpin"); }
    QVariant Stored() { return GetSettings()->value(GetKey()); }
    /// Adds the geometry "G" that the dialog takes: it turns by 90 degrees.
    void AddAngular()
    {
        if (IsCurve())
            AddPolyline("G", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}});
        else
            AddCube("G");
        TakeNew();
    }
    /// Adds a geometry that the dialog does not take.
    void AddOther()
    {
        if (IsCurve())
            AddSquare("O");
        else
            AddPolyline("O", {{0, 0, 0}, {1, 0, 0}});
        TakeNew();
    }
    /// Adds a geometry without a body.
    void AddEmpty()
    {
        if (IsCurve())
            AddPolyline("Empty", {});
        else
            (new ZORGeoSurface(GetContainer(), {}, {}))->Initialize();
        TakeNew();
    }
};

INSTANTIATE_TEST_SUITE_P(All, ZORTestCreateTopDlgTest, testing::ValuesIn(kTopDialogs),
                         [](const auto& suite) { return suite.param.geometry.toStdString(); });

TEST_P(ZORTestCreateTopDlgTest, FormAsksForAGeometryAndAnEdgeTolerance)
{
    AddAngular();
    AddOther();
    OpenDialog();
    const QString title = "Create Topological " + GetParam().geometry;
    EXPECT_EQ(title, dialog->windowTitle());
    EXPECT_EQ(title, GetClassInfo("label"));
    EXPECT_EQ(QString("ZORTopBody"), GetClassInfo("createdTypes"));
    EXPECT_EQ(QString::number(GetParam().dimension), GetClassInfo("bodyDim"));
    EXPECT_EQ(QStringList({GetParam().geometry + ": ", "Edge Tolerance: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORGeo" + GetParam().geometry}), GetGeoTypes());
    EXPECT_EQ(QStringList({"G"}), GetCandidates(GetSelector()));
}

TEST_P(ZORTestCreateTopDlgTest, FirstUseShowsAndPasses45Degrees)
{
    AddAngular();
    OpenDialog();
    EXPECT_EQ(45.0, Tolerance()->value());
    EXPECT_FALSE(Stored().isValid());
    const QString enterGroup = "ZORSysSettingGroupContext::ZORSysSettingGroupContext(<>, \"%1\")";
    EXPECT_EQ(
        QStringList({enterGroup.arg("Debug"), enterGroup.arg(GetGroup()), "ZORTopFactory::ZORTopFactory(<>)",
                     "ZORTopFactory::Create" + GetParam().geometry + "(<G>, 0.78539816339744828)"}),
        TraceOk());
    EXPECT_EQ(0.7853981633974483, Stored().toDouble());
    const auto* body = TakeOnly<ZORTopBody>();
    EXPECT_TRUE(body->IsInitialized());
    EXPECT_EQ(GetParam().dimension, body->GetDimension());
    EXPECT_EQ(GetParam().numFaces, body->GetNumFaces());
    EXPECT_EQ(GetParam().numEdges, body->GetNumEdges());
    EXPECT_EQ(GetParam().numVertices, body->GetNumVertices());
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_P(ZORTestCreateTopDlgTest, ToleranceIsStoredInRadiansAndShownInDegrees)
{
    AddAngular();
    OpenDialog();
    Tolerance()->setValue(99);
    PressOk();
    EXPECT_EQ(99 * std::numbers::pi / 180, Stored().toDouble());
    const auto* body = TakeOnly<ZORTopBody>();
    EXPECT_EQ(1, IsCurve() ? body->GetNumEdges() : body->GetNumFaces()) << "turns of 90 degrees are smooth";
    OpenDialog();
    EXPECT_EQ(99.0, Tolerance()->value());
    GetSettings()->setValue(GetKey(), 0.5235987755982988);
    OpenDialog();
    EXPECT_EQ(30.0, Tolerance()->value());
}

TEST_P(ZORTestCreateTopDlgTest, MissingSelectionIsReportedAndStoresNothing)
{
    AddOther();
    OpenDialog();
    EXPECT_EQ(QStringList(), TraceOk());
    EXPECT_EQ(QStringList({GetParam().geometry + " selection invalid"}), boxes.TakeErrors());
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_FALSE(Stored().isValid());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_P(ZORTestCreateTopDlgTest, FailureOfTheSdkShowsNoMessageAndStoresTheTolerance)
{
    AddEmpty();
    OpenDialog();
    Tolerance()->setValue(10);
    PressOk();
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(10 * std::numbers::pi / 180, Stored().toDouble());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_P(ZORTestCreateTopDlgTest, CancelCreatesAndStoresNothing)
{
    AddAngular();
    OpenDialog();
    PressCancel();
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_FALSE(Stored().isValid());
}

TEST_P(ZORTestCreateTopDlgTest, ConsoleOpensItFromItsMenu)
{
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu(GetParam().action));
    EXPECT_EQ(GetClassName().toLatin1(), dialog->metaObject()->className());
}

} // namespace
