#include "VisTest.h"

#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>

#include <QCoreApplication>
#include <QSignalSpy>

namespace {

ZORVisVirtualObject* NewObject(ZORVisEnvironment* environment, const ZORMathPoint& point)
{
    auto* object = new ZORVisVirtualObject(environment, nullptr);
    object->SetRep(
        new ZORVisRepGraphics({new ZORVisPointPrimitive(ZORMathSetOfPoints{point})}, ZORVisOptions()));
    return object;
}

} // namespace

TEST(ZORVisSceneTest, FollowsItsEnvironment)
{
    ZORVisEnvironment environment;
    environment.AddVirtualObject(NewObject(&environment, {1, 1, 1}));
    const ZORVisScene scene(&environment);
    EXPECT_EQ(scene.GetBoundingBox(), ZORMathBoundingBox({1, 1, 1}, {1, 1, 1}));

    ZORVisVirtualObject* second = NewObject(&environment, {2, 2, 2});
    environment.AddVirtualObject(second);
    EXPECT_EQ(scene.GetBoundingBox(), ZORMathBoundingBox({1, 1, 1}, {2, 2, 2}));

    second->SetRep(nullptr);
    EXPECT_EQ(scene.GetBoundingBox(), ZORMathBoundingBox({1, 1, 1}, {1, 1, 1}));

    delete environment.GetVirtualObjects().constFirst();
    EXPECT_TRUE(scene.GetBoundingBox().IsEmpty());
}

TEST(ZORVisSceneTest, TellsAboutManyChangesOnce)
{
    ZORVisEnvironment environment;
    const ZORVisScene scene(&environment);
    QSignalSpy spy(&scene, &ZORVisScene::Changed);
    ZORVisVirtualObject* object = NewObject(&environment, {1, 1, 1});
    environment.AddVirtualObject(object);
    environment.AddVirtualObject(NewObject(&environment, {1, 1, 1}));
    object->SetRep(nullptr);
    EXPECT_EQ(spy.count(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(spy.count(), 1);

    delete object;
    QCoreApplication::processEvents();
    EXPECT_EQ(spy.count(), 2);
    QCoreApplication::processEvents();
    EXPECT_EQ(spy.count(), 2);
}

TEST(ZORVisSceneTest, IsEmptyWithoutEnvironmentAndAfterItsEnd)
{
    const ZORVisScene none(nullptr);
    EXPECT_TRUE(none.GetBoundingBox().IsEmpty());

    auto environment = std::make_unique<ZORVisEnvironment>();
    environment->AddVirtualObject(NewObject(environment.get(), {1, 1, 1}));
    const ZORVisScene scene(environment.get());
    QSignalSpy spy(&scene, &ZORVisScene::Changed);
    environment.reset();
    EXPECT_TRUE(scene.GetBoundingBox().IsEmpty());
    EXPECT_EQ(scene.GetEnvironment(), nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(spy.count(), 1);
}

TEST(ZORVisSceneTest, MayDieBeforeItsChangeWasTold)
{
    ZORVisEnvironment environment;
    {
        const ZORVisScene scene(&environment);
        environment.AddVirtualObject(NewObject(&environment, {1, 1, 1}));
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(environment.GetNumVirtualObjects(), 1);
}
