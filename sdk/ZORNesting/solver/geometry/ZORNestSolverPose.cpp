#include "ZORNestSolverPose.h"

#include <numbers>

namespace ZORNestSolver {

double NormalizeAngle(double angle)
{
    constexpr double turn = 2 * std::numbers::pi;
    constexpr double quarter = std::numbers::pi / 2;
    const double quarters = std::round(angle / quarter);
    if (std::abs(angle - quarters * quarter) < 1e-12)
        return (quarters - 4 * std::floor(quarters / 4)) * quarter;
    const double rest = std::fmod(angle, turn);
    return rest < 0 ? rest + turn : rest;
}

Transform::Transform(const Pose& pose)
    : m_hand(pose.mirrored ? -1 : 1)
    , m_cosine(std::cos(pose.angle))
    , m_sine(std::sin(pose.angle))
    , m_move(pose.position)
{
    constexpr double noise = 1e-12;
    if (std::abs(m_cosine) < noise || std::abs(m_sine) < noise) {
        m_cosine = std::round(m_cosine);
        m_sine = std::round(m_sine);
    }
}

Polygon Transform::Apply(const Polygon& polygon) const
{
    Polygon result = polygon;
    for (Ring& ring : result) {
        for (Point& p : ring)
            p = Apply(p);
        if (m_hand < 0)
            std::reverse(ring.begin(), ring.end());
    }
    return result;
}

} // namespace ZORNestSolver
