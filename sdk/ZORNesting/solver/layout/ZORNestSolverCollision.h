// Whether two shapes collide, and how much.

#pragma once

#include "ZORNestSolverShape.h"
#include "solver/geometry/ZORNestSolverOffset.h"

namespace ZORNestSolver {

/// Two poles overlap, hence the shapes collide. Cheap; that none do proves nothing.
/// \param offset  of b's reference point from a's
bool DoPolesOverlap(const Shape& a, const Shape& b, Point offset);

/// How much two shapes overlap that collide, judged by their poles alone: positive even for shapes that are
/// apart. As soon as it reaches \a bound, some value not below it.
float MeasureLoss(const Shape& a, const Shape& b, Point offset,
                  float bound = std::numeric_limits<float>::infinity());

/// What remains between search shapes that touch: their outlines then do not overlap by their insets, and are apart
/// by more than rounding.
constexpr double kContactGap = 2 * kInset + 1e-9;

enum class Axis { Left, Down };

/// Returns how far a may move along the axis until it is kContactGap from an edge of b; \a most where none
/// does. The shapes do not collide. Shapes of very many edges are given up: 0.
double MeasureFreeTravel(const Shape& a, const Shape& b, Point offset, Axis axis, double most);

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
