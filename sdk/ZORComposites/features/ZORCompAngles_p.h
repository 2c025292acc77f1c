// Resolution of angles.

#pragma once

namespace zor::comp {

/// Radians. Directions that differ by less count as the same: that much is lost where angles are converted from degrees
/// and where directions are projected and normalized.
constexpr double kSmallestAngle = 1e-9;

} // namespace zor::comp
