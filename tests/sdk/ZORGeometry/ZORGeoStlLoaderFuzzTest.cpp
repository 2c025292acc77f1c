// Damaged STL content: nothing may crash, hang or give a surface that is not sound.

#include "StlText.h"
#include "TestMeshes.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QBuffer>
#include <QLoggingCategory>

#include <gtest/gtest.h>

namespace {

class ZORGeoStlLoaderFuzzTest : public testing::Test
{
protected:
    ZORGeoStlLoaderFuzzTest() { QLoggingCategory::setFilterRules("zor.geometry.warning=false"); }
    ~ZORGeoStlLoaderFuzzTest() override { QLoggingCategory::setFilterRules({}); }

    // Loads the content, whatever it is, and checks what came out.
    void Load(const QByteArray& content)
    {
        ZORGeoContainer container;
        QBuffer buffer;
        buffer.setData(content);
        buffer.open(QIODevice::ReadOnly);
        ZORGeoStlLoader loader(&buffer);
        try {
            qint64 triangles = 0;
            const auto surfaces = loader.Load(&container, ZORSysValue::Inch);
            for (const ZORGeoSurface* surface : surfaces) {
                ASSERT_GT(surface->GetNumTriangles(), 0);
                for (const ZORMathPoint& vertex : surface->GetVertexArray())
                    ASSERT_TRUE(vertex.IsFinite());
                ASSERT_TRUE(surface->Project({1, 2, 3}).point.IsFinite());
                triangles += surface->GetNumTriangles();
            }
            ASSERT_EQ(triangles, loader.GetReport().GetNumUsed());
            ++loaded;
        } catch (const ZORSysFileException&) {
            ASSERT_EQ(0, container.GetNumGeometry());
            ++refused;
        }
    }

    int loaded = 0;
    int refused = 0;
};

QByteArray SmallAscii()
{
    return "solid one\n" + AsciiFacet("0 0 0", "1.5 0 -0", "0 1e-3 0")
           + AsciiFacet("1.5 0 0", "1 1 0", "0 1 0") + "endsolid one\nsolid two\n"
           + AsciiFacet("0 0 1", "1 0 1", "0 1 1") + "endsolid two\n";
}

QByteArray SmallBinary()
{
    return BinaryStl({kFirstFacet, kSecondFacet, {0, 0, 1, 1.5f, 0, 1, 0, 1e-3f, 1}}, -1, "solid part");
}

// Some changes of single bytes, blocks, lengths and the count.
QByteArray Mutate(QByteArray content, std::mt19937& random)
{
    static const QByteArray words[] = {"solid",    "endsolid",
                                       "facet",    "vertex",
                                       "normal",   "nan",
                                       "inf",      "1e99999",
                                       "-1e-999",  "\xef\xbb\xbf",
                                       "\xff\xfe", "\n",
                                       " ",        QByteArray(1, '\0'),
                                       "+-1",      "99999999999999999999999999999999999999999999999",
                                       "0x1p3"};
    const unsigned changes = 1 + random() % 8;
    for (unsigned i = 0; i < changes; ++i) {
        const qsizetype at = qsizetype(random() % unsigned(content.size() + 1));
        switch (random() % 7) {
        case 0:
        case 1:
            if (at < content.size())
                content[at] = char(random());
            break;
        case 2:
            content.remove(at, qsizetype(random() % 60));
            break;
        case 3:
            content.insert(at, content.mid(qsizetype(random() % unsigned(content.size() + 1)), 80));
            break;
        case 4:
            content.insert(at, words[random() % std::size(words)]);
            break;
        case 5:
            content.truncate(at);
            break;
        default:
            if (content.size() > 84)
                content[80 + qsizetype(random() % 4)] = char(random());
        }
    }
    return content;
}

TEST_F(ZORGeoStlLoaderFuzzTest, TenThousandDamagedFiles)
{
    std::mt19937 random(20);
    for (int i = 0; i < 5000; ++i) {
        SCOPED_TRACE(i);
        Load(Mutate(SmallAscii(), random));
        Load(Mutate(SmallBinary(), random));
        if (HasFatalFailure())
            return;
    }
    EXPECT_EQ(10000, loaded + refused);
    EXPECT_GT(loaded, 4000);
    EXPECT_GT(refused, 500);
}

TEST_F(ZORGeoStlLoaderFuzzTest, FilesCutShortAtEveryByte)
{
    for (const QByteArray& content : {SmallAscii(), SmallBinary()}) {
        for (qsizetype size = 0; size <= content.size(); ++size) {
            SCOPED_TRACE(size);
            Load(content.left(size));
        }
    }
    EXPECT_GT(loaded, refused);
}

TEST_F(ZORGeoStlLoaderFuzzTest, PureNoise)
{
    std::mt19937 random(21);
    for (int i = 0; i < 1000; ++i) {
        QByteArray noise(qsizetype(random() % 600), '\0');
        for (char& byte : noise)
            byte = char(random());
        Load(noise);
    }
    EXPECT_EQ(1000, loaded + refused);
}

// One word or number without end, and a deep pile of keywords.
TEST_F(ZORGeoStlLoaderFuzzTest, MonstrousTokensEnd)
{
    const QByteArray facet = AsciiFacet("0 0 0", "1 0 0", "0 1 0");
    Load("solid " + QByteArray(1 << 20, 'x') + "\n" + facet);
    Load("solid " + QByteArray("word ").repeated(1 << 18) + "\n" + facet);
    Load("solid\n" + AsciiFacet(QByteArray(1 << 20, '7') + " 0 0", "1 0 0", "0 1 0") + facet);
    Load("solid\n" + AsciiFacet("0." + QByteArray(1 << 20, '0') + "1 0 0", "1 0 0", "0 1 0") + facet);
    Load(QByteArray("facet ").repeated(1 << 17) + facet);
    Load(QByteArray("solid ").repeated(1 << 17) + "\n" + facet);
    Load(QByteArray("endsolid\n").repeated(1 << 17) + facet);
    EXPECT_EQ(7, loaded);
}

} // namespace
