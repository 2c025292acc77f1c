// A walk of constant geodesic curvature over a mesh.

#pragma once

#include "ZORGeoPathSegments_p.h"
#include "walk/ZORGeoWalkStart_p.h"

#include <optional>

/// Where an arc begins and how.
struct ZORGeoArcStart
{
    ZORGeoMeshPlace place;   // its triangle is the one that the arc enters
    ZORMathVector direction; // unit vector in the plane of the triangle
    ZORMathVector inward;    // unit vector in that plane across the direction: where the arc turns to
};

/// Returns the start of an arc that turns to the left of a walk.
/// \return nothing in a triangle without area
std::optional<ZORGeoArcStart> ZorGeoMakeArcStart(const ZORGeoMesh& mesh, const ZORGeoWalkStart& start);

/// A circle in the unfolded surface: every triangle holds an exact arc of it, which crosses edges without a
/// turn and leaves vertices of the mesh with equal angles on both sides. Its points are at most a tenth
/// of a degree apart.
class ZORGeoArcWalk
{
public:
    /// \param mesh       not owned, outlives this object
    /// \param curvature  1/mm, 0 for a straight walk
    ZORGeoArcWalk(const ZORGeoMesh& mesh, double curvature);

    /// Where the arc meets a path.
    struct Meeting
    {
        size_t segment = 0; // of the path
        double u = 0;       // place on it, 0 ... 1
        double length = 0;  // of the arc
        double angle = 0;   // from the arc to the path, radians, positive to the side that the arc turns to
    };
    struct Bounds
    {
        double minimum = 0; // meetings before this length do not count, millimeters
        double maximum = 0; // the walk ends at this length
    };
    /// Walks until the arc meets a path, has turned by 2 pi, has the maximum length or comes to the border.
    /// \param[out] arc  when not null: the places from the start to the meeting, both included
    /// \return the first meeting, between both crossings of one segment in the same triangle; nothing for none
    std::optional<Meeting> Meet(const ZORGeoArcStart& start, const Bounds& bounds,
                                const ZORGeoPathSegments& path, ZORGeoMeshPath* arc) const;

private:
    struct State
    {
        ZORGeoMeshPlace place;
        ZORMathVector direction;
        ZORMathVector inward;
        ZORMathVector normal; // unit vector of the triangle, zero without an area
        int side = -1;        // that the place lies on; -1 inside
    };
    struct Step
    {
        double w = 0;    // tan(turn / 2) / curvature, half the length of a straight step
        int side = -1;   // to leave by; -1 when the step ends inside
        double t = 0;    // place on it
        int corner = -1; // when it leaves in a corner
    };
    double SmallestExit(double height, double slope, double bend) const;
    Step FindStep(const State& state) const;
    std::optional<Meeting> FindMeeting(const State& state, const Step& step, const ZORGeoPathSegments& path,
                                       double minimum, double& w) const;
    State StateAt(const ZORGeoArcStart& start) const;
    double AngleToPath(State state, double w, const ZORGeoPathSegments& path, size_t segment) const;
    double LengthOf(double w) const;
    ZORMathPoint PointAt(const State& state, double w) const;
    void Turn(State& state, double w) const;
    void Append(const State& state, double end, ZORGeoMeshPath& arc) const;
    bool CrossSide(State& state, const Step& step, ZORGeoMeshPath* arc) const;
    bool PassCorner(State& state, int corner) const;

    const ZORGeoMesh& m_mesh;
    const double m_curvature;
};
