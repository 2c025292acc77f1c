// Content that is not STL, and files that are large or change while they are read.

#include "sdk/ZORGeometry/StlText.h"
#include "support/MessageOf.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysFile.h>

#include <QBuffer>
#include <QLoggingCategory>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <unistd.h>

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
const StlFacet kBad = {kNan, 0, 0, 1, 0, 0, 0, 1, 0};

class ZORGeoStlContentTest : public testing::Test
{
protected:
    ZORGeoStlContentTest() { QLoggingCategory::setFilterRules("zor.geometry.warning=false"); }
    ~ZORGeoStlContentTest() override { QLoggingCategory::setFilterRules({}); }

    /// Loads from a device and keeps the report.
    void Load(QIODevice& device)
    {
        container.Clear();
        ZORGeoStlLoader loader(&device);
        surfaces = {};
        try {
            surfaces = loader.Load(&container, ZORSysValue::Millimeter);
        } catch (const ZORSysException&) {
            report = loader.GetReport();
            throw;
        }
        report = loader.GetReport();
    }
    /// Returns the message of the exception, or an empty text.
    QString Refuse(const QByteArray& content)
    {
        QBuffer buffer;
        buffer.setData(content);
        buffer.open(QIODevice::ReadOnly);
        return MessageOf([&] { Load(buffer); });
    }
    QString Save(const QByteArray& content) const
    {
        QFile file(folder.filePath("part.stl"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        return file.fileName();
    }

    const QTemporaryDir folder;
    ZORGeoContainer container;
    QList<const ZORGeoSurface*> surfaces;
    ZORGeoStlReport report;
};

/// Tall facets side by side, each with separate corners.
StlFacet FacetAt(int i)
{
    const auto x = float(i);
    return {x, 0, 0, x + 0.5f, 0, 0, x, 1, 0};
}

QByteArray ManyBinaryFacets(int count)
{
    QList<StlFacet> facets;
    for (int i = 0; i < count; ++i)
        facets.append(FacetAt(i));
    return BinaryStl(facets);
}

QByteArray ManyAsciiFacets(int count)
{
    QByteArray content = "solid many\n";
    for (int i = 0; i < count; ++i) {
        const QByteArray x = QByteArray::number(i);
        content += AsciiFacet(x + " 0 0", x + ".5 0 0", x + " 1 0");
    }
    return content + "endsolid many\n";
}

TEST_F(ZORGeoStlContentTest, FilesOfOtherKindsAreRefused)
{
    const QString other = "the STL content is another kind of file: its header announces ";
    std::mt19937 random(3);
    QByteArray noise(20000, '\0');
    for (int i = 0; i < 50; ++i) {
        for (char& byte : noise)
            byte = char(random());
        EXPECT_TRUE(Refuse(noise).startsWith(other)) << i;
    }
    // The tables of an executable: small integers.
    QByteArray tables(10000, '\0');
    for (qsizetype at = 0; at + 4 <= tables.size(); at += 4)
        tables[at] = char(64 + random() % 64);
    EXPECT_TRUE(Refuse(tables).startsWith(other));
    EXPECT_EQ(0, container.GetNumGeometry());
}

TEST_F(ZORGeoStlContentTest, OnlyAGrossCountWithMostFacetsNotFiniteIsRefused)
{
    const QString message =
        "the STL content is another kind of file: its header announces %1 facets, its size "
        "allows %2, and %3 of them are not finite or out of range";
    EXPECT_EQ(message.arg(u"9", u"4", u"3"), Refuse(BinaryStl({kBad, kBad, kBad, kFirstFacet}, 9)));
    EXPECT_EQ(QString(), Refuse(BinaryStl({kBad, kBad, kBad, kFirstFacet}, 8))) << "a file cut in half";
    EXPECT_EQ(4, report.GetNumMissing());
    EXPECT_EQ(QString(), Refuse(BinaryStl({kBad, kBad, kFirstFacet, kSecondFacet}, 1000000)));
    EXPECT_EQ(2, report.GetNumUsed());
    EXPECT_EQ(999996, report.GetNumMissing());
    EXPECT_EQ(QString(), Refuse(BinaryStl({kBad, kBad, kBad, kFirstFacet})));
    EXPECT_EQ(QString(), Refuse(BinaryStl({kBad, kBad, kBad, kFirstFacet}, 0))) << "a writer that streams";
    EXPECT_EQ(message.arg(u"1", u"4", u"1"),
              Refuse(BinaryStl({kBad, kFirstFacet, kFirstFacet, kFirstFacet}, 1)));
    EXPECT_EQ(QString(), Refuse(BinaryStl({kFirstFacet, kBad, kBad, kBad}, 1)));
    EXPECT_EQ(150, report.GetNumTrailingBytes());
    const StlFacet large = {1e19f, 0, 0, 1, 0, 0, 0, 1, 0}, tiny = {1e-40f, 0, 0, 1, 0, 0, 0, 1, 0};
    EXPECT_EQ(message.arg(u"9", u"3", u"2"), Refuse(BinaryStl({large, tiny, kFirstFacet}, 9)));
    EXPECT_EQ(QString(), Refuse(BinaryStl({{4e18f, 0, 0, -1.2e-38f, 0, 0, -0.0f, 1, 0}}, 9)));
}

TEST_F(ZORGeoStlContentTest, BytesWithoutAFacetAreRefused)
{
    EXPECT_EQ(
        "the STL content has no usable facet (0 of 0 facets used; left out: 157 bytes behind the last facet)",
        Refuse(QByteArray(84 + 157, '\0')));
    EXPECT_EQ("the STL content has no usable facet (0 of 3 facets used; left out: 3 degenerate)",
              Refuse(QByteArray(84 + 150, '\0')));
    EXPECT_EQ(QString(), Refuse(QByteArray(84, '\0')));
    EXPECT_EQ(QString(), Refuse(QByteArray(85, '\0')));
}

TEST_F(ZORGeoStlContentTest, ContentOfManyPiecesReadsAsInOneGo)
{
    for (const QByteArray& content :
         {ManyBinaryFacets(200001), ManyAsciiFacets(120000), ManyAsciiFacets(120000).replace('\n', ' ')}) {
        ASSERT_GT(content.size(), 9 << 20);
        ZORSysFile file(Save(content));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        Load(file);
        ASSERT_EQ(1, surfaces.size());
        EXPECT_FALSE(report.HasLosses());
        EXPECT_TRUE(file.atEnd());
        const auto corners = surfaces[0]->GetCornerArray();
        const auto vertices = surfaces[0]->GetVertexArray();
        QProcess process;
        process.start("cat", {file.fileName()});
        ASSERT_TRUE(process.waitForStarted());
        Load(process);
        process.waitForFinished();
        ASSERT_EQ(1, surfaces.size());
        EXPECT_EQ(corners, surfaces[0]->GetCornerArray());
        EXPECT_EQ(vertices, surfaces[0]->GetVertexArray());
    }
}

/// A file that another program shortens while it is read.
class ShrinkingFile : public QFile
{
public:
    ShrinkingFile(const QString& path, qint64 remaining)
        : QFile(path)
        , m_remaining(remaining)
    {
    }

protected:
    qint64 readData(char* data, qint64 maximumSize) override
    {
        const qint64 numRead = QFile::readData(data, maximumSize);
        if (!m_isShortened && numRead > 1 << 20) {
            m_isShortened = true;
            EXPECT_EQ(0, truncate(qPrintable(fileName()), m_remaining));
        }
        return numRead;
    }

private:
    const qint64 m_remaining;
    bool m_isShortened = false;
};

// Touching the missing pages of a mapped file would end the process.
TEST_F(ZORGeoStlContentTest, AFileThatIsShortenedWhileItIsReadGivesWhatIsLeft)
{
    for (const qint64 remaining : {qint64(0), qint64(6) << 20}) {
        ShrinkingFile binary(Save(ManyBinaryFacets(200000)), remaining);
        ASSERT_TRUE(binary.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        Load(binary);
        EXPECT_EQ(200000, report.GetNumFacets() + report.GetNumMissing());
        EXPECT_GT(report.GetNumMissing(), 50000);
        EXPECT_GT(report.GetNumFacets(), 0);
        EXPECT_EQ(0, report.GetNumTrailingBytes());
        ShrinkingFile ascii(Save(ManyAsciiFacets(100000)), remaining);
        ASSERT_TRUE(ascii.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        Load(ascii);
        EXPECT_GT(report.GetNumUsed(), 1000);
        EXPECT_LT(report.GetNumUsed(), 90000);
    }
}

} // namespace
