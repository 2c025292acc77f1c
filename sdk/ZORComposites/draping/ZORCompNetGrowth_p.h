// Growth of a net of yarns over a surface.

#pragma once

#include "ZORCompNetOverlap_p.h"
#include "ZORCompSectionWalk_p.h"
#include "ZORCompYarn_p.h"

#include <ZORComposites/ZORCompDrapingNet.h>
#include <ZORComposites/ZORCompStrategyParameters.h>

#include <queue>

#include <array>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Places node after node; one use.
///
/// Order. Candidates for nodes wait by their distance from the seed in steps. The two straight yarns through the
/// seed give one candidate on each of their four sides at a time; three corners of a cell give the fourth. Only
/// when there are none left, the yarn end nearest to the seed is prolonged straight on by one step, which leads
/// around holes and into the parts of the surface that the yarns through the seed do not reach. So the same
/// input gives the same net, whichever way is taken around a hole.
/// Ends. A place once refused because the net folds there or meets itself is not tried again, nor are
/// prolongations to its neighbours.
class ZORCompNetGrowth
{
public:
    ZORCompNetGrowth(const ZORGeoSurface& surface, const ZORCompStrategyParameters& parameters);

    /// \throws ZORSysException "the net would have more than %1 nodes, take a larger step"
    ZORCompDrapingNet Run(const ZORGeoLocationOnSurface& seed, const ZORMathVector& direction);

private:
    struct Node
    {
        int warp;
        int weft;
        ZORGeoLocationOnSurface location;
        ZORMathVector normal; // see ZORCompNetOverlap::Place
    };
    enum Kind { Straight, Crossing, Prolonged };
    struct Candidate
    {
        int ring; // steps from the seed
        Kind kind;
        qint64 number; // of candidates
        int warp;
        int weft;
        int warpFrom; // Crossing: the opposite corner is at (warp + warpFrom, weft + weftFrom), each 1 or -1
        int weftFrom; // else the previous node of the yarn is, one of them 0

        friend bool operator>(const Candidate& a, const Candidate& b)
        {
            return a.ring != b.ring   ? a.ring > b.ring
                   : a.kind != b.kind ? a.kind > b.kind
                                      : a.number > b.number;
        }
    };
    using Queue = std::priority_queue<Candidate, std::vector<Candidate>, std::greater<>>;
    static constexpr int kTileBits = 3;               // 8 x 8 places of the grid
    using Tile = std::array<int, 1 << 2 * kTileBits>; // index of a node + 1, 0 for none
    static size_t TileIndex(int warp, int weft)
    {
        constexpr int kLast = (1 << kTileBits) - 1;
        return size_t((warp & kLast) << kTileBits | (weft & kLast));
    }

    int& SlotOf(int warp, int weft);
    int Find(int warp, int weft) const;
    bool IsBlocked(int warp, int weft) const;
    void Block(const Candidate& candidate);
    void Push(Kind kind, int warp, int weft, int warpFrom, int weftFrom);
    void Start(const ZORGeoLocationOnSurface& seed, const ZORMathVector& direction);
    void Try(const Candidate& candidate);
    void TryStraight(const Candidate& candidate);
    void TryCrossing(const Candidate& candidate);
    void TryProlonged(const Candidate& candidate);
    void PlaceOnYarn(const Candidate& candidate, const ZORGeoLocationOnSurface& location);
    void Place(const Node& node);
    void MakeCells(int warp, int weft);
    void PushCrossings(int warp, int weft);
    void PushProlongations(int warp, int weft);
    [[noreturn]] static void ThrowTooManyNodes();
    ZORMathVector DirectionAt(const ZORGeoLocationOnSurface& before,
                              const ZORGeoLocationOnSurface& end) const;
    ZORMathVector NormalAt(const ZORGeoLocationOnSurface& location, const ZORMathVector& like) const;
    ZORCompDrapingNet Finish(const ZORMathVector& direction) const;

    const ZORGeoSurface& m_surface;
    const ZORCompStrategyParameters m_parameters;
    const double m_step;
    const double m_warpReach; // steps
    const double m_weftReach;
    ZORCompSectionWalk m_walk;
    ZORCompNetOverlap m_overlap;
    std::array<std::optional<ZORCompYarn>, 4>
        m_yarns; // ahead and back along the warp, the same along the weft
    Queue m_candidates;
    Queue m_prolongations;
    qint64 m_numCandidates = 0;
    std::vector<Node> m_nodes;
    std::vector<std::array<int, 4>> m_cells; // nodes, as in ZORCompDrapingCell
    std::unordered_map<quint64, Tile> m_tiles;
    std::unordered_set<quint64> m_blocked;
};
