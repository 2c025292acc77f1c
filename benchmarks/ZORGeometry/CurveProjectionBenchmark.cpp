// Projection of curves onto a surface of a million triangles.

#include "BenchmarkMeshes.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoProjectCrvSurOper.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <benchmark/benchmark.h>
#include <cmath>
#include <numbers>

namespace {

// A circle of 360 points over the sheet, 2.5 m long.
void ProjectCurve(benchmark::State& state, double height, int count)
{
    ZORGeoContainer container;
    const auto made = MakeSheet(TriangleOrder::Rows);
    auto* const sheet = new ZORGeoSurface(&container, made->GetVertexArray(), made->GetCornerArray());
    sheet->Initialize();
    ZORMathSetOfPoints circle;
    for (int i = 0; i <= count; ++i) {
        const double angle = 2 * std::numbers::pi * (i % count) / count;
        const double x = 500 + 400 * std::cos(angle);
        const double y = 500 + 400 * std::sin(angle);
        circle.append(ZORMathPoint(x, y, GetSheetHeight(x, y) + height));
    }
    const ZORGeoPolyline source(&container, circle, true);
    sheet->Project(circle.first());
    int points = 0;
    for (auto _ : state) {
        ZORGeoProjectCrvSurOper oper(sheet, &source);
        oper.Run();
        points = oper.GetCurve()->GetNumPoints();
        delete oper.GetCurve();
    }
    state.counters["points"] = points;
}

BENCHMARK_CAPTURE(ProjectCurve, Near, 1, 360)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ProjectCurve, Far, 500, 360)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ProjectCurve, MillionPoints, 1, 1000000)->Unit(benchmark::kMillisecond);

} // namespace
