// Inputs that the dialog of curves on supports refuses.

#include "CurveOnSupportDlgTest.h"

#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORTopology/ZORTopBody.h>

namespace {

using ZORTestWFCurveOnSupportDlgFaultsTest = CurveOnSupportDlgTest;

TEST_F(ZORTestWFCurveOnSupportDlgFaultsTest, MissingInputsAreReportedInTheirOrder)
{
    const QStringList early{"EndLen", "Flip", "StartLen", "Type", "UseEndLen", "UseStartLen"};
    OpenDialog();
    ExpectRefusal("Surface selection invalid");
    EXPECT_EQ(early, SettingKeys()) << "written before anything is checked, the angle is not";
    AddInputs();
    OpenDialog();
    SelectInputs();
    Clear("_StartPtSel");
    Clear("_EndPtSel");
    ExpectRefusal("Start point selection invalid");
    OpenDialog();
    SelectInputs();
    Clear("_EndPtSel");
    Clear("_FolderSel");
    ExpectRefusal("End point selection invalid");
    EXPECT_EQ(early, SettingKeys());
    OpenDialog();
    SelectInputs();
    Clear("_FolderSel");
    ExpectRefusal("Folder selection invalid");
    EXPECT_TRUE(SettingKeys().contains("Angle"));
    for (const int type : {1, 2}) {
        OpenDialog(type);
        SelectInputs();
        Clear("_EndPtSel");
        Clear("_DirSel");
        ExpectRefusal("Direction selection invalid");
    }
}

TEST_F(ZORTestWFCurveOnSupportDlgFaultsTest, InputsOfOtherClassesAreReported)
{
    struct
    {
        int type;
        const char* selector;
        const char* message;
    } const cases[] = {{0, "_SurfaceSel", "Surface selection invalid"},
                       {0, "_StartPtSel", "Start point selection invalid"},
                       {0, "_EndPtSel", "End point selection invalid"},
                       {0, "_FolderSel", "Folder selection invalid"},
                       {1, "_DirSel", "Direction selection invalid"}};
    AddInputs();
    ZORGeoGeometry* const wrong = AddPolyline("L", {{0, 0, 0}, {1, 0, 0}});
    TakeNew();
    for (const auto& [type, selector, message] : cases) {
        OpenDialog(type);
        SelectInputs();
        auto* combo = Field<ZORTestGeometrySelector>(selector)->findChild<QComboBox*>("_Combo");
        combo->addItem("wrong", QVariant::fromValue(wrong));
        combo->setCurrentIndex(combo->count() - 1);
        ExpectRefusal(QLatin1String(message));
    }
}

TEST_F(ZORTestWFCurveOnSupportDlgFaultsTest, LimitsThatAreNoFeaturesAreReported)
{
    AddInputs();
    ZORGeoPolyline* const polyline = AddPolyline("L", {{0, 0, 0}, {1, 0, 0}});
    ZORWFRawCurve* const limit = AddLimit("L1", 75);
    OpenDialog(0); // read for every type
    SelectInputs();
    SelectInList("_StartLimitSel", limit);
    SelectInList("_StartLimitSel", polyline);
    SelectInList("_EndLimitSel", polyline);
    ExpectRefusal("Start limit selection invalid");
    OpenDialog(2);
    SelectInputs();
    SelectInList("_StartLimitSel", limit);
    SelectInList("_EndLimitSel", polyline);
    ExpectRefusal("End limit selection invalid");
}

TEST_F(ZORTestWFCurveOnSupportDlgFaultsTest, FailureOfTheSdkIsShownAndTheFeatureStays)
{
    AddInputs();
    OpenDialog();
    SelectInputs();
    SelectFeature("_SurfaceSel", "St");
    const QStringList calls = TraceOk();
    EXPECT_EQ(QStringList({"the support is no surface"}), boxes.TakeErrors());
    EXPECT_EQ(kClass + "SetEndPoint(<En>) ! the support is no surface", calls.constLast());
    const ZORWFCurveOnSupport* const feature = TakeFeature();
    EXPECT_EQ(folder, feature->GetParentFeature());
    EXPECT_EQ(nullptr, feature->GetBody());
}

} // namespace
