// Kinds of jobs that misbehave on demand.

#pragma once

/// Registers the kind "test", whose input is a command, in the test program and in its helper program alike:
///
///     echo <text>        returns <text>            pid                returns the id of its process
///     crash, abort, exit, throw, overflow          ends its process, or fails, in that way
///     memory, thread-memory                        allocates until it cannot, here or in another thread
///     thread-throw       throws in another thread
///     wait               runs until it is stopped, and returns "stopped"
///     spin               ignores all requests
///     interim <text>     reports <text>, then ignores all requests
///     interim-crash <t>  reports <t>, waits for a stop, and crashes
///     progress           reports 0.25 and 0.5, then waits for a stop
///     log                logs a warning of the category "test.kind"
///     print              writes to standard output and standard error
///     file, outside      returns a file in its work directory, or outside of it
///     long-file          returns "refused" for a file beyond the limit that it sets for its process
///     variable <name>    returns the value of an environment variable
///     descriptors        returns what its descriptors are
///
/// An interim result is completed as "completed <interim>", but for "crash" and "throw", which do that.
void RegisterTestKinds();
