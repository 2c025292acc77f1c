// Whether two shapes collide, and how much.

#pragma once

#include "ZORNestSolverShape.h"

namespace ZORNestSolver {

/// How much two shapes would overlap, judged by their poles alone.
struct PoleOverlap
{
    float loss = 0;       // positive even for shapes that are apart; counts only if they collide
    float depth = 0;      // by which two poles overlap at most
    bool certain = false; // two poles overlap, hence the shapes collide
};

/// \param offset  of b's reference point from a's
PoleOverlap MeasurePoles(const Shape& a, const Shape& b, Point offset);

/// Tells collisions by the outlines. Holds scratch memory: one for each thread.
class OutlineTest
{
public:
    /// Outlines cross or touch, or one shape contains the other; outlines that only coincide in whole edges
    /// or in corners do not collide.
    bool DoCollide(const Shape& a, const Shape& b, Point offset);

private:
    struct Edges
    {
        std::vector<double> ax, ay, bx, by;
        size_t count = 0;
    };
    static void Select(const Shape& shape, Point offset, const Box& box, Edges& edges);

    Edges m_first;
    Edges m_second;
};

} // namespace ZORNestSolver
