// Last words of a helper process.

#pragma once

namespace ZORWorkCrash {

/// Makes this process write its stack to standard error on ZORWorkSpawn::kStackSignal, and when it crashes; it
/// ends by the signal of the crash all the same. An uncaught std::bad_alloc ends it with
/// ZORWorkFailure::kMemoryExitCode.
/// \param socket  connection to the caller, which a crash closes: the caller then knows, and nothing follows
void Install(int socket);

/// Ends this process, but for a process that is writing its stack.
[[noreturn]] void End(int code);

} // namespace ZORWorkCrash
