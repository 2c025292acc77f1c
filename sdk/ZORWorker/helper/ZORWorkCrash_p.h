// Last words of a helper process.

#pragma once

namespace ZORWorkCrash {

/// Makes this process write its stack to standard error on ZORWorkSpawn::kStackSignal, and when it
/// crashes; it ends by the signal of the crash all the same. An uncaught std::bad_alloc ends it with
/// ZORWorkFailure::kMemoryExitCode. From now on the stack of each operator new that fails is kept.
/// \param socket  connection to the caller, which a crash closes: the caller then knows, and nothing follows
void Install(int socket);

/// Forgets the stack of an operator new that failed.
void ForgetMemoryStack();
/// Writes the stack of the operator new that failed last to standard error; nothing when there was none.
/// Needs no memory.
void WriteMemoryStack();

/// Ends this process, but for a process that is writing its stack.
[[noreturn]] void End(int code);

} // namespace ZORWorkCrash
