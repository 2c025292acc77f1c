// The kinds of jobs of the nesting module.

#pragma once

/// Names under which the library registers what its jobs do, as long as it is loaded.
namespace ZORNestJobKinds {

constexpr char kNesting[] = "nesting";
constexpr char kTranslation[] = "translation";

} // namespace ZORNestJobKinds
