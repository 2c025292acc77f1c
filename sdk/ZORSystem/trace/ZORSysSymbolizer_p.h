// Turns code addresses into functions, files and lines.

#pragma once

#include <QStringList>
#include <QtGlobal>

/// Describes a frame of a recorded stack: "function at file:line"; without debug information "function in
/// library", without a symbol "address in library", and where no library is "address".
///
/// Reads the debug information of a library when its first frame is described, from a private copy of its file: what
/// happens to the file later is harmless. The copy stays in memory. Where the file has vanished or is not the one that
/// was loaded, the frames are those of a library without symbols. Thread-safe.
/// \param returnAddress  as backtrace() gives it
/// \param generation     of ZORSysLoadedModules when the stack was recorded: an address of a library that
///                       was unloaded since is only an address, also when another library lies there now
/// \return one text, or one for each function inlined at the address, innermost first
QStringList ZorSysDescribeFrame(quintptr returnAddress, quint32 generation);
