#include "support/ContainerContent.h"
#include "support/MessageOf.h"
#include "support/Printers.h"
#include "support/TraceCalls.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORWireframe/ZORWFRawPoint.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

class ZORWFRawPointTest : public testing::Test
{
protected:
    ZORWFRawPointTest()
        : root(container.GetFeatureRoot("ZORFeatRoot"))
        , folder(new ZORFeatFolder(root))
    {
        folder->Initialize();
        numBefore = container.GetNumGeometry();
    }

    ZORWFRawPoint* Add(const ZORMathPoint& point = {1, 2, 3})
    {
        auto* const feature = new ZORWFRawPoint(folder, point);
        feature->Initialize();
        return feature;
    }
    static ZORGeoCartesianPoint* PointOf(const ZORWFRawPoint* feature)
    {
        return const_cast<ZORGeoCartesianPoint*>(
            qobject_cast<const ZORGeoCartesianPoint*>(feature->GetBody()->GetGeometry()));
    }

    ZORFeatContainer container;
    ZORFeatRoot* root;
    ZORFeatFolder* folder;
    int numBefore = 0;
};

TEST_F(ZORWFRawPointTest, LiesInItsFolderWithANameAndALabelOfItsOwn)
{
    const ZORWFRawPoint* const first = Add();
    const ZORWFRawPoint* const second = Add();
    EXPECT_EQ(folder->GetChildren(),
              (QList<ZORFeatObject*>{const_cast<ZORWFRawPoint*>(first), const_cast<ZORWFRawPoint*>(second)}));
    EXPECT_EQ(first->GetParentFeature(), folder);
    EXPECT_EQ(first->objectName(), QStringLiteral("RawPoint.1"));
    EXPECT_EQ(first->GetLabel(), QStringLiteral("RawPoint.1"));
    EXPECT_EQ(second->GetLabel(), QStringLiteral("RawPoint.2"));
    EXPECT_TRUE(container.GetRegisteredTypes().contains(&ZORWFRawPoint::staticMetaObject));
}

TEST_F(ZORWFRawPointTest, BringsItsPointAndABodyOfDimensionZeroIntoTheContainer)
{
    const ZORWFRawPoint* const feature = Add({1.5, -2, 1e6});
    EXPECT_EQ(GetNames(container, numBefore), (QStringList{"CartesianPoint.1", "Body.1", "RawPoint.1"}));
    ASSERT_TRUE(feature->GetBody());
    EXPECT_EQ(feature->GetBody()->GetDimension(), 0);
    EXPECT_TRUE(feature->GetBody()->IsInitialized());
    const ZORGeoCartesianPoint* const point = PointOf(feature);
    ASSERT_TRUE(point);
    EXPECT_TRUE(point->IsInitialized());
    EXPECT_EQ(point->GetMathPoint(), ZORMathPoint(1.5, -2, 1e6));
}

TEST_F(ZORWFRawPointTest, HasItsBodyFromConstructionOnButRegistersNothingBeforeInitialize)
{
    const auto feature = std::make_unique<ZORWFRawPoint>(folder, ZORMathPoint(1, 2, 3));
    ASSERT_TRUE(feature->GetBody());
    EXPECT_EQ(feature->GetBody()->GetDimension(), 0);
    EXPECT_EQ(container.GetNumGeometry(), numBefore);
    EXPECT_EQ(folder->GetNumChildren(), 0);
}

TEST_F(ZORWFRawPointTest, SecondInitializeDoesNothing)
{
    Add()->Initialize();
    EXPECT_EQ(container.GetNumGeometry(), numBefore + 3);
    EXPECT_EQ(folder->GetNumChildren(), 1);
}

TEST_F(ZORWFRawPointTest, IsCompleteWhenTheContainerAnnouncesIt)
{
    QStringList announced;
    QObject::connect(&container, &ZORGeoContainer::GeometryAdded, &container, [&](ZORGeoGeometry* geometry) {
        announced.append(geometry->objectName());
        if (const auto* feature = qobject_cast<const ZORWFRawPoint*>(geometry)) {
            EXPECT_TRUE(feature->GetBody()->IsInitialized());
            EXPECT_TRUE(PointOf(feature)->IsInitialized());
        }
    });
    Add();
    EXPECT_EQ(announced, (QStringList{"CartesianPoint.1", "Body.1", "RawPoint.1"}));
}

TEST_F(ZORWFRawPointTest, KeepsItsBodyAndPointFromBeingRemovedAsUnused)
{
    const ZORWFRawPoint* const feature = Add();
    EXPECT_EQ(feature->GetBody()->GetReferenceCount(), 1);
    EXPECT_EQ(PointOf(feature)->GetReferenceCount(), 1);
    EXPECT_EQ(feature->GetReferenceCount(), 0);
    feature->GetBody()->RemoveNoReferences();
    PointOf(feature)->RemoveNoReferences();
    EXPECT_EQ(container.GetNumGeometry(), numBefore + 3);
}

TEST_F(ZORWFRawPointTest, RemoveUndoesEverything)
{
    ZORWFRawPoint* const feature = Add();
    const QPointer<ZORTopBody> body = feature->GetBody();
    const QPointer<ZORGeoCartesianPoint> point = PointOf(feature);
    body->AddReference(nullptr); // users do not hold it back
    feature->Remove();
    EXPECT_TRUE(body.isNull());
    EXPECT_TRUE(point.isNull());
    EXPECT_EQ(container.GetNumGeometry(), numBefore);
    EXPECT_EQ(folder->GetNumChildren(), 0);
}

TEST_F(ZORWFRawPointTest, RemovalOfTheFolderAndOfAllTakesPointsAndBodiesAlong)
{
    for (int i = 0; i < 10; ++i)
        Add();
    EXPECT_EQ(container.GetNumGeometry(), numBefore + 30);
    folder->Remove();
    EXPECT_EQ(container.GetNumGeometry(), numBefore - 1) << "the folder is gone too";

    folder = new ZORFeatFolder(root);
    folder->Initialize();
    Add();
    delete Add();
    container.Clear();
    EXPECT_EQ(container.GetNumGeometry(), 0);
}

TEST_F(ZORWFRawPointTest, EndOfTheContainerDestroysAllOfIt)
{
    auto other = std::make_unique<ZORFeatContainer>();
    auto* const feature = new ZORWFRawPoint(other->GetFeatureRoot("ZORFeatRoot"), {1, 2, 3});
    feature->Initialize();
    const QPointer<ZORTopBody> body = feature->GetBody();
    const QPointer<ZORGeoCartesianPoint> point = PointOf(feature);
    const QPointer<ZORWFRawPoint> guard = feature;
    other.reset();
    EXPECT_TRUE(body.isNull());
    EXPECT_TRUE(point.isNull());
    EXPECT_TRUE(guard.isNull());
}

TEST_F(ZORWFRawPointTest, StaysWithoutWhatOthersDestroyed)
{
    ZORWFRawPoint* const first = Add();
    delete PointOf(first);
    ASSERT_TRUE(first->GetBody());
    EXPECT_EQ(first->GetBody()->GetDimension(), ZORTopBody::EmptyDimension);
    delete first->GetBody();
    EXPECT_EQ(first->GetBody(), nullptr);
    first->Remove();

    // The container is emptied while the feature waits for its registration.
    auto second = std::make_unique<ZORWFRawPoint>(folder, ZORMathPoint());
    const auto connection =
        QObject::connect(&container, &ZORGeoContainer::GeometryAdded, &container, [&] { container.Clear(); });
    EXPECT_EQ(MessageOf([&] { second->Initialize(); }),
              QString("the parent feature does not exist any more"));
    QObject::disconnect(connection);
    second.reset();
    EXPECT_EQ(container.GetNumGeometry(), 0);
}

TEST_F(ZORWFRawPointTest, RefusesCoordinatesThatAreNotFinite)
{
    for (const double bad :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(MessageOf([&] { ZORWFRawPoint(folder, {0, bad, 0}); }), QString("point is not finite"));
    }
    EXPECT_EQ(container.GetNumGeometry(), numBefore);
}

TEST_F(ZORWFRawPointTest, CannotBeRegisteredWithoutALivingFolder)
{
    auto orphan = std::make_unique<ZORWFRawPoint>(nullptr, ZORMathPoint());
    EXPECT_EQ(MessageOf([&] { orphan->Initialize(); }), QString("geometry has no container"));

    auto late = std::make_unique<ZORWFRawPoint>(folder, ZORMathPoint());
    folder->Remove();
    EXPECT_EQ(MessageOf([&] { late->Initialize(); }), QString("the parent feature does not exist any more"));
    late.reset();
    EXPECT_EQ(container.GetNumGeometry(), numBefore - 1) << "nothing is left behind";
}

TEST_F(ZORWFRawPointTest, TracesItsOwnCallsAlone)
{
    folder->setObjectName("F");
    EXPECT_EQ(TraceCalls([this] { Add()->Remove(); }),
              (QStringList{"ZORWFRawPoint::ZORWFRawPoint(<F>, (1, 2, 3))", "ZORWFRawPoint::Initialize()",
                           "ZORFeatObject::Remove()"}));
}

TEST_F(ZORWFRawPointTest, OwnsItsPointAndItsBody)
{
    const ZORWFRawPoint* const feature = Add();
    ZORGeoCartesianPoint* const point = PointOf(feature);
    EXPECT_EQ(feature->GetOwnedGeometry(), (QList<ZORGeoGeometry*>{point, feature->GetBody()}));
    delete point;
    EXPECT_EQ(feature->GetOwnedGeometry(), QList<ZORGeoGeometry*>{feature->GetBody()});
}

} // namespace
