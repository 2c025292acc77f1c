#include "sdk/ZORComposites/CompositesTest.h"

#include <ZORComposites/ZORCompContour.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompWriter.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QJsonArray>
#include <QJsonObject>

#include <cmath>
#include <numbers>
#include <random>

namespace {

class ZORCompXmlFormatTest : public CompositesTest
{
protected:
    static QByteArray File(const QByteArray& inside)
    {
        return R"(<layups version="1" length="mm" angle="deg" stress="MPa" density="t/mm3" permeability="m2">)"
               + inside + "</layups>";
    }
    static QByteArray Sequence(const QByteArray& inside)
    {
        return File("<layup><sequence>" + inside + "</sequence></layup>");
    }
    ZORCompPly* GetPly() const { return GetLayup()->GetPlies().constFirst(); }
};

TEST_F(ZORCompXmlFormatTest, EverythingOfALayupComesBackToTheLastBit)
{
    auto* const library = ZORCompMaterialLibrary::Of(root);
    auto* const material = Add<ZORCompMaterial>(library);
    material->SetLabel("Twill <\"&'> \n\t\u00e4 \U0001F600");
    ZORCompMaterialProperties properties;
    properties.type = "CFRP";
    properties.thickness = 0.1 + 0.2;
    properties.E1 = 1.0 / 3;
    properties.v12 = -0.0;
    properties.rollWidth = 1e300;
    material->SetProperties(properties);
    const QJsonObject attributes{{"text", "a\u0001\r\n\t<&>\uFFFE"},
                                 {"list", QJsonArray{1, 2.5, true, QJsonValue()}}};
    material->SetAttributes(attributes);

    auto* const layup = Add<ZORCompLayup>(root);
    layup->SetLabel("Wing");
    auto* const rosette = Add<ZORCompRosette>(layup, ZORMathPoint(0.1, -0.0, 1e-300),
                                              ZORMathVector(1, 1e-5, 0), ZORMathVector(0, 0, 3));
    auto* const contour =
        Add<ZORCompContour>(layup, ZORMathSetOfPoints{{0, 0, 0}, {1.0 / 3, 0, 0}, {5e-324, -0.0, 1}});
    contour->SetAttributes(attributes);
    layup->SetRosette(rosette);
    auto* const sequence = Add<ZORCompSequence>(layup);
    auto* const inner = Add<ZORCompSequence>(sequence);
    inner->SetActive(false);
    auto* const ply = Add<ZORCompPly>(inner);
    ply->SetMaterial(material);
    ply->SetAngle(0.1);
    ply->SetBoundaries({contour->GetCurve()});
    ply->SetActive(false);
    ply->SetRosette(rosette);

    const QByteArray xml = ToXml();
    container.Clear();
    root = qobject_cast<ZORCompRoot*>(container.GetFeatureRoot("ZORCompRoot"));
    ReadContent(xml, kXmlId);
    EXPECT_EQ(xml, ToXml());

    const ZORCompLayup* const again = GetLayup();
    ASSERT_EQ(3, again->GetNumChildren());
    const auto* const innerAgain =
        qobject_cast<ZORCompSequence*>(again->GetSequences().constFirst()->GetChildren().constFirst());
    ASSERT_TRUE(innerAgain);
    EXPECT_FALSE(innerAgain->IsActive());
    const ZORCompPly* const plyAgain = innerAgain->GetPlies().constFirst();
    EXPECT_EQ(0.1, plyAgain->GetAngle());
    EXPECT_FALSE(plyAgain->IsActive());
    EXPECT_EQ(again->GetRosette(), plyAgain->GetRosette());
    ASSERT_TRUE(plyAgain->GetMaterial());
    EXPECT_EQ(QString("Twill <\"&'> \n\t\u00e4 \U0001F600"), plyAgain->GetMaterial()->GetLabel());
    EXPECT_EQ(0.1 + 0.2, plyAgain->GetMaterial()->GetProperties().thickness);
    EXPECT_TRUE(std::signbit(plyAgain->GetMaterial()->GetProperties().v12));
    EXPECT_TRUE(std::isnan(plyAgain->GetMaterial()->GetProperties().E2));
    EXPECT_EQ(attributes, plyAgain->GetMaterial()->GetAttributes());
    const ZORMathPoint last = plyAgain->GetBoundaries().constFirst()->GetPoint(2);
    EXPECT_EQ(ZORMathPoint(5e-324, 0, 1), last);
    EXPECT_TRUE(std::signbit(last.GetY()));
    EXPECT_TRUE(std::signbit(again->GetRosette()->GetGivenOrigin().GetY()));
    EXPECT_EQ(ZORMathVector(1, 1e-5, 0), again->GetRosette()->GetGivenXAxis());
}

TEST_F(ZORCompXmlFormatTest, AnyAngleComesBackToTheLastBit)
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> uniform(-10, 10);
    auto* const sequence = Add<ZORCompSequence>(Add<ZORCompLayup>(root));
    QList<double> angles{std::numbers::pi / 4, std::numbers::pi, 1e-310, 1e300, -0.0};
    for (int degrees = -360; degrees <= 360; ++degrees)
        angles.append(degrees * (std::numbers::pi / 180));
    while (angles.size() < 3000)
        angles.append(uniform(random));
    for (const double angle : std::as_const(angles))
        Add<ZORCompPly>(sequence)->SetAngle(angle);
    const QByteArray xml = ToXml();
    EXPECT_TRUE(xml.contains("angle=\"45\""));
    EXPECT_TRUE(xml.contains("angle=\"-359\""));
    container.Clear();
    root = qobject_cast<ZORCompRoot*>(container.GetFeatureRoot("ZORCompRoot"));
    ReadContent(xml, kXmlId);
    const QList<ZORCompPly*> plies = GetLayup()->GetPlies();
    ASSERT_EQ(angles.size(), plies.size());
    for (int i = 0; i < angles.size(); ++i)
        ASSERT_EQ(angles.at(i), plies.at(i)->GetAngle()) << i;
}

TEST_F(ZORCompXmlFormatTest, CurvesOfOthersAreWrittenAsTheyAre)
{
    auto* const curve = new ZORGeoPolyline(&container, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, true);
    curve->setObjectName("outline");
    curve->Initialize();
    auto* const ply = Add<ZORCompPly>(Add<ZORCompSequence>(Add<ZORCompLayup>(root)));
    ply->SetBoundaries({curve});
    const QByteArray xml = ToXml();
    container.Clear();
    root = qobject_cast<ZORCompRoot*>(container.GetFeatureRoot("ZORCompRoot"));
    ReadContent(xml, kXmlId);
    EXPECT_EQ(xml, ToXml());
    ASSERT_EQ(1, GetPly()->GetBoundaries().size());
    EXPECT_EQ(QString("outline"), GetPly()->GetBoundaries().constFirst()->objectName());
    EXPECT_EQ(1, GetLayup()->GetNumChildren());
}

TEST_F(ZORCompXmlFormatTest, WhatTheFileCannotHoldIsTold)
{
    auto* const surface = new ZORGeoSurface(&container, {{0, 0, 0}, {9, 0, 0}, {0, 9, 0}}, {{0, 1, 2}});
    surface->setObjectName("Skin");
    surface->Initialize();
    auto* const layup = Add<ZORCompLayup>(root);
    layup->SetLabel("L");
    layup->SetSurface(surface);
    auto* const rosette =
        Add<ZORCompRosette>(layup, ZORMathPoint(1, 1, 5), ZORMathVector(1, 0, 1), ZORMathVector(0, -1, 0));
    rosette->SetLabel("R");
    rosette->SetSurface(surface);
    Add<ZORFeatFolder>(layup)->SetLabel("F");
    const QString path = folder.filePath("x.xml");
    const QStringList expected{"the surface 'Skin' of 'R'", "the feature 'F' (ZORFeatFolder)",
                               "the support 'Skin' of 'L'"};
    EXPECT_EQ(expected, ZORCompWriter(path, kXmlId).Write(root));
    container.Clear();
    root = qobject_cast<ZORCompRoot*>(container.GetFeatureRoot("ZORCompRoot"));
    Read(path, kXmlId);
    const auto* const again = qobject_cast<ZORCompRosette*>(GetLayup()->GetChildren().constFirst());
    ASSERT_TRUE(again);
    EXPECT_EQ(ZORMathPoint(1, 1, 0), again->GetOrigin());
    EXPECT_EQ(ZORMathVector(1, 0, 0), again->GetXAxis());
    EXPECT_EQ(ZORMathVector(0, 0, 1), again->GetNormal());
}

TEST_F(ZORCompXmlFormatTest, TheSampleIsASymmetricLayup)
{
    const ZORCompReadReport report = Read(QStringLiteral(ZOR_SAMPLE_LAYUP), kXmlId);
    EXPECT_EQ(8, report.numPlies);
    EXPECT_EQ(2, report.numMaterials);
    EXPECT_EQ(3, report.numContours);
    EXPECT_EQ(QStringList(), report.warnings);
    EXPECT_TRUE(GetLayup()->IsSymmetric());
    EXPECT_NEAR(6 * 0.184 + 2 * 0.25, GetLayup()->GetThickness(), 1e-12);
    EXPECT_EQ(2, GetPly()->GetBoundaries().size());
    EXPECT_EQ(GetLayup()->GetRosette(), GetPly()->GetEffectiveRosette());
    const QByteArray xml = ToXml();
    container.Clear();
    root = qobject_cast<ZORCompRoot*>(container.GetFeatureRoot("ZORCompRoot"));
    ReadContent(xml, kXmlId);
    EXPECT_EQ(xml, ToXml());
}

TEST_F(ZORCompXmlFormatTest, ReferencesMayComeBeforeWhatTheyName)
{
    ReadContent(File(R"(<layup rosette="r"><sequence><ply angle="1" material="m" boundaries="c d"/></sequence>
        <contour id="c"><points>0 0 0</points></contour><curve id="d"><points/></curve>
        <rosette id="r" origin="0 0 0" x="1 0 0" normal=" 0  0 1 "/></layup>
        <materials><material id="m"/></materials>)"),
                kXmlId);
    EXPECT_TRUE(GetPly()->GetMaterial());
    EXPECT_EQ(2, GetPly()->GetBoundaries().size());
    EXPECT_TRUE(GetPly()->GetEffectiveRosette());
}

TEST_F(ZORCompXmlFormatTest, TextsThatXmlCannotHoldAreRefusedBeforeAnythingIsWritten)
{
    Add<ZORCompLayup>(root)->SetLabel("a\u0001");
    const QString path = WriteFile("x.xml", "before");
    EXPECT_EQ(
        QString("cannot write '%1': the text 'a\u0001' holds a character that XML cannot hold").arg(path),
        MessageOf([&] { ZORCompWriter(path, kXmlId).Write(root); }));
    EXPECT_EQ(QByteArray("before"), ReadFile(path));
}

struct BadXml
{
    const char* inside; // the root element, or the whole file when it starts with "!"
    const char* message;
};

class BadXmlTest : public ZORCompXmlFormatTest, public testing::WithParamInterface<BadXml>
{
};

TEST_P(BadXmlTest, IsRefusedWithThePlace)
{
    const QByteArray inside = GetParam().inside;
    const QString failure = FailureOf(inside.startsWith('!') ? inside.mid(1) : File(inside), kXmlId);
    EXPECT_TRUE(failure.startsWith("line 1, column ")) << qPrintable(failure);
    EXPECT_EQ(QString::fromUtf8(GetParam().message), failure.section(": ", 1));
}

INSTANTIATE_TEST_SUITE_P(
    Wrong, BadXmlTest,
    testing::Values(
        BadXml{"!", "Premature end of document."}, BadXml{"!<a/>", "element 'a' is not allowed here"},
        BadXml{"!<layups/>", "attribute 'version' is missing"},
        BadXml{"!<layups version=\"2\"/>", "version '2' of the format is unknown"},
        BadXml{"!<layups version=\"1\" length=\"in\"/>", "unit 'in' of 'length' is unknown"},
        BadXml{"!<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>", "a document type declaration is not allowed"},
        BadXml{"<layup>x</layup>", "text is not allowed here"},
        BadXml{"<layup><ply angle=\"0\"/></layup>", "element 'ply' is not allowed here"},
        BadXml{"<layup colour=\"red\"/>", "attribute 'colour' is unknown"},
        BadXml{"<layup/", "Expected '>', but got '<'."},
        BadXml{"<layup rosette=\"r9\"/>", "identifier 'r9' is unknown"},
        BadXml{"<curve id=\"a\"><points/></curve><contour id=\"a\"><points/></contour>",
               "identifier 'a' is there twice"},
        BadXml{"<curve id=\"a\"/>", "element 'points' is missing"},
        BadXml{"<curve id=\"a\"><points/><points/></curve>", "element 'points' is there twice"},
        BadXml{"<curve id=\"a\"><points>1 2</points></curve>", "the last point has no three coordinates"},
        BadXml{"<curve id=\"a\"><points>1 2 inf</points></curve>", "'inf' is no coordinate"},
        BadXml{"<rosette id=\"a\" origin=\"0 0\"/>", "attribute 'origin' does not hold three numbers"},
        BadXml{"<rosette id=\"a\" origin=\"0 0 x\"/>", "attribute 'origin' does not hold a number"},
        BadXml{"<materials><material id=\"a\" E1=\"1e400\"/></materials>",
               "attribute 'E1' does not hold a number"},
        BadXml{"<materials><material id=\"a\" E1=\"-1\"/></materials>",
               "material property 'E1' is -1, but must be positive"},
        BadXml{"<layup><sequence active=\"1\"/></layup>", "attribute 'active' is neither 'true' nor 'false'"},
        BadXml{"<layup><sequence><ply angle=\"north\"/></sequence></layup>",
               "attribute 'angle' does not hold a number"},
        BadXml{"<layup><attributes>[]</attributes></layup>", "the attributes are no JSON object"},
        BadXml{"<layup><attributes>{</attributes></layup>",
               "the attributes are no JSON: unterminated object"},
        BadXml{"<layup><attributes>{\"a\":1}</attributes><attributes>{}</attributes></layup>",
               "element 'attributes' is there twice"}));

TEST_F(ZORCompXmlFormatTest, WrongAxesAreRefusedWithTheirRosette)
{
    EXPECT_EQ(QString("rosette 0: the X axis of the rosette is parallel to its normal"),
              FailureOf(File(R"(<rosette id="a" origin="0 0 0" x="0 0 1" normal="0 0 2"/>)"), kXmlId));
}

TEST_F(ZORCompXmlFormatTest, BombsOfDepthAndOfEntitiesAreRefused)
{
    QByteArray deep;
    for (int i = 0; i < 100000; ++i)
        deep += "<sequence>";
    EXPECT_TRUE(FailureOf(File("<layup>" + deep), kXmlId).endsWith("sequences are nested more than 64 deep"));
    EXPECT_TRUE(
        FailureOf(File("<layup><attributes>{\"a\":" + QByteArray(100000, '[') + "</attributes></layup>"),
                  kXmlId)
            .contains("the attributes are no JSON"));
    EXPECT_NE(QString(), FailureOf(QByteArray(1000000, '<'), kXmlId));
    QByteArray attributes;
    for (int i = 0; i < 1000000; ++i)
        attributes += " a" + QByteArray::number(i) + "=\"\"";
    EXPECT_TRUE(FailureOf(File("<layup" + attributes + "/>"), kXmlId)
                    .endsWith("an XML element has more than 4000 attributes"));
}

} // namespace
