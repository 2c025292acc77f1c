// Tests of ZORGeoStlWriter.

#include "TestMeshes.h"
#include "support/HostileDisk.h"
#include "support/Printers.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoStlWriter.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <bit>
#include <unistd.h>

namespace {

class ZORGeoStlWriterTest : public testing::Test
{
protected:
    QByteArray Read() const
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    int Write(const ZORGeoSurface& surface, ZORGeoStlWriter::FileFormats format,
              ZORSysValue::Unit unit = ZORSysValue::Millimeter)
    {
        return ZORGeoStlWriter(fileName, &surface, format).Write(unit);
    }
    const ZORGeoSurface* Load(ZORSysValue::Unit unit = ZORSysValue::Millimeter)
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return ZORGeoStlLoader(&file).Load(&container, unit).value(0);
    }

    const QTemporaryDir folder;
    QString fileName = folder.filePath("part.stl");
    ZORGeoContainer container;
};

TEST_F(ZORGeoStlWriterTest, AsciiReadsAsEverybodyExpects)
{
    const auto surface = TestMesh{{{0, 0, 0}, {2.54, 0, 0}, {0, 25.4, 0}}, {{0, 1, 2}, {0, 1, 1}}}.Make();
    surface->setObjectName("wing\nskin");
    EXPECT_EQ(2, Write(*surface, ZORGeoStlWriter::Ascii, ZORSysValue::Inch));
    EXPECT_EQ("solid wing skin\n"
              "  facet normal 0 0 1\n    outer loop\n      vertex 0 0 0\n      vertex 0.1 0 0\n"
              "      vertex 0 1 0\n    endloop\n  endfacet\n"
              "  facet normal 0 0 0\n    outer loop\n      vertex 0 0 0\n      vertex 0.1 0 0\n"
              "      vertex 0.1 0 0\n    endloop\n  endfacet\n"
              "endsolid wing skin\n",
              Read());
}

TEST_F(ZORGeoStlWriterTest, BinaryHasAHeaderThatIsNoAsciiFile)
{
    EXPECT_EQ(12, Write(*Cube().Make(), ZORGeoStlWriter::Binary));
    const QByteArray content = Read();
    EXPECT_EQ(84 + 12 * 50, content.size());
    EXPECT_FALSE(content.startsWith("solid"));
    EXPECT_EQ(QByteArray("\x0c\0\0\0", 4), content.mid(80, 4));
    EXPECT_EQ(QByteArray("\0\0\0\0\0\0\0\0\0\0\x80\xbf", 12), content.mid(84, 12)); // bottom: normal 0 0 -1
}

TEST_F(ZORGeoStlWriterTest, ASurfaceWithoutTrianglesGivesAnEmptyFile)
{
    const auto empty = TestMesh().Make();
    EXPECT_EQ(0, Write(*empty, ZORGeoStlWriter::Binary));
    EXPECT_EQ(84, Read().size());
    EXPECT_EQ(nullptr, Load());
    EXPECT_EQ(0, Write(*empty, ZORGeoStlWriter::Ascii));
    EXPECT_EQ("solid \nendsolid \n", Read());
    EXPECT_EQ(nullptr, Load());
}

// What was read, in whatever unit, is written as the same floats.
TEST_F(ZORGeoStlWriterTest, WhatWasWrittenReadsBackBitForBit)
{
    std::mt19937 random(41);
    TestMesh mesh;
    for (int i = 0; i < 3000; ++i) {
        const auto value = [&] {
            const quint32 bits = quint32(random());
            return (bits >> 23 & 0xff) > 0xf0 ? 0.0 : double(std::bit_cast<float>(bits));
        };
        mesh.vertices.append(ZORMathPoint(value(), value(), value()));
    }
    for (int i = 0; i < 1000; ++i)
        mesh.triangles.append({3 * i, 3 * i + 1, 3 * i + 2});
    const auto surface = mesh.Make();
    for (const auto format : {ZORGeoStlWriter::Binary, ZORGeoStlWriter::Ascii}) {
        Write(*surface, format);
        const ZORGeoSurface* first = Load(ZORSysValue::Inch);
        ASSERT_NE(nullptr, first);
        EXPECT_EQ(mesh.triangles, first->GetCornerArray());
        Write(*first, format, ZORSysValue::Inch);
        const ZORGeoSurface* second = Load(ZORSysValue::Millimeter);
        EXPECT_EQ(mesh.vertices, second->GetVertexArray());
    }
}

TEST_F(ZORGeoStlWriterTest, RealMeshesMakeTheRoundTrip)
{
    ZOR_REQUIRE_TEST_DATA(path, "meshes/meshes");
    const QFileInfoList files = QDir(path).entryInfoList({"*.stl"}, QDir::Files);
    ASSERT_FALSE(files.isEmpty());
    for (const QFileInfo& info : files) {
        SCOPED_TRACE(info.fileName().toStdString());
        QFile file(info.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const auto surfaces = ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Meter);
        for (const ZORGeoSurface* surface : surfaces) {
            for (const auto format : {ZORGeoStlWriter::Binary, ZORGeoStlWriter::Ascii}) {
                EXPECT_EQ(surface->GetNumTriangles(), Write(*surface, format, ZORSysValue::Meter));
                const ZORGeoSurface* again = Load(ZORSysValue::Meter);
                ASSERT_EQ(surface->GetNumTriangles(), again->GetNumTriangles());
                for (int t = 1; t <= surface->GetNumTriangles(); ++t) {
                    std::array<ZORMathPoint, 3> before;
                    std::array<ZORMathPoint, 3> after;
                    surface->GetVertices(t, before[0], before[1], before[2]);
                    again->GetVertices(t, after[0], after[1], after[2]);
                    ASSERT_EQ(before, after) << t;
                }
            }
        }
    }
}

TEST_F(ZORGeoStlWriterTest, RefusesWhatCannotBeWritten)
{
    const auto cube = Cube().Make();
    EXPECT_THROW(ZORGeoStlWriter(fileName, nullptr, ZORGeoStlWriter::Binary).Write(ZORSysValue::Millimeter),
                 ZORSysException);
    EXPECT_THROW(Write(*cube, ZORGeoStlWriter::Binary, ZORSysValue::Degree), ZORSysException);
    const auto huge = TestMesh{{{0, 0, 0}, {1e39, 0, 0}, {0, 1, 0}}, {{0, 1, 2}}}.Make();
    try {
        Write(*huge, ZORGeoStlWriter::Ascii);
        FAIL();
    } catch (const ZORSysException& exception) {
        EXPECT_EQ(QString("vertex 1 is too large for an STL file"), exception.GetMessage());
    }
    EXPECT_FALSE(QFile::exists(fileName));
}

TEST_F(ZORGeoStlWriterTest, APlaceThatCannotBeWrittenIsAnOpenException)
{
    const auto cube = Cube().Make();
    fileName = folder.filePath("missing/part.stl");
    EXPECT_THROW(Write(*cube, ZORGeoStlWriter::Binary), ZORSysFileOpenException);
    fileName = folder.path();
    EXPECT_THROW(Write(*cube, ZORGeoStlWriter::Binary), ZORSysFileOpenException);
    fileName.clear();
    EXPECT_THROW(Write(*cube, ZORGeoStlWriter::Binary), ZORSysFileOpenException);
}

TEST_F(ZORGeoStlWriterTest, AFullDiskKeepsTheOldFile)
{
    Write(*Cube().Make(), ZORGeoStlWriter::Binary);
    const QByteArray before = Read();
    for (const auto format : {ZORGeoStlWriter::Binary, ZORGeoStlWriter::Ascii}) {
        const FileSizeLimit limit(2000);
        try {
            Write(*Sheet(30).Make(), format);
            FAIL();
        } catch (const ZORSysFileException& exception) {
            EXPECT_EQ("cannot write file '" + fileName + "': File too large", exception.GetMessage());
        }
    }
    EXPECT_EQ(before, Read());
    EXPECT_EQ(QStringList("part.stl"), QDir(folder.path()).entryList(QDir::Files | QDir::Hidden));
}

TEST_F(ZORGeoStlWriterTest, DevicesAreWrittenDirectly)
{
    fileName = "/dev/full";
    if (!QFile::exists(fileName))
        GTEST_SKIP() << "no /dev/full here";
    EXPECT_THROW(Write(*Cube().Make(), ZORGeoStlWriter::Binary), ZORSysFileException);
    EXPECT_TRUE(QFile::exists(fileName));
    fileName = "/dev/null";
    EXPECT_EQ(12, Write(*Cube().Make(), ZORGeoStlWriter::Binary));
    EXPECT_FALSE(QFileInfo(fileName).isFile());
}

TEST_F(ZORGeoStlWriterTest, LinksStayLinks)
{
    const QString target = folder.filePath("target.stl");
    ASSERT_TRUE(QFile(target).open(QIODevice::WriteOnly));
    ASSERT_TRUE(QFile::link(target, fileName));
    Write(*Cube().Make(), ZORGeoStlWriter::Binary);
    EXPECT_TRUE(QFileInfo(fileName).isSymLink());
    EXPECT_EQ(684, QFileInfo(target).size());
}

} // namespace
