#include "OperationTest.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>

namespace {

class ZORTestGeoCleanCurveDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestGeoCleanCurveDlg")); }
};

TEST_F(ZORTestGeoCleanCurveDlgTest, FormAsksForACurveOnASurface)
{
    AddPolyline("C", {{0, 0, 0}, {10, 0, 0}});
    OpenDialog();
    ExpectClass("Clean Curve", {});
    EXPECT_EQ(QStringList({"Curve"}), GetCaptions()) << "without a colon";
    EXPECT_EQ(QStringList({"ZORGeoCurveOnSurface"}), GetGeoTypes());
    EXPECT_EQ(QStringList(), GetCandidates("_CurveSel")) << "a plain polyline is not on a surface";
}

TEST_F(ZORTestGeoCleanCurveDlgTest, ReportsThatAnyCurveIsFree)
{
    ZORGeoSurface* const surface = AddSquare("S");
    auto* curve = new ZORGeoCurveOnSurface({surface->Project({1, 1, 0}), surface->Project({1, 1, 0})}, false);
    curve->Initialize();
    TakeNew();
    OpenDialog();
    QPointer<ZORTestDialog> shown = dialog;
    const QWidget* const parent = dialog.data();
    EXPECT_EQ(QStringList(), TraceOk());
    const QList<MessageBoxCatcher::Box> taken = boxes.Take();
    ASSERT_EQ(1, taken.size());
    EXPECT_EQ(QMessageBox::Information, taken[0].icon);
    EXPECT_EQ(QString("No error found"), taken[0].title);
    EXPECT_EQ(QString("No error was found in the curve."), taken[0].text);
    EXPECT_EQ(QMessageBox::StandardButtons(QMessageBox::Ok), taken[0].buttons);
    EXPECT_EQ(parent, taken[0].parent);
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(QList<bool>({true, true}), finished);
    EXPECT_TRUE(shown.isNull());
}

TEST_F(ZORTestGeoCleanCurveDlgTest, MissingCurveIsReported)
{
    OpenDialog();
    PressOk();
    EXPECT_EQ(QStringList({"Selection of curve was invalid"}), boxes.TakeErrors());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestGeoCleanCurveDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("_CleanCurveAction", "ZORTestGeoCleanCurveDlg");
}

} // namespace
