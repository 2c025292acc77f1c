// Joins two places of a mesh by a path over its triangles.

#pragma once

#include "mesh/ZORGeoMeshBorder_p.h"
#include "mesh/ZORGeoMeshPlace_p.h"

#include <vector>

/// A path over a mesh: the segment from place i to i + 1 lies in the triangle of place i.
using ZORGeoMeshPath = std::vector<ZORGeoMeshPlace>;

/// Returns the length of a path in millimeters.
double ZorGeoLengthOf(const ZORGeoMeshPath& path);

/// Joins places by segments each of which lies in one triangle.
///
/// Places that share a triangle are joined directly; others by the section of the mesh with a plane through
/// both of them and the mean normal, which must lead forward all the way; and two places of the same border by
/// a walk along it.
class ZORGeoMeshJoin
{
public:
    /// \param mesh  not owned, outlives this object
    explicit ZORGeoMeshJoin(const ZORGeoMesh& mesh);

    /// Continues a path.
    /// \param maximumLength  longest way to accept between the last place of the path and \a to
    /// \return false when no way was found; the path is unchanged then
    bool Append(ZORGeoMeshPath& path, const ZORGeoMeshPlace& to, double maximumLength);
    /// Continues a path where its last place and \a to share a triangle.
    /// \return false when they do not
    bool AppendWithinTriangle(ZORGeoMeshPath& path, const ZORGeoMeshPlace& to);

private:
    struct Plane
    {
        ZORMathVector normal; // of length 1
        bool isZeroPositive;  // on which side vertices in the plane are counted
    };
    struct Exit
    {
        int triangle;
        int side;
        double forward; // the larger, the straighter towards the end
        double parameter;
    };

    void SetEnds(const ZORGeoMeshPlace& from, const ZORGeoMeshPlace& to);
    bool AppendDirectly(ZORGeoMeshPath& path);
    bool AppendSection(ZORGeoMeshPath& path);
    bool AppendBorder(ZORGeoMeshPath& path);
    bool WalkSection(ZORGeoMeshPath& path, const Plane& plane);
    bool FollowSection(ZORGeoMeshPath& path, const Plane& plane, const Exit& exit);
    bool FollowBorder(ZORGeoMeshPath& path, ZORGeoDirectedSide at);
    void FindExits(const Plane& plane);
    /// Ends the path in a triangle that holds the end.
    bool Arrive(ZORGeoMeshPath& path, const ZORGeoMeshPlace& place);
    double HeightOver(const Plane& plane, int vertex) const;
    bool IsAbove(const Plane& plane, double height) const
    {
        return plane.isZeroPositive ? height >= 0 : height > 0;
    }

    const ZORGeoMesh& m_mesh;
    ZORGeoMeshPlace m_from;
    ZORGeoMeshPlace m_to;
    ZORMathVector m_chord;
    double m_maximumLength = 0;
    std::vector<int> m_fromTriangles;
    std::vector<int> m_toTriangles;
    std::vector<Exit> m_exits;
};
