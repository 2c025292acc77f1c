#include "view/ZORHostSamples.h"

#include "HostTest.h"
#include "view/ZORHostDisplayName.h"

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

TEST_F(ZORHostSamplesTest, NamesForPeople)
{
    QObject object;
    EXPECT_EQ(QString("unnamed object"), ZORHostDisplayName(nullptr));
    EXPECT_EQ(QString("QObject"), ZORHostDisplayName(&object));
    object.setObjectName("Name");
    EXPECT_EQ(QString("Name"), ZORHostDisplayName(&object));
}

} // namespace
