#include "BenchmarkProgram.h"
#include "GridTriangles.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisCamera.h>
#include <ZORVisualization/ZORVisEnvironment.h>
#include <ZORVisualization/ZORVisGraphicsContext.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRenderer.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisScene.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QFile>
#include <QGuiApplication>

#include <benchmark/benchmark.h>
#include <cmath>
#include <iostream>

namespace {

constexpr QSize kPictureSize(1280, 800);

double HeightAt(double x, double y)
{
    return 25 * std::sin(0.025 * x) * std::cos(0.025 * y);
}

// A wavy sheet of 1000 x 1000 mm.
ZORGeoSurface* CreateSheet(ZORGeoContainer* container, int numTriangles)
{
    const int n = int(std::sqrt(numTriangles / 2.0));
    QList<ZORMathPoint> vertices;
    vertices.reserve(qsizetype(n + 1) * (n + 1));
    for (int j = 0; j <= n; ++j) {
        for (int i = 0; i <= n; ++i) {
            const double x = 1000.0 * i / n;
            const double y = 1000.0 * j / n;
            vertices.append({x, y, HeightAt(x, y)});
        }
    }
    return new ZORGeoSurface(container, vertices, MakeGridTriangles(n));
}

// What is drawn, and the renderer that draws it.
struct Stage
{
    ZORVisEnvironment environment;
    ZORVisScene scene{&environment};
    ZORVisRenderer renderer;

    Stage() { renderer.SetScene(&scene); }
    void Show(const QList<const ZORVisPrimitive*>& primitives)
    {
        auto* object = new ZORVisVirtualObject(&environment, nullptr);
        object->SetRep(new ZORVisRepGraphics(primitives, ZORVisOptions()));
        environment.AddVirtualObject(object);
    }
    ZORVisCamera MakeCamera() const
    {
        ZORVisCamera camera;
        camera.FitAll(scene.GetBoundingBox(), kPictureSize);
        return camera;
    }
    void RenderFirst() { benchmark::DoNotOptimize(renderer.Render(MakeCamera(), kPictureSize)); }
    // A picture, with the camera turned a little before each.
    void RenderTurning(benchmark::State& state)
    {
        ZORVisCamera camera = MakeCamera();
        for (auto _ : state) {
            camera.Orbit(17, 7);
            benchmark::DoNotOptimize(renderer.Render(camera, kPictureSize));
        }
    }
};

// The unit and the clocks of pictures, which several threads draw.
void MeasurePictures(benchmark::internal::Benchmark* pictures)
{
    pictures->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
}

ZORMathSetOfPoints CreateWave(int number, int numPoints)
{
    ZORMathSetOfPoints points;
    points.reserve(numPoints);
    for (int i = 0; i < numPoints; ++i) {
        const double x = 1000.0 * i / (numPoints - 1);
        points.append({x, 0.1 * number, 30 + HeightAt(x, 0.1 * number)});
    }
    return points;
}

double ResidentMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * 4096 / 1e6;
}

void SurfaceFirstPicture(benchmark::State& state)
{
    ZORGeoContainer container;
    const ZORGeoSurface* surface = CreateSheet(&container, int(state.range(0)));
    double growth = 0;
    for (auto _ : state) {
        const double before = ResidentMegabytes();
        Stage stage;
        stage.Show({new ZORVisSurfacePrimitive(surface)});
        stage.RenderFirst();
        growth = std::max(growth, ResidentMegabytes() - before);
    }
    state.counters["MB"] = growth;
    delete surface;
}
BENCHMARK(SurfaceFirstPicture)->Arg(100'000)->Arg(1'000'000)->Arg(5'000'000)->Apply(MeasurePictures);

void SurfaceNextPicture(benchmark::State& state, ZORVisRenderer::DisplayMode mode)
{
    ZORGeoContainer container;
    const ZORGeoSurface* surface = CreateSheet(&container, int(state.range(0)));
    Stage stage;
    stage.renderer.SetDisplayMode(mode);
    stage.Show({new ZORVisSurfacePrimitive(surface)});
    stage.RenderFirst();
    stage.RenderTurning(state);
    delete surface;
}
BENCHMARK_CAPTURE(SurfaceNextPicture, shaded, ZORVisRenderer::Shaded)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Arg(5'000'000)
    ->Apply(MeasurePictures);
BENCHMARK_CAPTURE(SurfaceNextPicture, wireframe, ZORVisRenderer::Wireframe)
    ->Arg(1'000'000)
    ->Apply(MeasurePictures);

void SurfacePick(benchmark::State& state)
{
    ZORGeoContainer container;
    const ZORGeoSurface* surface = CreateSheet(&container, int(state.range(0)));
    Stage stage;
    stage.Show({new ZORVisSurfacePrimitive(surface)});
    const ZORVisCamera camera = stage.MakeCamera();
    stage.renderer.Pick(camera, kPictureSize, QPointF(640, 400)); // builds the tree
    int x = 300;
    for (auto _ : state) {
        x = x < 900 ? x + 1 : 300;
        benchmark::DoNotOptimize(stage.renderer.Pick(camera, kPictureSize, QPointF(x, 400)));
    }
    delete surface;
}
BENCHMARK(SurfacePick)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

void ObjectsFirstPicture(benchmark::State& state)
{
    for (auto _ : state) {
        Stage stage;
        for (int i = 0; i < int(state.range(0)); ++i)
            stage.Show({new ZORVisPolylinePrimitive(CreateWave(i, 50), ZORVisPolylinePrimitive::Chain)});
        stage.RenderFirst();
    }
}
BENCHMARK(ObjectsFirstPicture)->Arg(10'000)->Apply(MeasurePictures);

void ObjectsNextPicture(benchmark::State& state)
{
    Stage stage;
    for (int i = 0; i < int(state.range(0)); ++i)
        stage.Show({new ZORVisPolylinePrimitive(CreateWave(i, 50), ZORVisPolylinePrimitive::Chain)});
    stage.RenderFirst();
    stage.RenderTurning(state);
}
BENCHMARK(ObjectsNextPicture)->Arg(10'000)->Apply(MeasurePictures);

void PointsNextPicture(benchmark::State& state)
{
    Stage stage;
    stage.Show({new ZORVisPointPrimitive(CreateWave(5000, int(state.range(0))))});
    stage.RenderTurning(state);
}
BENCHMARK(PointsNextPicture)->Arg(10'000)->Arg(1'000'000)->Apply(MeasurePictures);

void TextsNextPicture(benchmark::State& state)
{
    Stage stage;
    QList<const ZORVisPrimitive*> texts;
    const ZORMathSetOfPoints points = CreateWave(5000, int(state.range(0)));
    for (int i = 0; i < int(points.size()); ++i) {
        texts.append(new ZORVisTextPrimitive(QStringLiteral(" %1").arg(i), points[i],
                                             ZORVisTextPrimitive::LowerLeft, ZORVisTextPrimitive::FixedSize));
    }
    stage.Show(texts);
    stage.RenderTurning(state);
}
BENCHMARK(TextsNextPicture)->Arg(5'000)->Apply(MeasurePictures);

} // namespace

int RunProgram(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    std::cout << ZORVisGraphicsContext::GetInstance()->GetDescription().toStdString() << '\n';
    return RunBenchmarks(argc, argv);
}
