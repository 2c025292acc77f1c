// Turns code addresses into functions, files and lines.

#pragma once

#include <QStringList>
#include <QtGlobal>

/// Describes a frame of a recorded stack: "function at file:line"; without debug information "function in
/// library", without a symbol "address in library", and where no library is "address".
///
/// Reads the debug information of the process on first use, and again when a library is asked for that
/// was loaded later. What was read stays in memory. Thread-safe.
/// \param returnAddress  as backtrace() gives it
/// \param generation     of ZORSysLoadedModules when the stack was recorded: an address of a library that
///                       was unloaded since is only an address, also when another library lies there now
/// \return one text, or one for each function inlined at the address, innermost first
QStringList ZorSysDescribeFrame(quintptr returnAddress, quint32 generation);
