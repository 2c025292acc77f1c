// The import of contours from a big XML file, offscreen.

#include "BenchmarkProgram.h"
#include "core/ZORTestEnvironment.h"
#include "exchange/ZORTestImportCatiaXMLCurvesDlg.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORSystem/ZORSysSettingsManager.h>

#include <QApplication>
#include <QFile>
#include <QListWidget>
#include <QSettings>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <memory>
#include <sys/resource.h>

namespace {

constexpr int kPointsPerContour = 200;

/// Contours of 200 points each, plies around them: 100 MB hold about 10,500.
void WriteContours(const QString& fileName, qint64 size)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write the file");
    file.write(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Laminate NAME=\"Panel\">\n<Length>mm</Length>\n");
    for (int ply = 1; file.pos() < size; ++ply) {
        QByteArray text = "<Ply NAME=\"Ply." + QByteArray::number(ply) + "\">\n<OuterContour>\n";
        for (int i = 0; i < kPointsPerContour; ++i) {
            text += "<Pt>X=" + QByteArray::number(ply * 1.25 + i, 'f', 6)
                    + " Y=" + QByteArray::number(i * 0.5, 'f', 6)
                    + " Z=" + QByteArray::number(ply * -0.001, 'f', 6) + "</Pt>\n";
        }
        file.write(text + "</OuterContour>\n</Ply>\n");
    }
    file.write("</Laminate>\n");
}

double PeakMebibytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

class ContourFixture
{
public:
    explicit ContourFixture(qint64 size)
        : m_settings(m_directory.filePath("settings.ini"), QSettings::IniFormat)
    {
        const QString fileName = m_directory.filePath("contours.xml");
        WriteContours(fileName, size);
        m_settings.setValue("Debug/ImportCatiaXML/File", fileName);
        ZORSysSettingsManager::GetManager()->SetSource(&m_settings);
        ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&m_features);
        m_environment = std::make_unique<ZORTestEnvironment>();
    }
    ~ContourFixture()
    {
        m_environment.reset();
        ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(nullptr);
        ZORSysSettingsManager::GetManager()->SetSource(nullptr);
    }

    /// Opening the dialog loads the file of the settings.
    std::unique_ptr<ZORTestImportCatiaXMLCurvesDlg> Open() const
    {
        return std::make_unique<ZORTestImportCatiaXMLCurvesDlg>(m_environment.get());
    }
    ZORFeatContainer* GetContainer() const { return m_features.GetContainer(); }

private:
    QTemporaryDir m_directory;
    QSettings m_settings;
    ZORFeatEnvironment m_features;
    std::unique_ptr<ZORTestEnvironment> m_environment;
};

void LoadContours(benchmark::State& state)
{
    const ContourFixture fixture(state.range(0) * 1000000);
    for (auto _ : state)
        fixture.Open();
    state.counters["peakMiB"] = PeakMebibytes();
}
BENCHMARK(LoadContours)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond)->Iterations(1);

void ImportContours(benchmark::State& state)
{
    const ContourFixture fixture(state.range(0) * 1000000);
    const auto dialog = fixture.Open();
    dialog->findChild<QListWidget*>("_CurveList")->selectAll();
    for (auto _ : state)
        dialog->Apply();
    state.counters["curves"] = fixture.GetContainer()->GetNumGeometry();
    state.counters["peakMiB"] = PeakMebibytes();
}
BENCHMARK(ImportContours)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int RunProgram(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RunBenchmarks(argc, argv);
}
