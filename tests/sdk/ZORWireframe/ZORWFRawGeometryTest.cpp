#include "WireframeTest.h"

#include <ZORWireframe/ZORWFRawCurve.h>
#include <ZORWireframe/ZORWFRawSurface.h>

#include <memory>

namespace {

/// Both raw features: the same around different geometries.
template<class Feature>
class ZORWFRawGeometryTest : public WireframeTest
{
protected:
    auto* MakeGeometry()
    {
        if constexpr (std::is_same_v<Feature, ZORWFRawCurve>)
            return Make<ZORGeoPolyline>("G", ZORMathSetOfPoints{{0, 0, 0}, {1, 2, 3}}, false);
        else
            return AddSquare("G");
    }
    static constexpr int kDimension = std::is_same_v<Feature, ZORWFRawCurve> ? 1 : 2;
    static QString GetName() { return QLatin1String(kDimension == 1 ? "RawCurve.1" : "RawSurface.1"); }
    static QString GetClassName() { return QLatin1String(Feature::staticMetaObject.className()); }
};

using RawFeatures = testing::Types<ZORWFRawCurve, ZORWFRawSurface>;
TYPED_TEST_SUITE(ZORWFRawGeometryTest, RawFeatures);

TYPED_TEST(ZORWFRawGeometryTest, PutsABodyAroundTheGivenGeometry)
{
    auto* const geometry = this->MakeGeometry();
    const int numBefore = this->container.GetNumGeometry();
    const auto* const feature = this->template Add<TypeParam>(geometry);
    ASSERT_TRUE(feature->GetBody());
    EXPECT_EQ(feature->GetBody()->GetGeometry(), geometry);
    EXPECT_EQ(feature->GetBody()->GetDimension(), TestFixture::kDimension);
    EXPECT_TRUE(feature->GetBody()->IsInitialized());
    EXPECT_EQ(feature->GetParentFeature(), this->folder);
    EXPECT_EQ(feature->GetLabel(), TestFixture::GetName());
    EXPECT_EQ(this->container.GetNumGeometry(), numBefore + 2) << "the body and the feature";
    EXPECT_TRUE(this->container.GetRegisteredTypes().contains(&TypeParam::staticMetaObject));
}

TYPED_TEST(ZORWFRawGeometryTest, HoldsAReferenceButDoesNotOwn)
{
    auto* const geometry = this->MakeGeometry();
    const int numBefore = this->container.GetNumGeometry();
    auto* const feature = this->template Add<TypeParam>(geometry);
    EXPECT_EQ(geometry->GetReferenceCount(), 1);
    EXPECT_EQ(feature->GetBody()->GetReferenceCount(), 1);
    geometry->RemoveNoReferences();
    feature->GetBody()->RemoveNoReferences();
    EXPECT_EQ(this->container.GetNumGeometry(), numBefore + 2) << "both are used";
    feature->Remove();
    EXPECT_EQ(this->container.GetNumGeometry(), numBefore);
    EXPECT_EQ(geometry->GetReferenceCount(), 0);
}

TYPED_TEST(ZORWFRawGeometryTest, StaysWithoutWhatOthersDestroyed)
{
    auto* const geometry = this->MakeGeometry();
    auto* const feature = this->template Add<TypeParam>(geometry);
    delete geometry;
    ASSERT_TRUE(feature->GetBody());
    EXPECT_EQ(feature->GetBody()->GetDimension(), ZORTopBody::EmptyDimension);
    EXPECT_EQ(feature->GetBody()->GetGeometry(), nullptr);
    delete feature->GetBody();
    EXPECT_EQ(feature->GetBody(), nullptr);
    feature->Remove();
    EXPECT_EQ(this->folder->GetNumChildren(), 0);
}

TYPED_TEST(ZORWFRawGeometryTest, HasTheEmptyBodyWithoutGeometry)
{
    const auto* const feature = this->template Add<TypeParam>(nullptr);
    ASSERT_TRUE(feature->GetBody());
    EXPECT_EQ(feature->GetBody()->GetDimension(), ZORTopBody::EmptyDimension);
}

TYPED_TEST(ZORWFRawGeometryTest, RegistersBodyAndFeatureOnceAndTheBodyFirst)
{
    auto* const geometry = this->MakeGeometry();
    QStringList announced;
    QObject::connect(&this->container, &ZORGeoContainer::GeometryAdded, &this->container,
                     [&](ZORGeoGeometry* added) { announced.append(added->objectName()); });
    auto* const feature = new TypeParam(this->folder, geometry);
    EXPECT_TRUE(feature->GetBody()) << "from construction on";
    EXPECT_EQ(announced, QStringList());
    feature->Initialize();
    feature->Initialize();
    EXPECT_EQ(announced, (QStringList{"Body.1", TestFixture::GetName()}));
}

TYPED_TEST(ZORWFRawGeometryTest, CannotBeRegisteredWithoutALivingFolder)
{
    auto* const geometry = this->MakeGeometry();
    auto orphan = std::make_unique<TypeParam>(nullptr, geometry);
    EXPECT_EQ(MessageOf([&] { orphan->Initialize(); }), QString("geometry has no container"));
    auto late = std::make_unique<TypeParam>(this->folder, geometry);
    this->folder->Remove();
    EXPECT_EQ(MessageOf([&] { late->Initialize(); }), QString("the parent feature does not exist any more"));
    orphan.reset();
    late.reset();
    EXPECT_EQ(geometry->GetReferenceCount(), 0) << "nothing is left behind";
}

TYPED_TEST(ZORWFRawGeometryTest, TracesItsOwnCallsAlone)
{
    auto* const geometry = this->MakeGeometry();
    TypeParam* feature = nullptr;
    EXPECT_EQ(TraceCalls([&] { feature = this->template Add<TypeParam>(geometry); }),
              (QStringList{QString("%1::%1(<F>, <G>)").arg(TestFixture::GetClassName()),
                           QString("%1::Initialize()").arg(TestFixture::GetClassName())}));
    EXPECT_EQ(TraceCalls([&] { feature->Remove(); }), QStringList("ZORFeatObject::Remove()"));
}

TYPED_TEST(ZORWFRawGeometryTest, EndOfTheContainerDestroysAllOfIt)
{
    auto* const geometry = this->MakeGeometry();
    for (int i = 0; i < 3; ++i)
        this->template Add<TypeParam>(geometry);
    this->container.Clear();
    EXPECT_EQ(this->container.GetNumGeometry(), 0);
}

} // namespace
