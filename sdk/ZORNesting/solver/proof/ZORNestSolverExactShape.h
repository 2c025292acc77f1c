// Regions bounded by lines and arcs, as they are drawn.
//
// Part of the proof, whose geometry stays apart from that of the search on purpose: a fault that both share would
// hide from the proof.

#pragma once

#include "ZORNestSolverExactPiece.h"
#include "ZORNestSolverExactTree.h"

namespace ZORNestSolver::Exact {

/// Depth to which regions may overlap, and by which distances may fall short, apart from rounding.
constexpr double kTolerance = 1e-6;

/// All points around which an odd number of contours winds, in either direction and however often: holes are
/// cut out, islands in holes are part of the region, and loops of a contour that overlap are part of it, too.
class Shape
{
public:
    enum class Side { Inside, Outside };

    Shape() = default;
    explicit Shape(const std::vector<Contour>& contours);
    /// A region of straight edges, or all that lies outside of it. Rings without area are ignored.
    explicit Shape(const Polygon& polygon, Side side = Side::Inside);

    /// Returns the box of all pieces; empty if there are none.
    Box GetBox() const { return m_tree.IsEmpty() ? Box() : m_tree.GetBox(); }
    /// Returns the box that the region will have.
    Box GetPlacedBox(const Pose& pose) const;
    Shape Placed(const Pose& pose) const;

    /// Checks a point that does not lie on a piece.
    bool IsInside(Point p) const;
    double GetDistanceToPieces(Point p) const;
    /// Finds points in every part of the region that is wider than the tolerance, for GetProbes(). Where contours are
    /// so many that this would take seconds, only in the parts next to the largest ones.
    void FindProbes();

    bool IsBounded() const { return m_side == Side::Inside; }
    const std::vector<Piece>& GetPieces() const { return m_pieces; }
    const BoxTree& GetTree() const { return m_tree; }
    /// Index of the first piece of each contour.
    const std::vector<size_t>& GetStarts() const { return m_starts; }
    const std::vector<Point>& GetProbes() const { return m_probes; }

private:
    static bool HasLoops(const Ring& ring);
    void SetPieces(std::vector<Piece> pieces);
    size_t GetEnd(size_t contour) const
    {
        return contour + 1 < m_starts.size() ? m_starts[contour + 1] : m_pieces.size();
    }
    Box GetContourBox(size_t contour) const;
    std::vector<size_t> GetLargestFirst() const;
    size_t AppendProbes(size_t contour, bool alongX, double share);

    Side m_side = Side::Inside;
    std::vector<Piece> m_pieces; // contour after contour, neighbors close to each other
    std::vector<size_t> m_starts;
    BoxTree m_tree;
    std::vector<Point> m_probes;
};

} // namespace ZORNestSolver::Exact
