// Opening and saving large files in the host, offscreen: how long, and for how long the event loop stands still.

#include "BenchmarkProgram.h"
#include "docks/ZORHostLineQueue.h"
#include "document/ZORHostDocumentCommands.h"
#include "document/ZORHostSaving.h"
#include "plugins/ZORHostPluginManager.h"
#include "window/ZORHostMainWindow.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORSystem/ZORSysInit.h>
#include <ZORSystem/ZORSysSettingsManager.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QtEndian>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace {

/// Beats as often as the event loop lets it, and remembers the longest pause.
class Heart
{
public:
    Heart()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Beat(); });
        m_timer.start(0);
        m_last.start();
    }
    double GetLongest() const { return m_longest; } // milliseconds
    void Restart() { m_longest = 0; }

private:
    void Beat()
    {
        m_longest = std::max(m_longest, double(m_last.nsecsElapsed()) / 1e6);
        m_last.start();
    }

    QTimer m_timer;
    QElapsedTimer m_last;
    double m_longest = 0;
};

/// Writes the facets of a wavy square of side 1000 mm.
void WriteWaves(const QString& path, int numTriangles)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("cannot write the file");
    const int cells = int(std::sqrt(numTriangles / 2));
    QByteArray bytes(84, '\0');
    qToLittleEndian(quint32(2 * cells * cells), bytes.data() + 80);
    const auto put = [&](const float* facet) {
        const qsizetype at = bytes.size();
        bytes.append(50, '\0');
        std::memcpy(bytes.data() + at + 12, facet, 9 * sizeof(float));
    };
    const auto height = [cells](int i, int k) {
        return float(20 * std::sin(25.0 * i / cells) * std::cos(31.0 * k / cells));
    };
    const float side = 1000.0f / float(cells);
    for (int i = 0; i < cells; ++i) {
        for (int k = 0; k < cells; ++k) {
            const float x = float(i) * side, y = float(k) * side;
            const float a[3] = {x, y, height(i, k)}, b[3] = {x + side, y, height(i + 1, k)};
            const float c[3] = {x + side, y + side, height(i + 1, k + 1)},
                        d[3] = {x, y + side, height(i, k + 1)};
            const float facets[2][9] = {{a[0], a[1], a[2], b[0], b[1], b[2], c[0], c[1], c[2]},
                                        {a[0], a[1], a[2], c[0], c[1], c[2], d[0], d[1], d[2]}};
            put(facets[0]);
            put(facets[1]);
        }
        file.write(bytes);
        bytes.clear();
    }
}

/// A window on an empty document.
struct HostFixture
{
    HostFixture()
    {
        ZORSysSettingsManager::GetManager()->SetSource(&settings);
        ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&environment);
        window = std::make_unique<ZORHostMainWindow>(&plugins, &log);
        window->SetAsksToSave(false);
        window->show();
        QApplication::processEvents();
    }
    ~HostFixture()
    {
        window.reset();
        ZORSysSettingsManager::GetManager()->SetSource(nullptr);
    }
    Q_DISABLE_COPY_MOVE(HostFixture)

    /// Until everything is drawn.
    static void Settle()
    {
        QElapsedTimer idle;
        idle.start();
        while (idle.elapsed() < 500)
            QApplication::processEvents(QEventLoop::AllEvents, 50);
    }

    QTemporaryDir directory;
    QSettings settings{directory.filePath("settings.ini"), QSettings::IniFormat};
    ZORFeatEnvironment environment;
    ZORHostPluginManager plugins;
    ZORHostLineQueue log{100};
    std::unique_ptr<ZORHostMainWindow> window;
};

void OpenStl(benchmark::State& state)
{
    HostFixture host;
    const QString path = host.directory.filePath("waves.stl");
    WriteWaves(path, int(state.range(0)));
    double pause = 0, drawing = 0;
    for (auto _ : state) {
        Heart heart;
        if (!host.window->OpenFile(path))
            throw std::runtime_error("the file could not be opened");
        pause = std::max(pause, heart.GetLongest());
        heart.Restart();
        HostFixture::Settle();
        drawing = std::max(drawing, heart.GetLongest());
    }
    state.counters["pause_ms"] = pause;
    state.counters["drawing_ms"] = drawing;
}

void SaveDocument(benchmark::State& state)
{
    HostFixture host;
    const QString path = host.directory.filePath("waves.stl");
    WriteWaves(path, int(state.range(0)));
    if (!host.window->OpenFile(path))
        throw std::runtime_error("the file could not be opened");
    HostFixture::Settle();
    double pause = 0;
    for (auto _ : state) {
        Heart heart;
        ZORHostSaving saving(nullptr);
        if (saving.Write(*host.environment.GetContainer(), host.directory.filePath("waves.ZORCont"))
            != ZORHostSaving::Outcome::Written)
            throw std::runtime_error("the document could not be saved");
        pause = std::max(pause, heart.GetLongest());
    }
    state.counters["pause_ms"] = pause;
}

BENCHMARK(OpenStl)->Arg(100'000)->Arg(5'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(SaveDocument)->Arg(100'000)->Arg(5'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int RunProgram(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ZORSysInitialize();
    return RunBenchmarks(argc, argv);
}
