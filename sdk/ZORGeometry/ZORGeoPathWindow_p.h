// A path that is gone over piece by piece.

#pragma once

#include "ZORGeoMeshJoin_p.h"

/// Goes over a path from its start to its end and changes what lies around the place reached. What that costs
/// depends on the window that is open, not on the length of the path.
class ZORGeoPathWindow
{
public:
    /// Begins at the second place. \param path  of two places at least
    explicit ZORGeoPathWindow(const ZORGeoMeshPath& path);

    bool IsAtEnd() const { return m_rest.empty(); }
    /// Opens the window on all places up to a distance along the path, and one beyond, or to the ends.
    void Open(double distance);

    /// What lies in the window.
    const ZORGeoMeshPath& GetPath() const { return m_window; }
    /// Number of the place reached within the window.
    size_t GetPlace() const { return m_place; }
    bool IsFromStart() const { return m_place == m_done.size(); }
    bool IsToEnd() const { return m_window.size() - m_place == m_rest.size(); }

    /// Goes on by a number of places. The window is closed.
    void Advance(size_t count);
    /// Puts a path in place of the window, with the same first and last point. Goes back from the first change
    /// by a distance; the window is closed.
    void Replace(const ZORGeoMeshPath& changed, double distance);

    ZORGeoMeshPath GetWholePath() const;

private:
    ZORGeoMeshPath m_done; // places before the one reached
    ZORGeoMeshPath m_rest; // those from it on, the last one first
    ZORGeoMeshPath m_window;
    size_t m_place = 0;
};
