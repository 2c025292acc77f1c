#include "BenchmarkProgram.h"
#include "GridTriangles.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatPresentation.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisScene.h>

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <thread>

namespace {

void AddSheet(ZORGeoContainer* container, int numTriangles, double height)
{
    const int n = std::max(1, int(std::sqrt(numTriangles / 2.0)));
    QList<ZORMathPoint> vertices;
    vertices.reserve(qsizetype(n + 1) * (n + 1));
    for (int j = 0; j <= n; ++j) {
        for (int i = 0; i <= n; ++i)
            vertices.append(
                {1000.0 * i / n, 1000.0 * j / n, height + std::sin(0.01 * i) * std::cos(0.01 * j)});
    }
    (new ZORGeoSurface(container, vertices, MakeGridTriangles(n)))->Initialize();
}

void AddCurve(ZORGeoContainer* container, double height)
{
    constexpr int kNumPoints = 50;
    ZORMathSetOfPoints points;
    for (int i = 0; i < kNumPoints; ++i)
        points.append({20.0 * i, std::sin(0.1 * i), height});
    (new ZORGeoPolyline(container, points, true))->Initialize();
}

double ResidentMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * 4096 / 1e6;
}

// From a document that nobody shows until its drawings are in a scene; the pause is the longest of the event loop.
void Present(benchmark::State& state, ZORFeatEnvironment& environment)
{
    double growth = 0;
    qint64 longest = 0; // nanoseconds
    for (auto _ : state) {
        const double before = ResidentMegabytes();
        QElapsedTimer timer;
        timer.start();
        ZORVisScene scene(&environment);
        ZORFeatPresentation presentation(&environment, &scene);
        longest = std::max(longest, timer.nsecsElapsed());
        while (!presentation.IsUpToDate()) {
            timer.restart();
            QCoreApplication::processEvents();
            longest = std::max(longest, timer.nsecsElapsed());
            std::this_thread::sleep_for(std::chrono::microseconds(100)); // a thread may be computing
        }
        growth = std::max(growth, ResidentMegabytes() - before);
    }
    state.counters["MB"] = growth;
    state.counters["pause ms"] = double(longest) / 1e6;
}

void PresentObjects(benchmark::State& state)
{
    ZORFeatEnvironment environment;
    ZORFeatContainer* const container = environment.GetContainer();
    for (int i = 0; i < int(state.range(0)); ++i) {
        if (i % 3 == 0)
            (new ZORGeoCartesianPoint(container, {double(i), 0, 0}))->Initialize();
        else if (i % 3 == 1)
            AddCurve(container, i);
        else
            AddSheet(container, 200, i);
    }
    Present(state, environment);
}
BENCHMARK(PresentObjects)->Arg(5'000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

void PresentSurface(benchmark::State& state)
{
    ZORFeatEnvironment environment;
    AddSheet(environment.GetContainer(), int(state.range(0)), 0);
    Present(state, environment);
}
BENCHMARK(PresentSurface)
    ->Arg(5'000'000)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

} // namespace

int RunProgram(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return RunBenchmarks(argc, argv);
}
