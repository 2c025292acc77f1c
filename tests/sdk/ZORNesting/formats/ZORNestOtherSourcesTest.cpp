// Tests of the providers "contour-xml" and "nesting-json", and of the list of providers.

#include "sdk/ZORNesting/TranslationTest.h"
#include "support/TestData.h"

#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORSystem/ZORSysException.h>

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <numbers>

namespace {

class ZORNestContourXmlTest : public TranslationTest
{
protected:
    ZORNestContourXmlTest()
        : TranslationTest("contour-xml")
    {
    }
};

TEST_F(ZORNestContourXmlTest, EveryContourIsAPartNamedAfterItsElements)
{
    const QList<ZORNestResult> results =
        Translate("<a NAME='lost'><b><Group NAME='Wing'><Ply NAME='P1'><OuterContour><Pt>X=0 Y=0 "
                  "Z=1</Pt><Pt>4  0 1</Pt><Other/>"
                  "<Pt>X=4 Y=3 Z=2.5</Pt></OuterContour></Ply><Ply NAME='P2'><OuterContour><Pt>0 0</Pt><Pt>1 "
                  "0</Pt><Pt>1 1</Pt><Pt>0 0</Pt>"
                  "</OuterContour></Ply></Group><OuterContour><Pt>0 0</Pt><Pt>2 0</Pt><Pt>2 "
                  "2</Pt></OuterContour></b></a>");
    ASSERT_EQ("", failure);
    ASSERT_EQ(3, results.size());
    EXPECT_EQ("P1", GetItem(results[0]).GetName());
    EXPECT_EQ("Wing", GetItem(results[0]).GetAssemblyName());
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 3) L(0 0)"), Describe(results[0]));
    EXPECT_EQ("P2", GetItem(results[1]).GetName());
    EXPECT_EQ(QStringList("outline (0 0) L(1 0) L(1 1) L(0 0)"), Describe(results[1]));
    EXPECT_EQ("drawing-3", GetItem(results[2]).GetName());
    EXPECT_EQ(QStringList("flattened: 'P1', whose heights reach from 1 to 2.5"), report);
}

TEST_F(ZORNestContourXmlTest, PercentSignsInNamesReachTheReport)
{
    Translate("<a NAME='a%1b%2.stl'><OuterContour><Pt>0 0 1</Pt><Pt>4 0 1</Pt><Pt>4 3 "
              "2.5</Pt></OuterContour></a>");
    EXPECT_EQ("", failure);
    EXPECT_EQ(QStringList("flattened: 'a%1b%2.stl', whose heights reach from 1 to 2.5"), report);
}

TEST_F(ZORNestContourXmlTest, LengthInInchesScalesWhereverItStands)
{
    const QByteArray contour = "<OuterContour><Pt>0 0 0</Pt><Pt>1 0 0</Pt><Pt>1 1 0</Pt></OuterContour>";
    EXPECT_NEAR(25.4 * 25.4 / 2, GetArea(Translate("<r>" + contour + "<Length>in</Length></r>").constFirst()),
                1e-9);
    EXPECT_NEAR(
        0.5, GetArea(Translate("<r><Length>mm</Length>" + contour + "<Length>in</Length></r>").constFirst()),
        1e-9);
}

TEST_F(ZORNestContourXmlTest, MalformedFilesFailWithAReason)
{
    Translate("<r/>");
    EXPECT_EQ("no closed outline found", failure);
    Translate("<r><OuterContour><Pt>0 a 0</Pt></OuterContour></r>");
    EXPECT_EQ("line 1: 'a' is no coordinate", failure);
    Translate("<r>\n<OuterContour><Pt>0</Pt></OuterContour></r>");
    EXPECT_EQ("line 2: point has less than two coordinates", failure);
    Translate("<r><OuterContour><Pt>0 0</Pt><Pt>0 0</Pt></OuterContour></r>");
    EXPECT_EQ("contour 'drawing-1' has no extent, or is out of range", failure);
    Translate("<r><OuterContour><Pt>0 0</Pt><Pt>1 0</Pt></OuterContour></r>");
    EXPECT_FALSE(failure.isEmpty());
    Translate("<r><OuterContour><Pt>0 0</Pt>");
    EXPECT_TRUE(failure.startsWith("line 1: ")) << failure.toStdString();
}

TEST_F(ZORNestContourXmlTest, EntitiesThatTheFileDeclaresAreFollowed)
{
    const QList<ZORNestResult> results =
        Translate("<!DOCTYPE r [<!ENTITY deg '&#176;'><!ENTITY end '<Pt>4 3</Pt>'>]><r NAME='45&deg;'>"
                  "<OuterContour><Pt>0 0</Pt><Pt>4 0</Pt>&end;</OuterContour></r>");
    ASSERT_EQ("", failure);
    ASSERT_EQ(1, results.size());
    EXPECT_EQ(QString::fromUtf8("45\xc2\xb0"), GetItem(results[0]).GetName());
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 3) L(0 0)"), Describe(results[0]));
}

TEST_F(ZORNestContourXmlTest, ElementsNestUpToTheBound)
{
    const auto nest = [](int depth) {
        return QByteArray("<g NAME=''>").repeated(depth)
               + "<OuterContour><Pt>0 0</Pt><Pt>1 0</Pt><Pt>1 1</Pt>" + "</OuterContour>"
               + QByteArray("</g>").repeated(depth);
    };
    EXPECT_EQ(1, Translate(nest(3998)).size());
    EXPECT_EQ("", failure);
    Translate(nest(3999));
    EXPECT_EQ("XML elements nest more than 4000 deep", failure);
}

class ZORNestBenchmarkJsonTest : public TranslationTest
{
protected:
    ZORNestBenchmarkJsonTest()
        : TranslationTest("nesting-json")
    {
    }
    static QByteArray Items(const QByteArray& shape)
    {
        return "{\"items\": [{\"id\": 7, \"shape\": " + shape + "}]}";
    }
};

TEST_F(ZORNestBenchmarkJsonTest, PolygonsPolygonsWithHolesAndPaths)
{
    const QList<ZORNestResult> results = Translate(R"({"items": [
        {"id": 0, "name": "rib", "shape": {"type": "simple_polygon", "data": [[0, 0], [4, 0], [4, 3], [0, 0]]}},
        {"id": 5, "shape": {"type": "polygon", "data": {"outer": [[0, 0], [9, 0], [9, 9], [0, 9]], "inner": [[[1, 1], [2, 1], [2, 2]]]}}},
        {"id": 6, "shape": {"type": "path", "contours": [{"start": [10, 0], "segs": [["L", 50, 0], ["A", 60, 10, 50, 10, "ccw"],
            ["L", 60, 40], ["L", 10, 40]]}, {"start": [40, 20], "segs": [["A", 20, 20, 30, 20, "cw"], ["A", 40, 20, 30, 20, "cw"]]}]}}]})");
    ASSERT_EQ("", failure);
    ASSERT_EQ(3, results.size());
    EXPECT_EQ("rib", GetItem(results[0]).GetName());
    EXPECT_EQ("drawing", GetItem(results[0]).GetAssemblyName());
    EXPECT_EQ(QStringList("outline (0 0) L(4 0) L(4 3) L(0 0)"), Describe(results[0]));
    EXPECT_EQ("5", GetItem(results[1]).GetName());
    EXPECT_EQ(80.5, GetArea(results[1]));
    EXPECT_EQ(QStringList({"outline (10 0) L(50 0) A+(60 10 | 50 10) L(60 40) L(10 40) L(10 0)",
                           "hole (40 20) A-(20 20 | 30 20) A-(40 20 | 30 20)"}),
              Describe(results[2]));
}

TEST_F(ZORNestBenchmarkJsonTest, MalformedFilesFailWithAReason)
{
    ExpectFailures({
        {"{", "no JSON: unterminated object (byte 1)"},
        {"[]", "no nesting instance: 'items' is missing"},
        {"{\"items\": []}", "no closed outline found"},
        {"{\"items\": [5]}", "item '0': shape of unknown type ''"},
        {Items("{\"type\": \"blob\"}"), "item '7': shape of unknown type 'blob'"},
        {Items("{\"type\": \"simple_polygon\"}"), "item '7': 'data' is no list"},
        {Items("{\"type\": \"simple_polygon\", \"data\": [[0, 0], [1], [2, 2]]}"),
         "item '7': coordinate is no number"},
        {Items("{\"type\": \"simple_polygon\", \"data\": [[0, 0], [0, 0]]}"),
         "item '7': outline without extent, or out of range"},
        {Items("{\"type\": \"simple_polygon\", \"data\": [[0, 0], [1e300, 0], [1, 1]]}"),
         "item '7': outline without extent, or out of range"},
        {Items("{\"type\": \"path\", \"contours\": [{\"start\": [0, 0], \"segs\": [[\"A\", 2, 0, 1.1, 0, "
               "\"ccw\"]]}]}"),
         "item '7': end of an arc is not on its circle"},
        {Items("{\"type\": \"path\", \"contours\": [{\"start\": [0, 0], \"segs\": [[\"A\", 2, 0, 1, 0, "
               "\"up\"]]}]}"),
         "item '7': 'up' is no direction of an arc"},
        {Items("{\"type\": \"path\", \"contours\": [{\"start\": [0, 0], \"segs\": [[\"B\", 2, 0]]}]}"),
         "item '7': 'B' is no segment"},
        {Items("{\"type\": \"polygon\", \"data\": {\"outer\": [[0, 0], [1, 0], [1, 1]], \"inner\": [[[5, 5], "
               "[6, 5], [6, 6]]]}}"),
         "part '7' has more than one outline"},
    });
}

TEST_F(ZORNestBenchmarkJsonTest, RealInstancesGiveEveryItemWithItsArea)
{
    ZOR_REQUIRE_TEST_DATA(folder, "nesting");
    int files = 0;
    QDirIterator iterator(folder, {"*.json"}, QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        const QString path = iterator.next();
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QJsonArray items = QJsonDocument::fromJson(file.readAll()).object().value("items").toArray();
        if (items.isEmpty())
            continue;
        const QList<ZORNestResult> results = TranslateFile(path);
        EXPECT_EQ("", failure) << path.toStdString();
        ASSERT_EQ(items.size(), results.size()) << path.toStdString();
        ++files;
        for (int i = 0; i < items.size(); ++i) {
            const QJsonObject shape = items[i].toObject().value("shape").toObject();
            if (shape.value("type").toString() != "simple_polygon")
                continue;
            const QJsonArray points = shape.value("data").toArray();
            double twice = 0, size = 0;
            for (int k = 0; k < points.size(); ++k) {
                const QJsonArray a = points[k].toArray(), b = points[(k + 1) % points.size()].toArray();
                twice += a[0].toDouble() * b[1].toDouble() - a[1].toDouble() * b[0].toDouble();
                size = std::max({size, std::abs(a[0].toDouble()), std::abs(a[1].toDouble())});
            }
            ASSERT_NEAR(std::abs(twice) / 2, GetArea(results[i]), 1e-12 * size * size) << path.toStdString();
        }
    }
    EXPECT_GT(files, 30);
}

class ProviderOfNothing final : public ZORNestSourceProvider
{
public:
    explicit ProviderOfNothing(const QByteArray& id)
        : ZORNestSourceProvider(id)
    {
    }
    QString GetDisplayName() const override { return "Nothing"; }
    QList<ZORNestResult> Translate(const QString&, const ZORNestTranslationInput&, const ZORWorkContext&,
                                   QStringList*) const override
    {
        return {};
    }
};

TEST(ZORNestSourceProviderTest, OwnProvidersComeFirst)
{
    QList<QByteArray> ids;
    for (const ZORNestSourceProvider* provider : ZORNestSourceProvider::GetProviders()) {
        ids.append(provider->GetProviderId());
        EXPECT_FALSE(provider->GetDisplayName().isEmpty());
    }
    EXPECT_EQ(QList<QByteArray>({"dxf", "svg", "contour-xml", "nesting-json"}), ids);
    EXPECT_EQ(nullptr, ZORNestSourceProvider::GetProvider("other"));
}

TEST(ZORNestSourceProviderTest, OthersMayBeAddedAndGoWithTheirMaker)
{
    {
        ProviderOfNothing provider("nothing");
        ZORNestSourceProvider::RegisterProvider(&provider);
        EXPECT_EQ(&provider, ZORNestSourceProvider::GetProvider("nothing"));
        EXPECT_EQ(&provider, ZORNestSourceProvider::GetProviders().constLast());
        ProviderOfNothing again("svg");
        EXPECT_THROW(ZORNestSourceProvider::RegisterProvider(&again), ZORSysException);
    }
    EXPECT_EQ(nullptr, ZORNestSourceProvider::GetProvider("nothing"));
    EXPECT_NE(nullptr, ZORNestSourceProvider::GetProvider("svg"));
}

TEST(ZORNestTranslationInputTest, DefaultsAndLimits)
{
    ZORNestTranslationInput input;
    EXPECT_EQ(6, int(input.GetInputFileType()));
    EXPECT_EQ(0, int(input.GetOutputFileType()));
    EXPECT_EQ(0.01, input.GetJoinTolerance());
    EXPECT_EQ(0.01, input.GetCurveTolerance());
    input.SetJoinTolerance(0);
    for (const double bad : {-1.0, 1001.0, qQNaN(), qInf()})
        EXPECT_THROW(input.SetJoinTolerance(bad), ZORSysException);
    for (const double bad : {0.0, 1e-7, 1001.0, qQNaN()})
        EXPECT_THROW(input.SetCurveTolerance(bad), ZORSysException);
    EXPECT_EQ(0, input.GetJoinTolerance());
}

} // namespace
