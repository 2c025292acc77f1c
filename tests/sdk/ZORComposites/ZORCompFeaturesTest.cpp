#include "LayupTest.h"

#include <ZORComposites/ZORCompRosette.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QSignalSpy>

#include <cmath>
#include <memory>

namespace {

using ZORCompFeaturesTest = LayupTest;

TEST_F(ZORCompFeaturesTest, ARootIsMadeByTheContainerAndHasOneLibrary)
{
    ASSERT_TRUE(root);
    EXPECT_EQ(root, container.GetFeatureRoot("ZORCompRoot"));
    EXPECT_FALSE(ZORCompMaterialLibrary::Find(root));
    ZORCompMaterialLibrary* const library = ZORCompMaterialLibrary::Of(root);
    ASSERT_TRUE(library);
    EXPECT_EQ(QString("Materials"), library->GetLabel());
    EXPECT_EQ(library, ZORCompMaterialLibrary::Of(root));
    EXPECT_EQ(library, ZORCompMaterialLibrary::Find(root));
    EXPECT_FALSE(ZORCompMaterialLibrary::Of(nullptr));
    EXPECT_FALSE(ZORCompMaterialLibrary::Find(nullptr));
    EXPECT_EQ(QString("the composites root already has a material library"),
              MessageOf([&] { ZORCompMaterialLibrary(root).Initialize(); }));
}

TEST_F(ZORCompFeaturesTest, NamesOfMaterialsCanBeMadeUnique)
{
    ZORCompMaterialLibrary* const library = ZORCompMaterialLibrary::Of(root);
    EXPECT_EQ(QString("Twill"), library->GetUniqueMaterialName("Twill"));
    AddMaterial(1)->SetLabel("Twill");
    EXPECT_EQ(QString("Twill.2"), library->GetUniqueMaterialName("Twill"));
    EXPECT_FALSE(library->FindMaterial("Twill.2"));
    AddMaterial(1)->SetLabel("a%1b%2");
    EXPECT_EQ(QString("a%1b%2.2"), library->GetUniqueMaterialName("a%1b%2"));
}

TEST_F(ZORCompFeaturesTest, PropertiesThatNoMaterialCanHaveAreRefused)
{
    ZORCompMaterial* const material = AddMaterial(0.2);
    QSignalSpy changes(material, &ZORCompMaterial::PropertiesChanged);
    const auto messageOf = [material](double ZORCompMaterialProperties::*member, double value) {
        ZORCompMaterialProperties properties = material->GetProperties();
        properties.*member = value;
        return MessageOf([&] { material->SetProperties(properties); });
    };
    using Properties = ZORCompMaterialProperties;
    EXPECT_EQ(QString("material property 'thickness' is 0, but must be positive"),
              messageOf(&Properties::thickness, 0));
    EXPECT_EQ(QString("material property 'E1' is -1, but must be positive"), messageOf(&Properties::E1, -1));
    EXPECT_EQ(QString("material property 'permeability_2' is -1, but must not be negative"),
              messageOf(&Properties::permeability2, -1));
    EXPECT_EQ(QString("material property 'v12' is not finite"), messageOf(&Properties::v12, kInfinity));
    EXPECT_EQ(0.2, material->GetProperties().thickness);
    EXPECT_EQ(0, changes.size());
    EXPECT_EQ(QString(), messageOf(&Properties::v12, -0.3));
    EXPECT_EQ(QString(), messageOf(&Properties::permeability1, 0));
    EXPECT_EQ(QString(), messageOf(&Properties::thickness, kNaN));
    EXPECT_EQ(3, changes.size());
    material->SetProperties(material->GetProperties());
    EXPECT_EQ(3, changes.size());
}

TEST_F(ZORCompFeaturesTest, SequencesLieInLayupsAndSequencesOnly)
{
    EXPECT_EQ(QString("a sequence needs a layup or a sequence as its parent"),
              MessageOf([&] { ZORCompSequence sequenceOfRoot(root); }));
    EXPECT_EQ(QString("geometry has no container"), MessageOf([] { ZORCompSequence(nullptr).Initialize(); }));
    EXPECT_EQ(QString("geometry has no container"), MessageOf([] { ZORCompPly(nullptr).Initialize(); }));
}

TEST_F(ZORCompFeaturesTest, APlyHasTheBodyOfItsOuterBoundaryUntilAnotherIsSet)
{
    ZORCompPly* const ply = AddPly(0, nullptr);
    QSignalSpy bodies(ply, &ZORFeatGeometry::BodyChanged);
    QSignalSpy changes(ply, &ZORCompPly::PlyChanged);
    EXPECT_FALSE(ply->GetBody());
    ZORCompContour* const outer = AddSquare(10);
    ZORCompContour* const hole = AddSquare(2);
    ply->SetBoundaries({outer->GetCurve(), nullptr, hole->GetCurve()});
    EXPECT_EQ((QList<const ZORGeoCurve*>{outer->GetCurve(), hole->GetCurve()}), ply->GetBoundaries());
    ASSERT_TRUE(ply->GetBody());
    EXPECT_EQ(outer->GetCurve(), ply->GetBody()->GetGeometry());
    EXPECT_EQ(1, bodies.size());
    EXPECT_EQ(1, changes.size());
    ply->SetBoundaries(ply->GetBoundaries());
    EXPECT_EQ(1, changes.size());
    const ZORTopBody* const body = ply->GetBody();
    outer->Remove();
    EXPECT_EQ(body, ply->GetBody());
    EXPECT_EQ(QList<const ZORGeoCurve*>{hole->GetCurve()}, ply->GetBoundaries());
    EXPECT_TRUE(std::isnan(ply->GetArea()));
    ply->SetBoundaries({});
    EXPECT_FALSE(ply->GetBody());
    EXPECT_EQ(2, bodies.size());
}

TEST_F(ZORCompFeaturesTest, APlyFollowsBoundariesThatChangeInPlace)
{
    ZORGeoSurface* const wall = AddWall();
    const auto curveOf = [&](double size) {
        QList<ZORGeoLocationOnSurface> locations;
        for (const ZORMathPoint& point : AddSquare(size)->GetCurve()->GetPoints())
            locations.append(wall->Project(point));
        return Add<ZORGeoCurveOnSurface>(locations, true);
    };
    ZORGeoCurveOnSurface* const outer = curveOf(4);
    ZORGeoCurveOnSurface* const hole = curveOf(1);
    ZORCompPly* const ply = AddPly(0, nullptr);
    ply->SetBoundaries({outer, hole, hole});
    QStringList events;
    QObject::connect(ply, &ZORFeatGeometry::BodyChanged, ply, [&] { events.append("body"); });
    QObject::connect(ply, &ZORCompPly::PlyChanged, ply, [&] { events.append("ply"); });
    outer->SetLocations(outer->GetLocations());
    EXPECT_EQ((QStringList{"body", "ply"}), events);
    hole->SetLocations(hole->GetLocations());
    EXPECT_EQ((QStringList{"body", "ply", "ply"}), events) << "the body is that of the outer boundary";
    ply->SetBoundaries({});
    events.clear();
    outer->SetLocations(outer->GetLocations());
    EXPECT_EQ(QStringList(), events);
}

TEST_F(ZORCompFeaturesTest, SettersTellOnlyChanges)
{
    ZORCompPly* const ply = AddPly(0, nullptr);
    QSignalSpy changes(ply, &ZORCompPly::PlyChanged);
    ZORCompMaterial* const material = AddMaterial(1);
    for (int i = 0; i < 2; ++i) {
        ply->SetMaterial(material);
        ply->SetAngle(1);
        ply->SetActive(false);
    }
    EXPECT_EQ(3, changes.size());
    EXPECT_EQ(QString("the angle of the ply is not finite"), MessageOf([&] { ply->SetAngle(kNaN); }));
    QSignalSpy inputs(layup, &ZORCompLayup::InputsChanged);
    layup->SetSurface(AddWall());
    layup->SetSurface(layup->GetSurface());
    layup->SetRosette(Add<ZORCompRosette>(layup));
    EXPECT_EQ(2, inputs.size());
    QSignalSpy active(sequence, &ZORCompSequence::ActiveChanged);
    sequence->SetActive(false);
    sequence->SetActive(false);
    EXPECT_EQ(1, active.size());
}

TEST_F(ZORCompFeaturesTest, WhoeverRemovesAPlyWhileItChangesCausesNoHarm)
{
    ZORCompPly* const ply = AddPly(0, nullptr);
    QObject::connect(&container, &ZORGeoContainer::GeometryAdded, ply, [ply](ZORGeoGeometry* geometry) {
        if (qobject_cast<ZORTopBody*>(geometry))
            ply->Remove();
    });
    const std::unique_ptr<ZORCompContour> loose(new ZORCompContour(layup, {{0, 0, 0}, {1, 0, 0}}));
    const int numBefore = container.GetNumGeometry();
    ply->SetBoundaries({loose->GetCurve()});
    EXPECT_EQ(numBefore - 1, container.GetNumGeometry());
}

TEST_F(ZORCompFeaturesTest, TheStackHasTheActivePliesInTheOrderOfTheTree)
{
    ZORCompMaterial* const material = AddMaterial(0.25);
    ZORCompPly* const first = AddPly(0, material);
    auto* const inner = Add<ZORCompSequence>(sequence);
    ZORCompPly* const third = AddPly(0, material);
    ZORCompPly* const second = AddPly(0, material, inner);
    EXPECT_EQ((QList<ZORCompPly*>{first, second, third}), layup->GetPlies());
    EXPECT_EQ(0.75, layup->GetThickness());
    inner->SetActive(false);
    EXPECT_EQ(2, layup->GetNumPlies());
    first->SetActive(false);
    EXPECT_EQ(QList<ZORCompPly*>{third}, layup->GetPlies());
    EXPECT_EQ((QList<ZORCompPly*>{first, third}), sequence->GetPlies());
    material->Remove();
    EXPECT_TRUE(std::isnan(layup->GetThickness()));
    third->Remove();
    EXPECT_EQ(0, layup->GetThickness());
}

TEST_F(ZORCompFeaturesTest, AreasAndMassesAreThoseOfPlanarBoundariesLessTheirHoles)
{
    ZORCompPly* const ply = AddPly(0, AddMaterial(0.5, 2e-9));
    ply->SetBoundaries({AddSquare(1000)->GetCurve(), AddSquare(100)->GetCurve()});
    EXPECT_NEAR(990000, ply->GetArea(), 1e-6);
    EXPECT_NEAR(0.99, ply->GetMass(), 1e-12); // kilograms
    EXPECT_NEAR(0.99, layup->GetMass(), 1e-12);
    ply->SetBoundaries({AddSquare(1000)->GetCurve(), AddSquare(100, 5)->GetCurve()});
    EXPECT_TRUE(std::isnan(ply->GetArea()));
    const auto* const bent =
        Add<ZORCompContour>(layup, ZORMathSetOfPoints{{0, 0, 0}, {9, 0, 0}, {9, 9, 1}, {0, 9, 0}});
    ply->SetBoundaries({bent->GetCurve()});
    EXPECT_TRUE(std::isnan(ply->GetArea()));
    ply->SetBoundaries({});
    EXPECT_TRUE(std::isnan(ply->GetArea()));
    layup->SetSurface(AddWall());
    EXPECT_NEAR(40.5, ply->GetArea(), 1e-12);
    EXPECT_EQ(layup->GetSurface(), ply->GetSurface());
    ply->SetMaterial(nullptr);
    EXPECT_TRUE(std::isnan(ply->GetMass()));
}

TEST_F(ZORCompFeaturesTest, SymmetryLooksAtMaterialsAndAngles)
{
    ZORCompMaterial* const a = AddMaterial(1);
    ZORCompMaterial* const b = AddMaterial(1);
    EXPECT_TRUE(layup->IsSymmetric());
    AddPly(45, a);
    AddPly(-45, a);
    EXPECT_FALSE(layup->IsSymmetric());
    AddPly(90, b);
    AddPly(135, a); // the same as -45
    ZORCompPly* const last = AddPly(45, a);
    EXPECT_TRUE(layup->IsSymmetric());
    last->SetMaterial(b);
    EXPECT_FALSE(layup->IsSymmetric());
}

TEST_F(ZORCompFeaturesTest, BalanceCountsOppositeAnglesOfEachMaterial)
{
    ZORCompMaterial* const a = AddMaterial(1);
    ZORCompMaterial* const b = AddMaterial(1);
    EXPECT_TRUE(layup->IsBalanced());
    AddPly(0, a);
    AddPly(90, a);
    AddPly(-90, a);
    AddPly(180, a);
    EXPECT_TRUE(layup->IsBalanced());
    AddPly(30, a);
    EXPECT_FALSE(layup->IsBalanced());
    ZORCompPly* const other = AddPly(150, b); // the same as -30
    EXPECT_FALSE(layup->IsBalanced());
    other->SetMaterial(a);
    EXPECT_TRUE(layup->IsBalanced());
    AddPly(60, a);
    AddPly(-59, a);
    EXPECT_FALSE(layup->IsBalanced());
}

TEST_F(ZORCompFeaturesTest, DeepTreesOfSequencesAreWalkedWithoutRecursion)
{
    ZORCompSequence* deepest = sequence;
    for (int i = 0; i < 20000; ++i)
        deepest = Add<ZORCompSequence>(deepest);
    ZORCompPly* const ply = AddPly(0, nullptr, deepest);
    EXPECT_EQ(QList<ZORCompPly*>{ply}, layup->GetPlies());
    EXPECT_FALSE(ply->GetEffectiveRosette());
}

} // namespace
