// The exact finish of a strip: items pushed together by linear programs.

#pragma once

#include "solver/layout/ZORNestSolverLayout.h"

#include <functional>

namespace ZORNestSolver {

/// Moves the items of a valid strip layout, without turning them, so that the strip becomes shorter. Corners
/// stay on their side of the edges near to them, which linear rows express; steps are so short that other
/// corners and edges cannot meet. Works on the true outlines, not on the simplified shapes.
class Compaction
{
public:
    using Proof = std::function<bool(const std::vector<Stand>& stands)>;

    /// \param separation  of the items
    /// \param proof       refuses layouts that are not valid
    Compaction(const Problem& problem, double separation, Proof proof);

    /// Strips with obstacles, or with more items than a dense program can take, come back as they are.
    std::vector<Stand> Shorten(std::vector<Stand> stands, const std::function<bool()>& isOver) const;

private:
    std::vector<Polygon> PlaceOutlines(const std::vector<Stand>& stands) const;
    std::vector<Stand> Step(const std::vector<Stand>& stands, double reach,
                            const std::function<bool()>& isOver, double& gain) const;

    const Problem& m_problem;
    double m_separation;
    Proof m_proof;
};

} // namespace ZORNestSolver
