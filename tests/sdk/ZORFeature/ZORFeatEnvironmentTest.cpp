#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QPointer>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

namespace {

ZORVisVirtualObject* AddObject(ZORFeatEnvironment& environment, QObject* owner)
{
    auto* const object = new ZORVisVirtualObject(&environment, owner);
    object->SetRep(new ZORVisRepGraphics({new ZORVisPointPrimitive({{1, 2, 3}})}, ZORVisOptions()));
    environment.AddVirtualObject(object);
    return object;
}

TEST(ZORFeatEnvironmentTest, HasAContainerOfItsOwn)
{
    const ZORFeatEnvironment first;
    const ZORFeatEnvironment second;
    ASSERT_TRUE(first.GetContainer());
    EXPECT_EQ(first.GetContainer()->GetNumGeometry(), 0);
    EXPECT_NE(first.GetContainer(), second.GetContainer());
}

TEST(ZORFeatEnvironmentTest, DestroysItsObjectsBeforeTheGeometriesTheyShow)
{
    auto environment = std::make_unique<ZORFeatEnvironment>();
    auto* const point = new ZORGeoCartesianPoint(environment->GetContainer(), {0, 0, 0});
    point->Initialize();
    const QPointer<ZORVisVirtualObject> object = AddObject(*environment, point);
    QList<QByteArray> order;
    QObject::connect(environment.get(), &ZORFeatEnvironment::AboutToBeDestroyed,
                     [&, whole = environment.get()] {
                         EXPECT_EQ(whole->GetContainer()->GetNumGeometry(), 1);
                         EXPECT_EQ(whole->GetVirtualObjects().size(), 1);
                         order.append("environment");
                     });
    QObject::connect(object, &QObject::destroyed, [&] { order.append("object"); });
    QObject::connect(point, &QObject::destroyed, [&] { order.append("point"); });
    environment.reset();
    EXPECT_EQ(order, QList<QByteArray>({"environment", "object", "point"}));
}

TEST(ZORFeatEnvironmentTest, SurvivesReceiversThatDeleteOtherObjectsAtItsEnd)
{
    auto environment = std::make_unique<ZORFeatEnvironment>();
    const QPointer<ZORVisVirtualObject> first = AddObject(*environment, nullptr);
    const QPointer<ZORVisVirtualObject> second = AddObject(*environment, nullptr);
    QObject::connect(environment.get(), &ZORVisEnvironment::ObjectRemoved,
                     [&](const ZORVisVirtualObject* object) {
                         if (object == first)
                             delete second.data();
                     });
    environment.reset();
    EXPECT_FALSE(first);
    EXPECT_FALSE(second);
}

TEST(ZORFeatEnvironmentTest, KeepsTheDrawingOfAFeatureThatIsRemoved)
{
    ZORFeatEnvironment environment;
    ZORFeatRoot* const root = environment.GetContainer()->GetFeatureRoot("ZORFeatRoot");
    auto* const folder = new ZORFeatFolder(root);
    folder->Initialize();
    const QPointer<ZORVisVirtualObject> object = AddObject(environment, folder);
    folder->Remove();
    ASSERT_TRUE(object);
    EXPECT_EQ(object->GetOwner(), nullptr);
    EXPECT_EQ(environment.GetVirtualObjects().size(), 1);
}

} // namespace
