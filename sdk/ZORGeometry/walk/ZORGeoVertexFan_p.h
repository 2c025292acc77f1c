// The triangles around a vertex of a mesh, in order.

#pragma once

#include "ZORGeoMeshWalker_p.h"

#include <optional>
#include <vector>

/// The triangles around a vertex that can be reached over their edges, counter-clockwise as a walk sees them.
/// Vertices at the same place that an edge joins count as one. Closed around an inner vertex; else it begins
/// and ends at the border. Angles are those on the surface, from the first edge on.
class ZORGeoVertexFan
{
public:
    /// \param entry  the vertex at P; a closed fan begins at the side PQ
    ZORGeoVertexFan(const ZORGeoMesh& mesh, const ZORGeoMeshEntry& entry);

    struct Sector
    {
        ZORGeoMeshEntry entry; // the vertex at P, u = 0; Q right, R left
        ZORMathVector right;   // Q - P
        ZORMathVector left;    // R - P
        double begin = 0;      // angle of the side PQ
        double end = 0;        // angle of the side PR
    };
    const std::vector<Sector>& GetSectors() const { return m_sectors; }
    /// Angle of the side PQ of the entry that the fan was made from.
    double GetFirstAngle() const
    {
        return m_first < m_sectors.size() ? m_sectors[m_first].begin : GetTotalAngle();
    }
    bool IsClosed() const { return m_isClosed; }
    /// Sum of all angles; 0 when no triangle spans one.
    double GetTotalAngle() const { return m_sectors.empty() ? 0 : m_sectors.back().end; }

    struct Departure
    {
        ZORGeoMeshEntry entry;
        ZORGeoMeshHeading heading;
    };
    /// The way that leaves the vertex at an angle. Angles within 1e-12 of an edge are along it, in the
    /// lower-numbered of its triangles.
    /// \return nothing when the angle is outside an open fan
    std::optional<Departure> Leave(double angle) const;
    /// The way straight on for one that comes from a direction.
    /// \param angle  of the direction back to where it came from
    /// \return nothing when the border is in the way, or in a concave corner so narrow that both sides are
    std::optional<Departure> GoStraight(double angle) const;

private:
    void Add(const ZORGeoMeshEntry& entry);
    enum class Side { Left, Right };
    bool Turn(ZORGeoMeshEntry& entry, Side side) const;

    const ZORGeoMesh* m_mesh; // not owned
    std::vector<Sector> m_sectors;
    size_t m_first = 0;
    bool m_isClosed = false;
};

/// How a walk comes to a corner of the triangle it is in.
struct ZORGeoVertexArrival
{
    ZORGeoMeshEntry entry; // the corner at P, as a fan wants it
    double back = 0;       // angle from the side PQ to where the walk comes from
};
/// \param corner  0 ... 2
ZORGeoVertexArrival ZorGeoArriveAtCorner(const ZORGeoMeshWalker& walker, int corner);
