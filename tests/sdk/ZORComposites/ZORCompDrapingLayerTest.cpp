// Tests the draping layer: how it follows its inputs, and container files.

#include "DrapingChecks.h"
#include "sdk/ZORGeometry/TestMeshes.h"
#include "support/ContainerFiles.h"
#include "support/Threads.h"

#include <ZORComposites/ZORCompDrapingLayer.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeature/ZORFeatSketch.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QSignalSpy>

#include <array>

namespace {

class ZORCompDrapingLayerTest : public testing::Test
{
protected:
    ZORCompDrapingLayerTest()
    {
        root->Initialize();
        strategy = new ZORCompStrategy(root);
        strategy->Initialize();
        strategy->SetParameters(WithStep(5));
        surface = Sphere(100, 64).Make(&container).release();
        surface->Initialize();
        seed = new ZORGeoPointOnSurface(surface->Project({100, 1, 2}));
        seed->Initialize();
        layer = new ZORCompDrapingLayer(root);
        layer->Initialize();
    }
    void Complete()
    {
        layer->SetDirection({0, 1, 0});
        layer->SetStrategy(strategy);
        layer->SetSurface(surface);
        layer->SetSeed(seed);
    }
    static const ZORGeoSurface* ShapeOf(const ZORCompDrapingLayer* layer)
    {
        return layer->GetBody() ? qobject_cast<const ZORGeoSurface*>(layer->GetBody()->GetGeometry())
                                : nullptr;
    }

    ZORFeatContainer container;
    // All owned by the container.
    ZORFeatRoot* const root = new ZORFeatRoot(&container);
    ZORCompStrategy* strategy;
    ZORGeoSurface* surface;
    ZORGeoPointOnSurface* seed;
    ZORCompDrapingLayer* layer;
};

TEST_F(ZORCompDrapingLayerTest, OwnsItsResultButNotItsInputs)
{
    EXPECT_TRUE(layer->GetOwnedGeometry().isEmpty());
    Complete();
    auto* const shape = const_cast<ZORGeoSurface*>(ShapeOf(layer));
    EXPECT_EQ((QList<ZORGeoGeometry*>{shape, layer->GetBody()}), layer->GetOwnedGeometry());
    layer->SetDirection({1, 0, 1});
    EXPECT_EQ(2, layer->GetOwnedGeometry().size());
    EXPECT_EQ(layer->GetBody(), layer->GetOwnedGeometry().last());
}

TEST_F(ZORCompDrapingLayerTest, IsShownByItsSurfaceAndTheYarnsOfItsNet)
{
    EXPECT_EQ(ZORFeatKind::Layer, ZORFeatSketch::KindOf(layer)) << "before there is anything to see";
    Complete();
    const ZORFeatSketch sketch = ZORFeatSketch::Of(layer);
    EXPECT_EQ(QList<const ZORGeoGeometry*>{ShapeOf(layer)}, sketch.geometry);
    const qsizetype numNodes = layer->GetNet().GetNodes().size();
    ASSERT_GT(numNodes, 100);
    layer->Remove(); // lines need neither the layer nor its surface
    delete surface;
    qsizetype numPoints = 0;
    const QList<ZORMathSetOfPoints> chains = sketch.makeLines();
    for (const ZORMathSetOfPoints& chain : chains) {
        EXPECT_GT(chain.size(), 1);
        numPoints += chain.size();
        for (qsizetype i = 1; i < chain.size(); ++i)
            EXPECT_NEAR(5, chain[i - 1].DistanceTo(chain[i]), 1e-3) << "neighbors on a yarn are a step apart";
    }
    EXPECT_GT(numPoints, 1.8 * double(numNodes)) << "nearly all nodes are on a warp and on a weft yarn";
    EXPECT_LE(numPoints, 2 * numNodes);
}

} // namespace

TEST_F(ZORCompDrapingLayerTest, WaitsForItsInputsInEveryOrder)
{
    const QSignalSpy changes(layer, &ZORFeatGeometry::BodyChanged);
    layer->SetDirection({0, 1, 0});
    layer->SetSeed(seed);
    layer->SetSurface(surface);
    EXPECT_FALSE(layer->GetBody());
    EXPECT_TRUE(layer->GetNet().IsEmpty());
    EXPECT_EQ(0, layer->GetMaximumShear());
    EXPECT_TRUE(layer->GetLockedCells().isEmpty());
    layer->SetStrategy(strategy);
    EXPECT_EQ(1, changes.size());
    ASSERT_TRUE(layer->GetBody());
    CheckNet(*surface, layer->GetNet());
    EXPECT_EQ(2, layer->GetBody()->GetDimension());

    layer->SetSurface(nullptr);
    layer->SetSeed(nullptr);
    layer->SetStrategy(nullptr);
    EXPECT_EQ(1, changes.size());
    EXPECT_TRUE(layer->GetBody()) << "the last good one stays";
    EXPECT_FALSE(layer->GetNet().IsEmpty());
}

TEST_F(ZORCompDrapingLayerTest, EveryInputIsReportedAsAChange)
{
    auto* const rosette = new ZORCompRosette(root, {}, {1, 0, 0}, {0, 0, 1});
    rosette->Initialize();
    // Nothing is computed without a seed, so that only the setters report.
    EXPECT_TRUE(ReportsChange(container, [this] { layer->SetStrategy(strategy); }));
    EXPECT_TRUE(ReportsChange(container, [this] { layer->SetSurface(surface); }));
    EXPECT_TRUE(ReportsChange(container, [=, this] { layer->SetRosette(rosette); }));
    EXPECT_TRUE(ReportsChange(container, [this] { layer->SetDirection({0, 1, 0}); }));
    EXPECT_TRUE(ReportsChange(container, [this] { layer->SetSeed(seed); }));
    EXPECT_TRUE(ReportsNoChange(container, [this] { layer->SetSeed(seed); }));
}

TEST_F(ZORCompDrapingLayerTest, MakesASurfaceOfItsCells)
{
    Complete();
    const ZORCompDrapingNet& net = layer->GetNet();
    const ZORGeoSurface* const shape = ShapeOf(layer);
    ASSERT_TRUE(shape);
    EXPECT_TRUE(shape->IsInitialized() && layer->GetBody()->IsInitialized());
    ASSERT_EQ(2 * net.GetCells().size(), shape->GetNumTriangles());
    ASSERT_EQ(net.GetNodes().size(), shape->GetVertexArray().size());
    for (qsizetype i = 0; i < net.GetCells().size(); ++i) {
        for (const int triangle : {int(2 * i), int(2 * i + 1)}) {
            ZORMathPoint a, b, c;
            shape->GetVertices(triangle + 1, a, b, c);
            EXPECT_GT(Dot(Cross(b - a, c - a), a - ZORMathPoint()), 0) << "outwards, as the sphere";
            for (const int corner : shape->GetCornerArray()[triangle])
                EXPECT_TRUE(std::count(net.GetCells()[i].nodes.begin(), net.GetCells()[i].nodes.end(), corner)
                            == 1);
        }
    }
    EXPECT_EQ(net.GetCells()[7].shear, layer->GetShear(7));
    EXPECT_EQ(net.GetCells()[7].fibreAngle, layer->GetFibreAngle(7));
    EXPECT_EQ(net.GetMaximumShear(), layer->GetMaximumShear());
}

TEST_F(ZORCompDrapingLayerTest, CountsAReferenceOfEachInput)
{
    const int before = surface->GetReferenceCount();
    Complete();
    EXPECT_EQ(1, strategy->GetReferenceCount());
    EXPECT_EQ(1, seed->GetReferenceCount());
    EXPECT_EQ(before + 2, surface->GetReferenceCount()) << "as an input and below the net";
    EXPECT_EQ((QList<ZORFeatObject*>{strategy}), layer->GetInputs());
    layer->Remove();
    EXPECT_EQ(0, strategy->GetReferenceCount());
    EXPECT_EQ(0, seed->GetReferenceCount());
    EXPECT_EQ(before, surface->GetReferenceCount());
    EXPECT_EQ(4, container.GetNumGeometry()) << "its surface and body went with it";
}

TEST_F(ZORCompDrapingLayerTest, FollowsItsStrategy)
{
    Complete();
    const qsizetype cells = layer->GetNet().GetCells().size();
    const QString name = ShapeOf(layer)->objectName();
    strategy->SetParameters(WithStep(10));
    EXPECT_LT(layer->GetNet().GetCells().size(), cells / 3);
    EXPECT_EQ(name, ShapeOf(layer)->objectName());

    auto* const other = new ZORCompStrategy(root);
    other->Initialize();
    other->SetParameters(WithStep(5));
    layer->SetStrategy(other);
    EXPECT_EQ(cells, layer->GetNet().GetCells().size());
    const QSignalSpy changes(layer, &ZORFeatGeometry::BodyChanged);
    strategy->SetParameters(WithStep(7));
    EXPECT_EQ(0, changes.size()) << "no input any more";

    ZORCompStrategyParameters parameters = other->GetParameters();
    parameters.lockingAngle = 60 * kDegree;
    const qsizetype locked = layer->GetLockedCells().size();
    other->SetParameters(parameters);
    EXPECT_LT(layer->GetLockedCells().size(), locked);
}

TEST_F(ZORCompDrapingLayerTest, FollowsItsRosette)
{
    Complete();
    auto* const rosette = new ZORCompRosette(root, {100, 0, 0}, {0, 0, 1}, {1, 0, 0});
    rosette->Initialize();
    layer->SetRosette(rosette);
    const auto warpDirection = [this] {
        const ZORCompDrapingNet& net = layer->GetNet();
        return (net.GetNodes()[net.FindNode(1, 0)].location.point
                - net.GetNodes()[net.FindNode(0, 0)].location.point)
            .GetNormalized();
    };
    EXPECT_NEAR(1, warpDirection().GetZ(), 0.01);
    rosette->SetAxes({100, 0, 0}, {0, 1, 1}, {1, 0, 0});
    EXPECT_NEAR(std::sqrt(0.5), warpDirection().GetZ(), 0.03);
    layer->SetDirection({0, 0, -1});
    EXPECT_NEAR(std::sqrt(0.5), warpDirection().GetZ(), 0.03) << "the rosette counts";
    layer->SetRosette(nullptr);
    EXPECT_NEAR(-1, warpDirection().GetZ(), 0.01);
}

TEST_F(ZORCompDrapingLayerTest, KeepsItsLastNetWhenComputingFails)
{
    Complete();
    const qsizetype cells = layer->GetNet().GetCells().size();
    EXPECT_EQ(QLatin1String("the direction is perpendicular to the surface at the seed"), MessageOf([this] {
                  ZORMathPoint a, b, c;
                  surface->GetVertices(seed->GetLocationOnSurface().triangle, a, b, c);
                  layer->SetDirection(Cross(b - a, c - a));
              }));
    EXPECT_FALSE(layer->GetFailure().isEmpty());
    layer->SetDirection({0, 1, 0});
    EXPECT_TRUE(layer->GetFailure().isEmpty());

    strategy->SetParameters(WithStep(500)); // a failure after a signal is told by a warning
    EXPECT_EQ(QLatin1String("no cell of the net fits on the surface at the seed"), layer->GetFailure());
    EXPECT_EQ(cells, layer->GetNet().GetCells().size());
    EXPECT_TRUE(layer->GetBody());

    EXPECT_EQ(QLatin1String("the surface of the layer is no surface"),
              MessageOf([this] { layer->SetSurface(seed); }));
    layer->SetStrategy(nullptr);
    layer->SetSurface(surface);
    layer->SetSeed(surface);
    EXPECT_EQ(QLatin1String("the seed is no point"), MessageOf([this] { layer->SetStrategy(strategy); }));
    EXPECT_EQ(cells, layer->GetNet().GetCells().size());
}

TEST_F(ZORCompDrapingLayerTest, TakesFeaturesAndLoosePoints)
{
    layer->SetDirection({0, 1, 0});
    layer->SetStrategy(strategy);
    layer->SetSurface(surface);
    auto* const loose = new ZORGeoCartesianPoint(&container, {120, 1, 2});
    loose->Initialize();
    layer->SetSeed(loose);
    const ZORCompDrapingNet first = layer->GetNet();
    ASSERT_FALSE(first.IsEmpty());
    EXPECT_LT(
        first.GetNodes()[first.FindNode(0, 0)].location.point.DistanceTo(surface->Project({120, 1, 2}).point),
        1e-12);

    // A second layer over the first one.
    auto* const second = new ZORCompDrapingLayer(root);
    second->Initialize();
    second->SetDirection({0, 1, 0});
    second->SetStrategy(strategy);
    second->SetSeed(loose);
    second->SetSurface(layer);
    CheckNet(*ShapeOf(layer), second->GetNet());
    EXPECT_EQ(QLatin1String("a feature cannot depend on itself"),
              MessageOf([&] { layer->SetSurface(second); }));
    EXPECT_EQ(QLatin1String("a feature cannot depend on itself"), MessageOf([&] { layer->SetSeed(layer); }));
    const qsizetype before = second->GetNet().GetCells().size();
    strategy->SetParameters(WithStep(10));
    EXPECT_LT(second->GetNet().GetCells().size(), before);
}

TEST_F(ZORCompDrapingLayerTest, OutlivesItsSurface)
{
    Complete();
    const ZORMathPoint point = layer->GetNet().GetNodes()[0].location.point;
    delete surface;
    EXPECT_TRUE(layer->GetNet().GetNodes()[0].location.IsNull());
    EXPECT_EQ(point, layer->GetNet().GetNodes()[0].location.point);
    EXPECT_FALSE(layer->GetSurface());
    strategy->SetParameters(WithStep(10));
    EXPECT_EQ(5, layer->GetNet().GetStep());
    ZORFeatContainer loaded;
    EXPECT_TRUE(RoundTrips(container, loaded));
}

// The first of them to ask for the net detaches it.
TEST_F(ZORCompDrapingLayerTest, SeveralThreadsReadALayerWhoseSurfaceWasRemoved)
{
    Complete();
    const qsizetype numNodes = layer->GetNet().GetNodes().size();
    const double shear = layer->GetMaximumShear();
    delete surface;

    constexpr int kNumThreads = 4;
    std::array<qsizetype, kNumThreads> numDetached{};
    std::array<double, kNumThreads> shears{};
    RunInThreads(kNumThreads, [&](int thread) {
        for (const ZORCompDrapingNode& node : layer->GetNet().GetNodes())
            numDetached[thread] += node.location.IsNull() ? 1 : 0;
        shears[thread] = layer->GetMaximumShear();
    });
    for (int i = 0; i < kNumThreads; ++i) {
        EXPECT_EQ(numNodes, numDetached[i]);
        EXPECT_EQ(shear, shears[i]);
    }
}

TEST_F(ZORCompDrapingLayerTest, ComesBackFromContainerFilesAsItWas)
{
    Complete();
    auto* const rosette = new ZORCompRosette(root, {100, 0, 0}, {0, 1, 0.25}, {1, 0, 0});
    rosette->Initialize();
    layer->SetRosette(rosette);
    ZORFeatContainer loaded;
    ASSERT_TRUE(RoundTrips(container, loaded));
    ZORCompDrapingLayer* copy = nullptr;
    for (int i = 0; i < loaded.GetNumGeometry() && !copy; ++i)
        copy = qobject_cast<ZORCompDrapingLayer*>(loaded.GetGeometryByIndex(i));
    ASSERT_TRUE(copy);
    const ZORCompDrapingNet net = copy->GetNet();
    ASSERT_EQ(layer->GetNet().GetNodes().size(), net.GetNodes().size());
    for (qsizetype i = 0; i < net.GetNodes().size(); ++i) {
        const ZORGeoLocationOnSurface& a = layer->GetNet().GetNodes()[i].location;
        const ZORGeoLocationOnSurface& b = net.GetNodes()[i].location;
        ASSERT_TRUE(a.point == b.point && a.triangle == b.triangle && a.weightB == b.weightB
                    && a.weightC == b.weightC);
    }
    ASSERT_EQ(layer->GetNet().GetCells().size(), net.GetCells().size());
    EXPECT_EQ(layer->GetMaximumShear(), copy->GetMaximumShear());
    EXPECT_EQ(layer->GetLockedCells(), copy->GetLockedCells());
    EXPECT_EQ(layer->GetDirection(), copy->GetDirection());
    EXPECT_EQ(ShapeOf(layer)->objectName(), ShapeOf(copy)->objectName());
    ASSERT_TRUE(copy->GetStrategy() && copy->GetRosette() && copy->GetSeed() && copy->GetSurface());

    copy->GetStrategy()->SetParameters(WithStep(10));
    EXPECT_LT(copy->GetNet().GetCells().size(), net.GetCells().size() / 3) << "follows its inputs again";
}

TEST_F(ZORCompDrapingLayerTest, LeavesContainersAsTheyWereWhenFilesAreDamaged)
{
    strategy->SetParameters(WithStep(30));
    Complete();
    const auto make = [] { return std::make_unique<ZORFeatContainer>(); };
    EXPECT_GT(LoadDamagedFiles(SaveContainer(container), make, 200, 1), 50);
}
