// How long a job takes that does nothing: from Execute() to the signal of its end; and how soon one ends that hangs.

#include "BenchmarkProgram.h"

#include <ZORWorker/ZORWorkHelpers.h>
#include <ZORWorker/ZORWorkJobKind.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstring>
#include <functional>
#include <memory>
#include <thread>

namespace {

void RunJob(benchmark::State& state, ZORWorkProcessor::Place place, qsizetype size,
            const std::function<void()>& prepare = {})
{
    const QByteArray input(size, 'x');
    for (auto _ : state) {
        if (prepare)
            prepare();
        ZORWorkProcessor processor;
        processor.SetPlace(place);
        ZORWorkJob job;
        job.name = QStringLiteral("job");
        job.kind = "echo";
        job.input = input;
        ZORWorkResponse* const response = processor.AddJob(job);
        QEventLoop loop;
        QObject::connect(response, &ZORWorkResponse::StatusChanged, &loop,
                         [&loop](ZORWorkResponse::Status status) {
                             if (status == ZORWorkResponse::Finished || status == ZORWorkResponse::Failed)
                                 loop.quit();
                         });
        processor.Execute();
        loop.exec();
        if (response->GetResult().GetData() != input)
            state.SkipWithError("job has failed");
    }
}

void JobInThread(benchmark::State& state)
{
    RunJob(state, ZORWorkProcessor::Threads, state.range(0));
}

void JobInWarmHelper(benchmark::State& state)
{
    RunJob(state, ZORWorkProcessor::HelperProcesses, state.range(0));
}

// Helpers serve the path that they were started with, so another spelling of it needs a new one.
void JobInNewHelper(benchmark::State& state)
{
    const QString folder = QCoreApplication::applicationDirPath();
    const QString name = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    bool isOdd = false;
    RunJob(state, ZORWorkProcessor::HelperProcesses, state.range(0), [&] {
        isOdd = !isOdd;
        ZORWorkHelpers::SetProgram(folder + (isOdd ? QStringLiteral("/./") : QStringLiteral("/")) + name);
    });
}

/// The destructor of a processor whose job answers nothing: it is killed.
void DestroyHangingJob(benchmark::State& state)
{
    for (auto _ : state) {
        auto processor = std::make_unique<ZORWorkProcessor>();
        processor->SetPlace(ZORWorkProcessor::HelperProcesses);
        ZORWorkJob job;
        job.name = QStringLiteral("job");
        job.kind = "hang";
        const ZORWorkResponse* const response = processor->AddJob(job);
        processor->Execute();
        while (response->GetStatus() < ZORWorkResponse::Running)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        const auto start = std::chrono::steady_clock::now();
        processor.reset();
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(seconds.count());
    }
}

} // namespace

BENCHMARK(DestroyHangingJob)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(JobInThread)->Arg(1 << 10)->Arg(1 << 24)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(JobInWarmHelper)->Arg(1 << 10)->Arg(1 << 24)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(JobInNewHelper)->Arg(1 << 10)->UseRealTime()->Unit(benchmark::kMillisecond);

/// This program is its own helper program, so that it needs no other kinds than its own.
int RunProgram(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    ZORWorkJobKind::Register(
        "echo", [](const ZORWorkContext&, const QByteArray& input) { return ZORWorkResult(input); });
    ZORWorkJobKind::Register("hang", [](const ZORWorkContext&, const QByteArray&) -> ZORWorkResult {
        for (;;)
            std::this_thread::sleep_for(std::chrono::hours(1));
    });
    if (argc > 1 && std::strcmp(argv[1], "--serve") == 0)
        return ZORWorkHelpers::Serve(argc, argv);
    ZORWorkHelpers::SetProgram(QCoreApplication::applicationFilePath());
    return RunBenchmarks(argc, argv);
}
