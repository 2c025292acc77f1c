// How soon the nesting dialog and the console close while a heavy job runs, offscreen.

#include "BenchmarkProgram.h"
#include "console/ZORTestMainDialog.h"
#include "core/ZORTestEnvironment.h"
#include "nesting/ZORTestNestNestingDlg.h"

#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORNesting/ZORNestNestingProcessor.h>
#include <ZORNesting/ZORNestNestingResponse.h>
#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestResultWriter.h>
#include <ZORSystem/ZORSysSettingsManager.h>

#include <QAction>
#include <QApplication>
#include <QDoubleSpinBox>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QTableWidget>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <memory>
#include <numbers>
#include <stdexcept>

namespace {

constexpr int kNumTeeth = 1000;
constexpr int kNumWheels = 300;
constexpr double kLongRun = 3600; // seconds

/// Writes a part file of a toothed wheel with three corners per tooth, as fine as outlines of scanned parts are.
void WriteWheel(const QString& path)
{
    QList<ZORMathPoint> corners;
    for (int i = 0; i < 3 * kNumTeeth; ++i) {
        const double angle = 2 * std::numbers::pi * i / (3 * kNumTeeth);
        const double radius = i % 3 == 0 ? 60 : 57;
        corners.append({radius * std::cos(angle), radius * std::sin(angle), 0});
    }
    QList<ZORNestResultSegment> outline;
    for (qsizetype i = 0; i < corners.size(); ++i) {
        outline.append(ZORNestResultSegment::CreateLine(corners[i], corners[(i + 1) % corners.size()]));
        outline.last().SetLayer(ZORNestResultSegment::Nest);
    }
    ZORNestResultItem item(QStringLiteral("wheel"));
    item.AddShape(ZORNestResultShape(outline));
    ZORNestResult result(ZORNestResult::Translation);
    result.AddItem(item);
    ZORNestResultWriter(path).Write(result);
}

void AppendRow(QTableWidget* table, const QVariantList& values)
{
    const int row = table->rowCount();
    table->insertRow(row);
    for (int column = 0; column < values.size(); ++column) {
        auto* const cell = new QTableWidgetItem;
        cell->setData(Qt::EditRole, values[column]);
        table->setItem(row, column, cell);
    }
}

/// An environment with a console, from whose menu the nesting dialog is opened.
class NestingFixture
{
public:
    NestingFixture()
        : m_settings(m_directory.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat)
    {
        WriteWheel(m_directory.filePath(QStringLiteral("wheel.msi")));
        ZORSysSettingsManager::GetManager()->SetSource(&m_settings);
        ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&m_features);
        m_console = new ZORTestMainDialog;
        m_console->show();
        m_console->findChild<QAction*>(QStringLiteral("actionNest"))->trigger();
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows) {
            if (auto* const dialog = qobject_cast<ZORTestNestNestingDlg*>(window))
                m_dialog = dialog;
        }
        if (!m_dialog)
            throw std::runtime_error("the console has not opened the nesting dialog");
    }
    ~NestingFixture()
    {
        delete m_console;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(nullptr);
        ZORSysSettingsManager::GetManager()->SetSource(nullptr);
    }
    Q_DISABLE_COPY_MOVE(NestingFixture)

    /// Starts a run whose single steps take long, and waits until it nests.
    void StartHeavyRun()
    {
        AppendRow(Find<QTableWidget>("_ItemTable"),
                  {"wheel", kNumWheels, false, 0.0, false, false, false, false, 0.0, 0.0, 0,
                   m_directory.filePath(QStringLiteral("wheel.msi"))});
        AppendRow(Find<QTableWidget>("_PackagingTable"),
                  {"roll", 1, 1000.0, "inf", true, 0.0, 0.0, 0.0, 0.0, 0.0});
        Find<QDoubleSpinBox>("_MaxRunTimeSpn")->setValue(2 * kLongRun);
        Find<QDoubleSpinBox>("_MinRunTimeSpn")->setValue(kLongRun);
        Find<QPushButton>("_ComputeBtn")->click();
        const auto* const processor = Find<ZORNestNestingProcessor>("");
        while (processor->GetResponses().constFirst()->GetStatus() < ZORNestNestingResponse::Running)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    void CloseDialog() { m_dialog->close(); }
    void CloseConsole() { m_console->close(); }
    /// Whether the dialog is gone, once what was to be deleted later is deleted.
    bool IsOver() const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return !m_dialog;
    }

private:
    template<class Object>
    Object* Find(const char* name) const
    {
        auto* const object = m_dialog->findChild<Object*>(QLatin1String(name));
        if (!object)
            throw std::runtime_error(std::string("the nesting dialog lacks ") + name);
        return object;
    }

    QTemporaryDir m_directory;
    QSettings m_settings;
    ZORFeatEnvironment m_features;
    QPointer<ZORTestMainDialog> m_console; // deletes itself when it is closed
    QPointer<ZORTestNestNestingDlg> m_dialog;
};

void CloseNesting(benchmark::State& state, void (NestingFixture::*close)())
{
    for (auto _ : state) {
        NestingFixture fixture;
        fixture.StartHeavyRun();
        const auto start = std::chrono::steady_clock::now();
        (fixture.*close)();
        const bool isOver = fixture.IsOver();
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        if (!isOver)
            state.SkipWithError("the dialog is still there");
        state.SetIterationTime(seconds.count());
    }
}
BENCHMARK_CAPTURE(CloseNesting, Dialog, &NestingFixture::CloseDialog)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(3);
BENCHMARK_CAPTURE(CloseNesting, Console, &NestingFixture::CloseConsole)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(3);

} // namespace

int RunProgram(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RunBenchmarks(argc, argv);
}
