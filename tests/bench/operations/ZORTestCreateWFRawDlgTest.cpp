// Tests of the dialogs ZORTestCreateWFRawCurveDlg and ZORTestCreateWFRawSurfaceDlg.

#include "OperationTest.h"

#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

namespace {

struct RawDialog
{
    const char* className;
    QString label;
    QString title;
    QString caption;
    QString geoType;
    const char* selector;
    QString message;
    const char* feature;
    int dimension;
    const char* action;
};

const RawDialog kRawDialogs[] = {
    {"ZORTestCreateWFRawCurveDlg", "Create WF Raw Curve", "Create Raw Curve", "Curve: ", "ZORGeoCurve",
     "_CurveSel", "Selection of curve was invalid", "ZORWFRawCurve", 1, "actionCreate_Raw_Curve"},
    {"ZORTestCreateWFRawSurfaceDlg", "Create WF Raw Surface", "Create Raw Surface",
     "Surface: ", "ZORGeoSurface", "_SurfaceSel", "Selection of surface was invalid", "ZORWFRawSurface", 2,
     "actionCreate_Raw_Surface"},
};

class ZORTestCreateWFRawDlgTest : public OperationTest, public testing::WithParamInterface<RawDialog>
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open(GetParam().className)); }
    /// The geometry "G" that the dialog takes.
    ZORGeoGeometry* AddGeometry()
    {
        ZORGeoGeometry* const geometry =
            GetParam().dimension == 1 ? static_cast<ZORGeoGeometry*>(AddPolyline("G", {{0, 0, 0}, {1, 0, 0}}))
                                      : AddSquare("G");
        TakeNew();
        return geometry;
    }
};

INSTANTIATE_TEST_SUITE_P(All, ZORTestCreateWFRawDlgTest, testing::ValuesIn(kRawDialogs),
                         [](const auto& suite) { return std::string(suite.param.feature); });

TEST_P(ZORTestCreateWFRawDlgTest, FormAsksForAGeometryAndAFolder)
{
    AddGeometry();
    AddPoint("P");
    AddFolder("F");
    OpenDialog();
    EXPECT_EQ(GetParam().title, dialog->windowTitle());
    EXPECT_EQ(GetParam().label, GetClassInfo("label"));
    EXPECT_EQ(QString(), GetClassInfo("createdTypes"));
    EXPECT_EQ(QStringList({GetParam().caption, "Folder: "}), GetCaptions());
    EXPECT_EQ(QStringList({GetParam().geoType, "ZORFeatFolder"}), GetGeoTypes());
    EXPECT_EQ(QStringList({"G"}), GetCandidates(GetParam().selector));
    EXPECT_EQ(2, GetCandidates("_FolderSel").size()) << "the root is a folder as well";
}

TEST_P(ZORTestCreateWFRawDlgTest, OkAddsAFeatureAroundTheGeometry)
{
    const ZORGeoGeometry* const geometry = AddGeometry();
    ZORFeatFolder* const folder = AddFolder("F");
    OpenDialog();
    Select("_FolderSel", "F (F)");
    const QString name = QLatin1String(GetParam().feature);
    EXPECT_EQ(QStringList({name + "::" + name + "(<F>, <G>)", name + "::Initialize()"}), TraceOk());
    const QList<ZORGeoGeometry*> added = TakeNew();
    ASSERT_EQ(2, added.size()) << "body and feature";
    const auto* const feature = qobject_cast<const ZORFeatGeometry*>(added[1]);
    ASSERT_TRUE(feature);
    EXPECT_STREQ(GetParam().feature, feature->metaObject()->className());
    EXPECT_EQ(folder, feature->GetParentFeature());
    EXPECT_EQ(added[0], feature->GetBody());
    EXPECT_EQ(geometry, feature->GetBody()->GetGeometry());
    EXPECT_EQ(GetParam().dimension, feature->GetBody()->GetDimension());
    EXPECT_EQ(1, geometry->GetReferenceCount());
}

TEST_P(ZORTestCreateWFRawDlgTest, MissingGeometryComesBeforeMissingFolder)
{
    OpenDialog();
    EXPECT_EQ(QStringList(), TraceOk());
    EXPECT_EQ(QStringList({GetParam().message}), boxes.TakeErrors());

    AddFolder("F");
    OpenDialog();
    PressOk();
    EXPECT_EQ(QStringList({GetParam().message}), boxes.TakeErrors());
    EXPECT_TRUE(TakeNew().isEmpty());
}

TEST_P(ZORTestCreateWFRawDlgTest, MissingFolderIsReported)
{
    AddGeometry();
    OpenDialog();
    ExpectRefused("Selection of folder was invalid", SdkCalls::None);
    EXPECT_EQ(QList<bool>({true}), finished) << "OK closes it all the same";
}

TEST_P(ZORTestCreateWFRawDlgTest, ConsoleOpensItFromItsMenu)
{
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu(GetParam().action));
    EXPECT_STREQ(GetParam().className, dialog->metaObject()->className());
}

} // namespace
