// Gives the bends of a path over a mesh a minimum radius.

#pragma once

#include "ZORGeoPathTurns_p.h"
#include "ZORGeoProgressReporter_p.h"

#include <optional>

class ZORGeoPathWindow;

/// Replaces bends of a path that are sharper than a radius by tangent arcs, one after the other from its start.
///
/// The radius of a path at a place is the mean length of the straight ways before and behind divided by the turn,
/// in the unfolded triangles. A way counts with five degrees of the radius at most, or else long ones would hide
/// a corner; turns below 1e-6 are rounding. A part in 10,000 below the radius is allowed.
///
/// Every arc leaves the path smooth up to its end. Where the path has no room ahead of a bend, the arc begins at
/// the start of the path in another direction; where it has none behind, it ends at the end. Bends too close to
/// each other for arcs between them are cut short first, by the shortest way between their neighbours.
class ZORGeoPathSmoother
{
public:
    /// \param mesh    not owned, outlives this object
    /// \param radius    millimeters, above 0 and finite
    /// \param progress  of Run(); not owned, outlives this object
    ZORGeoPathSmoother(const ZORGeoMesh& mesh, double radius, zor::geo::ProgressReporter& progress);

    /// Both ends of the path stay where they are; the path never becomes longer. Bends that the surface has no
    /// room for stay as well: see FindSharpBend().
    /// \return whether the path was changed
    /// \throws zor::geo::Canceled; the path is then of no use
    bool Run(ZORGeoMeshPath& path) const;
    /// The smallest radius of a path; infinite for one without turns.
    double FindSmallestRadius(const ZORGeoMeshPath& path) const;
    /// The first place where a path is sharper than the radius.
    std::optional<ZORMathPoint> FindSharpBend(const ZORGeoMeshPath& path) const;

private:
    double CurvatureAt(const ZORGeoPathTurn& turn) const;
    bool IsTooSharp(const ZORGeoPathTurn& turn) const;
    bool Sweep(ZORGeoMeshPath& path) const;
    size_t CountSmooth(const ZORGeoPathWindow& window) const;
    bool Improve(ZORGeoPathWindow& window) const;
    bool RoundOff(const ZORGeoPathWindow& window, ZORGeoMeshPath& changed) const;
    bool CutShort(const ZORGeoPathWindow& window, ZORGeoMeshPath& changed) const;
    bool IsBetter(const ZORGeoMeshPath& path, size_t first, size_t last, double oldLength) const;

    const ZORGeoMesh& m_mesh;
    const double m_radius;
    zor::geo::ProgressReporter& m_progress;
};
