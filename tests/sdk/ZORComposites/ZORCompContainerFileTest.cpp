#include "CompositesTest.h"
#include "support/ContainerFiles.h"
#include "support/TestData.h"

#include <ZORComposites/ZORCompContour.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QJsonArray>
#include <QJsonObject>

namespace {

class ZORCompContainerFileTest : public CompositesTest
{
protected:
    template<class Feature>
    static QList<Feature*> GetAll(const ZORGeoContainer& in)
    {
        QList<Feature*> found;
        for (int i = 0; i < in.GetNumGeometry(); ++i) {
            if (auto* match = qobject_cast<Feature*>(in.GetGeometryByIndex(i)))
                found.append(match);
        }
        return found;
    }
};

TEST_F(ZORCompContainerFileTest, EveryFeatureComesBackWithItsInputsAndAttributes)
{
    const QJsonObject attributes{{"text", "a\u0001\n"}, {"list", QJsonArray{1, 2.5, QJsonValue()}}};
    auto* const surface = new ZORGeoSurface(&container, {{3, 0, 0}, {3, 9, 0}, {3, 0, 9}}, {{0, 1, 2}});
    surface->Initialize();
    auto* const material = Add<ZORCompMaterial>(ZORCompMaterialLibrary::Of(root));
    material->SetLabel("Twill");
    material->SetAttributes(attributes);
    ZORCompMaterialProperties properties;
    properties.type = "CFRP";
    properties.E1 = 1.0 / 3;
    material->SetProperties(properties);
    auto* const layup = Add<ZORCompLayup>(root);
    layup->SetSource("file.xml");
    layup->SetSurface(surface);
    layup->SetAttributes(attributes);
    auto* const rosette =
        Add<ZORCompRosette>(layup, ZORMathPoint(5, 1, 2), ZORMathVector(1, 2, 0), ZORMathVector(0, 0, 1));
    rosette->SetAttributes(attributes);
    rosette->SetSurface(surface); // its line and body come behind it now
    layup->SetRosette(rosette);
    auto* const outer = Add<ZORCompContour>(layup, ZORMathSetOfPoints{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    outer->SetAttributes(attributes);
    auto* const gone = Add<ZORCompContour>(layup, ZORMathSetOfPoints{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    auto* const sequence = Add<ZORCompSequence>(layup);
    sequence->SetRosette(rosette);
    sequence->SetActive(false);
    sequence->SetAttributes(attributes);
    auto* const ply = Add<ZORCompPly>(sequence);
    ply->SetMaterial(material);
    ply->SetRosette(rosette);
    ply->SetAngle(0.1);
    ply->SetActive(false);
    ply->SetBoundaries({outer->GetCurve(), gone->GetCurve()});
    ply->SetAttributes(attributes);
    gone->Remove();

    const QByteArray file = SaveContainer(container);
    ZORFeatContainer loaded;
    LoadContainer(loaded, file);
    EXPECT_EQ(file, SaveContainer(loaded));

    const auto* const plyAgain = GetAll<ZORCompPly>(loaded).value(0);
    ASSERT_TRUE(plyAgain);
    EXPECT_EQ(0.1, plyAgain->GetAngle());
    EXPECT_FALSE(plyAgain->IsActive());
    EXPECT_EQ(attributes, plyAgain->GetAttributes());
    EXPECT_TRUE(properties == plyAgain->GetMaterial()->GetProperties());
    EXPECT_EQ(attributes, plyAgain->GetMaterial()->GetAttributes());
    EXPECT_EQ(QString("Twill"), plyAgain->GetMaterial()->GetLabel());
    const auto* const contourAgain = GetAll<ZORCompContour>(loaded).value(0);
    EXPECT_EQ(QList<const ZORGeoCurve*>{contourAgain->GetCurve()}, plyAgain->GetBoundaries());
    EXPECT_EQ(contourAgain->GetCurve(), plyAgain->GetBody()->GetGeometry());
    EXPECT_EQ(attributes, contourAgain->GetAttributes());
    const ZORCompLayup* const layupAgain = plyAgain->GetLayup();
    EXPECT_EQ(QString("file.xml"), layupAgain->GetSource());
    EXPECT_EQ(attributes, layupAgain->GetAttributes());
    EXPECT_EQ(GetAll<ZORGeoSurface>(loaded).value(0), layupAgain->GetSurface());
    EXPECT_FALSE(plyAgain->GetSequence()->IsActive());
    ZORCompRosette* const rosetteAgain = plyAgain->GetRosette();
    EXPECT_EQ(rosetteAgain, layupAgain->GetRosette());
    EXPECT_EQ(rosetteAgain, plyAgain->GetSequence()->GetRosette());
    EXPECT_EQ(rosette->GetOrigin(), rosetteAgain->GetOrigin());
    EXPECT_EQ(ZORMathVector(1, 2, 0), rosetteAgain->GetGivenXAxis());
    EXPECT_EQ(attributes, rosetteAgain->GetAttributes());

    // Loaded shapes belong to their features as before.
    const int numBefore = loaded.GetNumGeometry();
    rosetteAgain->SetAxes({5, 1, 2}, {0, 0, 1}, {0, 1, 0});
    EXPECT_EQ(numBefore, loaded.GetNumGeometry());
    loaded.GetFeatureRoot("ZORCompRoot")->Remove();
    EXPECT_EQ(1, loaded.GetNumGeometry());
}

TEST_F(ZORCompContainerFileTest, ARosetteKeepsTheAxesOfASurfaceThatIsGone)
{
    auto* const surface = new ZORGeoSurface(&container, {{3, 0, 0}, {3, 9, 0}, {3, 0, 9}}, {{0, 1, 2}});
    surface->Initialize();
    auto* const rosette =
        Add<ZORCompRosette>(root, ZORMathPoint(5, 1, 2), ZORMathVector(1, 2, 0), ZORMathVector(0, 0, 1));
    rosette->SetSurface(surface);
    delete surface;
    ZORFeatContainer loaded;
    LoadContainer(loaded, SaveContainer(container));
    const auto* const again = GetAll<ZORCompRosette>(loaded).value(0);
    ASSERT_TRUE(again);
    EXPECT_EQ(rosette->GetNormal(), again->GetNormal());
    EXPECT_EQ(rosette->GetOrigin(), again->GetOrigin());
    EXPECT_EQ(ZORMathPoint(5, 1, 2), again->GetGivenOrigin());
}

TEST_F(ZORCompContainerFileTest, TheSampleComesBackTheSame)
{
    ZOR_REQUIRE_TEST_DATA(path, "meshes/layup/compost-x_test_141.json");
    Read(path, kJsonId);
    const QByteArray xml = ToXml();
    const QByteArray file = SaveContainer(container);
    container.Clear();
    LoadContainer(container, file);
    EXPECT_EQ(file, SaveContainer(container));
    root = qobject_cast<ZORCompRoot*>(container.GetFeatureRoot("ZORCompRoot"));
    EXPECT_EQ(xml, ToXml());
    EXPECT_EQ(16, GetLayup()->GetNumPlies());
}

TEST_F(ZORCompContainerFileTest, ALibraryOfAFileJoinsTheOneThatIsThere)
{
    Add<ZORCompMaterial>(ZORCompMaterialLibrary::Of(root))->SetLabel("Twill");
    const QByteArray file = SaveContainer(container);
    LoadContainer(container, file);
    EXPECT_EQ(1, GetAll<ZORCompMaterialLibrary>(container).size());
    EXPECT_EQ(2, ZORCompMaterialLibrary::Find(root)->GetMaterials().size());
}

TEST_F(ZORCompContainerFileTest, EveryPropertyIsReportedAsAChange)
{
    auto* const surface = new ZORGeoSurface(&container, {{3, 0, 0}, {3, 9, 0}, {3, 0, 9}}, {{0, 1, 2}});
    surface->Initialize();
    auto* const material = Add<ZORCompMaterial>(ZORCompMaterialLibrary::Of(root));
    auto* const layup = Add<ZORCompLayup>(root);
    auto* const rosette =
        Add<ZORCompRosette>(layup, ZORMathPoint(5, 1, 2), ZORMathVector(1, 2, 0), ZORMathVector(0, 0, 1));
    auto* const contour = Add<ZORCompContour>(layup, ZORMathSetOfPoints{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    auto* const sequence = Add<ZORCompSequence>(layup);
    auto* const ply = Add<ZORCompPly>(sequence);
    auto* const strategy = Add<ZORCompStrategy>(root);
    const auto expectChange = [this](const char* what, const std::function<void()>& change) {
        EXPECT_TRUE(ReportsChange(container, change)) << what;
    };
    ZORCompMaterialProperties properties;
    properties.type = "CFRP";
    expectChange("material", [=] { material->SetProperties(properties); });
    expectChange("attributes", [=] { contour->SetAttributes({{"text", "a"}}); });
    ZORCompStrategyParameters parameters = strategy->GetParameters();
    parameters.step *= 2;
    expectChange("strategy", [=] { strategy->SetParameters(parameters); });
    expectChange("axes", [=] { rosette->SetAxes({5, 1, 3}, {0, 0, 1}, {0, 1, 0}); });
    expectChange("rosette's surface", [=] { rosette->SetSurface(surface); });
    expectChange("layup's surface", [=] { layup->SetSurface(surface); });
    expectChange("layup's rosette", [=] { layup->SetRosette(rosette); });
    expectChange("layup's source", [=] { layup->SetSource("file.xml"); });
    expectChange("sequence's rosette", [=] { sequence->SetRosette(rosette); });
    expectChange("sequence's activity", [=] { sequence->SetActive(false); });
    expectChange("ply's material", [=] { ply->SetMaterial(material); });
    expectChange("ply's rosette", [=] { ply->SetRosette(rosette); });
    expectChange("ply's angle", [=] { ply->SetAngle(0.1); });
    expectChange("ply's activity", [=] { ply->SetActive(false); });
    expectChange("ply's boundaries", [=] { ply->SetBoundaries({contour->GetCurve()}); });
}

} // namespace
