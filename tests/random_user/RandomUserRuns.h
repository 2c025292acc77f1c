// Runs many random users and explains their failures.

#pragma once

struct RandomUserCommandLine;

/// Runs all seeds, or repeats one list. For each failure prints the seed, what failed, the end of the log and
/// the shortest list of actions found that fails in the same way.
/// \return exit code: 0 when all went well, else 1
int RunRandomUsers(const RandomUserCommandLine& commandLine);
