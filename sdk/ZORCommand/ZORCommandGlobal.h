// Export macro of the library ZORCommand.

#pragma once

#include <QtGlobal>

#ifdef ZORCommand_EXPORTS // defined by CMake while the library itself is compiled
#define ZORCOMMAND_EXPORT Q_DECL_EXPORT
#else
#define ZORCOMMAND_EXPORT Q_DECL_IMPORT
#endif
