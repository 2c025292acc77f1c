// Removes the overlaps of a layout.

#pragma once

#include "ZORNestSolverMover.h"
#include "solver/base/ZORNestSolverBudget.h"

namespace ZORNestSolver {

/// When to give up.
struct SeparationLimits
{
    int iterations = 200; // without a clearly better best
    int attempts = 3;     // in a row that bring no clearly better best
};

/// Guided local search: moves colliding items one after another to places of less weighted loss and raises
/// the weights of the collisions that remain.
class Separator
{
public:
    Separator(Layout& layout, Random& random, MoveEffort effort = {});

    /// Leaves the layout in the best state met.
    /// \return its total loss; 0 if no overlap is left
    double Separate(const SeparationLimits& limits, const Budget& budget);

private:
    void MoveColliding(const Budget& budget);

    Layout& m_layout;
    Random& m_random;
    MoveEffort m_effort;
    Mover m_mover;
    std::vector<size_t> m_order;
};

} // namespace ZORNestSolver
