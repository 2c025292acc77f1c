#include "view/ZORHostSamples.h"

#include "HostTest.h"
#include "support/HostileFiles.h"
#include "support/MessageOf.h"
#include "view/ZORHostDisplayName.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysException.h>

#include <QDir>

namespace {

class ZORHostSamplesTest : public HostTest
{
public:
    ~ZORHostSamplesTest() override { qunsetenv("ZOR_SAMPLES"); }
};

TEST_F(ZORHostSamplesTest, TheFolderOfTheEnvironmentVariableWins)
{
    qputenv("ZOR_SAMPLES", QFile::encodeName(GetPath("samples")));
    EXPECT_TRUE(ZORHostSamples::FindFolder().isEmpty());
    EXPECT_TRUE(ZORHostSamples::GetFiles().isEmpty());
    QDir().mkpath(GetPath("samples"));
    WriteTetrahedron("samples/b.stl");
    WriteTetrahedron("samples/a.STL");
    WriteFile("samples/readme.txt", "text");
    EXPECT_EQ(QStringList({GetPath("samples/a.STL"), GetPath("samples/b.stl")}), ZORHostSamples::GetFiles());
}

TEST_F(ZORHostSamplesTest, OpeningAFileAddsItsSurfacesAsVisible)
{
    ZORFeatContainer* const container = GetEnvironment()->GetContainer();
    container->GetStyles()->SetNewVisible(false);
    EXPECT_EQ(1, ZORHostOpenFile(WriteTetrahedron("t.stl"), GetEnvironment()));
    ASSERT_EQ(1, container->GetNumGeometry());
    EXPECT_TRUE(container->GetStyles()->Get(container->GetGeometryByIndex(0)).IsVisible());
    EXPECT_EQ(0, GetEnvironment()->GetNumVirtualObjects()) << "what the host draws is not in the environment";
}

TEST_F(ZORHostSamplesTest, AFileThatCannotBeOpenedThrows)
{
    try {
        ZORHostOpenFile(GetPath("nothing.stl"), GetEnvironment());
        FAIL() << "no exception";
    } catch (const ZORSysException& exception) {
        EXPECT_TRUE(exception.GetMessage().startsWith("cannot open file '"));
    }
    EXPECT_THROW(ZORHostOpenFile(WriteFile("text.stl", "\xff\xfe this is no STL"), GetEnvironment()),
                 ZORSysException);
    EXPECT_EQ(0, GetEnvironment()->GetContainer()->GetNumGeometry());
}

TEST_F(ZORHostSamplesTest, FilesThatWouldHaveToBeWaitedForAreRefused)
{
    const QStringList paths = HostileFiles::MakeIrregular(QFileInfo(GetPath("a")).absolutePath());
    for (const QString& path : paths) {
        EXPECT_EQ("cannot open file '" + path + "': it is not a regular file",
                  MessageOf([&] { ZORHostOpenFile(path, GetEnvironment()); }));
    }
}

TEST_F(ZORHostSamplesTest, NamesForPeople)
{
    QObject object;
    EXPECT_EQ(QString("unnamed object"), ZORHostDisplayName(nullptr));
    EXPECT_EQ(QString("QObject"), ZORHostDisplayName(&object));
    object.setObjectName("Name");
    EXPECT_EQ(QString("Name"), ZORHostDisplayName(&object));
}

} // namespace
