// Tests of ZORGeoStlLoader on the content of files.

#include "StlText.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QBuffer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <utility>

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

class ZORGeoStlLoaderContentTest : public testing::Test
{
protected:
    // Loads content from memory and returns "triangles/vertices" of every surface, or the exception's
    // message.
    QString Load(const QByteArray& content, ZORSysValue::Unit unit = ZORSysValue::Millimeter)
    {
        container.Clear();
        QBuffer buffer;
        buffer.setData(content);
        buffer.open(QIODevice::ReadOnly);
        ZORGeoStlLoader loader(&buffer);
        QStringList result;
        try {
            surfaces = loader.Load(&container, unit);
            for (const ZORGeoSurface* surface : surfaces) {
                result.append(QStringLiteral("%1/%2").arg(QString::number(surface->GetNumTriangles()),
                                                          QString::number(surface->GetVertexArray().size())));
            }
            EXPECT_EQ(surfaces.size(), container.GetNumGeometry());
        } catch (const ZORSysFileException& exception) {
            result.append(exception.GetMessage());
            EXPECT_EQ(0, container.GetNumGeometry());
        }
        report = loader.GetReport();
        return result.join(' ');
    }

    static void ExpectWarning(const char* text)
    {
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QRegularExpression::escape(QString::fromLatin1(text))));
    }

    ZORGeoContainer container;
    QList<const ZORGeoSurface*> surfaces;
    ZORGeoStlReport report;
};

TEST_F(ZORGeoStlLoaderContentTest, BinaryFacetsAreWeldedInTheOrderOfTheFile)
{
    EXPECT_EQ(QString("2/4"), Load(BinaryStl({kFirstFacet, kSecondFacet})));
    EXPECT_EQ(QList<ZORMathPoint>({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}),
              surfaces[0]->GetVertexArray());
    EXPECT_EQ(QList<ZORGeoSurface::Corners>({{0, 1, 2}, {1, 3, 2}}), surfaces[0]->GetCornerArray());
    EXPECT_EQ(QString("Surface.1"), surfaces[0]->objectName());
    EXPECT_FALSE(report.HasLosses());
}

TEST_F(ZORGeoStlLoaderContentTest, MinusZeroIsZero)
{
    EXPECT_EQ(QString("2/4"), Load(BinaryStl({kFirstFacet, {1, -0.0f, 0, 1, 1, -0.0f, -0.0f, 1, 0}})));
    EXPECT_FALSE(std::signbit(surfaces[0]->GetVertexArray()[1].GetY()));
}

TEST_F(ZORGeoStlLoaderContentTest, UnitsBecomeMillimetres)
{
    const std::pair<ZORSysValue::Unit, double> factors[] = {
        {ZORSysValue::Millimeter, 1}, {ZORSysValue::Centimeter, 10}, {ZORSysValue::Meter, 1000},
        {ZORSysValue::Inch, 25.4},    {ZORSysValue::Foot, 304.8},
    };
    for (const auto& [unit, factor] : factors) {
        EXPECT_EQ(QString("1/3"), Load(BinaryStl({kFirstFacet}), unit));
        EXPECT_EQ(ZORMathPoint(factor, 0, 0), surfaces[0]->GetVertexArray()[1]);
    }
    EXPECT_THROW(Load(BinaryStl({kFirstFacet}), ZORSysValue::Degree), ZORSysException);
}

TEST_F(ZORGeoStlLoaderContentTest, TheHeaderNeverDecidesTheForm)
{
    EXPECT_EQ(QString("1/3"), Load(BinaryStl({kFirstFacet}, -1, "solid part")));
    EXPECT_EQ(QString("1/3"), Load(BinaryStl({kFirstFacet}, -1, "solid facet normal vertex endsolid")));
    ExpectWarning("1 bytes behind the last facet");
    EXPECT_EQ(QString("2/4"), Load(BinaryStl({kFirstFacet, kSecondFacet}, -1, "solid part") + '\n'));
    EXPECT_EQ(1, report.GetNumTrailingBytes());
}

TEST_F(ZORGeoStlLoaderContentTest, AShortBinaryFileGivesItsGoodFacets)
{
    ExpectWarning("2 of 2 facets used; left out: 5 announced but missing");
    EXPECT_EQ(QString("2/4"), Load(BinaryStl({kFirstFacet, kSecondFacet}, 7)));
    EXPECT_EQ(5, report.GetNumMissing());
    ExpectWarning("1 of 1 facets used; left out: 1 announced but missing");
    EXPECT_EQ(QString("1/3"), Load(BinaryStl({kFirstFacet, kSecondFacet}).chopped(1)));
    ExpectWarning("2 of 2 facets used; left out: 4294967293 announced but missing");
    EXPECT_EQ(QString("2/4"), Load(BinaryStl({kFirstFacet, kSecondFacet}, 0xffffffff)));
}

TEST_F(ZORGeoStlLoaderContentTest, AnUnfinishedCountOfZeroHidesNoFacets)
{
    EXPECT_EQ(QString("2/4"), Load(BinaryStl({kFirstFacet, kSecondFacet}, 0)));
}

TEST_F(ZORGeoStlLoaderContentTest, FacetsThatAreNotFiniteAreLeftOut)
{
    ExpectWarning("1 of 4 facets used; left out: 3 not finite");
    EXPECT_EQ(QString("1/3"), Load(BinaryStl({{kNan, 0, 0, 1, 0, 0, 0, 1, 0},
                                              kFirstFacet,
                                              {9, 0, 0, 1, kInfinity, 0, 0, 1, 0},
                                              {8, 0, 0, 1, 0, 0, 0, 1, -kInfinity}})));
    ExpectWarning("1 of 5 facets used; left out: 4 not finite");
    EXPECT_EQ(QString("1/3"),
              Load("solid\n" + AsciiFacet("nan 0 0", "1 0 0", "0 1 0") + AsciiFacet("0 0 0", "1 0 0", "0 1 0")
                   + AsciiFacet("0 0 0", "inf 0 0", "0 1 0") + AsciiFacet("0 0 0", "1e39 0 0", "0 1 0")
                   + AsciiFacet("0 0 0", "-1e999999 0 0", "0 1 0") + "endsolid\n"));
}

TEST_F(ZORGeoStlLoaderContentTest, DegenerateFacetsAreLeftOutAndThinOnesStay)
{
    ExpectWarning("2 of 3 facets used; left out: 1 degenerate");
    EXPECT_EQ(QString("2/5"),
              Load(BinaryStl({kFirstFacet, {0, 0, 0, 1, 0, 0, 0, 0, 0}, {1, 0, 0, 2, 0, 0, 3, 0, 0}})));
    EXPECT_EQ(1, report.GetNumDegenerate());
}

TEST_F(ZORGeoStlLoaderContentTest, AsciiIsReadInEveryShape)
{
    const QByteArray facet = AsciiFacet("0 0 0", "1 0 0", "0 1 0");
    const QByteArray text = "solid part\n" + facet + "endsolid part\n";
    const QByteArray shapes[] = {
        text,
        QByteArray(text).replace('\n', "\r\n"),
        QByteArray(text).replace('\n', "\r"),
        QByteArray(text).replace('\n', ' '),
        QByteArray(text).replace(' ', "\t\t"),
        text.toUpper(),
        "\xef\xbb\xbf" + text,
        "\n\n  " + text,
        facet,                                      // no solid at all
        text.chopped(14),                           // no end
        "solid part\n" + facet + "endsolidpart",    //
        QByteArray(text).replace("endfacet\n", ""), //
        QByteArray(text).replace("facet normal 0 0 1\n", "").replace("endfacet\n", ""),
        QByteArray(text).replace("0 0 0", "+0.0e+00 -0 .0"),
        QByteArray(text).replace("1 0 0", "1.0E0 1e-60 0."),
        "solid \xff\xfe\x80 name\n" + facet + "endsolid\n", // not UTF-8
        "solid part\x01\x02\n" + facet + "endsolid part\n",
    };
    for (const QByteArray& shape : shapes)
        EXPECT_EQ(QString("1/3"), Load(shape)) << shape.toStdString();
    EXPECT_EQ(QString("2/4"), Load("solid\n" + facet + AsciiFacet("1 0 0", "1 1 0", "0 1 0") + "endsolid"));
}

// Against the C library, in every notation.
TEST_F(ZORGeoStlLoaderContentTest, AsciiNumbersBecomeTheNearestFloats)
{
    std::mt19937_64 random(51);
    QList<QByteArray> numbers = {"16777217",
                                 "16777217.0000001",
                                 "16777217.00000000001",
                                 "16777219",
                                 "0.1",
                                 "1.17549435e-38",
                                 "1.4e-45",
                                 "7e-46",
                                 "3.4028235e38",
                                 "9007199254740993",
                                 "33554434.0000000000000000000001",
                                 "123456789012345678",
                                 "1234567890123456789012",
                                 "000000000000000000000000000001.5",
                                 "1e22",
                                 "1e-22",
                                 "9e23",
                                 "0e400",
                                 "5e-324",
                                 "0." + QByteArray(400, '0') + "1",
                                 "1e-5000",
                                 ".5",
                                 "5.",
                                 "-.5e+01"};
    while (numbers.size() < 3000) {
        const double value = std::bit_cast<float>(quint32(random()));
        const double shift = std::pow(10.0, double(random() % 20) - 10);
        const double number = std::abs(value) < 1e30 ? value : double(random() % 100000) * shift;
        const char format = "efg"[random() % 3];
        numbers.append(QByteArray::number(number, format, int(random() % 17)));
        // Half-way between two floats, and next to it.
        const float low = std::bit_cast<float>(quint32(0x40000000 + random() % 0x8000000));
        const double middle = (double(low) + double(std::nextafter(low, kInfinity))) / 2;
        numbers.append(QByteArray::number(middle, 'g', 17));
        numbers.append(QByteArray::number(std::nextafter(middle, 0.0), 'g', 17));
    }
    QByteArray content = "solid\n";
    for (qsizetype i = 0; i < numbers.size(); ++i) {
        const QByteArray place = QByteArray::number(i);
        content += AsciiFacet(numbers[i] + " 1 " + place, "0 2 " + place, "0 3 " + place);
    }
    Load(content);
    ASSERT_EQ(numbers.size(), surfaces.value(0)->GetNumTriangles());
    for (int i = 0; i < numbers.size(); ++i) {
        ZORMathPoint a;
        ZORMathPoint b;
        ZORMathPoint c;
        surfaces[0]->GetVertices(i + 1, a, b, c);
        EXPECT_EQ(double(std::strtof(numbers[i].constData(), nullptr)), a.GetX()) << numbers[i].toStdString();
    }
}

TEST_F(ZORGeoStlLoaderContentTest, AsciiFacetsWithFaultsAreLeftOut)
{
    const QByteArray good = AsciiFacet("0 0 0", "1 0 0", "0 1 0");
    const std::pair<QByteArray, const char*> faults[] = {
        {AsciiFacet("0,5 0 0", "1 0 0", "0 1 0"), "1 with unreadable coordinates"}, // decimal comma
        {AsciiFacet("x 0 0", "1 0 0", "0 1 0"), "1 with unreadable coordinates"},
        {AsciiFacet("0 0", "1 0 0", "0 1 0"), "1 with unreadable coordinates"},
        {AsciiFacet("0 0 0x", "1 0 0", "0 1 0"), "1 with unreadable coordinates"},
        {"facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nendloop\nendfacet\n",
         "1 without three corners"},
        {"facet normal 0 0 1\nouter loop\nvertex 0 0 0\n", "1 without three corners"},
        {"facet normal 0 0 1\nendfacet\n", "1 without three corners"},
    };
    for (const auto& [fault, warning] : faults) {
        ExpectWarning((QByteArray("2 of 3 facets used; left out: ") + warning).constData());
        EXPECT_EQ(QString("2/3"), Load("solid\n" + good + fault + good + "endsolid\n"))
            << fault.toStdString();
    }
}

TEST_F(ZORGeoStlLoaderContentTest, EverySolidIsASurfaceNamedAfterIt)
{
    const QByteArray facet = AsciiFacet("0 0 0", "1 0 0", "0 1 0");
    EXPECT_EQ(QString("1/3 1/3 1/3 1/3"),
              Load("solid wing  skin\n" + facet + "endsolid wing skin\nsolid\nendsolid\nsolid rib\n" + facet
                   + "solid rib\r\n" + facet + "endsolid\nsolid\n" + facet + "endsolid\n"));
    QStringList names;
    for (const ZORGeoSurface* surface : surfaces)
        names.append(surface->objectName());
    EXPECT_EQ(QStringList({"wing skin", "rib", "rib.2", "Surface.1"}), names);
    EXPECT_EQ(1, report.GetNumEmptySolids());
    EXPECT_FALSE(report.HasLosses());
}

TEST_F(ZORGeoStlLoaderContentTest, ASolidsNameMayHoldKeywords)
{
    const QByteArray facet = AsciiFacet("0 0 0", "1 0 0", "0 1 0");
    EXPECT_EQ(QString("1/3"), Load("solid facet vertex outer solid\n" + facet + "endsolid facet vertex\n"));
    EXPECT_EQ(QString("facet vertex outer solid"), surfaces[0]->objectName());
    EXPECT_EQ(QString("1/3"), Load("solid my part " + QByteArray(facet).replace('\n', ' ') + "endsolid"));
    EXPECT_EQ(QString("my part"), surfaces[0]->objectName());
}

TEST_F(ZORGeoStlLoaderContentTest, EmptyContentGivesNoSurface)
{
    for (const QByteArray& content :
         {QByteArray(), QByteArray(" \r\n\t\n"), QByteArray("\xef\xbb\xbf"), QByteArray("solid\nendsolid\n"),
          QByteArray("solid a\nendsolid a\nSOLID b\n"), BinaryStl({})}) {
        EXPECT_EQ(QString(), Load(content)) << content.toStdString();
        EXPECT_EQ(0, container.GetNumGeometry());
    }
}

TEST_F(ZORGeoStlLoaderContentTest, ContentWithoutAUsableFacetThrows)
{
    const QString utf16 = "the STL content is UTF-16 text, which the format does not allow";
    const QString text =
        QString::fromLatin1("solid a\n" + AsciiFacet("0 0 0", "1 0 0", "0 1 0") + "endsolid a\n");
    const QByteArray littleEndian(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
    QByteArray bigEndian = littleEndian;
    for (qsizetype i = 0; i < bigEndian.size(); i += 2)
        std::swap(bigEndian[i], bigEndian[i + 1]);
    for (const QByteArray& content :
         {littleEndian, "\xff\xfe" + littleEndian, bigEndian, "\xfe\xff" + bigEndian, littleEndian.left(40)})
        EXPECT_EQ(utf16, Load(content));

    const QString none = "the STL content has no usable facet (%1)";
    EXPECT_EQ(none.arg("0 of 0 facets used"), Load("These are not the facets you are looking for."));
    EXPECT_EQ(none.arg("0 of 0 facets used"), Load("solid advice:\nnever trust the header\n"));
    EXPECT_EQ(none.arg("0 of 0 facets used"), Load(QByteArray(80, '\0')));
    EXPECT_EQ(none.arg("0 of 0 facets used; left out: 3 announced but missing"), Load(BinaryStl({}, 3)));
    EXPECT_EQ(none.arg("0 of 1 facets used; left out: 1 not finite"),
              Load(BinaryStl({{kNan, 0, 0, 1, 0, 0, 0, 1, 0}})));
    EXPECT_EQ(none.arg("0 of 1 facets used; left out: 1 degenerate"),
              Load("solid a\n" + AsciiFacet("1 0 0", "1 0 0", "0 1 0") + "endsolid a\n"));
}

TEST_F(ZORGeoStlLoaderContentTest, WhatThrowsAddsNothingToWhatIsThere)
{
    Load(BinaryStl({kFirstFacet}));
    QBuffer buffer;
    buffer.setData("no facets here");
    buffer.open(QIODevice::ReadOnly);
    EXPECT_THROW(ZORGeoStlLoader(&buffer).Load(&container, ZORSysValue::Millimeter), ZORSysFileException);
    EXPECT_EQ(1, container.GetNumGeometry());
    EXPECT_THROW(ZORGeoStlLoader(&buffer).Load(nullptr, ZORSysValue::Millimeter), ZORSysException);
}

TEST_F(ZORGeoStlLoaderContentTest, TheDeviceMustBeOpenForReading)
{
    QBuffer buffer;
    for (const auto mode : {QIODevice::NotOpen, QIODevice::WriteOnly}) {
        if (mode != QIODevice::NotOpen)
            buffer.open(mode);
        try {
            ZORGeoStlLoader(&buffer).Load(&container, ZORSysValue::Millimeter);
            FAIL();
        } catch (const ZORSysFileException& exception) {
            EXPECT_EQ(QString("device is not open for reading"), exception.GetMessage());
        }
    }
    EXPECT_THROW(ZORGeoStlLoader(nullptr).Load(&container, ZORSysValue::Millimeter), ZORSysFileException);
}

TEST_F(ZORGeoStlLoaderContentTest, FilesPipesAndTextModeReadTheSame)
{
    const QByteArray content = BinaryStl({kFirstFacet, {13, 10, 13, 10, 2, 3, 4, 5, 6}, kSecondFacet});
    const QTemporaryDir folder;
    QFile file(folder.filePath("part.stl"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("junk" + content);
    file.close();
    for (const auto mode :
         {QIODevice::OpenMode(QIODevice::ReadOnly), QIODevice::ReadOnly | QIODevice::Text}) {
        ASSERT_TRUE(file.open(mode));
        file.seek(4);
        const auto loaded = ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Millimeter);
        ASSERT_EQ(1, loaded.size());
        EXPECT_EQ(3, loaded[0]->GetNumTriangles());
        EXPECT_TRUE(file.atEnd());
        file.close();
    }
    QBuffer buffer;
    buffer.setData(content);
    buffer.open(QIODevice::ReadOnly | QIODevice::Text);
    EXPECT_EQ(3, ZORGeoStlLoader(&buffer).Load(&container, ZORSysValue::Millimeter).at(0)->GetNumTriangles());

    QProcess process;
    process.start("tail", {"-c", "+5", file.fileName()});
    ASSERT_TRUE(process.waitForStarted());
    EXPECT_EQ(3,
              ZORGeoStlLoader(&process).Load(&container, ZORSysValue::Millimeter).at(0)->GetNumTriangles());
    process.waitForFinished();
}

TEST_F(ZORGeoStlLoaderContentTest, ManySmallSolidsAreNoBurden)
{
    QByteArray content;
    for (int i = 0; i < 20000; ++i)
        content += "solid s\n" + AsciiFacet("0 0 0", "1 0 0", "0 1 0") + "endsolid s\n";
    Load(content);
    EXPECT_EQ(20000, container.GetNumGeometry());
    EXPECT_EQ(QString("s.20000"), container.GetGeometryByIndex(19999)->objectName());
}

} // namespace
