// Exact covers: items that fill a box without waste.

#pragma once

#include "solver/base/ZORNestSolverBudget.h"
#include "solver/base/ZORNestSolverRandom.h"
#include "solver/layout/ZORNestSolverLayout.h"

namespace ZORNestSolver {

/// Fills one box with items that leave nothing of it free. At every corner of
/// what is free some item must have a corner from which its edge runs along the
/// edge there; the corner where the fewest items do is filled first. So few
/// items come into question that a search in depth decides. Items with holes or
/// free angles are never used.
class Jigsaw
{
public:
    /// An item of the list, and where it stands; the window of the stand is 0.
    struct Place
    {
        size_t item = 0;
        Stand stand;
    };

    /// \param items  the types of the items
    Jigsaw(const std::vector<std::shared_ptr<const ItemType>>& types, std::vector<size_t> items,
           uint64_t seed);

    /// A cover of the box by some of the items that are left, which are then no
    /// longer left; empty where there is none, or none was found in so many
    /// attempts.
    std::vector<Place> Fill(const Box& box, int mostAttempts, const Budget& budget);

private:
    /// An item in one of its rotations and hands.
    struct Piece
    {
        size_t type = 0;
        Stand stand; // when the first point of the ring is the origin
        Ring ring;   // counter-clockwise, from the origin
        double area = 0;
        double rank = 0;      // the order in which pieces are tried
        double tolerance = 0; // by which areas may differ
    };
    /// A corner of a piece, or of what is free.
    struct Corner
    {
        double direction = 0; // of the edge after it
        double angle = 0;     // inside
        double length = 0;    // of the edge after it
        size_t piece = 0;
        Point point;
    };
    struct State;

    void AddPiece(size_t type, uint32_t poseClass);
    void OrderPieces(int attempt);
    bool Descend(State& state);
    bool CanBeFilled(const State& state) const;
    std::vector<size_t> FindCorners(const State& state, const Corner& free, bool canExceed) const;
    std::vector<size_t> ChooseCorner(const State& state, Point& point) const;
    bool TryPiece(State& state, const Piece& piece, Point at);
    static std::vector<Corner> GetCorners(const Ring& ring);

    const std::vector<std::shared_ptr<const ItemType>>& m_types;
    std::vector<size_t> m_items;
    std::vector<std::vector<size_t>> m_left; // the items of each type that are not used up
    std::vector<Piece> m_pieces;
    std::vector<Corner> m_corners; // of all pieces, ascending by direction
    Random m_random;
};

/// Whether items of that area may fill boxes of this area without waste.
bool IsWholeNumberOf(double area, double boxArea);

} // namespace ZORNestSolver
