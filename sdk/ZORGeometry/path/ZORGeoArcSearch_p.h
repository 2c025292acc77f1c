// Finds the arc that rounds off a bend of a path over a mesh.

#pragma once

#include "ZORGeoArcWalk_p.h"
#include "ZORGeoPathTurns_p.h"
#include "ZORGeoProgressReporter_p.h"

#include <optional>
#include <vector>

/// Looks for arcs that begin on a path ahead of a bend, keep to the inner side of the path and end where they
/// touch it behind the bend. The later such an arc begins, the sooner it crosses the path: the place between
/// crossing and passing clear of it is found by bisection.
class ZORGeoArcSearch
{
public:
    /// \param mesh,path  not owned, outlive this object
    /// \param turns      of the path, not owned, outlives this object
    /// \param place      of the bend, with a turn
    /// \param radius     the smallest one to use, millimeters
    /// \param progress   checked with every arc; not owned, outlives this object
    ZORGeoArcSearch(const ZORGeoMesh& mesh, const ZORGeoMeshPath& path, const ZORGeoPathTurns& turns,
                    size_t place, double radius, zor::geo::ProgressReporter& progress);

    struct Arc
    {
        ZORGeoArcStart start;
        double curvature = 0;
        size_t segment = 0;    // of the path, where the arc begins
        bool isTangent = true; // else it begins at the start of the path in another direction
    };
    struct Trial
    {
        std::optional<Arc> arc;
        size_t segment = 0; // where the arc begins, also one that is not good for anything
        size_t bend = 0;    // place in a corner of which the arc had to end; 0 for none
    };
    /// The arc of the radius that begins latest; where the path turns just there, FindAtEnd() of the segment.
    /// \return the segment before the bend and no arc where every arc crosses the path
    Trial FindOnSegments() const;
    /// The arc that begins at the end of a segment, of the smallest radius possible there.
    /// \return no arc where it had to be below the radius
    Trial FindAtEnd(size_t segment) const;
    /// The arc of the radius that begins at the start of the path, turned inwards from it as little as possible.
    std::optional<Arc> FindAtStart() const;

    struct Replacement
    {
        ZORGeoMeshPath path;
        size_t first = 0; // place where the arc begins
        size_t last = 0;  // place where it ends
    };
    /// Returns the path with the arc in it.
    /// \return nothing when the arc does not return to the path
    std::optional<Replacement> Replace(const Arc& arc) const;

    /// Whether an arc can begin on a segment at all: it has a length and lies in a triangle with an area.
    bool IsUsable(size_t segment) const { return StartOn(segment, 0).has_value(); }

private:
    std::optional<ZORGeoArcStart> StartOn(size_t segment, double u) const;
    std::optional<ZORGeoArcStart> StartTurned(double angle) const;
    std::optional<ZORGeoArcWalk::Meeting> Meet(const Arc& arc) const;
    size_t FindBend(const ZORGeoArcWalk::Meeting& meeting, double curvature) const;
    template<class ArcAt>
    Trial Narrow(size_t segment, double clear, double crossing, double known, const ArcAt& arcAt) const;
    bool IsClear(size_t segment, double u) const;
    bool FindSegment(size_t& clear, size_t& crossing) const;

    const ZORGeoMesh& m_mesh;
    const ZORGeoMeshPath& m_path;
    const ZORGeoPathTurns& m_turns;
    const size_t m_place;
    const double m_radius;
    zor::geo::ProgressReporter& m_progress;
    const bool m_isLeft;
    const ZORGeoPathSegments m_ahead; // from the bend on
    std::vector<double> m_lengths;    // of the path up to each place
};

/// The place at \a u, 0 ... 1, of the segment from one place to the next, in the triangle of the segment.
/// \return nothing when the next place is not in it
std::optional<ZORGeoMeshPlace> ZorGeoPlaceOnSegment(const ZORGeoMesh& mesh, const ZORGeoMeshPath& path,
                                                    size_t segment, double u);
