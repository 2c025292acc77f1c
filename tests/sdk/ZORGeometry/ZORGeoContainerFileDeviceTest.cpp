// Tests of the devices that containers are saved to and loaded from, and of the load dump.

#include "ContainerFileTest.h"

#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

namespace {

using ZORGeoContainerFileDeviceTest = ContainerFileTest;

TEST_F(ZORGeoContainerFileDeviceTest, RefusesToSaveWhatItCouldNotLoad)
{
    class Unsaved : public ZORGeoCurve
    {
    public:
        explicit Unsaved(ZORGeoContainer* container)
            : ZORGeoCurve(container, {})
        {
        }
    };
    ZORGeoContainer container;
    Add<Unsaved>("U", &container);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_THROW(container.Save(buffer), ZORSysFileException);
    EXPECT_TRUE(buffer.data().isEmpty());
}

TEST_F(ZORGeoContainerFileDeviceTest, ReportsDevicesThatCannotBeUsed)
{
    ZORGeoContainer container;
    QBuffer closed;
    EXPECT_THROW(container.Save(closed), ZORSysFileException);
    EXPECT_THROW(container.Load(closed), ZORSysFileException);
    QFile full("/dev/full");
    if (full.open(QIODevice::WriteOnly)) {
        EXPECT_THROW(container.Save(full), ZORSysFileException);
    }
}

TEST_F(ZORGeoContainerFileDeviceTest, DumpsWhatItLoads)
{
    const QTemporaryDir directory;
    ZORGeoDebugOptions& options = *ZORGeoDebugOptions::GetInstance();
    options.SetContainerLoadDumpEnabled(true);
    options.SetContainerLoadDumpFile(directory.filePath("dump.txt"));
    ZORGeoContainer container;
    Fill(container);
    ZORGeoContainer loaded;
    LoadContainer(loaded, SaveContainer(container));
    QFile dump(directory.filePath("dump.txt"));
    ASSERT_TRUE(dump.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(dump.readAll());
    EXPECT_TRUE(text.startsWith("Objects: 10\n0 ZORGeoCartesianPoint \"P\"\n    point = [0.1"))
        << text.toStdString();
    EXPECT_TRUE(text.contains("curve -> [1]"));
    EXPECT_TRUE(text.endsWith("Outcome: all objects are made\n"));

    options.SetContainerLoadDumpFile(directory.path());
    EXPECT_NO_THROW(LoadContainer(loaded, SaveContainer(container)))
        << "a dump that cannot be written is no reason to fail";
    EXPECT_EQ(20, loaded.GetNumGeometry());
    options.SetContainerLoadDumpEnabled(false);
    options.SetContainerLoadDumpFile({});
}

} // namespace
