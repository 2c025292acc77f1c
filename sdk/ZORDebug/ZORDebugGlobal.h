// Export macro of the library ZORDebug.

#pragma once

#include <QtGlobal>

#ifdef ZORDebug_EXPORTS // defined by CMake while the library itself is compiled
#define ZORDEBUG_EXPORT Q_DECL_EXPORT
#else
#define ZORDEBUG_EXPORT Q_DECL_IMPORT
#endif
