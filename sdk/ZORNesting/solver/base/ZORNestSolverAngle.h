// Angles in radians.

#pragma once

#include <numbers>

namespace ZORNestSolver {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kQuarterTurn = std::numbers::pi / 2;
constexpr double kFullTurn = 2 * std::numbers::pi;

} // namespace ZORNestSolver
