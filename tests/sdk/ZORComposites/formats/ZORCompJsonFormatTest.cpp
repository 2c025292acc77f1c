#include "JsonFormatTest.h"
#include "support/TestData.h"

#include <ZORComposites/ZORCompContour.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORGeometry/ZORGeoCurve.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <numbers>

namespace {

using ZORCompJsonFormatTest = JsonFormatTest;

#define REQUIRE_SAMPLE(path) ZOR_REQUIRE_TEST_DATA(path, "meshes/layup/compost-x_test_141.json")

double Degrees(double radians)
{
    return radians * 180 / std::numbers::pi;
}

TEST_F(ZORCompJsonFormatTest, TheSampleHasItsPliesWithTheirAngles)
{
    REQUIRE_SAMPLE(path);
    const ZORCompReadReport report = Read(path, kJsonId);
    EXPECT_EQ(1, report.numLayups);
    EXPECT_EQ(1, report.numSequences);
    EXPECT_EQ(16, report.numPlies);
    EXPECT_EQ(2, report.numMaterials);
    EXPECT_EQ(5, report.numContours);
    EXPECT_EQ(0, report.numRosettes);
    EXPECT_EQ(QStringList(), report.warnings);

    EXPECT_EQ(QString("test"), GetLayup()->GetLabel());
    EXPECT_EQ(path, GetLayup()->GetSource());
    const QList<double> expected{-45, 45, -45, 45, 0, 0, 90, 0, 0, 90, 0, 0, 45, -45, 45, -45};
    const QList<ZORCompPly*> plies = GetPlies();
    ASSERT_EQ(16, plies.size());
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(expected.at(i), Degrees(plies.at(i)->GetAngle()), 1e-13) << i;
    EXPECT_EQ(7, plies.first()->GetAttributes().value("ID").toInt());
    EXPECT_EQ(37, plies.last()->GetAttributes().value("ID").toInt());
}

TEST_F(ZORCompJsonFormatTest, TheSampleHasItsMaterialsInSpiteOfBlanksAroundNumbers)
{
    REQUIRE_SAMPLE(path);
    Read(path, kJsonId);
    const auto* const library = ZORCompMaterialLibrary::Find(root);
    ASSERT_TRUE(library);
    ASSERT_EQ(2, library->GetMaterials().size());
    const ZORCompMaterial* const glass = library->FindMaterial("made3");
    ASSERT_TRUE(glass);
    ZORCompMaterialProperties expected;
    expected.type = "GFRP";
    expected.thickness = 0.3;
    expected.density = 2e-9;
    expected.E1 = 190000;
    expected.E2 = 10000;
    expected.G12 = 6000;
    expected.G23 = 5000;
    expected.v12 = 0.2;
    expected.permeability1 = 8e-13;
    EXPECT_TRUE(expected == glass->GetProperties());
    EXPECT_EQ(QString("\tmade up"), glass->GetAttributes().value("infoSource").toString());

    const QList<ZORCompPly*> plies = GetPlies();
    EXPECT_EQ(glass, plies.at(1)->GetMaterial());
    EXPECT_EQ(library->FindMaterial("aksaca_a42"), plies.at(2)->GetMaterial());
    EXPECT_NEAR(4 * 0.3 + 12 * 0.2, GetLayup()->GetThickness(), 1e-12);
    EXPECT_TRUE(GetLayup()->IsSymmetric());
    EXPECT_TRUE(GetLayup()->IsBalanced());
}

TEST_F(ZORCompJsonFormatTest, TheSampleHasItsBoundariesToTheLastBit)
{
    REQUIRE_SAMPLE(path);
    Read(path, kJsonId);
    const QList<ZORCompContour*> contours = GetAll<ZORCompContour>();
    ASSERT_EQ(5, contours.size());
    EXPECT_EQ(QString("edge"), contours.at(0)->GetLabel());
    EXPECT_EQ(QString("Circle.6"), contours.at(1)->GetLabel());
    ASSERT_EQ(100, contours.at(0)->GetCurve()->GetNumPoints());
    EXPECT_EQ(ZORMathPoint(0, 0, 0), contours.at(0)->GetCurve()->GetPoint(0));
    EXPECT_EQ(ZORMathPoint(0, 8.17602, 0), contours.at(0)->GetCurve()->GetPoint(1));
    EXPECT_EQ(ZORMathPoint(195.055, 54.3337, 65.6122), contours.at(1)->GetCurve()->GetPoint(1));
    ASSERT_EQ(7, contours.at(4)->GetCurve()->GetNumPoints());
    EXPECT_EQ(ZORMathPoint(201.15570068359375, 79.24125671386719, 72.88253784179688),
              contours.at(4)->GetCurve()->GetPoint(0));

    const QList<ZORCompPly*> plies = GetPlies();
    for (int i = 0; i < 16; ++i) {
        const int expected = i == 4 ? 3 : i == 8 ? 1 : i == 10 ? 2 : 0;
        ASSERT_EQ(1, plies.at(i)->GetBoundaries().size()) << i;
        EXPECT_EQ(contours.at(expected)->GetCurve(), plies.at(i)->GetBoundaries().constFirst()) << i;
    }
}

TEST_F(ZORCompJsonFormatTest, WhatHasNoPlaceInTheFeaturesIsKeptAndReported)
{
    REQUIRE_SAMPLE(path);
    const ZORCompReadReport report = Read(path, kJsonId);
    const QJsonObject file = QJsonDocument::fromJson(ReadFile(path)).object();
    const QJsonObject kept = GetLayup()->GetAttributes();
    for (const char* const name : {"allDefects", "allStages", "allEvents", "allTolerances", "fileMetadata"})
        EXPECT_EQ(file.value(QLatin1String(name)), kept.value(QLatin1String(name))) << name;
    EXPECT_EQ(QJsonArray{file.value("allGeometry")[5]}, kept.value("allGeometry").toArray());
    const ZORCompSequence* const sequence = GetLayup()->GetSequences().constFirst();
    EXPECT_EQ(file.value("allComposite")[0]["defects"], sequence->GetAttributes().value("defects"));

    const QMap<QString, int> expected{{"AreaMesh", 1},    {"Material.infoSource", 2}, {"Sequence.defects", 1},
                                      {"allDefects", 1},  {"allGeometry", 1},         {"allStages", 1},
                                      {"fileMetadata", 1}};
    EXPECT_EQ(expected, report.kept);
}

// The values of all fields that are not null, as texts; numbers by their values.
void Collect(const QJsonValue& value, QStringList& leaves)
{
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto it = object.begin(); it != object.end(); ++it)
            Collect(it.value(), leaves);
    } else if (value.isArray()) {
        const QJsonArray array = value.toArray();
        for (const QJsonValueConstRef each : array)
            Collect(each, leaves);
    } else if (value.isString()) {
        leaves.append(value.toString().trimmed());
    }
}

TEST_F(ZORCompJsonFormatTest, EveryTextOfTheSampleIsInTheXmlOfIt)
{
    REQUIRE_SAMPLE(path);
    Read(path, kJsonId);
    const QString xml = QString::fromUtf8(ToXml()).replace("&quot;", "\"");
    QStringList leaves;
    Collect(QJsonDocument::fromJson(ReadFile(path)).object(), leaves);
    ASSERT_GT(leaves.size(), 500);
    for (const QString& leaf : leaves) {
        bool isNumber = false;
        const double number = leaf.toDouble(&isNumber);
        const QString wanted = isNumber ? QString::number(number) : leaf;
        if (leaf != "CompositeStandard.Point" && !xml.contains(wanted))
            ADD_FAILURE() << qPrintable(leaf);
    }
}

TEST_F(ZORCompJsonFormatTest, TheSampleComesBackFromXmlTheSame)
{
    REQUIRE_SAMPLE(path);
    Read(path, kJsonId);
    const QByteArray xml = ToXml();
    const QList<double> angles = [this] {
        QList<double> list;
        for (const ZORCompPly* ply : GetPlies())
            list.append(ply->GetAngle());
        return list;
    }();
    const QJsonObject attributes = GetLayup()->GetAttributes();
    container.Clear();
    root = qobject_cast<ZORCompRoot*>(container.GetFeatureRoot("ZORCompRoot"));
    ReadContent(xml, kXmlId);
    EXPECT_EQ(xml, ToXml());
    EXPECT_EQ(attributes, GetLayup()->GetAttributes());
    const QList<ZORCompPly*> plies = GetPlies();
    ASSERT_EQ(16, plies.size());
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(angles.at(i), plies.at(i)->GetAngle()) << i;
    EXPECT_EQ(100, plies.first()->GetBoundaries().constFirst()->GetNumPoints());
}

TEST_F(ZORCompJsonFormatTest, InactivePartsAreKeptButNotPartOfTheStack)
{
    ReadContent(InSequence(Ply(R"("active": false)") + "," + Ply()), kJsonId);
    EXPECT_EQ(1, GetLayup()->GetNumPlies());
    EXPECT_EQ(2, GetLayup()->GetSequences().constFirst()->GetPlies().size());
    EXPECT_FALSE(GetLayup()->GetSequences().constFirst()->GetPlies().constFirst()->IsActive());
}

TEST_F(ZORCompJsonFormatTest, SequencesNestAndComponentsOfOtherTypesKeepTheirPlaces)
{
    const ZORCompReadReport report = ReadContent(
        InSequence(Ply() + R"(, {"_serialized_type": "X.Core", "height": 12},)" + Sequence(Ply())), kJsonId);
    const ZORCompSequence* const outer = GetLayup()->GetSequences().constFirst();
    EXPECT_EQ(2, outer->GetNumChildren());
    EXPECT_EQ(2, GetLayup()->GetNumPlies());
    const QJsonArray kept = outer->GetAttributes().value("subComponents").toArray();
    ASSERT_EQ(1, kept.size());
    EXPECT_EQ(1, kept[0]["position"].toInt());
    EXPECT_EQ(12, kept[0]["component"]["height"].toInt());
    EXPECT_EQ(1, report.kept.value("Core"));
}

TEST_F(ZORCompJsonFormatTest, AnUnknownTypeWithComponentsIsReadAsASequence)
{
    const ZORCompReadReport report =
        ReadContent(File(R"({"_serialized_type": "X.Piece", "subComponents": [)" + Ply() + "]}"), kJsonId);
    EXPECT_EQ(1, GetLayup()->GetNumPlies());
    EXPECT_EQ(QStringList{"allComposite[0]: 'Piece' is read as a sequence"}, report.warnings);
    EXPECT_EQ(QString("X.Piece"),
              GetLayup()->GetSequences().constFirst()->GetAttributes().value("_serialized_type").toString());
}

TEST_F(ZORCompJsonFormatTest, PliesOutsideSequencesShareOneOfTheirOwn)
{
    const ZORCompReadReport report = ReadContent(File(Ply() + "," + Ply() + "," + Sequence(Ply())), kJsonId);
    ASSERT_EQ(2, GetLayup()->GetSequences().size());
    EXPECT_EQ(2, GetLayup()->GetSequences().constFirst()->GetPlies().size());
    EXPECT_EQ(2, report.warnings.size());
}

TEST_F(ZORCompJsonFormatTest, ComponentsMayStandForOthersByTheirIdentifiers)
{
    ReadContent(File(R"({"_serialized_type": "X.Ply", "ID": 5, "orientation": 30},)" + Sequence("5")),
                kJsonId);
    ASSERT_EQ(1, GetLayup()->GetNumPlies());
    EXPECT_NEAR(30, Degrees(GetPlies().constFirst()->GetAngle()), 1e-13);
}

TEST_F(ZORCompJsonFormatTest, ReferencesToNothingAreReportedAndKept)
{
    const ZORCompReadReport report = ReadContent(
        InSequence(Ply(R"("material": "gold", "splineRelimitationRef": 7, "axisSystemID": 8)") + ", 99"),
        kJsonId);
    const QStringList expected{
        "allComposite[0].subComponents[0].axisSystemID: there is no axis system 8",
        "allComposite[0].subComponents[0].material: there is no material 'gold'",
        "allComposite[0].subComponents[0].splineRelimitationRef: there is no spline 7",
        "allComposite[0].subComponents[1]: there is no component 99",
    };
    EXPECT_EQ(expected, report.warnings);
    const ZORCompPly* const ply = GetPlies().constFirst();
    EXPECT_FALSE(ply->GetMaterial());
    EXPECT_EQ(QString("gold"), ply->GetAttributes().value("material").toString());
    EXPECT_EQ(7, ply->GetAttributes().value("splineRelimitationRef").toInt());
    EXPECT_EQ(8, ply->GetAttributes().value("axisSystemID").toInt());
    EXPECT_EQ(99, ply->GetSequence()->GetAttributes().value("subComponents")[0]["component"].toInt());
}

TEST_F(ZORCompJsonFormatTest, AxisSystemsBecomeRosettes)
{
    const QByteArray point = R"({"x": 1, "y": 2, "z": 3})";
    const QByteArray system =
        R"({"_serialized_type": "X.AxisSystem", "ID": 4, "memberName": "A", "o_pt": )" + point
        + R"(, "v1x": 0, "v1y": 2, "v1z": 0, "v2x": 0, "v2y": 1, "v2z": 5, "unit": "mm"})";
    ReadContent(InSequence(Ply(R"("axisSystemID": 4)"), "\"allGeometry\": [" + system + "]"), kJsonId);
    const ZORCompRosette* const rosette = GetPlies().constFirst()->GetRosette();
    ASSERT_TRUE(rosette);
    EXPECT_EQ(QString("A"), rosette->GetLabel());
    EXPECT_EQ(ZORMathPoint(1, 2, 3), rosette->GetOrigin());
    EXPECT_EQ(ZORMathVector(0, 1, 0), rosette->GetXAxis());
    EXPECT_NEAR(0, (rosette->GetYAxis() - ZORMathVector(0, 0, 1)).GetLength(), 1e-15);
    EXPECT_EQ(QString("mm"), rosette->GetAttributes().value("unit").toString());
}

TEST_F(ZORCompJsonFormatTest, AnAxisSystemThatIsNotUnderstoodIsKeptAsItIs)
{
    const ZORCompReadReport report = ReadContent(
        InSequence(Ply(), R"("allGeometry": [{"_serialized_type": "X.AxisSystem", "ID": 4}])"), kJsonId);
    EXPECT_EQ(QStringList{"allGeometry[0]: the axes are not understood"}, report.warnings);
    EXPECT_EQ(4, GetLayup()->GetAttributes().value("allGeometry")[0]["ID"].toInt());
}

TEST_F(ZORCompJsonFormatTest, PointsKeepWhatTheySayBesidesTheirCoordinates)
{
    ReadContent(InSequence(Ply(), R"("allGeometry": [{"_serialized_type": "X.Spline", "points": [
        {"x": 0, "y": 0, "z": 0, "active": true, "source": null, "_serialized_type": "X.Point"},
        {"x": " 1e1", "y": 0, "z": 0, "memberName": "corner"}]}])"),
                kJsonId);
    const ZORCompContour* const contour = GetAll<ZORCompContour>().constFirst();
    EXPECT_EQ(ZORMathPoint(10, 0, 0), contour->GetCurve()->GetPoint(1));
    const QJsonArray expected{QJsonObject{{"position", 1}, {"memberName", "corner"}}};
    EXPECT_EQ(expected, contour->GetAttributes().value("points").toArray());
}

TEST_F(ZORCompJsonFormatTest, NumbersThatNoMaterialCanHaveAreKeptAsAttributes)
{
    const ZORCompReadReport report = ReadContent(
        InSequence(Ply(),
                   R"("allMaterials": [{"materialName": "a", "E1": "0", "thickness": 0.2, "density": " "}])"),
        kJsonId);
    const ZORCompMaterial* const material = GetAll<ZORCompMaterial>().constFirst();
    EXPECT_TRUE(std::isnan(material->GetProperties().E1));
    EXPECT_EQ(0.2, material->GetProperties().thickness);
    EXPECT_EQ(QString("0"), material->GetAttributes().value("E1").toString());
    EXPECT_EQ(QStringList{"allMaterials[0]: material property 'E1' is 0, but must be positive"},
              report.warnings);
}

TEST_F(ZORCompJsonFormatTest, NamesWithControlCharactersAreCleanedAndKeptAsTheyWere)
{
    ReadContent(InSequence(Ply(R"("memberName": "a\u0001b")")), kJsonId);
    EXPECT_EQ(QString("a b"), GetPlies().constFirst()->GetLabel());
    EXPECT_EQ(QString("a\u0001b"), GetPlies().constFirst()->GetAttributes().value("memberName").toString());
    EXPECT_FALSE(ToXml().isEmpty());
}

} // namespace
