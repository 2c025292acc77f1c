// Units of the files that are read.

#pragma once

namespace zor::nest {

constexpr double kInch = 25.4; // mm

} // namespace zor::nest
