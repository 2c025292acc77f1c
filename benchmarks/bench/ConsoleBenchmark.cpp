// The console on a container of many geometries, offscreen.

#include "BenchmarkProgram.h"
#include "console/ZORTestMainDialog.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QApplication>
#include <QComboBox>
#include <QTableView>

#include <benchmark/benchmark.h>

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

} // namespace

int RunProgram(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RunBenchmarks(argc, argv);
}
