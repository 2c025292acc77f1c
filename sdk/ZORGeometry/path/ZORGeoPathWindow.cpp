#include "ZORGeoPathWindow_p.h"

#include <algorithm>

namespace {

bool IsSame(const ZORGeoMeshPlace& a, const ZORGeoMeshPlace& b)
{
    return a.triangle == b.triangle && a.weights == b.weights && a.point == b.point;
}

// The number of places from the last one back to a distance from it, and one beyond.
size_t CountBack(const ZORGeoMeshPath& places, double distance)
{
    size_t first = places.size() - 1;
    for (double length = 0; first > 0 && length < distance; --first)
        length += places[first - 1].point.DistanceTo(places[first].point);
    return places.size() - first;
}

} // namespace

ZORGeoPathWindow::ZORGeoPathWindow(const ZORGeoMesh& mesh, const ZORGeoMeshPath& path)
    : m_mesh(mesh)
    , m_done(1, path.front())
    , m_rest(path.rbegin(), path.rend() - 1)
{
}

void ZORGeoPathWindow::Open(double distance)
{
    // The segment to the place reached comes on top: one place more.
    m_place = CountBack(m_done, distance);
    m_window.assign(m_done.end() - qsizetype(m_place), m_done.end());
    m_window.insert(m_window.end(), m_rest.rbegin(),
                    m_rest.rbegin() + qsizetype(CountBack(m_rest, distance)));
    m_turns.emplace(m_mesh, m_window);
}

void ZORGeoPathWindow::Advance(size_t count)
{
    m_done.insert(m_done.end(), m_rest.rbegin(), m_rest.rbegin() + qsizetype(count));
    m_rest.resize(m_rest.size() - count);
}

void ZORGeoPathWindow::Replace(const ZORGeoMeshPath& changed, double distance)
{
    const size_t common = std::min(m_window.size(), changed.size());
    size_t keep = 0;
    while (keep < common && IsSame(m_window[keep], changed[keep]))
        ++keep;
    for (double length = 0; keep > 0 && length < distance; --keep) {
        if (keep < changed.size())
            length += changed[keep - 1].point.DistanceTo(changed[keep].point);
    }
    keep = std::max<size_t>(keep, 1);
    m_rest.resize(m_rest.size() - (m_window.size() - m_place));
    m_rest.insert(m_rest.end(), changed.rbegin(), changed.rend() - qsizetype(keep));
    m_done.resize(m_done.size() - m_place);
    m_done.insert(m_done.end(), changed.begin(), changed.begin() + qsizetype(keep));
}

ZORGeoMeshPath ZORGeoPathWindow::GetWholePath() const
{
    ZORGeoMeshPath path = m_done;
    path.insert(path.end(), m_rest.rbegin(), m_rest.rend());
    return path;
}
