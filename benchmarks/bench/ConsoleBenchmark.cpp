// The console on a container of many geometries, offscreen.

#include "BenchmarkProgram.h"
#include "console/ZORTestMainDialog.h"
#include "console/ZORTestVisualizationList.h"
#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "visualization/ZORTestVisualizer.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QTableView>

#include <benchmark/benchmark.h>
#include <memory>
#include <optional>
#include <vector>

/// A point that is drawn without a dialog.
class PlainPoint : public ZORGeoCartesianPoint
{
    Q_OBJECT

public:
    using ZORGeoCartesianPoint::ZORGeoCartesianPoint;
};

class PlainVisualizer : public ZORTestVisualizer
{
    Q_OBJECT
    Q_CLASSINFO("supportedGeometry", "PlainPoint")

public:
    Q_INVOKABLE PlainVisualizer() = default;

    ZORVisVirtualObject* Visualize(ZORTestEnvironment* environment, ZORGeoGeometry* geometry) override
    {
        ZORMathSetOfPoints points;
        points.append(qobject_cast<PlainPoint*>(geometry)->GetMathPoint());
        auto* object = new ZORVisVirtualObject(environment->GetEnvironment(), nullptr);
        object->SetRep(new ZORVisRepGraphics({new ZORVisPointPrimitive(points)}, ZORVisOptions()));
        return object;
    }
};

ZOR_TEST_REGISTER(PlainVisualizer)

namespace {

/// Environment with points, and a console on it that is shown.
class ConsoleFixture
{
public:
    explicit ConsoleFixture(int numGeometry)
    {
        for (int i = 0; i < numGeometry; ++i)
            (new ZORGeoCartesianPoint(m_environment.GetContainer(), {double(i), 0, 0}))->Initialize();
        ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&m_environment);
        m_console = std::make_unique<ZORTestMainDialog>();
        m_console->setAttribute(Qt::WA_DeleteOnClose, false);
        m_console->show();
        QApplication::processEvents();
    }

    ZORTestMainDialog* operator->() const { return m_console.get(); }

    template<class Widget>
    Widget* Find(const char* objectName) const
    {
        return m_console->findChild<Widget*>(QLatin1String(objectName));
    }

private:
    ZORFeatEnvironment m_environment;
    std::unique_ptr<ZORTestMainDialog> m_console;
};

void RefreshContainer(benchmark::State& state)
{
    const ConsoleFixture console(int(state.range(0)));
    for (auto _ : state) {
        console->RefreshContainer();
        QApplication::processEvents(); // to the painted table
    }
    if (console.Find<QTableView>("_ContTable")->model()->rowCount() != state.range(0))
        state.SkipWithError("rows are missing");
}
BENCHMARK(RefreshContainer)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

void FilterByType(benchmark::State& state)
{
    const ConsoleFixture console(int(state.range(0)));
    auto* combo = console.Find<QComboBox>("_ContTypeCombo");
    const int none = combo->findText(QLatin1String("ZORGeoSurface"));
    const int all = combo->findText(QLatin1String("ZORGeoPoint"));
    for (auto _ : state) {
        combo->setCurrentIndex(none);
        combo->setCurrentIndex(all);
        QApplication::processEvents();
    }
}
BENCHMARK(FilterByType)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

void OpenConsole(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        {
            ZORFeatEnvironment environment;
            for (int i = 0; i < state.range(0); ++i)
                (new ZORGeoCartesianPoint(environment.GetContainer(), {double(i), 0, 0}))->Initialize();
            ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&environment);
            state.ResumeTiming();
            ZORTestMainDialog console;
            console.show();
            QApplication::processEvents();
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}
BENCHMARK(OpenConsole)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The console's list of visualizations, shown by itself and rebuilt with each change of the environment as in the console.
class VisualizationFixture
{
public:
    explicit VisualizationFixture(int count)
    {
        for (int i = 0; i < count; ++i) {
            m_points.push_back(new PlainPoint(m_environment.GetContainer(), {double(i), 0, 0}));
            m_points.back()->Initialize();
        }
        ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&m_environment);
        m_testEnvironment.emplace();
        m_list.emplace(&*m_testEnvironment, &m_widget);
        m_widget.show();
        for (const auto signal : {&ZORVisEnvironment::ObjectAdded, &ZORVisEnvironment::ObjectRemoved})
            QObject::connect(&m_environment, signal, &m_widget, [this] { m_list->Refresh(); });
    }
    ~VisualizationFixture() { m_list->RemoveAll(); }
    Q_DISABLE_COPY_MOVE(VisualizationFixture)

    /// \param paints  whether the list is painted after each object, as when a user shows them one by one
    void Show(bool paints)
    {
        for (PlainPoint* point : m_points) {
            m_list->Show(point);
            if (paints)
                QApplication::processEvents();
        }
        QApplication::processEvents();
    }
    void RemoveOneByOne()
    {
        for (PlainPoint* point : m_points) {
            m_list->Remove(point);
            QApplication::processEvents();
        }
    }
    void RemoveAll()
    {
        m_list->RemoveAll();
        QApplication::processEvents();
    }
    int GetNumRows() const { return m_widget.count(); }

private:
    ZORFeatEnvironment m_environment;
    std::optional<ZORTestEnvironment> m_testEnvironment; // binds to the current environment
    QListWidget m_widget;
    std::optional<ZORTestVisualizationList> m_list;
    std::vector<PlainPoint*> m_points; // owned by the container
};

void ShowVisualizations(benchmark::State& state, bool paints)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto fixture = std::make_unique<VisualizationFixture>(int(state.range(0)));
        state.ResumeTiming();
        fixture->Show(paints);
        state.PauseTiming();
        if (fixture->GetNumRows() != state.range(0))
            state.SkipWithError("rows are missing");
        fixture.reset();
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(ShowVisualizations, one_by_one, true)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ShowVisualizations, at_once, false)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond);

void RemoveVisualizations(benchmark::State& state, void (VisualizationFixture::*remove)())
{
    for (auto _ : state) {
        state.PauseTiming();
        auto fixture = std::make_unique<VisualizationFixture>(int(state.range(0)));
        fixture->Show(false);
        state.ResumeTiming();
        (*fixture.*remove)();
        state.PauseTiming();
        if (fixture->GetNumRows() != 0)
            state.SkipWithError("rows are left");
        fixture.reset();
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(RemoveVisualizations, one_by_one, &VisualizationFixture::RemoveOneByOne)
    ->Arg(1000)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RemoveVisualizations, all, &VisualizationFixture::RemoveAll)
    ->Arg(1000)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond);

} // namespace

int RunProgram(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RunBenchmarks(argc, argv);
}

#include "ConsoleBenchmark.moc"
