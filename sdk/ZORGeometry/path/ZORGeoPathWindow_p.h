// A path that is gone over piece by piece.

#pragma once

#include "ZORGeoPathTurns_p.h"

#include <optional>
#include <vector>

/// Goes over a path from its start to its end and changes what lies around the place reached. What that costs
/// depends on the window that is open, not on the length of the path.
class ZORGeoPathWindow
{
public:
    /// Begins at the second place.
    /// \param mesh  not owned, outlives this object
    /// \param path  of two places at least
    ZORGeoPathWindow(const ZORGeoMesh& mesh, const ZORGeoMeshPath& path);

    bool IsAtEnd() const { return m_rest.empty(); }
    /// The part of the path that has been gone over, 0 to 1.
    double GetPart() const { return double(m_done.size()) / double(m_done.size() + m_rest.size()); }
    /// Opens the window on all places up to a distance along the path, and one beyond, or to the ends.
    void Open(double distance);

    /// What lies in the window.
    const ZORGeoMeshPath& GetPath() const { return m_window; }
    /// The turns of the path in the window.
    const std::vector<ZORGeoPathTurn>& GetTurns() const { return m_turns->GetTurns(); }
    const ZORGeoPathTurns& GetPathTurns() const { return *m_turns; }
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
    const ZORGeoMesh& m_mesh;
    ZORGeoMeshPath m_done; // places before the one reached
    ZORGeoMeshPath m_rest; // those from it on, the last one first
    ZORGeoMeshPath m_window;
    std::optional<ZORGeoPathTurns> m_turns; // of m_window
    size_t m_place = 0;
};
