// Tests of recognizing files by their content.

#include "ExchangeTest.h"

#include <ZORExchange/ZORExcFileKind.h>

using ZORExcFileKind::Kind;

namespace {

class ZORExcFileKindTest : public ExchangeTest
{
protected:
    static Kind Recognize(const QByteArray& content)
    {
        QByteArray bytes = content;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        const Kind kind = ZORExcFileKind::Recognize(buffer);
        EXPECT_EQ(0, buffer.pos());
        return kind;
    }
    static QByteArray ToUtf16(const QByteArray& latin, bool isBigEndian)
    {
        QByteArray wide = isBigEndian ? "\xfe\xff" : "\xff\xfe";
        for (const char c : latin) {
            wide.append(isBigEndian ? '\0' : c);
            wide.append(isBigEndian ? c : '\0');
        }
        return wide;
    }
};

TEST_F(ZORExcFileKindTest, RecognizesEveryKind)
{
    EXPECT_EQ(Kind::Empty, Recognize({}));
    EXPECT_EQ(Kind::Container, Recognize(MakeContainer()));
    EXPECT_EQ(Kind::Result, Recognize(MakeResult(ZORNestResult(ZORNestResult::Translation))));
    EXPECT_EQ(Kind::Contours, Recognize(MakeContours()));
    EXPECT_EQ(Kind::LayupXml, Recognize(MakeLayupXml()));
    EXPECT_EQ(Kind::LayupJson, Recognize(MakeLayupJson()));
    EXPECT_EQ(Kind::Stl, Recognize(MakeAsciiTetrahedron(1)));
    EXPECT_EQ(Kind::Stl, Recognize(QByteArray(84, '\0')));
}

TEST_F(ZORExcFileKindTest, CompressedFilesOfAnyLengthAreRecognized)
{
    // The first compressed block of a long document is whole only within many bytes.
    EXPECT_EQ(Kind::Container, Recognize(MakeContainer(20000)));
    ZORNestResult result(ZORNestResult::Nesting);
    quint32 noise = 1;
    for (int i = 0; i < 20000; ++i) {
        noise = noise * 1664525 + 1013904223;
        result.AddItem(ZORNestResultItem(QString::number(noise, 36)));
    }
    const QByteArray file = MakeResult(result);
    EXPECT_LT(100'000, file.size());
    EXPECT_EQ(Kind::Result, Recognize(file));
}

TEST_F(ZORExcFileKindTest, ByteOrderMarksAndBlanksComeBeforeText)
{
    EXPECT_EQ(Kind::Contours, Recognize("\xef\xbb\xbf\n" + MakeContours().mid(22)));
    EXPECT_EQ(Kind::LayupXml, Recognize("\n\t " + MakeLayupXml()));
    EXPECT_EQ(Kind::LayupJson, Recognize("\xef\xbb\xbf\r\n" + MakeLayupJson()));
    EXPECT_EQ(Kind::Stl, Recognize("\xef\xbb\xbf" + MakeAsciiTetrahedron(1)));
}

TEST_F(ZORExcFileKindTest, WideTextIsRecognized)
{
    const QByteArray contours = "<a><OuterContour><Pt>0 0 0</Pt></OuterContour></a>";
    EXPECT_EQ(Kind::Contours, Recognize(ToUtf16(contours, false)));
    EXPECT_EQ(Kind::Contours, Recognize(ToUtf16(contours, true)));
    EXPECT_EQ(Kind::LayupXml, Recognize(ToUtf16(MakeLayupXml(), false)));
}

TEST_F(ZORExcFileKindTest, WordsMayBeFarAwayAndAcrossPieces)
{
    const qsizetype piece = 256 << 10;
    for (const qsizetype shift : {-14, -13, -7, -1, 0}) {
        const QByteArray blanks(piece + shift - 3, ' ');
        EXPECT_EQ(Kind::Contours, Recognize("<a>" + blanks + "<OuterContour/></a>")) << shift;
        EXPECT_EQ(Kind::LayupJson, Recognize("{" + blanks + "  \"allComposite\": []}")) << shift;
        EXPECT_EQ(Kind::Stl, Recognize("<a>" + blanks + "<InnerContour/></a>")) << shift;
    }
}

TEST_F(ZORExcFileKindTest, OtherTextIsLeftToTheStlLoader)
{
    for (const char* text :
         {"<html><body/></html>", "{\"items\": []}", "[1, 2]", "hello", "<", "{", " ", "\xff\xfe"})
        EXPECT_EQ(Kind::Stl, Recognize(text)) << text;
    EXPECT_EQ(Kind::Stl, Recognize(QByteArray("\0", 1)));
}

TEST_F(ZORExcFileKindTest, CutFilesAreOfTheirKind)
{
    const QByteArray container = MakeContainer();
    for (qsizetype size = 8; size < container.size(); ++size)
        EXPECT_EQ(Kind::Container, Recognize(container.first(size))) << size;
}

TEST_F(ZORExcFileKindTest, ReadsFromThePositionOfTheDevice)
{
    QByteArray bytes = "xyz" + MakeLayupJson();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    buffer.seek(3);
    EXPECT_EQ(Kind::LayupJson, ZORExcFileKind::Recognize(buffer));
    EXPECT_EQ(3, buffer.pos());
}

TEST_F(ZORExcFileKindTest, EveryKindHasAName)
{
    QStringList names;
    for (const Kind kind :
         {Kind::Empty, Kind::Container, Kind::Result, Kind::Contours, Kind::LayupXml, Kind::Stl})
        names.append(ZORExcFileKind::GetName(kind));
    EXPECT_EQ(6, QSet<QString>(names.begin(), names.end()).size());
    EXPECT_FALSE(names.contains(QString()));
}

} // namespace
