// What becomes of good, odd and broken STL files, imported from the console.

#include "StlFiles.h"
#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoSurface.h>

#include <QAction>
#include <QFile>
#include <QStringEncoder>
#include <QTableView>
#include <QtEndian>

#include <limits>

namespace {

/// A binary file with the given facets, twelve coordinates each: normal and three corners.
QByteArray MakeBinary(const QList<std::array<float, 12>>& facets, quint32 announced)
{
    QByteArray content("binary");
    content.resize(80, ' ');
    const quint32 count = qToLittleEndian(announced);
    content.append(reinterpret_cast<const char*>(&count), 4);
    for (const auto& facet : facets) {
        for (const float value : facet) {
            const float stored = qToLittleEndian(value);
            content.append(reinterpret_cast<const char*>(&stored), 4);
        }
        content.append(2, '\0');
    }
    return content;
}

constexpr std::array<float, 12> kGoodFacet = {0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0};
constexpr std::array<float, 12> kOtherFacet = {0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 0};

class ZORTestImportSTLFilesTest : public BenchTest
{
protected:
    void SetUp() override { OpenConsole(); }

    void Import(const QString& path)
    {
        answers.AnswerFile(path);
        answers.AnswerItem("mm");
        MenuAction("_ImportSTLAction")->trigger();
        answers.Take();
    }
    void ImportContent(const QByteArray& content)
    {
        const QString path = GetPath(QStringLiteral("content-%1.stl").arg(m_files++));
        WriteFile(path, content);
        Import(path);
    }
    /// Triangles over all surfaces of the container.
    int CountTriangles() const
    {
        int count = 0;
        for (int i = 0; i < GetContainer()->GetNumGeometry(); ++i)
            count += qobject_cast<ZORGeoSurface*>(GetContainer()->GetGeometryByIndex(i))->GetNumTriangles();
        return count;
    }
    int CountVertices() const
    {
        qsizetype count = 0;
        for (int i = 0; i < GetContainer()->GetNumGeometry(); ++i)
            count +=
                qobject_cast<ZORGeoSurface*>(GetContainer()->GetGeometryByIndex(i))->GetVertexArray().size();
        return int(count);
    }
    /// One "Error" box with one line of text; the container and the table stay as they were.
    void ExpectRejected(const char* what)
    {
        const QStringList errors = boxes.TakeErrors();
        ASSERT_EQ(1, errors.size()) << what;
        EXPECT_FALSE(errors[0].isEmpty()) << what;
        EXPECT_FALSE(errors[0].contains(u'\n')) << what;
        EXPECT_EQ(0, GetContainer()->GetNumGeometry()) << what;
    }

private:
    int m_files = 0;
};

TEST_F(ZORTestImportSTLFilesTest, RealFilesHoldWhatAnIndependentReaderFound)
{
    struct Row
    {
        const char* file;
        int surfaces;
        int triangles; // facets without the degenerate ones
        int vertices;
    };
    const Row table[] = {
        {"meshes/NACA0012.stl", 1, 15988, 7996},
        {"meshes/occt-propeller.stl", 1, 7374, 3689},
        {"meshes/simpleCar.stl", 6, 3154, 1760},
        {"meshes/terrain-gmsh.stl", 1, 3498, 1813},
        {"meshes/wing_5degrees.stl", 1, 520, 520},
        {"stl-quirks/adm-block-uppercase.stl", 1, 12, 8},
        {"stl-quirks/as-empty-solid.stl", 1, 1, 3},
        {"stl-quirks/as-spider-binary.stl", 1, 1312, 722},
        {"stl-quirks/as-two-solids.stl", 2, 2, 6},
        {"stl-quirks/np-ascii-crlf-indented-cube.stl", 1, 12, 8},
        {"stl-quirks/np-bin-solidheader-cube.stl", 1, 12, 8},
        {"stl-quirks/sr-missing-begin-face.stl", 1, 2, 4},
        {"stl-quirks/tm-empty-bin.stl", 0, 0, 0},
        {"stl-quirks/tm-empty.stl", 0, 0, 0},
        {"stl-quirks/tm-soup.stl", 1, 100, 300},
        {"stl-quirks/tm-unit-cube-solidheader.STL", 1, 12, 8},
    };
    for (const Row& row : table) {
        const QString path = FindTestData(QStringLiteral("meshes/") + QLatin1String(row.file));
        if (path.isEmpty())
            GTEST_SKIP() << "no test data '" << row.file << "': set ZOR_TEST_DATA to its folder";
        Import(path);
        EXPECT_EQ(row.surfaces, GetContainer()->GetNumGeometry()) << row.file;
        EXPECT_EQ(row.triangles, CountTriangles()) << row.file;
        EXPECT_EQ(row.vertices, CountVertices()) << row.file;
        EXPECT_EQ(row.surfaces, InConsole<QTableView>("_ContTable")->model()->rowCount()) << row.file;
        GetContainer()->Clear();
    }
}

TEST_F(ZORTestImportSTLFilesTest, EmptyFileAddsNothing)
{
    ImportContent({});
    EXPECT_EQ(0, GetContainer()->GetNumGeometry());
    EXPECT_EQ(GetPath("content-0.stl"), GetSettings()->value("Debug/ImportSTL/Dir").toString());
}

TEST_F(ZORTestImportSTLFilesTest, ShortFileGivesTheFacetsThatAreThere)
{
    ImportContent(MakeBinary({kGoodFacet, kOtherFacet}, 1000));
    EXPECT_EQ(2, CountTriangles());
    EXPECT_EQ(4, CountVertices());
}

TEST_F(ZORTestImportSTLFilesTest, NonFiniteFacetsAreLeftOut)
{
    std::array<float, 12> bad = kGoodFacet;
    bad[5] = std::numeric_limits<float>::quiet_NaN();
    ImportContent(MakeBinary({kGoodFacet, bad, kOtherFacet}, 3));
    EXPECT_EQ(2, CountTriangles());
}

TEST_F(ZORTestImportSTLFilesTest, ContentWithoutAUsableFacetIsRejected)
{
    const QString text = QString::fromLatin1(MakeAsciiTetrahedron());
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
        QStringEncoder encode(encoding, QStringEncoder::Flag::WriteBom);
        ImportContent(encode(text));
        ExpectRejected("UTF-16");
    }
    ImportContent("These are no triangles.\nThey are two lines of prose.\n");
    ExpectRejected("prose");
    ImportContent("solid body\nfacet normal 0 0 0\nendfacet\nendsolid body\n");
    ExpectRejected("facets without corners");
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty()) << "a rejected file is not remembered";
}

TEST_F(ZORTestImportSTLFilesTest, RejectedFileLeavesTheContainerAsItWas)
{
    ImportContent(MakeAsciiTetrahedron());
    ASSERT_EQ(1, GetContainer()->GetNumGeometry());
    const QVariant dir = GetSettings()->value("Debug/ImportSTL/Dir");
    ImportContent("no triangles");
    EXPECT_EQ(1, boxes.TakeErrors().size());
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
    EXPECT_EQ(1, InConsole<QTableView>("_ContTable")->model()->rowCount());
    EXPECT_EQ(dir, GetSettings()->value("Debug/ImportSTL/Dir"));
}

} // namespace
