// Compiled into this program: the library keeps the class to itself.
#include <ZORSystem/ZORSysException.h>
#include <ZORVisualization/ZORVisVectorFont.h>
#include <ZORVisualization/text/ZORVisStrokeFont_p.h>

#include <QFile>

#include <gtest/gtest.h>

#include <random>

namespace {

using Stroke = std::vector<ZORVisStrokePoint>;

/// The file that the library carries for a font.
QByteArray ReadFile(const QString& name)
{
    QFile file(QStringLiteral(":/ZORVisualization/vectorfonts/%1.jhf").arg(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

/// The message of the failure to read \a data; null when they can be read.
QString GetFailure(const QByteArray& data)
{
    try {
        const ZORVisStrokeFont font(data);
    } catch (const ZORSysException& exception) {
        return exception.GetMessage();
    }
    return {};
}

TEST(ZORVisStrokeFontTest, EveryFileHasItsGlyphsAndMetrics)
{
    const QStringList names = ZORVisVectorFont::GetFontNames();
    for (const QString& name : names) {
        const QByteArray data = ReadFile(name);
        const ZORVisStrokeFont font(data);
        const size_t count = name == "japanese" ? 193 : name == "markers" ? 97 : 96;
        EXPECT_EQ(count, font.GetGlyphs().size()) << name.toStdString();
        // Files of this collection write a record a line.
        EXPECT_EQ(count, size_t(data.count('\n'))) << name.toStdString();
        qsizetype numLetters = 0;
        for (const ZORVisStrokeGlyph& glyph : font.GetGlyphs()) {
            EXPECT_GE(glyph.advance, 0);
            EXPECT_LE(glyph.advance, 35);
            numLetters += 8 + 2;
            for (const Stroke& stroke : glyph.strokes) {
                EXPECT_GE(stroke.size(), 2U);
                numLetters += 2 * qsizetype(stroke.size());
                for (const ZORVisStrokePoint point : stroke) {
                    EXPECT_GE(point.y, -39);
                    EXPECT_LE(point.y, 57);
                }
            }
            if (glyph.strokes.size() > 1)
                numLetters += 2 * qsizetype(glyph.strokes.size() - 1);
        }
        // Nothing of the file is lost: what is left are the line breaks.
        EXPECT_EQ(data.size() - data.count('\n') - data.count('\r'), numLetters) << name.toStdString();
    }
}

TEST(ZORVisStrokeFontTest, CapitalsOfTextFontsStandOnTheBaselineAndAreTwentyOneHigh)
{
    const QStringList names = {"cursive", "futural", "futuram", "gothiceng", "rowmand",
                               "rowmans", "rowmant", "scripts", "timesi",    "timesr"};
    for (const QString& name : names) {
        const ZORVisStrokeFont font(ReadFile(name));
        const ZORVisStrokeGlyph* glyph = font.GetGlyph(U'I');
        ASSERT_NE(nullptr, glyph);
        int low = 100;
        int high = -100;
        for (const Stroke& stroke : glyph->strokes) {
            for (const ZORVisStrokePoint point : stroke) {
                low = std::min<int>(low, point.y);
                high = std::max<int>(high, point.y);
            }
        }
        EXPECT_EQ(0, low) << name.toStdString();
        EXPECT_EQ(ZORVisStrokeFont::kCapitalHeight, high) << name.toStdString();
    }
}

TEST(ZORVisStrokeFontTest, ReadsBearingsStrokesAndPenLifts)
{
    const ZORVisStrokeFont font("  501  9I[RFJ[ RRFZ[ RMTWT\n12345  1JZ\n");
    ASSERT_EQ(2U, font.GetGlyphs().size());
    const ZORVisStrokeGlyph& glyph = *font.GetGlyph(U' ');
    EXPECT_EQ(18, glyph.advance);
    ASSERT_EQ(3U, glyph.strokes.size());
    EXPECT_EQ((Stroke{{9, 21}, {1, 0}}), glyph.strokes[0]);
    EXPECT_EQ((Stroke{{9, 21}, {17, 0}}), glyph.strokes[1]);
    EXPECT_EQ((Stroke{{4, 7}, {14, 7}}), glyph.strokes[2]);
    EXPECT_EQ(16, font.GetGlyph(U'!')->advance);
    EXPECT_TRUE(font.GetGlyph(U'!')->strokes.empty());
}

TEST(ZORVisStrokeFontTest, CharactersWithoutRecordHaveNoGlyph)
{
    const ZORVisStrokeFont font("12345  1JZ\n12345  1JZ\n");
    const char32_t absent[] = {0, 31, U'"', 0x20ac, 0x10ffff, 0xffffffff};
    for (const char32_t character : absent)
        EXPECT_EQ(nullptr, font.GetGlyph(character));
    EXPECT_TRUE(ZORVisStrokeFont(QByteArray()).GetGlyphs().empty());
}

TEST(ZORVisStrokeFontTest, RecordsGoOnOverLineBreaksOfAnyKind)
{
    const ZORVisStrokeFont expected("12345  9I[RFJ[ RRFZ[ RMTWT12345  1JZ");
    const QByteArray broken[] = {"12345  9I[RFJ[ R\nRFZ[ RMTWT\n12345  1JZ\n",
                                 "\r\n12345  9I[RFJ[ R\r\nRFZ[ RMT\r\nWT\r\n\r\n12345  1J\r\nZ"};
    for (const QByteArray& data : broken) {
        const ZORVisStrokeFont font(data);
        ASSERT_EQ(2U, font.GetGlyphs().size());
        EXPECT_EQ(expected.GetGlyphs()[0].strokes, font.GetGlyphs()[0].strokes);
        EXPECT_EQ(16, font.GetGlyphs()[1].advance);
    }
}

TEST(ZORVisStrokeFontTest, DamagedRecordIsNamed)
{
    const QByteArray damaged[] = {
        "1234",          // no count
        "12345",         // no count
        "12345   JZ",    // blank count
        "12345  0",      // no bearings
        "12345 -1JZ",    // negative
        "12345  xJZ",    // no number
        "12 45  1JZ",    // a gap in a number
        "12345  2JZ",    // a pair short
        "12345  1J",     // half a pair
        "12345999JZ",    // many short
        "12345  1ZJ",    // bearings in the wrong order
        "12345  2JZ\tA", // no letter
        "12345  2JZ\xc4"
        "A", // no ASCII letter
    };
    for (const QByteArray& data : damaged) {
        EXPECT_EQ(QString("vector font record 0 is damaged"), GetFailure(data)) << data.constData();
        EXPECT_EQ(QString("vector font record 1 is damaged"), GetFailure("12345  1JZ\n" + data));
    }
}

TEST(ZORVisStrokeFontTest, EveryTruncationIsReadOrRefused)
{
    const QByteArray data = ReadFile("futural");
    qsizetype numRead = 0;
    for (qsizetype size = 0; size < data.size(); ++size) {
        const bool atEndOfRecord = size == 0 || data[size - 1] == '\n' || data[size] == '\n';
        const bool isRead = GetFailure(data.left(size)).isNull();
        EXPECT_EQ(atEndOfRecord, isRead) << size;
        numRead += isRead;
    }
    EXPECT_EQ(2 * 96, numRead);
}

TEST(ZORVisStrokeFontTest, RandomDamageIsReadOrRefused)
{
    const QStringList names = ZORVisVectorFont::GetFontNames();
    std::mt19937 random(4711);
    const auto below = [&random](qsizetype end) { return qsizetype(random() % quint32(end)); };
    int numRefused = 0;
    for (int i = 0; i < 3000; ++i) {
        QByteArray data = ReadFile(names[below(names.size())]).left(2000);
        const int numChanges = 1 + int(below(5));
        for (int k = 0; k < numChanges; ++k) {
            const qsizetype position = below(data.size());
            switch (below(3)) {
            case 0:
                data[position] = char(random());
                break;
            case 1:
                data.remove(position, 1 + below(10));
                break;
            default:
                data.insert(position, QByteArray(1 + below(10), char(random())));
                break;
            }
        }
        const QString failure = GetFailure(data);
        if (!failure.isNull()) {
            EXPECT_TRUE(failure.startsWith("vector font record "));
            ++numRefused;
        }
    }
    EXPECT_GT(numRefused, 1500);
}

} // namespace
