#include "ZORCompSteps_p.h"
#include "ZORCompYarn_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <algorithm>
#include <array>
#include <cmath>

using Location = ZORGeoLocationOnSurface;
using Weights = std::array<double, 3>;

namespace {

Weights WeightsOf(const Location& location)
{
    return {1 - location.weightB - location.weightC, location.weightB, location.weightC};
}

ZORMathPoint CornerOf(const ZORGeoSurface& surface, int triangle, size_t corner)
{
    return surface.GetVertexArray()[surface.GetCornerArray()[triangle - 1][corner]];
}

// The weights of the place of a triangle without area that is nearest to a point, on its longest side.
Weights WeightsOnLongestSide(const std::array<ZORMathPoint, 3>& corners, const ZORMathPoint& point)
{
    size_t begin = 0;
    for (size_t side = 1; side < 3; ++side) {
        if (corners[side].DistanceTo(corners[(side + 1) % 3])
            > corners[begin].DistanceTo(corners[(begin + 1) % 3]))
            begin = side;
    }
    const ZORMathVector along = corners[(begin + 1) % 3] - corners[begin];
    const double square = Dot(along, along);
    const double part = square > 0 ? std::clamp(Dot(point - corners[begin], along) / square, 0.0, 1.0) : 0.0;
    Weights weights{};
    weights[begin] = 1 - part;
    weights[(begin + 1) % 3] = part;
    return weights;
}

// The weights in a triangle of a point that is on it to rounding.
Weights WeightsAt(const ZORGeoSurface& surface, int triangle, const ZORMathPoint& point)
{
    const std::array<ZORMathPoint, 3> corners{CornerOf(surface, triangle, 0), CornerOf(surface, triangle, 1),
                                              CornerOf(surface, triangle, 2)};
    const ZORMathVector normal = Cross(corners[1] - corners[0], corners[2] - corners[0]);
    const double square = Dot(normal, normal);
    const double longest = std::max({corners[0].DistanceTo(corners[1]), corners[1].DistanceTo(corners[2]),
                                     corners[2].DistanceTo(corners[0])});
    if (!(std::sqrt(square) > 1e-9 * longest * longest))
        return WeightsOnLongestSide(corners, point);
    const ZORMathVector offset = point - corners[0];
    const double b = std::clamp(Dot(Cross(offset, corners[2] - corners[0]), normal) / square, 0.0, 1.0);
    const double c = std::clamp(Dot(Cross(corners[1] - corners[0], offset), normal) / square, 0.0, 1.0 - b);
    return {1 - b - c, b, c};
}

// The weights of a location in another triangle that it is on as well: those of the corners they share, exactly,
// unless the location is at corners that merely are in the same place.
Weights WeightsIn(int triangle, const Location& location)
{
    const Weights weights = WeightsOf(location);
    if (location.triangle == triangle)
        return weights;
    const QList<ZORGeoSurface::Corners>& corners = location.surface->GetCornerArray();
    Weights mapped{};
    for (size_t to = 0; to < 3; ++to) {
        for (size_t from = 0; from < 3; ++from) {
            if (corners[triangle - 1][to] == corners[location.triangle - 1][from])
                mapped[to] = weights[from];
        }
    }
    const bool isAll = mapped[0] + mapped[1] + mapped[2] > 1 - 1e-9;
    return isAll ? mapped : WeightsAt(*location.surface, triangle, location.point);
}

} // namespace

ZORCompYarn::ZORCompYarn(ZORCompStrategyParameters::Generators kind, const Location& start,
                         const ZORMathVector& direction, double angle, Course course, double step)
    : m_kind(kind)
    , m_direction(direction)
    , m_angle(angle)
    , m_isBackward(course == Course::Backward)
    , m_step(step)
    , m_start(start)
    , m_length(4 * step)
    , m_last(start)
{
    Compute(m_length);
}

bool ZORCompYarn::Next(Location& location)
{
    do {
        if (FindLeave(location)) {
            m_last = location;
            return true;
        }
    } while (Lengthen());
    return false;
}

// The start location is the first of them, and the locations of a longer curve begin with those of a shorter one,
// up to the last, where the shorter one ended.
void ZORCompYarn::Compute(double length)
{
    using Result = ZORGeoCurveOnSurfaceResult;
    const ZORGeoCurveOnSurfaceProcessor processor(m_start.surface, m_isBackward ? length : 0,
                                                  m_isBackward ? 0 : length);
    const Result result = m_kind == ZORCompStrategyParameters::ConstantAngle
                              ? processor.ComputeConstantAngle(m_start, m_direction, m_angle)
                              : processor.ComputeGeodesic(m_start, m_direction, m_angle);
    m_locations = result.GetLocations();
    if (m_isBackward)
        std::reverse(m_locations.begin(), m_locations.end());
    const Result::StopReason reason = m_isBackward ? result.GetStartReason() : result.GetEndReason();
    m_isOpenEnded = reason == Result::Length && length < 1e300;
    m_length = length;
}

// Looks for the place between the last one returned and the end of what is computed.
bool ZORCompYarn::FindLeave(Location& location)
{
    for (; m_segment + 1 < m_locations.size(); ++m_segment) {
        const Location& end = m_locations[m_segment + 1];
        if ((end.point - m_last.point).GetLength() < m_step * (1 - zor::comp::kStepSlack))
            continue;
        // A segment lies in the triangle of its earlier location on the curve, which for a curve that runs
        // backward is the one that comes next here.
        const Location& begin = m_locations[m_segment];
        const int triangle = m_isBackward ? end.triangle : begin.triangle;
        const ZORMathVector along = end.point - begin.point;
        const ZORMathVector from = begin.point - m_last.point;
        const double square = Dot(along, along);
        const double half = Dot(along, from);
        const double root =
            std::sqrt(std::max(0.0, half * half - square * (Dot(from, from) - m_step * m_step)));
        const double part = std::clamp((root - half) / square, 0.0, 1.0);
        const Weights a = WeightsIn(triangle, begin);
        const Weights b = WeightsIn(triangle, end);
        location = begin;
        location.triangle = triangle;
        location.weightB = std::clamp(a[1] + part * (b[1] - a[1]), 0.0, 1.0);
        location.weightC = std::clamp(a[2] + part * (b[2] - a[2]), 0.0, 1.0);
        location.point = begin.point + part * along;
        return true;
    }
    return false;
}

bool ZORCompYarn::Lengthen()
{
    if (!m_isOpenEnded)
        return false;
    const qsizetype known = m_locations.size();
    Compute(2 * m_length);
    m_segment = std::max(qsizetype(0), std::min(m_segment, known - 2));
    return m_locations.size() > 1;
}
