// The turns of a path over a mesh in the unfolded triangles.

#pragma once

#include "walk/ZORGeoMeshJoin_p.h"
#include "walk/ZORGeoMeshWalker_p.h"

#include <cmath>
#include <vector>

/// How a path over a mesh goes on at one of its places.
struct ZORGeoPathTurn
{
    double angle = 0; // radians, positive to the left, which keeps its side of the surface along the path
    double before =
        0; // length of the straight way that ends here: from the last turn or the start, millimetres
    double behind = 0; // of the one that begins here

    /// Turns below this are rounding, radians.
    static constexpr double kSmallest = 1e-6;
    bool IsStraight() const { return std::abs(angle) <= kSmallest; }
};

/// Directions, sides and turns of a path, one segment after the other. Segments shorter than 1e-11 of the
/// coordinates are passed over: the turn belongs to the last place before the next one with a length.
///
/// In a vertex of the mesh the turn is the difference of the angle on the right from half of all angles there;
/// at a border, from pi. Left is the side of the normal of the path's first triangle and changes over to the
/// neighbour with it, whatever the winding of the triangles.
class ZORGeoPathTurns
{
public:
    ZORGeoPathTurns(const ZORGeoMesh& mesh, const ZORGeoMeshPath& path);

    /// One for each place; the first and last one have no turn.
    const std::vector<ZORGeoPathTurn>& GetTurns() const { return m_turns; }
    /// Whether left of a segment is left as its triangle itself sees it.
    bool IsOwnSide(size_t segment) const { return m_isOwnSide[segment] != 0; }

private:
    bool TurnRoundVertex(const ZORGeoMeshPath& path, size_t from, size_t to);
    void TurnOverSides(const ZORGeoMeshPath& path, size_t from, size_t to);
    void JoinStraightWays();

    const ZORGeoMesh& m_mesh;
    std::vector<ZORGeoPathTurn> m_turns;
    std::vector<char> m_isOwnSide; // of each segment
};

/// Number of the corner that a place lies in, -1 when it is none.
int ZorGeoCornerOfPlace(const ZORGeoMeshPlace& place);
/// The vertex as the entry of a fan with the given side on the left.
ZORGeoMeshEntry ZorGeoFanEntry(int triangle, int corner, bool isOwnSide);
/// Whether a triangle, entered with its third corner on the left, sees left as the walk does.
inline bool ZorGeoIsOwnSide(const ZORGeoMeshEntry& entry)
{
    return entry.q == (entry.p + 1) % 3;
}
