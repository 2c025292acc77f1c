#include "support/Printers.h"
#include "support/TraceCalls.h"

#include <ZORFeature/ZORFeatComputedGeometry.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatPresentation.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeature/ZORFeatShape.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysStackMonitor.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisScene.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// Makes a curve of its own.
class CurveFeature : public ZORFeatComputedGeometry
{
public:
    explicit CurveFeature(ZORFeatObject* parent)
        : ZORFeatComputedGeometry(parent)
    {
    }
    void Renew() { Update(); }

protected:
    bool IsComplete() const override { return true; }
    ZORFeatShape Compute() const override
    {
        auto* const curve = new ZORGeoPolyline(GetContainer(), {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, true);
        return {new ZORTopBody(GetContainer(), curve), {curve}};
    }
};

class ZORFeatPresentationTest : public testing::Test
{
protected:
    ZORGeoSurface* AddSurface(int cells = 1)
    {
        QList<ZORMathPoint> vertices;
        QList<ZORGeoSurface::Corners> triangles;
        for (int y = 0; y <= cells; ++y) {
            for (int x = 0; x <= cells; ++x)
                vertices.append({double(x), double(y), 0});
        }
        for (int y = 0; y < cells; ++y) {
            for (int x = 0; x < cells; ++x) {
                const int a = y * (cells + 1) + x;
                triangles << ZORGeoSurface::Corners{a, a + 1, a + cells + 2}
                          << ZORGeoSurface::Corners{a, a + cells + 2, a + cells + 1};
            }
        }
        auto* const surface = new ZORGeoSurface(&container, vertices, triangles);
        surface->Initialize();
        return surface;
    }
    ZORGeoGeometry* AddPoint()
    {
        auto* const point = new ZORGeoCartesianPoint(&container, {1, 2, 3});
        point->Initialize();
        return point;
    }
    CurveFeature* AddFeature()
    {
        auto* const feature = new CurveFeature(container.GetFeatureRoot("ZORFeatRoot"));
        feature->Initialize();
        return feature;
    }
    /// Waits for all drawings.
    testing::AssertionResult IsShown() const
    {
        return QTest::qWaitFor([&] { return presentation->IsUpToDate(); }, 10'000)
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure();
    }
    ZORVisVirtualObject* Visualize(ZORGeoSurface* surface)
    {
        auto* const object = new ZORVisVirtualObject(&environment, surface);
        object->SetRep(new ZORVisRepGraphics({new ZORVisSurfacePrimitive(surface)}, ZORVisOptions()));
        environment.AddVirtualObject(object);
        return object;
    }

    ZORFeatEnvironment environment;
    ZORFeatContainer& container = *environment.GetContainer();
    ZORVisScene scene{&environment};
    std::unique_ptr<ZORFeatPresentation> presentation =
        std::make_unique<ZORFeatPresentation>(&environment, &scene);
};

TEST_F(ZORFeatPresentationTest, DrawsWhatIsThereAndWhatComes)
{
    const ZORGeoGeometry* const point = AddPoint();
    presentation = std::make_unique<ZORFeatPresentation>(&environment, &scene);
    const ZORGeoGeometry* const surface = AddSurface();
    EXPECT_FALSE(presentation->IsUpToDate());
    ASSERT_TRUE(IsShown());
    EXPECT_TRUE(scene.HasDrawing(point));
    EXPECT_TRUE(scene.HasDrawing(surface));
    delete surface;
    EXPECT_EQ(1, scene.GetNumDrawings());
    presentation.reset();
    EXPECT_EQ(0, scene.GetNumDrawings());
}

TEST_F(ZORFeatPresentationTest, LargeSurfacesAreDrawnByAThreadAndMayGoMeanwhile)
{
    const ZORGeoGeometry* const surface = AddSurface(200);
    ASSERT_TRUE(IsShown());
    EXPECT_TRUE(scene.HasDrawing(surface));
    const ZORGeoGeometry* const other = AddSurface(200);
    QCoreApplication::processEvents(); // begins
    delete other;
    AddSurface(200);
    QCoreApplication::processEvents();
    container.Clear();
    ASSERT_TRUE(IsShown());
    EXPECT_EQ(0, scene.GetNumDrawings());
    AddSurface(200);
    QCoreApplication::processEvents();
    presentation.reset(); // waits
    EXPECT_EQ(0, scene.GetNumDrawings());
}

TEST_F(ZORFeatPresentationTest, FollowsStyles)
{
    ZORGeoGeometry* const surface = AddSurface();
    container.GetStyles()->SetVisible({surface}, false);
    ASSERT_TRUE(IsShown());
    EXPECT_FALSE(scene.HasDrawing(surface));
    container.GetStyles()->SetVisible({surface}, true);
    ASSERT_TRUE(IsShown());
    EXPECT_TRUE(scene.HasDrawing(surface));
    container.GetStyles()->SetVisible({surface}, false);
    container.GetStyles()->SetVisible({surface}, true);
    container.GetStyles()->SetVisible({surface}, false);
    ASSERT_TRUE(IsShown());
    EXPECT_FALSE(scene.HasDrawing(surface));
}

TEST_F(ZORFeatPresentationTest, AFeatureIsDrawnOnceWithAllItOwns)
{
    CurveFeature* const feature = AddFeature();
    ASSERT_TRUE(IsShown());
    EXPECT_EQ(1, scene.GetNumDrawings());
    EXPECT_TRUE(scene.HasDrawing(feature));
    const QList<ZORGeoGeometry*> owned = feature->GetOwnedGeometry();
    ASSERT_EQ(2, owned.size());
    for (const ZORGeoGeometry* part : owned) {
        EXPECT_EQ(feature, container.GetOwner(part));
        EXPECT_EQ(feature, presentation->GetDrawn(part));
    }
    feature->Renew();
    ASSERT_TRUE(IsShown());
    EXPECT_EQ(1, scene.GetNumDrawings());
    EXPECT_EQ(feature, container.GetOwner(feature->GetBody()));
    delete feature->GetBody()->GetGeometry();
    ASSERT_TRUE(IsShown());
    EXPECT_EQ(0, scene.GetNumDrawings()) << "nothing is left to see";
    feature->Remove();
    ASSERT_TRUE(IsShown());
    EXPECT_EQ(0, scene.GetNumDrawings());
}

TEST_F(ZORFeatPresentationTest, ABodyIsSeenByItsGeometry)
{
    ZORGeoSurface* const surface = AddSurface();
    auto* const body = new ZORTopBody(&container, surface);
    body->Initialize();
    ASSERT_TRUE(IsShown());
    EXPECT_EQ(1, scene.GetNumDrawings());
    EXPECT_EQ(surface, presentation->GetDrawn(body));
    EXPECT_EQ(nullptr, presentation->GetDrawn(container.GetFeatureRoot("ZORFeatRoot")));
    EXPECT_EQ(nullptr, presentation->GetDrawn(nullptr));
    ZORFeatContainer other;
    const ZORGeoCartesianPoint foreign(&other, {0, 0, 0});
    EXPECT_EQ(nullptr, presentation->GetDrawn(&foreign));
}

TEST_F(ZORFeatPresentationTest, WhatTheEnvironmentShowsIsNotDrawnTwice)
{
    ZORGeoSurface* const surface = AddSurface();
    ASSERT_TRUE(IsShown());
    ZORVisVirtualObject* const first = Visualize(surface);
    const ZORVisVirtualObject* const second = Visualize(surface);
    ASSERT_TRUE(IsShown());
    EXPECT_FALSE(scene.HasDrawing(surface));
    delete first;
    ASSERT_TRUE(IsShown());
    EXPECT_FALSE(scene.HasDrawing(surface));
    delete second;
    ASSERT_TRUE(IsShown());
    EXPECT_TRUE(scene.HasDrawing(surface));

    ZORGeoGeometry* const point = AddPoint();
    auto* const follower =
        new ZORVisVirtualObject(&environment, nullptr); // without owner, as points are shown
    follower->FollowGeometry(point, [] { return nullptr; });
    environment.AddVirtualObject(follower);
    ASSERT_TRUE(IsShown());
    EXPECT_FALSE(scene.HasDrawing(point));
}

TEST_F(ZORFeatPresentationTest, LeavesNoTraces)
{
    ZORGeoDebugOptions* const debug = ZORGeoDebugOptions::GetInstance();
    ZORGeoSurface* const surface = AddSurface(200);
    ZORGeoGeometry* const point = AddPoint();
    CurveFeature* const feature = AddFeature();
    const QList<const ZORGeoGeometry*> objects{surface, point, feature, feature->GetBody(),
                                               feature->GetBody()->GetGeometry()};
    const auto counts = [&] {
        QList<int> all;
        for (const ZORGeoGeometry* object : objects)
            all.append(object->GetReferenceCount());
        return all;
    };
    const QList<int> before = counts();
    ZORSysStackMonitor::GetStackMonitor()->ClearAllTraces();
    debug->SetConstructorStackTraces(true);
    debug->SetReferenceStackTraces(true);
    const QStringList calls = TraceCalls([&] {
        EXPECT_TRUE(IsShown());
        scene.SetHighlight(surface, ZORVisScene::Highlight::Selected);
        surface->setObjectName("other");
        presentation.reset();
    });
    debug->SetConstructorStackTraces(false);
    debug->SetReferenceStackTraces(false);
    EXPECT_EQ(QStringList(), calls);
    EXPECT_EQ(QList<QString>(), ZORSysStackMonitor::GetStackMonitor()->GetLabels());
    EXPECT_EQ(before, counts());
    EXPECT_EQ(0, environment.GetNumVirtualObjects());
}

TEST_F(ZORFeatPresentationTest, OutlivesSceneAndEnvironment)
{
    auto otherEnvironment = std::make_unique<ZORFeatEnvironment>();
    auto otherScene = std::make_unique<ZORVisScene>(otherEnvironment.get());
    ZORFeatPresentation other(otherEnvironment.get(), otherScene.get());
    ZORFeatPresentation second(otherEnvironment.get(), otherScene.get());
    (new ZORGeoCartesianPoint(otherEnvironment->GetContainer(), {0, 0, 0}))->Initialize();
    EXPECT_TRUE(QTest::qWaitFor([&] { return other.IsUpToDate() && second.IsUpToDate(); }, 10'000));
    otherEnvironment.reset();
    EXPECT_EQ(0, otherScene->GetNumDrawings());
    otherScene.reset();
    const ZORFeatPresentation nothing(nullptr, nullptr);
    EXPECT_TRUE(nothing.IsUpToDate());
}

} // namespace
