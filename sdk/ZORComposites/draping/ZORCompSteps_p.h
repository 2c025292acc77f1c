// Steps along yarns and sections.

#pragma once

namespace zor::comp {

/// Part of a step: places so much before the border of the surface still are a step away.
constexpr double kStepSlack = 1e-11;

} // namespace zor::comp
