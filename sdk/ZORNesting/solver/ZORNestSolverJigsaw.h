// Exact covers: items that fill a box without waste.

#pragma once

#include "ZORNestSolverBudget.h"
#include "ZORNestSolverLayout.h"
#include "ZORNestSolverRandom.h"

namespace ZORNestSolver {

/// Fills one box with items that leave nothing of it free. The leftmost, then lowest point of what is free
/// must be the leftmost, lowest corner of an item whose next edge runs along the lower edge there; so few
/// items come into question at each step that a search in depth decides. Items with holes or free angles
/// are never used.
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

    /// A cover of the box by some of the items that are left, which are then no longer left; empty where
    /// there is none, or none was found in so many attempts.
    std::vector<Place> Fill(const Box& box, int mostAttempts, const Budget& budget);

private:
    /// An item in one of its rotations and hands, relative to its leftmost, lowest corner.
    struct Piece
    {
        size_t type = 0;
        Stand stand;       // when that corner is the origin
        Ring ring;         // from that corner, counter-clockwise
        double edge = 0;   // direction of the edge after the corner
        double corner = 0; // angle inside of the corner
        double area = 0;
        double rank = 0;      // the order in which pieces are tried
        double tolerance = 0; // by which areas may differ
    };
    struct State;

    void AddPiece(size_t type, uint32_t poseClass);
    void OrderPieces(int attempt);
    bool Descend(State& state);
    bool CanBeFilled(const State& state) const;

    const std::vector<std::shared_ptr<const ItemType>>& m_types;
    std::vector<size_t> m_items;
    std::vector<std::vector<size_t>> m_left; // the items of each type that are not used up
    std::vector<Piece> m_pieces;
    Random m_random;
};

/// Whether items of that area may fill boxes of this area without waste.
bool IsWholeNumberOf(double area, double boxArea);

} // namespace ZORNestSolver
