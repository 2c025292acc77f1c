// How fast drawings become parts.

#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORNesting/ZORNestTranslationInput.h>
#include <ZORNesting/ZORNestTranslationProcessor.h>
#include <ZORNesting/ZORNestTranslationResponse.h>
#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkProcessor.h>
#include <ZORWorker/ZORWorkResource.h>
#include <ZORWorker/ZORWorkResult.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <future>

namespace {

QByteArray Pair(int code, const QByteArray& value)
{
    return QByteArray::number(code) + '\n' + value + '\n';
}

QByteArray Point(double x, double y)
{
    return Pair(10, QByteArray::number(x, 'f', 6)) + Pair(20, QByteArray::number(y, 'f', 6));
}

/// Closed polylines of 40 vertices.
QByteArray MakePolylines(int count)
{
    QByteArray text = Pair(0, "SECTION") + Pair(2, "ENTITIES");
    for (int i = 0; i < count; ++i) {
        const int row = i / 100;
        const double x = 100.0 * (i % 100), y = 100.0 * row;
        text += Pair(0, "LWPOLYLINE") + Pair(8, "cut") + Pair(90, "40") + Pair(70, "1");
        for (int k = 0; k < 20; ++k)
            text += Point(x + 4 * k, y + k % 2);
        for (int k = 19; k >= 0; --k)
            text += Point(x + 4 * k, y + 50 + k % 2);
    }
    return text + Pair(0, "ENDSEC") + Pair(0, "EOF");
}

/// Squares of four lines each, to be joined.
QByteArray MakeLines(int count)
{
    const auto number = [](double value) { return QByteArray::number(value, 'f', 6); };
    QByteArray text = Pair(0, "SECTION") + Pair(2, "ENTITIES");
    const double corners[5][2] = {{0, 0}, {50, 0}, {50, 50}, {0, 50}, {0, 0}};
    for (int side = 0; side < 4; ++side) {
        for (int i = 0; i < count; ++i) {
            const int row = i / 100;
            const double x = 100.0 * (i % 100), y = 100.0 * row;
            text += Pair(0, "LINE") + Pair(8, "cut") + Point(x + corners[side][0], y + corners[side][1])
                    + Pair(11, number(x + corners[side + 1][0])) + Pair(21, number(y + corners[side + 1][1]));
        }
    }
    return text + Pair(0, "ENDSEC") + Pair(0, "EOF");
}

/// Closed paths of 40 vertices.
QByteArray MakePaths(int count)
{
    QByteArray text = "<svg xmlns=\"http://www.w3.org/2000/svg\">";
    for (int i = 0; i < count; ++i) {
        text += "<path d=\"M";
        for (int k = 0; k < 40; ++k) {
            const double x = 100.0 * (i % 100) + 4 * (k < 20 ? k : 39 - k);
            const int row = i / 100;
            const double y = 100.0 * row + (k < 20 ? 0 : 50) + k % 2;
            text += ' ' + QByteArray::number(x, 'f', 6) + ' ' + QByteArray::number(y, 'f', 6);
        }
        text += " Z\"/>";
    }
    return text + "</svg>";
}

void Translate(benchmark::State& state, const QByteArray& content, const QByteArray& format)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("drawing.") + QString::fromLatin1(format));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        state.SkipWithError("cannot write the drawing");
    file.close();
    const ZORNestSourceProvider* const provider = ZORNestSourceProvider::GetProvider(format);
    for (auto _ : state) {
        std::promise<qsizetype> parts;
        ZORWorkProcessor processor;
        ZORWorkJob job;
        job.run = [&](const ZORWorkContext& context) {
            QStringList report;
            parts.set_value(provider->Translate(path, ZORNestTranslationInput(), context, &report).size());
            return ZORWorkResult();
        };
        processor.AddJob(job);
        processor.Execute();
        state.counters["parts"] = double(parts.get_future().get());
    }
    state.SetBytesProcessed(state.iterations() * content.size());
}

void DxfPolylines(benchmark::State& state)
{
    Translate(state, MakePolylines(int(state.range(0))), "dxf");
}

void DxfLines(benchmark::State& state)
{
    Translate(state, MakeLines(int(state.range(0))), "dxf");
}

void SvgPaths(benchmark::State& state)
{
    Translate(state, MakePaths(int(state.range(0))), "svg");
}

/// A job whose parts all have one name, so that their files are numbered; from its start to its end.
void EqualNames(benchmark::State& state)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("contours.xml"));
    const QByteArray contour =
        "<Ply NAME='p'><OuterContour><Pt>0 0</Pt><Pt>1 0</Pt><Pt>1 1</Pt></OuterContour></Ply>";
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("<r>" + contour.repeated(state.range(0)) + "</r>") < 0)
        state.SkipWithError("cannot write the contours");
    file.close();
    ZORNestTranslationInput input;
    input.SetPreTranslateProvider("contour-xml");
    for (auto _ : state) {
        ZORNestTranslationProcessor processor;
        processor.SetPlace(ZORWorkProcessor::Threads);
        const ZORNestTranslationResponse* const response = processor.AddInput(input, ZORWorkResource(path));
        processor.Execute();
        const ZORWorkResponse* const job = response->GetWorkResponse();
        while (job->GetStatus() != ZORWorkResponse::Finished && job->GetStatus() != ZORWorkResponse::Failed)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (job->GetResult().GetResources().size() != state.range(0))
            state.SkipWithError("parts are missing");
    }
}

BENCHMARK(EqualNames)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SvgPaths)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(DxfPolylines)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(DxfLines)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

} // namespace
