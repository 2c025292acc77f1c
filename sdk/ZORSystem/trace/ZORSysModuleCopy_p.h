// Private copies of the files of loaded libraries.

#pragma once

#include "ZORSysLoadedModules_p.h"

/// Copies the file from which a module was loaded into memory of this process that has a descriptor but no name.
///
/// The readers of debug information map a file, and mapped pages vanish from under them when another process cuts the
/// file short. Nobody else can change the copy.
/// \return the descriptor, which the caller closes; -1 when the file is gone, when it is not the one that was loaded, or
///         when it was changed or damaged since
int ZorSysCopyModule(const ZORSysLoadedModules::Module& module);
