// Tests of one representation that several threads use at once.

#include "VisTest.h"
#include "support/Printers.h"
#include "support/Threads.h"

#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepFactory.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisRepSet.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>
#include <ZORVisualization/ZORVisTrianglePrimitive.h>

#include <array>
#include <memory>

namespace {

constexpr int kNumThreads = 4;
constexpr QSize kViewSize(200, 100);

/// Something of everything: a surface in the left half that is gone, triangles in the right half, a line, a point and a
/// text. Nobody has drawn or picked it yet.
class ZORVisSharedRepTest : public VisTest
{
protected:
    ZORVisSharedRepTest()
    {
        camera.SetView({0, 0, 0}, {0, 0, -1}, {0, 1, 0}, 100);
        const auto surface = std::make_unique<ZORGeoSurface>(
            &container, QList<ZORMathPoint>{{-90, -40, 0}, {-10, -40, 0}, {-50, 40, 0}},
            QList<ZORGeoSurface::Corners>{{0, 1, 2}});
        const QList<const ZORVisPrimitive*> primitives = {
            new ZORVisSurfacePrimitive(surface.get()),
            new ZORVisTrianglePrimitive({{10, -40, 0}, {90, -40, 0}, {50, 40, 0}}),
            new ZORVisPolylinePrimitive({{-90, 45, 0}, {90, 45, 0}}, ZORVisPolylinePrimitive::Chain),
            new ZORVisPointPrimitive({{0, 20, 0}}),
            new ZORVisTextPrimitive("A", {0, -20, 0}, ZORVisTextPrimitive::Center,
                                    ZORVisTextPrimitive::FixedSize)};
        rep = std::make_unique<ZORVisRepGraphics>(primitives, Options(Qt::red, 2));
    }

    std::unique_ptr<const ZORVisRep> rep;
};

} // namespace

TEST_F(ZORVisSharedRepTest, EveryThreadDrawsTheSamePicture)
{
    std::array<QImage, kNumThreads> images;
    RunInThreads(kNumThreads, [&](int i) {
        images[i] = ZORVisRepFactory::CreateImage(kViewSize, {rep.get()}, Qt::white);
    });
    EXPECT_GT(CountDrawn(images[0]), 4000);
    for (const QImage& image : images)
        EXPECT_EQ(image, images[0]);
}

TEST_F(ZORVisSharedRepTest, EveryThreadPicksTheSame)
{
    const QList<QPointF> pixels = {{50, 60}, {150, 60}, {100, 5}, {100, 30}, {3, 97}};
    std::array<QList<ZORVisPickResult>, kNumThreads> results;
    RunInThreads(kNumThreads, [&](int i) {
        ZORVisEnvironment own;
        auto* const object = new ZORVisVirtualObject(&own, nullptr);
        object->SetRep(new ZORVisRepSet({const_cast<ZORVisRep*>(rep.get())}));
        own.AddVirtualObject(object);
        ZORVisScene ownScene(&own);
        ZORVisRenderer ownRenderer;
        ownRenderer.SetScene(&ownScene);
        for (const QPointF& pixel : pixels)
            results[i].append(ownRenderer.Pick(camera, kViewSize, pixel));
    });
    EXPECT_EQ(results[0][0].triangle, 1); // of the surface
    EXPECT_EQ(results[0][1].triangle, 1);
    EXPECT_EQ(results[0][2].point, ZORMathPoint(0, 45, 0));
    EXPECT_EQ(results[0][3].point, ZORMathPoint(0, 20, 0));
    for (const QList<ZORVisPickResult>& result : results) {
        for (qsizetype i = 0; i < pixels.size(); ++i) {
            EXPECT_EQ(result[i].point, results[0][i].point);
            EXPECT_EQ(result[i].triangle, results[0][i].triangle);
        }
        EXPECT_EQ(result[4].object, nullptr);
    }
}
