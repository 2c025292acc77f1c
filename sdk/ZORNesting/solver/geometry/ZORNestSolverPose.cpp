#include "ZORNestSolverPose.h"

#include "solver/base/ZORNestSolverAngle.h"

namespace ZORNestSolver {

double NormalizeAngle(double angle)
{
    const double quarters = std::round(angle / kQuarterTurn);
    if (std::abs(angle - quarters * kQuarterTurn) < 1e-12)
        return (quarters - 4 * std::floor(quarters / 4)) * kQuarterTurn;
    const double rest = std::fmod(angle, kFullTurn);
    return rest < 0 ? rest + kFullTurn : rest;
}

Transform::Transform(const Pose& pose)
    : m_hand(pose.mirrored ? -1 : 1)
    , m_cosine(std::cos(pose.angle))
    , m_sine(std::sin(pose.angle))
    , m_move(pose.position)
{
    constexpr double kNoise = 1e-12;
    if (std::abs(m_cosine) < kNoise || std::abs(m_sine) < kNoise) {
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
