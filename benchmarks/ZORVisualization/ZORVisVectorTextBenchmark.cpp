#include <ZORVisualization/ZORVisVectorText.h>

#include <benchmark/benchmark.h>

namespace {

ZORVisVectorText CreateText(const char* font, const QString& string)
{
    ZORVisVectorText text;
    text.SetFont(ZORVisVectorFont(QLatin1String(font)));
    text.SetText(string);
    return text;
}

void Lay(benchmark::State& state, const ZORVisVectorText& text)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(text.GetPolylines());
    state.SetItemsProcessed(state.iterations() * text.GetText().size());
}

void LayLabel(benchmark::State& state, const char* font)
{
    Lay(state, CreateText(font, QStringLiteral("Ply 12, 45 degrees")));
}

void LayManyLines(benchmark::State& state, const char* font)
{
    Lay(state, CreateText(font, QStringLiteral("ten chars\n").repeated(100000)));
}

void LayOneLine(benchmark::State& state, const char* font)
{
    Lay(state, CreateText(font, QStringLiteral("ten chars ").repeated(100000)));
}

BENCHMARK_CAPTURE(LayLabel, futural, "futural")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(LayLabel, rowmant, "rowmant")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(LayManyLines, futural, "futural")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LayManyLines, rowmant, "rowmant")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LayOneLine, futural, "futural")->Unit(benchmark::kMillisecond);

} // namespace
