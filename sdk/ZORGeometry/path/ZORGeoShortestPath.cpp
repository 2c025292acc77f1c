#include "ZORGeoShortestPath_p.h"
#include "ZORGeoStripSearch_p.h"

#include <tuple>

namespace {

// Far more than any mesh needs; bounds the time where rounding would let gains go on for ever.
constexpr int kMaximumRounds = 10000;

// Of the length: gains below are rounding.
constexpr double kLeastGain = 1e-13;

std::tuple<double, double, double> CoordinatesOf(const ZORGeoMeshPlace& place)
{
    return {place.point.GetX(), place.point.GetY(), place.point.GetZ()};
}

} // namespace

ZORGeoMeshPath ZORGeoShortestPath::Find(const ZORGeoMeshPlace& start, const ZORGeoMeshPlace& end) const
{
    if (start.point == end.point)
        return {start};
    ZORGeoMeshPath path = {start};
    if (ZORGeoMeshJoin(m_mesh).AppendWithinTriangle(path, end))
        return path;
    // Of both directions the same one is searched.
    const bool isReversed = CoordinatesOf(end) < CoordinatesOf(start);
    const ZORGeoMeshPlace& from = isReversed ? end : start;
    const ZORGeoMeshPlace& to = isReversed ? start : end;
    const std::vector<quint32> sides = ZORGeoStripSearch(m_mesh, from, to, m_progress).Run();
    if (sides.empty())
        return {};
    ZORGeoTriangleStrip strip(m_mesh, from, to, sides);
    Shorten(strip);
    return strip.GetPath(isReversed);
}

// All turns at once, which rarely gets in its own way; when it does, one by one.
void ZORGeoShortestPath::Shorten(ZORGeoTriangleStrip& strip) const
{
    for (int round = 0; round < kMaximumRounds; ++round) {
        if (m_progress)
            m_progress->Check();
        const auto turns = strip.GetTurns();
        ZORGeoTriangleStrip shorter = strip;
        bool isFlipped = false;
        for (size_t i = turns.size(); i-- > 0;)
            isFlipped = shorter.Flip(turns[i]) || isFlipped;
        if (!isFlipped)
            return;
        shorter.Tauten();
        for (size_t i = turns.size();
             i-- > 0 && !(shorter.GetLength() < strip.GetLength() * (1 - kLeastGain));) {
            shorter = strip;
            if (shorter.Flip(turns[i]))
                shorter.Tauten();
        }
        if (!(shorter.GetLength() < strip.GetLength() * (1 - kLeastGain)))
            return;
        strip = shorter;
    }
}
