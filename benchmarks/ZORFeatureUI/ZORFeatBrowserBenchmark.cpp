// Cost of the feature browser on a container with many geometries.

#include "BenchmarkProgram.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeatureUI/ZORFeatBrowserWidget.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>

#include <QApplication>
#include <QPixmap>
#include <QRandomGenerator>

#include <benchmark/benchmark.h>

namespace {

ZORGeoGeometry* AddPoint(ZORFeatEnvironment& environment)
{
    auto* const point = new ZORGeoCartesianPoint(environment.GetContainer(), {0, 0, 0});
    point->Initialize();
    return point;
}

ZORFeatFolder* AddFolder(ZORFeatObject* parent)
{
    auto* const folder = new ZORFeatFolder(parent);
    folder->Initialize();
    return folder;
}

void AddPoints(ZORFeatEnvironment& environment, int64_t count)
{
    for (int64_t i = 0; i < count; ++i)
        AddPoint(environment);
}

/// An environment of points with a visible browser that has taken them over.
struct Browsed
{
    explicit Browsed(int64_t count)
    {
        AddPoints(environment, count);
        browser.resize(300, 600);
        browser.SetEnvironment(&environment);
        browser.show();
        Settle();
    }

    /// Takes over the pending changes and paints.
    void Settle()
    {
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(browser.grab());
    }

    ZORFeatEnvironment environment;
    ZORFeatBrowserWidget browser;
};

/// For comparison with FollowAdditions: the same without a browser.
void RegisterOnly(benchmark::State& state)
{
    for (auto _ : state) {
        auto environment = std::make_unique<ZORFeatEnvironment>();
        AddPoints(*environment, state.range(0));
        state.PauseTiming();
        environment.reset();
        state.ResumeTiming();
    }
}

void SetEnvironment(benchmark::State& state)
{
    Browsed browsed(state.range(0));
    for (auto _ : state) {
        browsed.browser.SetEnvironment(nullptr);
        browsed.browser.SetEnvironment(&browsed.environment);
        browsed.Settle();
    }
}

void FollowAdditions(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto browsed = std::make_unique<Browsed>(0);
        state.ResumeTiming();
        AddPoints(browsed->environment, state.range(0));
        browsed->Settle();
        state.PauseTiming();
        browsed.reset();
        state.ResumeTiming();
    }
}

void FollowOneAddition(benchmark::State& state)
{
    Browsed browsed(state.range(0));
    for (auto _ : state) {
        AddPoint(browsed.environment);
        browsed.Settle();
    }
}

void FollowScatteredRemovals(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto browsed = std::make_unique<Browsed>(0);
        QList<ZORGeoGeometry*> points;
        for (int64_t i = 0; i < state.range(0); ++i)
            points.append(AddPoint(browsed->environment));
        browsed->Settle();
        state.ResumeTiming();
        for (qsizetype i = 0; i < points.size(); i += 2)
            delete points[i];
        browsed->Settle();
        state.PauseTiming();
        browsed.reset();
        state.ResumeTiming();
    }
}

void SelectAnywhere(benchmark::State& state)
{
    Browsed browsed(state.range(0));
    QRandomGenerator random(1);
    for (auto _ : state) {
        const int index = random.bounded(int(state.range(0)));
        browsed.browser.SelectGeometry(browsed.environment.GetContainer()->GetGeometryByIndex(index));
        browsed.Settle();
    }
}

void RemoveFeatureTree(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto browsed = std::make_unique<Browsed>(0);
        ZORFeatRoot* const root = browsed->environment.GetContainer()->GetFeatureRoot("ZORFeatRoot");
        ZORFeatFolder* folder = nullptr;
        for (int64_t i = 0; i < state.range(0); ++i) {
            if (i % 100 == 0)
                folder = AddFolder(root);
            AddFolder(folder);
        }
        browsed->Settle();
        state.ResumeTiming();
        root->Remove();
        browsed->Settle();
        state.PauseTiming();
        browsed.reset();
        state.ResumeTiming();
    }
}

#define ZOR_BENCHMARK(Function) BENCHMARK(Function)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMillisecond)

ZOR_BENCHMARK(RegisterOnly);
ZOR_BENCHMARK(FollowAdditions);
ZOR_BENCHMARK(SetEnvironment);
ZOR_BENCHMARK(FollowOneAddition);
ZOR_BENCHMARK(FollowScatteredRemovals);
ZOR_BENCHMARK(SelectAnywhere);
ZOR_BENCHMARK(RemoveFeatureTree);

} // namespace

int RunProgram(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RunBenchmarks(argc, argv);
}
