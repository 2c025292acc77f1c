// Tests of canceling what the commands compute.

#include "StandardCommandsTest.h"
#include "support/ContainerBytes.h"

#include <ZORCommand/ZORCmdProgress.h>
#include <ZORComposites/ZORCompDrapingLayer.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORWireframe/ZORWFProjection.h>

#include <QApplication>
#include <QProgressDialog>
#include <QTimer>

namespace {

class ZORStdProgressTest : public StandardCommandsTest
{
protected:
    /// Presses Cancel as soon as there is a dialog with progress.
    ZORStdProgressTest()
    {
        QObject::connect(&watch, &QTimer::timeout, [this] {
            auto* const dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            ++numSeen;
            if (isCanceling)
                dialog->cancel();
        });
        watch.start(0);
    }
    /// A flat surface of 1000 x 1000 mm.
    ZORGeoSurface* AddPlate(const QString& name)
    {
        auto* const plate = new ZORGeoSurface(
            container, {{0, 0, 0}, {1000, 0, 0}, {1000, 1000, 0}, {0, 1000, 0}}, {{0, 1, 2}, {0, 2, 3}});
        plate->setObjectName(name);
        plate->Initialize();
        return plate;
    }

    QTimer watch;
    int numSeen = 0;
    bool isCanceling = true;
};

TEST_F(ZORStdProgressTest, DrapingThatIsCanceledLeavesTheContainerAsItWas)
{
    AddPlate("Plate");
    AddPoint("Middle", {500, 500, 0});
    Open("ZORCompStrategyCmd.Create");
    Choose("_SurfaceCombo", "Plate");
    SetNumber("_StepSpin", 1.5);
    const QByteArray before = SaveContainer(*container);
    EXPECT_EQ("canceled", Accept());
    EXPECT_LT(0, numSeen);
    EXPECT_EQ(before, SaveContainer(*container));
    EXPECT_EQ(nullptr, QApplication::activeModalWidget());

    SetNumber("_StepSpin", 100);
    EXPECT_EQ("", Accept());
    EXPECT_NE(nullptr, GetOnly<ZORCompDrapingLayer>());
}

TEST_F(ZORStdProgressTest, ShortComputationsShowNothing)
{
    AddPlate("Plate");
    AddPoint("Middle", {500, 500, 0});
    Open("ZORCompStrategyCmd.Create");
    Choose("_SurfaceCombo", "Plate");
    SetNumber("_StepSpin", 100);
    EXPECT_EQ("", Accept());
    EXPECT_EQ(0, numSeen);
}

} // namespace
