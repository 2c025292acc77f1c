#include "OperationTest.h"
#include "console/ZORTestMainDialog.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>

namespace {

class ZORTestGeoCreateCartesianPointDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestGeoCreateCartesianPointDlg")); }
    void SetCoordinates(double x, double y, double z)
    {
        Field<ZORCmnUnitSpinBox>("_XSpin")->setValue(x);
        Field<ZORCmnUnitSpinBox>("_YSpin")->setValue(y);
        Field<ZORCmnUnitSpinBox>("_ZSpin")->setValue(z);
    }
};

TEST_F(ZORTestGeoCreateCartesianPointDlgTest, FormAsksForThreeCoordinates)
{
    OpenDialog();
    ExpectClass("Create Cartesian Point", "ZORGeoPoint");
    EXPECT_EQ(QStringList({"X", "Y", "Z"}), GetCaptions());
    EXPECT_TRUE(GetGeoTypes().isEmpty());
    for (const char* name : {"_XSpin", "_YSpin", "_ZSpin"})
        EXPECT_EQ(0.0, Field<ZORCmnUnitSpinBox>(name)->value()) << name;
}

TEST_F(ZORTestGeoCreateCartesianPointDlgTest, OkAddsThePoint)
{
    OpenDialog();
    SetCoordinates(1.5, -200, 1e6);
    EXPECT_EQ(QStringList({"ZORGeoCartesianPoint::ZORGeoCartesianPoint(<>, (1.5, -200, 1000000))",
                           "ZORGeoGeometry::Initialize()"}),
              TraceOk());
    const auto* point = TakeOnly<ZORGeoCartesianPoint>();
    EXPECT_EQ(ZORMathPoint(1.5, -200, 1e6), point->GetMathPoint());
    EXPECT_EQ(QString("CartesianPoint.1"), point->objectName()) << "named by the SDK";
    EXPECT_EQ(QList<bool>({true, true}), finished);
    EXPECT_TRUE(dialog.isNull());
}

TEST_F(ZORTestGeoCreateCartesianPointDlgTest, CancelAddsNothing)
{
    OpenDialog();
    SetCoordinates(1, 2, 3);
    PressCancel();
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ZORTestGeoCreateCartesianPointDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("_CartPointAction", "ZORTestGeoCreateCartesianPointDlg");
    EXPECT_EQ(console.data(), dialog->parentWidget());
    PressOk();
    EXPECT_EQ(ZORMathPoint(0, 0, 0), TakeOnly<ZORGeoPoint>()->GetMathPoint());
}

} // namespace
