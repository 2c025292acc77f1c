// Every provider on damaged, huge and malicious files: a reason or parts, never anything else.

#include "Damage.h"
#include "DxfText.h"
#include "TranslationTest.h"

#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkContext.h>

#include <QFile>

namespace {

struct Source
{
    QByteArray providerId;
    QByteArray content;
    QList<QByteArray> words;
};

void PrintTo(const Source& source, std::ostream* stream)
{
    *stream << source.providerId.constData();
}

QList<Source> GetSources()
{
    const QByteArray dxf = Dxf(
        Square(0, 0, 50) + Circle(20, 20, 5) + Line(1, 1, 2, 2)
            + Lines("0|ARC|8|0|10|5|20|30|40|2|50|10|51|170|0|ELLIPSE|8|0|10|30|20|30|11|4|21|1|40|0.5|41|0|"
                    "42|6.283185307179586|"
                    "0|SPLINE|8|0|70|4|71|2|72|6|73|3|40|0|40|0|40|0|40|1|40|1|40|1|41|1|41|0.7|41|1|10|10|"
                    "20|0|10|10|20|10|10|0|20|10|"
                    "0|TEXT|8|0|10|1|20|2|40|3|1|50%%d|0|MTEXT|8|0|10|7|20|8|40|2|1|{\\fArial;one}\\P|"
                    "0|POLYLINE|8|0|66|1|70|1|0|VERTEX|8|0|10|30|20|5|42|0.5|0|VERTEX|8|0|10|36|20|5|0|"
                    "SEQEND|8|0|"
                    "0|INSERT|2|B|8|0|10|40|20|40|41|2|42|1|50|30|70|2|71|2|44|3|45|3|"),
        Block("B", 1, 1, Circle(0, 0, 1) + Line(0, 0, 1, 0)), Lines("9|$INSUNITS|70|4|9|$MEASUREMENT|70|1|"),
        Lines("0|SECTION|2|TABLES|0|LAYER|2|0|70|0|62|5|0|ENDSEC|"));
    const QByteArray svg =
        "<svg width='100mm' height='100mm' viewBox='0 0 100 100'><g id='a' transform='rotate(10) scale(1.5)'>"
        "<path d='M10 10C10 20 40 20 40 50S9 9 8 40Q25 20 40 50T1 2A20 10 30 0 1 50 50Z'/>"
        "<rect x='1' y='2' width='30' height='20' rx='3'/><circle r='3'/><polygon points='0,0 1,1 2,0'/>"
        "</g><ellipse rx='3' ry='4' style='stroke: red'/></svg>";
    const QByteArray xml =
        "<a NAME='x'><Length>in</Length><OuterContour><Pt>X=0 Y=0 Z=1</Pt><Pt>4 0 1</Pt><Pt>4 3 1</Pt>"
        "</OuterContour></a>";
    const QByteArray json =
        R"({"items": [{"id": 5, "shape": {"type": "polygon", "data": {"outer": [[0, 0], [9, 0], [9, 9]], "inner": []}}},
        {"shape": {"type": "path", "contours": [{"start": [20, 0], "segs": [["A", 0, 0, 10, 0, "cw"], ["L", 20, 0]]}]}}]})";
    const QList<QByteArray> numbers = {"-1",  "0",          "1e308",       "-1e-308", "nan",
                                       "inf", "2147483647", "99999999999", "1000000"};
    return {
        {"dxf", dxf,
         numbers
             + QList<QByteArray>{"\n0\nSECTION\n2\nENTITIES\n", "\n0\nENDSEC\n", "\n0\nINSERT\n2\nB\n8\n0\n",
                                 "\n70\n32767\n", "\n71\n-1\n", "\n42\n1\n", "\n42\n-1e9\n", "\n0\nSPLINE\n",
                                 "\n0\nBLOCK\n", "\n0\nENDBLK\n", "\n0\nSEQEND\n", "\n66\n1\n", "\n210\n0\n",
                                 "\n230\n-1\n", "\\U+00e4", "\n0\nELLIPSE\n"}},
        {"svg", svg,
         numbers
             + QList<QByteArray>{"<g>", "</g>", "transform='matrix(1e9 0 0 1e9 0 0)'", "scale(0)",
                                 "skewX(90)", "<!DOCTYPE a [", "<!ENTITY b 'b'>", "&b;", "<use href='#a'/>",
                                 "width='1e99mm'", "viewBox='0 0 0 0'", "A1 1 0 1 1 1e99 0", "C1 1 1 1 1 1",
                                 "M", "z", "%"}},
        {"contour-xml", xml,
         numbers
             + QList<QByteArray>{"<Pt>", "</Pt>", "<OuterContour>", "</OuterContour>", "<Length>ft</Length>",
                                 "X=", "<!DOCTYPE a [<!ENTITY e '1'>]>", "&e;"}},
        {"nesting-json", json,
         numbers
             + QList<QByteArray>{"[", "]", "{", "}", ",", "null", "[[[[[[[[", "\"A\"", "\"ccw\"",
                                 "\"inner\":", "\"simple_polygon\"", "\"\\ud800\""}}};
}

class ZORNestHostileSourcesTest : public testing::TestWithParam<Source>
{
};

class Runner : public TranslationTest
{
public:
    explicit Runner(const QByteArray& providerId)
        : TranslationTest(providerId)
    {
    }
    void TestBody() override {}
    using TranslationTest::failure;
    using TranslationTest::report;
    using TranslationTest::Translate;

    /// Translates many contents in one job.
    /// \return the number of contents that gave parts
    int TranslateAll(const QList<QByteArray>& contents)
    {
        int successes = 0;
        const QString reason = RunAsJob([&](const ZORWorkContext& context) {
            const ZORNestSourceProvider* const source = ZORNestSourceProvider::GetProvider(provider);
            for (const QByteArray& content : contents) {
                const QString path = Write(content);
                try {
                    if (!source->Translate(path, input, context, &report).isEmpty())
                        ++successes;
                } catch (const ZORSysException& exception) {
                    EXPECT_FALSE(exception.GetMessage().isEmpty());
                }
            }
        });
        EXPECT_EQ("", reason);
        return successes;
    }
};

TEST_P(ZORNestHostileSourcesTest, WholeFileGivesParts)
{
    Runner runner(GetParam().providerId);
    EXPECT_FALSE(runner.Translate(GetParam().content).isEmpty());
    EXPECT_EQ("", runner.failure);
}

TEST_P(ZORNestHostileSourcesTest, TruncatedFilesFail)
{
    Runner runner(GetParam().providerId);
    QList<QByteArray> contents;
    // The last character may be white space or a line end.
    for (qsizetype length = 0; length < GetParam().content.size() - 4; length += 3)
        contents.append(GetParam().content.first(length));
    EXPECT_EQ(0, runner.TranslateAll(contents));
}

TEST_P(ZORNestHostileSourcesTest, DamagedFilesGivePartsOrAReason)
{
    std::mt19937 random(11);
    Runner runner(GetParam().providerId);
    QList<QByteArray> contents;
    for (int i = GetFuzzRuns(600); i > 0; --i)
        contents.append(Damage(GetParam().content, GetParam().words, random));
    EXPECT_GT(runner.TranslateAll(contents), 0);
}

INSTANTIATE_TEST_SUITE_P(Providers, ZORNestHostileSourcesTest, testing::ValuesIn(GetSources()),
                         [](const auto& source) {
                             return QByteArray(source.param.providerId).replace('-', '_').toStdString();
                         });

TEST(ZORNestHostileDxfTest, BlocksThatMultiplyAreBounded)
{
    Runner runner("dxf");
    QByteArray blocks = Block("B0", 0, 0, Circle(0, 0, 1));
    for (int i = 1; i < 30; ++i)
        blocks += Block("B" + QByteArray::number(i), 0, 0,
                        Lines("0|INSERT|2|B" + QByteArray::number(i - 1) + "|8|0|70|9|71|9|44|5|45|5|"));
    EXPECT_TRUE(runner.Translate(Dxf(Lines("0|INSERT|2|B29|8|0|"), blocks)).isEmpty());
    EXPECT_TRUE(runner.failure.startsWith("drawing has more than 250"))
        << "a quarter of a million and one for each 8 bytes: " << runner.failure.toStdString();
}

TEST(ZORNestHostileJsonTest, ListsAreCountedBeforeTheyTakeMemory)
{
    Runner runner("nesting-json");
    for (const char* const list : {"[0],", "[[[[0]]]],", "{\"\":0},"}) {
        EXPECT_TRUE(runner.Translate("{\"items\":[" + QByteArray(list).repeated(4000000) + "0]}").isEmpty());
        EXPECT_EQ("JSON has more than 4000000 lists and objects", runner.failure);
    }
}

TEST(ZORNestHostileDxfTest, LongBlocksAreNotReadWithoutEnd)
{
    Runner runner("dxf");
    // A million insertions of a megabyte would take hours.
    const QByteArray block = Block("B", 0, 0, Lines("0|IMAGE|8|0|1|" + QByteArray(1000000, 'x') + "|"));
    EXPECT_TRUE(runner.Translate(Dxf(Square(0, 0, 50) + Lines("0|INSERT|2|B|8|0|70|1000|71|1000|"), block))
                    .isEmpty());
    EXPECT_TRUE(runner.failure.startsWith("blocks are inserted too often: more than 167"))
        << "64 MiB and a hundred times the file: " << runner.failure.toStdString();
}

TEST(ZORNestHostileDxfTest, ArraysOfEmptyBlocksAreBoundedByTheFile)
{
    Runner runner("dxf");
    const QByteArray array = Lines("0|INSERT|2|B|8|0|70|32767|71|32767|44|5|45|5|");
    EXPECT_TRUE(runner.Translate(Dxf(Square(0, 0, 50) + array, Block("B", 0, 0, {}))).isEmpty());
    EXPECT_TRUE(runner.failure.startsWith("drawing has more than 250")) << runner.failure.toStdString();
    const QByteArray comment = "999\n" + QByteArray(2'000'000, 'x') + "\n";
    const QByteArray smaller = Lines("0|INSERT|2|B|8|0|70|600|71|600|44|5|45|5|");
    EXPECT_EQ(1, runner.Translate(comment + Dxf(Square(0, 0, 50) + smaller, Block("B", 0, 0, {}))).size())
        << runner.failure.toStdString();
}

TEST(ZORNestHostileDxfTest, AnEntityOfTooManyValuesIsRefused)
{
    Runner runner("dxf");
    const QByteArray pairs = QByteArray("10\n1\n").repeated(8000001);
    EXPECT_TRUE(runner.Translate(Dxf("0\nLWPOLYLINE\n" + pairs)).isEmpty());
    EXPECT_EQ("line 16: entity has too many values", runner.failure);
}

TEST(ZORNestHostileDxfTest, LongTextsOfEscapesAreRead)
{
    Runner runner("dxf");
    const QByteArray text = "0|TEXT|8|0|10|1|20|2|40|3|1|" + QByteArray("\\U+00e4").repeated(1000000) + "|";
    EXPECT_EQ(1, runner.Translate(Dxf(Square(0, 0, 50) + Lines(text))).size());
}

TEST(ZORNestHostileSvgTest, CurvesOfEndlesslyManyArcsAreRefused)
{
    Runner runner("svg");
    const auto translate = [&runner](const QByteArray& path, int count) {
        return runner.Translate("<svg xmlns='http://www.w3.org/2000/svg'><path d='M0 0" + path.repeated(count)
                                + "z'/></svg>");
    };
    // Each takes thousands.
    EXPECT_TRUE(translate(" a1e8 5e7 0 1 1 1 1", 200000).isEmpty());
    EXPECT_EQ("curves of the drawing need too many arcs for the tolerance", runner.failure);
    EXPECT_EQ(1, translate(" a1e8 5e7 0 1 1 1 1", 3).size());
}

TEST(ZORNestHostileDxfTest, ManyOutlinesInEachOtherAlternate)
{
    Runner runner("dxf");
    QByteArray circles;
    constexpr int kCount = 4000;
    for (int i = 1; i <= kCount; ++i)
        circles += Circle(0, 0, i);
    const QList<ZORNestResult> results = runner.Translate(Dxf(circles));
    ASSERT_EQ(kCount / 2, results.size());
    for (const ZORNestResult& result : results)
        EXPECT_EQ(2, result.GetItems().constFirst()->GetShapes().size());
}

TEST(ZORNestHostileDxfTest, HugeNumbersAreSkipped)
{
    Runner runner("dxf");
    const QByteArray entities =
        Square(0, 0, 1) + Line(-1e300, 0, 1e300, 1e308) + Circle(1e12, 0, 1) + Circle(0, 0, 1e200)
        + Lines("0|LWPOLYLINE|8|0|70|1|10|0|20|0|42|1e-300|10|1|20|0|42|1e300|10|1|20|5|");
    EXPECT_EQ(1, runner.Translate(Dxf(entities)).size());
    EXPECT_EQ("", runner.failure);
}

TEST(ZORNestHostileDxfTest, ManyEndsAtOnePlaceAreJoinedInTime)
{
    Runner runner("dxf");
    QByteArray entities = Square(-50, -50, 100);
    for (int i = 1; i <= 4000; ++i)
        entities += Line(0, 0, i * 0.01, 20);
    EXPECT_EQ(1, runner.Translate(Dxf(entities)).size());
    EXPECT_EQ("", runner.failure);
}

} // namespace
