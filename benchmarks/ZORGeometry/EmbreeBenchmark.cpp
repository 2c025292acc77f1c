// The searches of a surface, done with Embree for comparison. Built where Embree 3 is installed.

#include "BenchmarkMeshes.h"

#include <ZORMathematics/ZORMathVector.h>

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <embree3/rtcore.h>
#include <limits>

namespace {

// The sheet as a scene of Embree, one thread as a caller of ours has.
class Scene
{
public:
    Scene()
        : m_sheet(MakeSheet(TriangleOrder::Rows))
        , m_device(rtcNewDevice(nullptr))
    {
    }
    ~Scene()
    {
        rtcReleaseScene(m_scene);
        rtcReleaseDevice(m_device);
    }

    void Build()
    {
        rtcReleaseScene(m_scene);
        m_scene = rtcNewScene(m_device);
        rtcSetSceneBuildQuality(m_scene, RTC_BUILD_QUALITY_HIGH);
        RTCGeometry geometry = rtcNewGeometry(m_device, RTC_GEOMETRY_TYPE_TRIANGLE);
        FillBuffers(geometry);
        rtcSetGeometryBuildQuality(geometry, RTC_BUILD_QUALITY_HIGH);
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(m_scene, geometry);
        rtcReleaseGeometry(geometry);
        rtcCommitScene(m_scene);
    }

    // Squared distance, exact in double: the scene only proposes triangles.
    double Project(const ZORMathPoint& point) const
    {
        Query query = {m_sheet.get(), point, std::numeric_limits<double>::infinity()};
        RTCPointQueryContext context;
        rtcInitPointQueryContext(&context);
        RTCPointQuery place = {};
        place.x = float(point.GetX());
        place.y = float(point.GetY());
        place.z = float(point.GetZ());
        place.radius = std::numeric_limits<float>::infinity();
        rtcPointQuery(m_scene, &place, &context, TestTriangle, &query);
        return query.squaredDistance;
    }

private:
    struct Query
    {
        const ZORGeoSurface* sheet;
        ZORMathPoint point;
        double squaredDistance;
    };

    void FillBuffers(RTCGeometry geometry) const
    {
        const auto& vertices = m_sheet->GetVertexArray();
        auto* coordinates = static_cast<float*>(rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0,
                                                                        RTC_FORMAT_FLOAT3, 3 * sizeof(float),
                                                                        size_t(vertices.size())));
        for (const ZORMathPoint& vertex : vertices) {
            *coordinates++ = float(vertex.GetX());
            *coordinates++ = float(vertex.GetY());
            *coordinates++ = float(vertex.GetZ());
        }
        const auto& triangles = m_sheet->GetCornerArray();
        auto* corners = static_cast<unsigned*>(rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0,
                                                                       RTC_FORMAT_UINT3, 3 * sizeof(unsigned),
                                                                       size_t(triangles.size())));
        for (const auto& triangle : triangles) {
            for (const int corner : triangle)
                *corners++ = unsigned(corner);
        }
    }

    static double SquaredDistance(const ZORMathPoint& p, const ZORMathPoint& a, const ZORMathPoint& b,
                                  const ZORMathPoint& c)
    {
        const auto squared = [&p](const ZORMathPoint& place) { return Dot(p - place, p - place); };
        const ZORMathVector ab = b - a;
        const ZORMathVector ac = c - a;
        const double d1 = Dot(ab, p - a);
        const double d2 = Dot(ac, p - a);
        if (d1 <= 0 && d2 <= 0)
            return squared(a);
        const double d3 = Dot(ab, p - b);
        const double d4 = Dot(ac, p - b);
        if (d3 >= 0 && d4 <= d3)
            return squared(b);
        const double areaC = d1 * d4 - d3 * d2;
        if (areaC <= 0 && d1 >= 0 && d3 <= 0)
            return squared(a + d1 / (d1 - d3) * ab);
        const double d5 = Dot(ab, p - c);
        const double d6 = Dot(ac, p - c);
        if (d6 >= 0 && d5 <= d6)
            return squared(c);
        const double areaB = d5 * d2 - d1 * d6;
        if (areaB <= 0 && d2 >= 0 && d6 <= 0)
            return squared(a + d2 / (d2 - d6) * ac);
        const double areaA = d3 * d6 - d5 * d4;
        if (areaA <= 0 && d4 >= d3 && d5 >= d6)
            return squared(b + (d4 - d3) / ((d4 - d3) + (d5 - d6)) * (c - b));
        const double area = areaA + areaB + areaC;
        return squared(a + areaB / area * ab + areaC / area * ac);
    }

    static bool TestTriangle(RTCPointQueryFunctionArguments* arguments)
    {
        auto& query = *static_cast<Query*>(arguments->userPtr);
        const auto [a, b, c] = query.sheet->GetCornerArray()[arguments->primID];
        const auto& vertices = query.sheet->GetVertexArray();
        const double squared = SquaredDistance(query.point, vertices[a], vertices[b], vertices[c]);
        if (squared >= query.squaredDistance)
            return false;
        query.squaredDistance = squared;
        arguments->query->radius = std::nextafter(float(std::sqrt(squared)), INFINITY);
        return true;
    }

    std::unique_ptr<ZORGeoSurface> m_sheet;
    RTCDevice m_device; // owned
    RTCScene m_scene = rtcNewScene(m_device);
};

void EmbreeTreeBuild(benchmark::State& state)
{
    Scene scene;
    for (auto _ : state)
        scene.Build();
}

void EmbreeProject(benchmark::State& state, double lower, double upper)
{
    Scene scene;
    scene.Build();
    const std::vector<ZORMathPoint> points = MakePointsOverSheet(lower, upper);
    for (auto _ : state) {
        for (const ZORMathPoint& point : points)
            benchmark::DoNotOptimize(scene.Project(point));
    }
}

BENCHMARK(EmbreeTreeBuild)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(EmbreeProject, Near, -1, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EmbreeProject, Far, 500, 2000)->Unit(benchmark::kMillisecond);

} // namespace
