// Poses of items, and points in them.

#pragma once

#include "ZORNestSolverGeometry.h"

namespace ZORNestSolver {

/// Mirrors x -> -x, then rotates, then moves.
struct Pose
{
    bool mirrored = false;
    double angle = 0; // radians, counter-clockwise
    Point position;
};

/// A pose with its sine and cosine at hand. Multiples of a quarter turn are exact.
class Transform
{
public:
    explicit Transform(const Pose& pose);
    Point Apply(Point p) const
    {
        const double x = p.x * m_hand;
        return {m_cosine * x - m_sine * p.y + m_move.x, m_sine * x + m_cosine * p.y + m_move.y};
    }
    /// Keeps the orientation of the rings: a mirrored ring is reversed.
    Polygon Apply(const Polygon& polygon) const;

private:
    double m_hand;
    double m_cosine;
    double m_sine;
    Point m_move;
};

/// The angle turned into [0, 2 pi), with noise near multiples of a quarter turn removed.
double NormalizeAngle(double angle);

} // namespace ZORNestSolver
