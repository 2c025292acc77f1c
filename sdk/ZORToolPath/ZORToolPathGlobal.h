// Export macro of the library ZORToolPath.

#pragma once

#include <QtGlobal>

#ifdef ZORToolPath_EXPORTS // defined by CMake while the library itself is compiled
#define ZORTOOLPATH_EXPORT Q_DECL_EXPORT
#else
#define ZORTOOLPATH_EXPORT Q_DECL_IMPORT
#endif
